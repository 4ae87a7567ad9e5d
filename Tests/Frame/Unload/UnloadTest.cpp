// A program of its own that does not link the library: closing the library must unload it here.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<int> liveAllocations{0};

}  // namespace

// Not inlined, so that g++ does not take malloc and delete for a mismatch.
[[gnu::noinline]] void* operator new(std::size_t size) {
    ++liveAllocations;
    if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    if (memory != nullptr) --liveAllocations;
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    operator delete(memory);
}

namespace {

// What the modules allocate at load is freed by their finalise steps and by nothing else.
TEST(Unload, ClosingTheLibraryFinalisesAndUnmapsIt) {
    for (int round = 0; round < 2; ++round) {
        const int before = liveAllocations;
        void* const library = dlopen(VARNHOLT_LIBRARY, RTLD_NOW | RTLD_LOCAL);
        ASSERT_NE(library, nullptr) << dlerror();
        EXPECT_GT(liveAllocations, before) << "no module works at load";
        EXPECT_EQ(dlclose(library), 0) << dlerror();
        EXPECT_EQ(liveAllocations, before) << round;
        for (const char* file : {VARNHOLT_LIBRARY, VARNHOLT_BASE_LIBRARY})
            EXPECT_EQ(dlopen(file, RTLD_NOW | RTLD_NOLOAD), nullptr) << file << " is still loaded";
    }
}

}  // namespace
