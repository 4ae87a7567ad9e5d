#include "Tests/Support/AllocationCount.h"

#include <atomic>
#include <cstdlib>
#include <exception>
#include <new>
#include <utility>

namespace {

std::atomic<std::int64_t> allocations{0};
thread_local std::int64_t untilFailure = 0;  // the allocation that fails, from 1; 0 or less for none

}  // namespace

// The plain forms, which the others of the standard library call.
void* operator new(std::size_t size) {
    ++allocations;
    if (untilFailure > 0 && --untilFailure == 0) throw std::bad_alloc();
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
