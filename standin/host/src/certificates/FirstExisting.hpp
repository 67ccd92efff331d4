#pragma once

#include <algorithm>
#include <string>
#include <string_view>

namespace foundation::certificates {

/// The first of the paths for which `exists` is true; empty if there is none.
template <typename Paths, typename Exists>
std::string firstExisting(const Paths& paths, Exists exists) {
    const auto found = std::find_if(std::begin(paths), std::end(paths), exists);
    return found == std::end(paths) ? std::string() : std::string(*found);
}

}  // namespace foundation::certificates
