#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// From a library's file to the text of its manifest.
namespace cppmicroservices::detail {

/// No section that is read is larger than this many bytes.
inline constexpr std::size_t maximumSectionSize = 16 << 20;

/// The bytes of a section of an ELF file. Throws std::runtime_error when the file can't be read, isn't ELF,
/// has no such section, ends before it does, or says that it is too large. Never waits for a pipe's writer.
std::string readElfSection(const std::string& path, const std::string& section);

/// No manifest is larger than this many bytes.
inline constexpr std::size_t maximumManifestSize = 1 << 20;

struct ManifestEntry {
    std::string folder;  // the bundle's name
    std::string text;
};

/// The one entry "<folder>/manifest.json" of a zip archive. Throws std::runtime_error when the bytes are no
/// archive, when it has no such entry or several, and when the entry is damaged, encrypted, neither stored
/// nor deflated, too large, or of another size than the archive says. Never unpacks more than
/// maximumManifestSize.
ManifestEntry readManifestEntry(std::string_view archive);

}  // namespace cppmicroservices::detail
