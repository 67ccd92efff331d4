#pragma once

#include <map>

namespace Aws {

template <typename Key, typename Value>
using Map = std::map<Key, Value>;

template <typename Key, typename Value>
using MultiMap = std::multimap<Key, Value>;

}  // namespace Aws
