#include "Platform/Runtime/MainThread.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <thread>
#include <utility>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Immortal.h"

namespace Varnholt {
namespace {

/// What a thread waits for.
struct TAnswer {
    bool IsThere = false;
    std::exception_ptr Error;
};

struct TStep {
    std::function<void()> Run;
    TAnswer* Answer = nullptr;  // null if no thread waits
};

struct TState {
    std::mutex Mutex;
    std::condition_variable Filled;    // for the main thread
    std::condition_variable Answered;  // for the threads that wait
    std::deque<TStep> Steps;
    std::shared_ptr<const std::function<void()>> Wake;
    bool IsEnded = false;
};

TState& State() {
    static TImmortal<TState> state;
    return *state;
}

std::atomic<std::thread::id> mainThread(std::this_thread::get_id());  // that loads the library

/// False after the end, and then the step is not taken.
bool HandOver(TStep step) {
    TState& state = State();
    std::shared_ptr<const std::function<void()>> wake;
    {
        const std::lock_guard lock(state.Mutex);
        if (state.IsEnded) return false;
        state.Steps.push_back(std::move(step));
        wake = state.Wake;
    }
    state.Filled.notify_one();
    try {
        if (wake && *wake) (*wake)();
    } catch (...) {
        // The step is handed over, and must not be taken back.
    }
    return true;
}

EInvalidOperation Ended() {
    return EInvalidOperation(u"The main thread serves no more steps");
}

/// Runs a step of a thread that waits, and answers it.
void RunAndAnswer(const TStep& step) {
    std::exception_ptr error;
    try {
        step.Run();
    } catch (...) {
        error = std::current_exception();
    }
    TState& state = State();
    {
        // The answer belongs to the other thread, which may go on as soon as the lock is released.
        const std::lock_guard lock(state.Mutex);
        step.Answer->Error = std::move(error);
        step.Answer->IsThere = true;
    }
    state.Answered.notify_all();
}

/// Takes the next step. False if there is none.
bool TakeStep(TStep& step) {
    TState& state = State();
    const std::lock_guard lock(state.Mutex);
    if (state.Steps.empty()) return false;
    step = std::move(state.Steps.front());
    state.Steps.pop_front();
    return true;
}

/// The number of steps, after waiting for the first.
std::size_t WaitForSteps(std::int32_t timeout) {
    TState& state = State();
    std::unique_lock lock(state.Mutex);
    const auto isReady = [&] { return !state.Steps.empty() || state.IsEnded; };
    if (timeout < 0) {
        state.Filled.wait(lock, isReady);
    } else if (timeout > 0) {
        state.Filled.wait_for(lock, std::chrono::milliseconds(timeout), isReady);
    }
    return state.Steps.size();
}

void CheckThread() {
    if (!IsMainThread()) throw EInvalidOperation(u"Steps run on the main thread only");
}

}  // namespace

void Synchronize(const std::function<void()>& step) {
    if (IsMainThread()) {
        if (step) step();
        return;
    }
    TAnswer answer;
    if (!HandOver({[&step] {
                       if (step) step();
                   },
                   &answer}))
        throw Ended();
    TState& state = State();
    std::unique_lock lock(state.Mutex);
    state.Answered.wait(lock, [&] { return answer.IsThere; });
    lock.unlock();
    if (answer.Error) std::rethrow_exception(std::exchange(answer.Error, nullptr));
}

void Queue(std::function<void()> step) {
    if (step) HandOver({std::move(step), nullptr});
}

bool HandleStep(std::int32_t timeout) {
    CheckThread();
    TStep step;
    if (WaitForSteps(timeout) == 0 || !TakeStep(step)) return false;
    if (step.Answer == nullptr) {
        step.Run();
    } else {
        RunAndAnswer(step);
    }
    return true;
}

bool CheckSynchronize(std::int32_t timeout) {
    CheckThread();
    std::size_t rest = WaitForSteps(timeout);
    bool hasRun = false;
    for (; rest > 0 && HandleStep(); --rest) hasRun = true;
    return hasRun;
}

void EndSynchronize() {
    TState& state = State();
    std::deque<TStep> dropped;  // destroyed without the lock
    {
        const std::lock_guard lock(state.Mutex);
        state.IsEnded = true;
        dropped.swap(state.Steps);
        for (const TStep& step : dropped) {
            if (step.Answer == nullptr) continue;
            step.Answer->Error = std::make_exception_ptr(Ended());
            step.Answer->IsThere = true;
        }
    }
    state.Filled.notify_all();
    state.Answered.notify_all();
}

void SetWakeMainThread(std::function<void()> wake) {
    auto shared = std::make_shared<const std::function<void()>>(std::move(wake));
    TState& state = State();
    const std::lock_guard lock(state.Mutex);
    state.Wake.swap(shared);
}

void SetMainThread() noexcept {
    mainThread = std::this_thread::get_id();
}

bool IsMainThread() noexcept {
    return mainThread == std::this_thread::get_id();
}

}  // namespace Varnholt
