# Links into every target of this project; never into what it installs.
add_library(s3provider_warnings INTERFACE)
target_compile_options(s3provider_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wunused
  -Wconversion -Wsign-conversion -Wnull-dereference -Wformat=2
  $<$<BOOL:${S3PROVIDER_WARNINGS_AS_ERRORS}>:-Werror>)
