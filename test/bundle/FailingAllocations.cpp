#include "FailingAllocations.hpp"

#include <cstdlib>
#include <new>
#include <utility>

namespace {

thread_local bool failing = false;

}  // namespace

void testsupport::failNextAllocation() {
    failing = true;
}

// The program's operators stand before the standard library's in every library of this process.
void* operator new(std::size_t size) {
    if (std::exchange(failing, false)) throw std::bad_alloc();
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
