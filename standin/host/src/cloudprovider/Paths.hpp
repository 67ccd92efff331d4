#pragma once

#include <string>

namespace storage::cloudprovider {

/// The key that a provider's path stands for: UTF-8, without the slash of the root; empty for the root
/// itself. Throws std::invalid_argument for ill-formed UTF-16.
std::string keyOf(const std::u16string& path);

/// The same for a path that must be able to name a file: neither the root nor one that ends with "/". Throws
/// std::invalid_argument.
std::string fileKeyOf(const std::u16string& path);

/// What the keys below a folder begin with; empty for the root.
std::string prefixOf(const std::u16string& folder);

/// The last segment of a key or a common prefix, without the "/" at its end. Throws std::runtime_error, which
/// quotes the key in escaped form, when that segment isn't UTF-8.
std::u16string nameOf(const std::string& key);

}  // namespace storage::cloudprovider
