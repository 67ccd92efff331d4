// A library to be preloaded into the worker: counts calls of malloc, calloc and realloc, those of C libraries
// and operator new included. Not linked into it, because counting costs instructions, too.

#include <atomic>
#include <cstddef>
#include <cstdint>

// glibc's own allocator, under the names that stay when malloc is replaced.
extern "C" {
void* __libc_malloc(std::size_t size);                     // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t count, std::size_t size);  // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* block, std::size_t size);       // NOLINT(bugprone-reserved-identifier)
}

namespace {
std::atomic<std::uint64_t> counter{0};
}

extern "C" {

void* malloc(std::size_t size) {
    counter.fetch_add(1, std::memory_order_relaxed);
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size) {
    counter.fetch_add(1, std::memory_order_relaxed);
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size) {
    counter.fetch_add(1, std::memory_order_relaxed);
    return __libc_realloc(block, size);
}

std::uint64_t s3provider_bench_allocations() {
    return counter.load(std::memory_order_relaxed);
}
}
