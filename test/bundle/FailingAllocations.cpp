#include "FailingAllocations.hpp"

#include <dlfcn.h>

#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

namespace {

thread_local int left = 0;                // until one fails; 0: none does
thread_local const char* from = nullptr;  // null: any library

bool isCounted(const void* caller) {
    if (from == nullptr) return true;
    Dl_info found;
    return dladdr(caller, &found) != 0 && std::strcmp(found.dli_fname, from) == 0;
}

bool fails(const void* caller) {
    return left > 0 && isCounted(caller) && --left == 0;
}

}  // namespace

void testsupport::failNextAllocation() {
    failAllocation(1, nullptr);
}

void testsupport::failAllocation(int nth, const char* library) {
    left = nth;
    from = library;
}

bool testsupport::stopFailing() {
    return std::exchange(left, 0) > 0;
}

// The program's operators stand before the standard library's in every library of this process.
void* operator new(std::size_t size) {
    if (fails(__builtin_return_address(0))) throw std::bad_alloc();
    if (void* const memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    return std::malloc(size == 0 ? 1 : size);
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
