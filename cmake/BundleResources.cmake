# What CppMicroServices reads out of a library to know it for a bundle: a zip archive that holds the folder of the
# bundle's name. Where in the library it lies is the object format's matter. The framework knows several formats and
# brings a tool that puts the archive there; without the framework, only ELF is known here.
if(CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
  enable_language(ASM)
endif()

# bundle_resources(TARGET NAME FILE...): puts the files into the library as resources of the bundle NAME. On ELF the same
# files make the same bytes, whoever builds them and when, and whether the framework is there or not.
function(bundle_resources target name)
  set(archive "${CMAKE_CURRENT_BINARY_DIR}/${target}_resources.zip")
  if(NOT CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
    if(S3PROVIDER_CPPMICROSERVICES_IS_STANDIN)
      message(FATAL_ERROR "Without CppMicroServices, whose resource tool knows other object formats, bundles can be made "
                          "as ELF libraries only, and here they are '${CMAKE_EXECUTABLE_FORMAT}': install "
                          "CppMicroServices 3 with its Declarative Services, and set CMAKE_PREFIX_PATH to where it is")
    endif()
    bundle_packed_by_framework(${target} ${name} ${ARGN})
  elseif(S3PROVIDER_CPPMICROSERVICES_IS_STANDIN)
    bundle_archive("${archive}" ${name} ${ARGN})
    bundle_elf_section(${target} "${archive}")
  else()
    bundle_archive("${archive}" ${name} ${ARGN})
    bundle_linked_by_framework(${target} ${name} "${archive}")
  endif()
endfunction()

# Deflated, with an entry for the folder. Neither the builder's clock, time zone, umask nor user shows.
function(bundle_archive archive name)
  find_program(ZIP_PROGRAM zip REQUIRED)
  cmake_path(REPLACE_EXTENSION archive LAST_ONLY "" OUTPUT_VARIABLE stage)
  add_custom_command(OUTPUT "${archive}"
    COMMAND ${CMAKE_COMMAND} -E rm -rf "${stage}" "${archive}"
    COMMAND install -d -m 755 "${stage}/${name}"
    COMMAND install -m 644 ${ARGN} "${stage}/${name}"
    COMMAND find "${stage}" -exec touch -d "1980-01-01T00:00:00Z" {} +
    COMMAND ${CMAKE_COMMAND} -E chdir "${stage}" ${CMAKE_COMMAND} -E env TZ=UTC
            "${ZIP_PROGRAM}" -q -X -r "${archive}" ${name}
    DEPENDS ${ARGN}
    WORKING_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}"
    COMMENT "Packing the resources of ${name}"
    VERBATIM)
endfunction()

# The section is loaded with the library, and so it survives whatever strips it.
function(bundle_elf_section target archive)
  set(source "${CMAKE_CURRENT_BINARY_DIR}/${target}_resources.S")
  file(CONFIGURE OUTPUT "${source}" @ONLY CONTENT [[
    .section .us_resources, "a", %progbits
    .incbin "@archive@"
    .section .note.GNU-stack, "", %progbits
]])
  set_source_files_properties("${source}" PROPERTIES OBJECT_DEPENDS "${archive}")
  target_sources(${target} PRIVATE "${source}")
endfunction()

# The framework's tool packs the files, each under its name alone, and links the archive. The archive tells when.
function(bundle_packed_by_framework target name)
  set_target_properties(${target} PROPERTIES US_BUNDLE_NAME ${name})
  foreach(file IN LISTS ARGN)
    cmake_path(ABSOLUTE_PATH file)
    cmake_path(GET file PARENT_PATH folder)
    cmake_path(GET file FILENAME entry)
    usFunctionAddResources(TARGET ${target} WORKING_DIRECTORY "${folder}" FILES ${entry})
  endforeach()
  bundle_embedded_by_framework(${target})
endfunction()

# It links an archive of ours, as it is: what the framework has packed stands in these two properties of its own, and
# would tell the time.
function(bundle_linked_by_framework target name archive)
  file(MAKE_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/${target}")
  set_target_properties(${target} PROPERTIES
    US_BUNDLE_NAME ${name} _us_resource_zips "${archive}" _us_resource_counter 0)
  bundle_embedded_by_framework(${target})
endfunction()

# Linked rather than appended to the file, so that the archive survives whatever strips or signs it. An ELF object that is
# made of an archive says nothing of the stack; unless told otherwise, the linker then asks for executable ones.
function(bundle_embedded_by_framework target)
  usFunctionEmbedResources(TARGET ${target} LINK)
  usFunctionGetResourceSource(TARGET ${target} OUT source LINK)
  target_sources(${target} PRIVATE ${source})
  if(CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
    target_link_options(${target} PRIVATE LINKER:-z,noexecstack)
  endif()
endfunction()
