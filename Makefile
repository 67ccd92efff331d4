# Thin, over CMake's presets. `make demo` and `make test` need nothing but Debian 12 or 13, git and make.

.PHONY: configure build install package demo test integration sanitizers bench fuzz lint format clean

build_dir := build/dev
prefix ?= /usr/local
# ON: a warning stops the build, as it does with the preset on its own and in CI.
WERROR ?= OFF
configure_dev := cmake --preset dev -DS3PROVIDER_WARNINGS_AS_ERRORS=$(WERROR)
# Most tests wait more than they compute.
test_jobs := $(shell expr 2 \* $$(nproc))

configure:
	tools/install-deps
	$(configure_dev) $(CMAKE_ARGS)

build: configure
	cmake --build --preset dev

# Below $(DESTDIR)$(prefix).
install:
	tools/install-deps
	$(configure_dev) -DCMAKE_INSTALL_PREFIX=$(prefix) $(CMAKE_ARGS)
	cmake --build --preset dev --target s3provider_installed
	DESTDIR=$(DESTDIR) cmake --install $(build_dir)

# build/dev/s3provider_VERSION_ARCHITECTURE.deb
package: configure
	tools/install-deps package
	cmake --build --preset dev --target s3provider_installed
	cd $(build_dir) && cpack

demo: configure
	cmake --build --preset dev --target s3provider_demo s3provider_parts_demo s3server s3vfs
	tools/demo $(build_dir)

test: build
	ctest --preset dev -j $(test_jobs)
	@tools/skipped $(build_dir)

# The suite on a real S3 server, others' clients on the embedded one, and the plug-in behind another's proxy and
# through time. Tests skip what isn't installed; here all of it must be, but for the server where a release has none.
integration: configure
	tools/install-deps integration
	cmake --build --preset dev --target s3provider_integration
	gateway="ceph-mon ceph-osd radosgw"; \
	if [ ! -x /usr/bin/radosgw ] && command -v apt-cache >/dev/null && ! apt-cache show radosgw >/dev/null 2>&1; then \
	  echo "make integration: this release has no package radosgw, so the tests on a real S3 server are left out;" \
	    "docs/integration.md tells how to run them on one of yours" >&2; \
	  gateway=; \
	fi; \
	for program in $$gateway aws rclone s3cmd tinyproxy; do \
	  test -x /usr/bin/$$program || { echo "make integration: no /usr/bin/$$program" >&2; exit 1; }; \
	done
	ls /usr/lib/*/faketime/libfaketimeMT.so.1 >/dev/null || { echo "make integration: no libfaketime" >&2; exit 1; }
	ctest --preset integration -j $(test_jobs)
	@tools/skipped $(build_dir)

# The unit, wire, conformance and bundle tests and the fuzz corpora once more under each sanitizer.
sanitizers:
	tools/install-deps
	for sanitizer in address thread; do \
	  tools/sanitize $$sanitizer || exit 1; \
	done

bench: configure
	tools/install-deps bench
	cmake --build --preset dev --target s3provider_bench
	$(build_dir)/bench/s3provider_bench

# Each fuzz target for FUZZ_SECONDS of CPU time, 600 unless told.
fuzz:
	tools/install-deps fuzz
	tools/fuzz

lint:
	tools/install-deps lint
	tools/lint

format:
	git ls-files '*.hpp' '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf build
