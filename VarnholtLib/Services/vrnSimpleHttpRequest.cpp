#include "VarnholtLib/Services/vrnSimpleHttpRequest.h"

#include <algorithm>
#include <utility>

#include "Platform/Runtime/Format.h"
#include "VarnholtLib/Services/vrnIndyHttpRequest.h"
#include "VarnholtLib/Services/vrnProxy.h"

namespace Varnholt {
namespace {

void CheckMethod(StringView method) {
    constexpr StringView kMethods[] = {u"GET", u"POST", u"PUT", u"DELETE"};
    if (std::ranges::find(kMethods, method) == std::end(kMethods)) throw EArgumentException(u"Method");
}

bool IsPlain(Char unit) {
    const bool isAlphanumeric =
        (unit >= u'a' && unit <= u'z') || (unit >= u'A' && unit <= u'Z') || (unit >= u'0' && unit <= u'9');
    return isAlphanumeric || unit == u'*' || unit == u'-' || unit == u'_';
}

std::vector<std::uint8_t> BytesIn(const TMemoryStream& stream) {
    const std::span<const std::byte> bytes = stream.GetBytes();
    std::vector<std::uint8_t> result(bytes.size());
    std::ranges::transform(bytes, result.begin(),
                           [](std::byte byte) { return std::to_integer<std::uint8_t>(byte); });
    return result;
}

}  // namespace

void TSimpleHttpRequestEventHandler::HandleWorkBegin(TObject*, TWorkMode, std::int64_t workCountMax) {
    FWorkPos = 0;
    FWorkMax = workCountMax;
    if (OnProgressEvent) OnProgressEvent(FWorkPos, FWorkMax);
}

void TSimpleHttpRequestEventHandler::HandleWork(TObject*, TWorkMode, std::int64_t workCount) {
    FWorkPos = workCount;
    if (OnProgressEvent) OnProgressEvent(FWorkPos, FWorkMax);
}

void TSimpleHttpRequestEventHandler::HandleWorkEnd(TObject*, TWorkMode) {}

String HttpParamEncode(StringView text) {
    String encoded;
    for (const Char unit : text) {
        if (IsPlain(unit)) {
            encoded += unit;
        } else {
            encoded += Format(u"%%%.2x", {unit & 0xFF});
        }
    }
    return encoded;
}

String FormatUrl(StringView url, const std::optional<THttpRequestParams>& params) {
    String result(url);
    if (!params || params->empty()) return result;
    if (!result.empty()) result += u'?';
    for (bool isFirst = true; const auto& [name, value] : *params) {
        if (!std::exchange(isFirst, false)) result += u'&';
        result += name + u'=' + HttpParamEncode(value);
    }
    return result;
}

std::vector<std::uint8_t> HttpRequestSync(StringView method, StringView url,
                                          const std::optional<THttpRequestParams>& params,
                                          const THttpRequestProgressEvent& onProgress) {
    CheckMethod(method);
    const bool hasBody = method == u"POST" || method == u"PUT";
    if (hasBody && !params) throw EArgumentNilException(u"Params");
    TSimpleHttpRequestEventHandler handler;
    TIdHTTP client;
    TProxySettings::ApplyTo(client);
    TMemoryStream input, output;
    if (hasBody && !params->empty()) {
        input.WriteBuffer(BytesOf(ToUtf8(FormatUrl({}, params))));
        input.SetPosition(0);
        client.SetContentType(u"application/x-www-form-urlencoded");
    }
    handler.OnProgressEvent = onProgress;
    client.SetUserAgent(kHttpUserAgent);
    client.SetOnWorkBegin([&](TObject* sender, TWorkMode mode, std::int64_t max) {
        handler.HandleWorkBegin(sender, mode, max);
    });
    client.SetOnWork([&](TObject* sender, TWorkMode mode, std::int64_t count) {
        handler.HandleWork(sender, mode, count);
    });
    client.SetReadTimeout(kHttpReadTimeout);
    if (IsHttpsUrl(url)) client.SetIOHandler(NewHttpTlsHandler());
    const String target = hasBody ? String(url) : FormatUrl(url, params);
    if (method == u"GET") {
        client.Get(target, output);
    } else if (method == u"POST") {
        client.Post(target, input, output);
    } else if (method == u"PUT") {
        client.Put(target, input, output);
    } else {
        static_cast<void>(client.Delete(target));
    }
    return BytesIn(output);
}

void HttpRequest(StringView method, StringView url, const std::optional<THttpRequestParams>& params,
                 const THttpRequestSuccessEvent& onSuccess, const THttpRequestErrorEvent& onError,
                 const THttpRequestProgressEvent& onProgress) {
    CheckMethod(method);
    RunHttpThread([=, method = String(method), url = String(url)] {
        const auto report = [&](const String& message) {
            if (onError) SynchronizeHttpThread([&] { onError(message); });
        };
        try {
            const std::vector<std::uint8_t> data = HttpRequestSync(method, url, params, onProgress);
            if (onSuccess) SynchronizeHttpThread([&] { onSuccess(data); });
        } catch (const Exception& failure) {
            report(failure.GetMessage());
        } catch (const std::exception& failure) {
            report(FromUtf8(failure.what()));
        } catch (...) {
            report(u"Unknown exception");
        }
    });
}

}  // namespace Varnholt
