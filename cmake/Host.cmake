# s3provider::host: the host application's libraries, or the stand-in for them.
set(S3PROVIDER_HOST standin CACHE STRING "standin, or system for the package S3ProviderHost")

if(S3PROVIDER_HOST STREQUAL "system")
  find_package(S3ProviderHost REQUIRED)
  message(STATUS "Host libraries: ${S3ProviderHost_DIR}")
elseif(S3PROVIDER_HOST STREQUAL "standin")
  if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/standin/host/CMakeLists.txt")
    add_subdirectory(standin/host)
  endif()
  message(STATUS "Host libraries: stand-in")
else()
  message(FATAL_ERROR "S3PROVIDER_HOST is '${S3PROVIDER_HOST}': use standin or system")
endif()
