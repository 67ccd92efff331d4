# Thin, over CMake's presets. `make demo` and `make test` need nothing but Debian 12, git and make.

.PHONY: build demo test sanitizers lint format clean

build_dir := build/dev

build:
	tools/install-deps
	cmake --preset dev $(CMAKE_ARGS)
	cmake --build --preset dev

demo: build
	tools/demo $(build_dir)

test: build
	ctest --preset dev -j 2

# The unit and wire tests once more under each sanitizer.
sanitizers:
	tools/install-deps
	for sanitizer in address undefined thread; do \
	  tools/sanitize $$sanitizer || exit 1; \
	done

lint:
	tools/install-deps lint
	tools/lint

format:
	git ls-files '*.hpp' '*.cpp' '*.h' | xargs clang-format -i

clean:
	rm -rf build
