# One sanitizer a build tree, for everything compiled in it.
if(S3PROVIDER_SANITIZER)
  if(NOT S3PROVIDER_SANITIZER MATCHES "^(address|undefined|thread)$")
    message(FATAL_ERROR "S3PROVIDER_SANITIZER is '${S3PROVIDER_SANITIZER}': use address, undefined or thread")
  endif()
  add_compile_options(-fsanitize=${S3PROVIDER_SANITIZER} -fno-omit-frame-pointer -g)
  # GCC takes what it instruments for uninitialised here and there.
  add_compile_options(-Wno-maybe-uninitialized)
  add_link_options(-fsanitize=${S3PROVIDER_SANITIZER})
  if(S3PROVIDER_SANITIZER STREQUAL "undefined")
    add_compile_options(-fno-sanitize-recover=all)
  endif()
  message(STATUS "Sanitizer: ${S3PROVIDER_SANITIZER}")
endif()
