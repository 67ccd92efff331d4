#include "bundle/Manifest.hpp"

#include "bundle/ManifestNode.hpp"
#include "cppmicroservices/Constants.h"

namespace cppmicroservices::detail {

namespace {

/// The name is part of a function's.
bool isIdentifier(std::string_view name) {
    constexpr std::string_view allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789_";
    return name.find_first_not_of(allowed) == std::string_view::npos;
}

}  // namespace

Manifest readManifest(std::string_view archive) {
    return parseManifest(readManifestEntry(archive));
}

Manifest parseManifest(const ManifestEntry& entry) {
    const nlohmann::json json = parseManifestJson(entry.text);
    const ManifestNode root(json);

    Manifest manifest;
    const ManifestNode name = root.at(Constants::BUNDLE_SYMBOLICNAME);
    manifest.symbolicName = name.text();
    if (!isIdentifier(manifest.symbolicName)) name.fail("it may have letters, digits and '_'");
    if (manifest.symbolicName != entry.folder)
        name.fail("it isn't the folder's name, '" + entry.folder + "'");
    const auto version = root.find(Constants::BUNDLE_VERSION);
    manifest.version = version ? version->text() : "0.0.0";
    const auto activator = root.find(Constants::BUNDLE_ACTIVATOR);
    if (activator && activator->truth()) activator->fail("only false is supported");
    manifest.headers = headersOf(json);
    manifest.components = componentsOf(json);
    return manifest;
}

}  // namespace cppmicroservices::detail
