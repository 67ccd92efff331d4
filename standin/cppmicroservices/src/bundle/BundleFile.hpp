#pragma once

#include <cstddef>
#include <string>

namespace cppmicroservices::detail {

/// No section that is read is larger than this many bytes.
inline constexpr std::size_t maximumSectionSize = 16 << 20;

/// The bytes of a section of an ELF file. Throws std::runtime_error when the file can't be read, isn't ELF,
/// has no such section, ends before it does, or says that it is too large. Never waits for a pipe's writer.
std::string readElfSection(const std::string& path, const std::string& section);

}  // namespace cppmicroservices::detail
