#pragma once

#include "bundle/BundleFile.hpp"
#include "components/ComponentDescription.hpp"
#include "cppmicroservices/AnyMap.h"

#include <string>
#include <string_view>
#include <vector>

namespace cppmicroservices::detail {

struct Manifest {
    std::string symbolicName;
    std::string version;  // "0.0.0" when it gives none
    AnyMap headers{AnyMap::UNORDERED_MAP_CASEINSENSITIVE_KEYS};
    std::vector<ComponentDescription> components;
};

/// Reads a bundle's resources, a zip archive. Throws std::runtime_error, which tells what is wrong.
Manifest readManifest(std::string_view archive);

/// Understands a manifest's text. Throws the same.
Manifest parseManifest(const ManifestEntry& entry);

}  // namespace cppmicroservices::detail
