#pragma once

#include <memory>

namespace Aws {

template <typename T>
using Allocator = std::allocator<T>;

}  // namespace Aws
