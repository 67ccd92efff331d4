#include "store/Memory.hpp"

#include <unistd.h>

#include <limits>
#include <string>

#include "operations/S3Error.hpp"
#include "s3server/Options.hpp"

namespace s3server {
namespace {

S3Error insufficient(std::uint64_t limit) {
    return S3Error("InsufficientStorage").with("MaxStorage", std::to_string(limit));
}

}  // namespace

std::uint64_t defaultMemoryLimit() {
    const auto pages = ::sysconf(_SC_PHYS_PAGES);
    const auto pageSize = ::sysconf(_SC_PAGESIZE);
    if (pages <= 0 || pageSize <= 0) return std::numeric_limits<std::uint64_t>::max();
    return static_cast<std::uint64_t>(pages) / 4 * 3 * static_cast<std::uint64_t>(pageSize);
}

void Memory::require(std::uint64_t bytes) const {
    const std::uint64_t used = used_;
    if (used > limit_ || bytes > limit_ - used) throw insufficient(limit_);
}

void Memory::take(std::uint64_t bytes) {
    std::uint64_t used = used_;
    do {
        if (used > limit_ || bytes > limit_ - used) throw insufficient(limit_);
    } while (!used_.compare_exchange_weak(used, used + bytes));
}

}  // namespace s3server
