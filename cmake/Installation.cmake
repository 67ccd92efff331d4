# Where `make install` puts things, in three components: "host", the stand-in host as a package of its own; "tools", the
# programs; "bundle", all the rest.
include(CMakePackageConfigHelpers)

set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME bundle)
set(S3PROVIDER_INSTALL_HEADERS "${CMAKE_INSTALL_INCLUDEDIR}/s3provider")
set(S3PROVIDER_INSTALL_PACKAGES "${CMAKE_INSTALL_LIBDIR}/cmake")

# What is installed finds its libraries by where it lies itself, so that the whole can be moved; neighbours that the
# system doesn't look for are found where they were at the build.
file(RELATIVE_PATH libraries_from_programs "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/${libraries_from_programs}")
set(CMAKE_INSTALL_RPATH_USE_LINK_PATH ON)

# install_standin(TARGET HEADERS PACKAGE [COMPONENT NAME]): the library, which the CMake package of that name offers,
# and its folder of headers, which only its users see, as the real ones have the same names.
function(install_standin target headers package)
  cmake_parse_arguments(ARG "" "COMPONENT" "" ${ARGN})
  if(NOT ARG_COMPONENT)
    set(ARG_COMPONENT ${CMAKE_INSTALL_DEFAULT_COMPONENT_NAME})
  endif()
  string(REPLACE "s3provider_" "" name ${target})
  set(installed_headers "${S3PROVIDER_INSTALL_HEADERS}/${name}")
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  target_include_directories(${target}
    PUBLIC "$<BUILD_INTERFACE:${headers}>" "$<INSTALL_INTERFACE:${installed_headers}>")
  install(TARGETS ${target} EXPORT ${package} LIBRARY COMPONENT ${ARG_COMPONENT})
  install(DIRECTORY "${headers}/" DESTINATION "${installed_headers}" COMPONENT ${ARG_COMPONENT})
  set_property(GLOBAL APPEND_STRING PROPERTY S3PROVIDER_STANDIN_CFLAGS " -I\${includedir}/${name}")
  get_target_property(file ${target} OUTPUT_NAME)
  set_property(GLOBAL APPEND_STRING PROPERTY S3PROVIDER_STANDIN_LIBS " -l${file}")
endfunction()
