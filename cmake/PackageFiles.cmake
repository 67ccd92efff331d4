# What others find an installation by: the CMake package S3Provider and, for pkg-config, s3provider.
set(package_folder "${S3PROVIDER_INSTALL_PACKAGES}/S3Provider")
get_target_property(bundle_name s3provider_bundle OUTPUT_NAME)
set(bundle_file "${CMAKE_SHARED_LIBRARY_PREFIX}${bundle_name}${CMAKE_SHARED_LIBRARY_SUFFIX}")

configure_package_config_file(cmake/S3ProviderConfig.cmake.in "${PROJECT_BINARY_DIR}/S3ProviderConfig.cmake"
  INSTALL_DESTINATION "${package_folder}")
write_basic_package_version_file("${PROJECT_BINARY_DIR}/S3ProviderConfigVersion.cmake"
  COMPATIBILITY SameMinorVersion)
install(EXPORT S3Provider NAMESPACE s3provider:: FILE S3ProviderTargets.cmake DESTINATION "${package_folder}")
install(FILES "${PROJECT_BINARY_DIR}/S3ProviderConfig.cmake" "${PROJECT_BINARY_DIR}/S3ProviderConfigVersion.cmake"
  DESTINATION "${package_folder}")

# Of the neighbours, the stand-ins only: who builds with the real ones knows where they are.
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig"
  OUTPUT_VARIABLE prefix_from_pkg_config)
get_property(standin_cflags GLOBAL PROPERTY S3PROVIDER_STANDIN_CFLAGS)
get_property(standin_libs GLOBAL PROPERTY S3PROVIDER_STANDIN_LIBS)
configure_file(cmake/s3provider.pc.in "${PROJECT_BINARY_DIR}/s3provider.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/s3provider.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# All that `make install` installs.
add_custom_target(s3provider_installed DEPENDS s3provider_bundle s3server s3vfs)
