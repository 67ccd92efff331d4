#include "cloudprovider/Paths.hpp"

#include "fl/i18n.hpp"
#include "log/Escape.hpp"

#include <stdexcept>

namespace storage::cloudprovider {

std::string keyOf(const std::u16string& path) {
    try {
        return fl::i18n::to_string(path.substr(!path.empty() && path.front() == u'/' ? 1 : 0));
    } catch (const fl::i18n::conversion_error& error) {
        throw std::invalid_argument(std::string("a path with ") + error.what());
    }
}

std::string fileKeyOf(const std::u16string& path) {
    std::string key = keyOf(path);
    if (key.empty() || key.back() == '/')
        throw std::invalid_argument("the path of a folder, where a file's is needed");
    return key;
}

std::string prefixOf(const std::u16string& folder) {
    std::string prefix = keyOf(folder);
    if (!prefix.empty() && prefix.back() != '/') prefix += '/';
    return prefix;
}

std::u16string nameOf(const std::string& key) {
    const std::string path = !key.empty() && key.back() == '/' ? key.substr(0, key.size() - 1) : key;
    try {
        return fl::i18n::to_ustring(path.substr(path.rfind('/') + 1));
    } catch (const fl::i18n::conversion_error&) {
        throw std::runtime_error("no path leads to the key " + foundation::log::escaped(key) +
                                 ", which isn't UTF-8");
    }
}

}  // namespace storage::cloudprovider
