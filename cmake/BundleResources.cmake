# What CppMicroServices reads out of a library to know it for a bundle: a zip archive that holds the folder of the
# bundle's name. Where in the library it lies is the object format's matter; for Mach-O it would be a section
# that the linker makes of the archive, for PE a resource.
enable_language(ASM)

# bundle_resources(TARGET NAME FILE...): puts the files into the library as resources of the bundle NAME. The same
# files make the same bytes, whoever builds them and when.
function(bundle_resources target name)
  set(archive "${CMAKE_CURRENT_BINARY_DIR}/${target}_resources.zip")
  bundle_archive("${archive}" ${name} ${ARGN})
  if(CMAKE_EXECUTABLE_FORMAT STREQUAL "ELF")
    bundle_elf_section(${target} "${archive}")
  else()
    message(FATAL_ERROR "Nobody has written yet where the object format '${CMAKE_EXECUTABLE_FORMAT}' keeps a bundle's "
                        "resources; cmake/BundleResources.cmake is the place")
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
  set(source "${CMAKE_CURRENT_BINARY_DIR}/${target}_resources.s")
  file(CONFIGURE OUTPUT "${source}" @ONLY CONTENT [[
    .section .us_resources, "a", %progbits
    .incbin "@archive@"
    .section .note.GNU-stack, "", %progbits
]])
  set_source_files_properties("${source}" PROPERTIES OBJECT_DEPENDS "${archive}")
  target_sources(${target} PRIVATE "${source}")
endfunction()
