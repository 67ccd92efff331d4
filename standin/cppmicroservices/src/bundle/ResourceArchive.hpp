#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cppmicroservices::detail {

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
