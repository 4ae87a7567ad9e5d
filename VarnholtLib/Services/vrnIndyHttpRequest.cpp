#include "VarnholtLib/Services/vrnIndyHttpRequest.h"

#include <system_error>
#include <thread>
#include <utility>

#include "Platform/Runtime/Format.h"
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

void RunHttpThread(std::function<void()> work) {
    const auto run = [work = std::move(work)] {
        try {
            work();
        } catch (const Exception& failure) {
            LogFailure(failure.GetMessage());
        } catch (const std::exception& failure) {
            LogFailure(FromUtf8(failure.what()));
        } catch (...) {
            LogFailure(u"unknown exception");
        }
    };
    static const char inside = 0;
    KeepLibraryLoaded(&inside);
    try {
        std::thread(run).detach();
    } catch (const std::system_error&) {
        throw Exception(u"Cannot start a thread");
    }
}

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
        Synchronize([&] {
            if (onComplete) onComplete(isDone, response);
        });
    });
}

}  // namespace Varnholt
