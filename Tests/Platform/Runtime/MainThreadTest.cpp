#include "Platform/Runtime/MainThread.h"

#include <gmock/gmock.h>

#include <atomic>
#include <cstdlib>
#include <thread>
#include <vector>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {

TEST(MainThread, StepsOfManyThreadsRunOnItAndAnswer) {
    const std::thread::id here = std::this_thread::get_id();
    std::int64_t sum = 0;  // written on the main thread only
    std::atomic<int> failures = 0, ended = 0, woken = 0;
    SetWakeMainThread([&] { ++woken; });
    std::vector<std::thread> threads;
    for (int t = 0; t < 16; ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i < 200; ++i) {
                try {
                    Synchronize([&] {
                        EXPECT_EQ(std::this_thread::get_id(), here);
                        sum += i;
                        if (i % 10 == t % 10) throw EConvertError(u"mine");
                    });
                } catch (const EConvertError&) {
                    ++failures;
                }
            }
            Queue([&] { ++ended; });
        });
    while (ended < 16) CheckSynchronize(-1);
    for (std::thread& thread : threads) thread.join();
    SetWakeMainThread({});
    EXPECT_EQ(sum, 16 * 19900);
    EXPECT_EQ(failures, 16 * 20);
    EXPECT_EQ(woken, 16 * 201);
    EXPECT_FALSE(CheckSynchronize());
}

TEST(MainThread, StepsMayHandOverAndServeSteps) {
    std::string order;
    Queue([&] {
        order += 'a';
        Queue([&] { order += 'c'; });
        Synchronize([&] { order += 'b'; });  // at once
        EXPECT_TRUE(HandleStep());           // d, queued before c
    });
    Queue([&] { order += 'd'; });
    Queue([] { throw EConvertError(u"queued"); });
    EXPECT_EQ(Raised<EConvertError>([] { CheckSynchronize(); }), u"queued");
    EXPECT_EQ(order, "abd");
    EXPECT_TRUE(CheckSynchronize(1000));
    EXPECT_EQ(order, "abdc");
    EXPECT_FALSE(CheckSynchronize(1));
    int again = 0;
    Queue([&] { ++again, Queue([&] { ++again; }); });  // the second one is left for the next call
    EXPECT_TRUE(CheckSynchronize() && again == 1 && CheckSynchronize() && again == 2);
    std::thread([] {
        EXPECT_FALSE(IsMainThread());
        EXPECT_EQ(Raised<EInvalidOperation>([] { CheckSynchronize(); }),
                  u"Steps run on the main thread only");
    }).join();
}

// In a process of its own, because the service ends for good.
TEST(MainThreadDeathTest, TheEndReleasesThreadsThatWait) {
    const auto end = [] {
        SetMainThread();
        std::atomic<int> refused = 0;
        std::vector<std::thread> threads;
        for (int t = 0; t < 8; ++t)
            threads.emplace_back([&] {
                const StringView text = u"The main thread serves no more steps";
                refused += Raised<EInvalidOperation>([] { Synchronize([] { std::abort(); }); }) == text;
            });
        EndSynchronize();
        for (std::thread& thread : threads) thread.join();
        Queue([] { std::abort(); });
        std::exit(refused == 8 && !CheckSynchronize(-1) ? 7 : 1);
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(end(), testing::ExitedWithCode(7), "");
    const auto quit = [] {  // a thread waits when the program ends
        std::atomic<bool> isWaiting = false;
        SetWakeMainThread([&] { isWaiting = true; });
        std::thread([] { Synchronize([] {}); }).detach();
        while (!isWaiting) std::this_thread::yield();
        std::exit(8);
    };
    EXPECT_EXIT(quit(), testing::ExitedWithCode(8), "");
}

}  // namespace Varnholt::Test
