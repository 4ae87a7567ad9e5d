#include "Tests/Support/AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::int64_t> allocations{0};

}  // namespace

// The plain forms, which the others of the standard library call.
void* operator new(std::size_t size) {
    ++allocations;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

namespace Varnholt::Test {

std::int64_t AllocationCount() {
    return allocations;
}

}  // namespace Varnholt::Test
