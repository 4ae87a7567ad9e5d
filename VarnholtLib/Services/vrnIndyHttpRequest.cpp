#include "VarnholtLib/Services/vrnIndyHttpRequest.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <list>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Immortal.h"
#include "Platform/Runtime/MainThread.h"
#include "Platform/Runtime/Text.h"
#include "Platform/System/Platform.h"
#include "VarnholtLib/Services/vrnLog.h"
#include "VarnholtLib/Services/vrnProxy.h"

namespace Varnholt {
namespace {

void LogFailure(StringView message) noexcept {
    try {
        if (HasDefaultLog() && DefaultLog()->GetEnabled())
            DefaultLog()->Error(u"A callback of an HTTP request failed: %s", {message});
    } catch (...) {
        // There is nobody else to tell.
    }
}

}  // namespace

bool IsHttpsUrl(StringView url) noexcept {
    return StartsText(u"https://", url);
}

std::unique_ptr<TIdSSLIOHandlerSocketOpenSSL> NewHttpTlsHandler() {
    auto handler = std::make_unique<TIdSSLIOHandlerSocketOpenSSL>();
    handler->SetSSLVersions({sslvTLSv1, sslvTLSv1_1, sslvTLSv1_2});
    return handler;
}

// --- Threads in the background ---

namespace {

enum class TState { Running, Waiting, Done };

struct TBackgroundThread {
    std::thread Thread;
    std::atomic<TState> State = TState::Running;
};

struct TBackground {
    std::mutex Mutex;
    std::condition_variable Changed;
    std::list<TBackgroundThread> Threads;
};

TBackground& Background() {
    static TImmortal<TBackground> background;
    return *background;
}

thread_local TBackgroundThread* thisThread = nullptr;

void SetState(TState state) {
    TBackground& background = Background();
    {
        const std::lock_guard lock(background.Mutex);
        thisThread->State = state;
    }
    background.Changed.notify_all();
}

/// Waits, at the end of the program, for all threads that use what is destroyed after this: until they have ended, or
/// wait for a main thread that serves no more steps.
void EndThreads() {
    EndHttpExchanges();
    TBackground& background = Background();
    std::unique_lock lock(background.Mutex);
    const auto isIdle = [](const TBackgroundThread& thread) {
        return &thread == thisThread || thread.State != TState::Running;
    };
    background.Changed.wait_for(lock, std::chrono::seconds(10),
                                [&] { return std::ranges::all_of(background.Threads, isIdle); });
    for (TBackgroundThread& thread : background.Threads)
        if (thread.State == TState::Done && thread.Thread.joinable()) thread.Thread.join();
}

void PrepareThreads() {
    static const bool isPrepared = [] {
        const TIdHTTP client;  // initialises what must be destroyed after EndThreads
        static const char inside = 0;
        KeepLibraryLoaded(&inside);
        return std::atexit(EndThreads) == 0;
    }();
    if (!isPrepared) throw Exception(u"Cannot start a thread");
}

void RunAndReport(const std::function<void()>& work) noexcept {
    try {
        work();
    } catch (const Exception& failure) {
        LogFailure(failure.GetMessage());
    } catch (...) {
        LogFailure(u"an exception of another family");
    }
}

}  // namespace

void RunHttpThread(std::function<void()> work) {
    PrepareThreads();
    TBackground& background = Background();
    const std::lock_guard lock(background.Mutex);
    background.Threads.remove_if([](TBackgroundThread& thread) {
        if (thread.State != TState::Done) return false;
        thread.Thread.join();
        return true;
    });
    TBackgroundThread& thread = background.Threads.emplace_back();
    try {
        thread.Thread = std::thread([&thread, work = std::move(work)]() mutable {
            thisThread = &thread;
            RunAndReport(work);
            work = nullptr;  // with what it holds, as long as this thread is waited for
            SetState(TState::Done);
        });
    } catch (const std::system_error&) {
        background.Threads.pop_back();
        throw Exception(u"Cannot start a thread");
    }
}

void SynchronizeHttpThread(const std::function<void()>& step) {
    SetState(TState::Waiting);
    try {
        Synchronize(step);
    } catch (...) {
        SetState(TState::Running);
        throw;
    }
    SetState(TState::Running);
}

// --- The request ---

TIndyHttpRequest::TIndyHttpRequest() {
    FIdHTTP.SetUserAgent(kHttpUserAgent);
    TProxySettings::ApplyTo(FIdHTTP);
}

TIndyHttpRequest::~TIndyHttpRequest() = default;

void TIndyHttpRequest::Add(StringView name, StringView value) {
    FParams.push_back(Format(u"%s=%s", {name, value}));
}

void TIndyHttpRequest::SetupSSL() {
    if (!IsHttpsUrl(FUrl) || FIdHTTP.GetIOHandler() != nullptr) return;
    FIdHTTP.SetReadTimeout(kHttpReadTimeout);
    FIdHTTP.SetIOHandler(NewHttpTlsHandler());
}

void TIndyHttpRequest::Send() {
    SetupSSL();
    FResponseString = FMethod == HttpRequestMethodPost ? FIdHTTP.Post(FUrl, FParams) : FIdHTTP.Get(FUrl);
}

void TIndyHttpRequest::SendAsync(THttpRequestAsyncCompleteProcedure onComplete) {
    const std::shared_ptr<IHttpRequest> request = shared_from_this();
    RunHttpThread([request, onComplete = std::move(onComplete)] {
        bool isDone = false;
        try {
            request->Send();
            isDone = true;
        } catch (...) {
            // The callback is told by the flag.
        }
        const std::shared_ptr<IHttpResponse> response = request->GetResponse();
        SynchronizeHttpThread([&] {
            if (onComplete) onComplete(isDone, response);
        });
    });
}

}  // namespace Varnholt
