# s3provider::cppmicroservices: CppMicroServices and its Declarative Services where they are installed, else the
# stand-in. S3PROVIDER_DECLARATIVE_SERVICES_BUNDLES are the bundles to be installed and started before any component:
# the real framework has its Declarative Services there, the stand-in has them built in.
set(S3PROVIDER_CPPMICROSERVICES auto CACHE STRING "auto, system or standin")

if(NOT S3PROVIDER_CPPMICROSERVICES MATCHES "^(auto|system|standin)$")
  message(FATAL_ERROR "S3PROVIDER_CPPMICROSERVICES is '${S3PROVIDER_CPPMICROSERVICES}': "
                      "use auto, system or standin")
endif()

set(S3PROVIDER_CPPMICROSERVICES_IS_STANDIN ON)
if(NOT S3PROVIDER_CPPMICROSERVICES STREQUAL "standin")
  # In the order in which one needs the other; not every 3.x has the third.
  find_package(CppMicroServices 3 QUIET
    COMPONENTS Framework ServiceComponent OPTIONAL_COMPONENTS usAsyncWorkService DeclarativeServices)
  if(CppMicroServices_FOUND AND TARGET usServiceComponent AND TARGET DeclarativeServices)
    set(S3PROVIDER_CPPMICROSERVICES_IS_STANDIN OFF)
  elseif(S3PROVIDER_CPPMICROSERVICES STREQUAL "system")
    message(FATAL_ERROR "CppMicroServices 3 with its Declarative Services was asked for and not found; set "
                        "CMAKE_PREFIX_PATH to where it is installed, or use -DS3PROVIDER_CPPMICROSERVICES=standin")
  endif()
endif()

set(S3PROVIDER_DECLARATIVE_SERVICES_BUNDLES)
if(S3PROVIDER_CPPMICROSERVICES_IS_STANDIN)
  add_subdirectory(standin/cppmicroservices)
  message(STATUS "CppMicroServices: stand-in")
else()
  add_library(s3provider_cppmicroservices INTERFACE)
  # The Declarative Services bundle needs the latter two, as far as there are two, in whatever process starts it, and its
  # own run path doesn't say where they are.
  target_link_libraries(s3provider_cppmicroservices INTERFACE CppMicroServices
    -Wl,--push-state,--no-as-needed usServiceComponent $<TARGET_NAME_IF_EXISTS:usAsyncWorkService>
    -Wl,--pop-state)
  add_library(s3provider::cppmicroservices ALIAS s3provider_cppmicroservices)
  set_target_properties(s3provider_cppmicroservices PROPERTIES EXPORT_NAME cppmicroservices)
  install(TARGETS s3provider_cppmicroservices EXPORT S3Provider)
  set(S3PROVIDER_DECLARATIVE_SERVICES_BUNDLES "$<TARGET_FILE:DeclarativeServices>")
  message(STATUS "CppMicroServices: ${CppMicroServices_VERSION} in ${CppMicroServices_DIR}")
endif()
