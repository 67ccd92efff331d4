# `make package`: a .deb of all that is installed. dpkg-shlibdeps tells what it depends on.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "s3provider maintainers <maintainers@s3provider.example>")
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS ca-certificates)
include(CPack)
