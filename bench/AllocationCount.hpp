#pragma once

#include <cstdint>

namespace bench {

/// Calls of malloc, calloc and realloc in this process so far, C libraries' and operator new's included.
std::uint64_t allocations();

}  // namespace bench
