include(CMakeFindDependencyMacro)
find_dependency(Threads)
find_dependency(Boost 1.74 CONFIG COMPONENTS log date_time)
include("${CMAKE_CURRENT_LIST_DIR}/S3ProviderHostTargets.cmake")
