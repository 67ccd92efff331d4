# s3provider::aws_sdk: the AWS SDK for C++ (core and s3) where it is installed, else the stand-in.
set(S3PROVIDER_AWS_SDK auto CACHE STRING "auto, system or standin")

if(NOT S3PROVIDER_AWS_SDK MATCHES "^(auto|system|standin)$")
  message(FATAL_ERROR "S3PROVIDER_AWS_SDK is '${S3PROVIDER_AWS_SDK}': use auto, system or standin")
endif()

set(S3PROVIDER_AWS_SDK_IS_STANDIN ON)
if(NOT S3PROVIDER_AWS_SDK STREQUAL "standin")
  find_package(AWSSDK 1.11 QUIET COMPONENTS s3)
  if(AWSSDK_FOUND)
    set(S3PROVIDER_AWS_SDK_IS_STANDIN OFF)
  elseif(S3PROVIDER_AWS_SDK STREQUAL "system")
    message(FATAL_ERROR "The AWS SDK for C++ 1.11 or newer with its s3 module was asked for and not found; "
                        "set CMAKE_PREFIX_PATH to where it is installed, or use -DS3PROVIDER_AWS_SDK=standin")
  endif()
endif()

if(S3PROVIDER_AWS_SDK_IS_STANDIN)
  add_subdirectory(standin/aws)
  message(STATUS "AWS SDK for C++: stand-in")
else()
  add_library(s3provider_aws_sdk INTERFACE)
  target_link_libraries(s3provider_aws_sdk INTERFACE ${AWSSDK_LINK_LIBRARIES})
  target_include_directories(s3provider_aws_sdk SYSTEM INTERFACE ${AWSSDK_INCLUDE_DIRS})
  add_library(s3provider::aws_sdk ALIAS s3provider_aws_sdk)
  message(STATUS "AWS SDK for C++: ${AWSSDK_VERSION} in ${AWSSDK_ROOT_DIR}")
endif()
