#pragma once

#include <string>

namespace cppmicroservices::detail {

/// The bytes of a section of an ELF file. Throws std::runtime_error when the file can't be read, isn't ELF,
/// has no such section, or ends before it does.
std::string readElfSection(const std::string& path, const std::string& section);

}  // namespace cppmicroservices::detail
