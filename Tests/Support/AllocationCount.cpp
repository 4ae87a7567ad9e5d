#include "Tests/Support/AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <exception>
#include <new>
#include <utility>

namespace {

std::atomic<std::int64_t> allocations{0};
thread_local std::int64_t untilFailure = 0;  // the allocation that fails, from 1; 0 or less for none

void* Checked(void* memory) {
    ++allocations;
    const bool isDue = untilFailure > 0 && --untilFailure == 0;
    if (memory != nullptr && !isDue) return memory;
    std::free(memory);
    throw std::bad_alloc();
}

}  // namespace

// The forms that the others of the standard library call, and one that a sanitizer would supply otherwise.
void* operator new(std::size_t size) {
    return Checked(std::malloc(size == 0 ? 1 : size));
}

void* operator new(std::size_t size, std::align_val_t alignment) {
    void* memory = nullptr;
    const bool failed = posix_memalign(&memory, static_cast<std::size_t>(alignment), size) != 0;
    return Checked(failed ? nullptr : memory);
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    try {
        return operator new(size);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::align_val_t) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t, std::align_val_t) noexcept {
    std::free(memory);
}

namespace Varnholt::Test {

std::int64_t AllocationCount() {
    return allocations;
}

std::int64_t FailEachAllocation(const std::function<void()>& call, const std::function<void()>& check) {
    for (std::int64_t failing = 1;; ++failing) {
        std::exception_ptr raised;
        untilFailure = failing;
        try {
            call();
        } catch (...) {
            raised = std::current_exception();
        }
        const bool hasFailed = std::exchange(untilFailure, 0) == 0;
        check();
        if (hasFailed) continue;
        if (raised) std::rethrow_exception(raised);
        return failing - 1;
    }
}

}  // namespace Varnholt::Test
