#include "Platform/Http/IdHTTP.h"

#include <algorithm>
#include <utility>

#include "Platform/Http/HttpExchangePrivate.h"
#include "Platform/Runtime/Encoding.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt {
namespace {

constexpr std::int32_t kConnectTimeout = 30'000;
constexpr StringView kForm = u"application/x-www-form-urlencoded";

bool HasScheme(StringView url, StringView scheme) {
    return SameText(url.substr(0, scheme.size()), scheme);
}

/// A text as a header can hold it.
std::string HeaderText(StringView text) {
    std::string bytes = ToUtf8(text);
    std::erase_if(bytes, [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; });
    return bytes;
}

std::string FormEncoded(StringView text) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string encoded;
    for (const char c : ToUtf8(text)) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isPlain = (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                             (byte >= 'a' && byte <= 'z') ||
                             std::string_view("*-._").find(c) != std::string_view::npos;
        if (isPlain) {
            encoded += c;
        } else {
            encoded += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
        }
    }
    return encoded;
}

std::string FormBody(std::span<const String> form) {
    std::string body;
    for (const String& entry : form) {
        const std::size_t separator = std::min(entry.find(u'='), entry.size());
        if (&entry != &form.front()) body += '&';
        body += FormEncoded(entry.substr(0, separator));
        if (separator < entry.size()) body += '=' + FormEncoded(entry.substr(separator + 1));
    }
    return body;
}

/// The charset parameter of a content type; empty if there is none.
StringView CharsetOf(StringView contentType) {
    while (!contentType.empty()) {
        contentType.remove_prefix(std::min(contentType.find(u';'), contentType.size() - 1) + 1);
        const StringView parameter = TrimView(contentType.substr(0, contentType.find(u';')));
        if (!HasScheme(parameter, u"charset=")) continue;
        const StringView value = TrimView(parameter.substr(8));
        return value.size() > 1 && value.starts_with(u'"') && value.ends_with(u'"')
                   ? value.substr(1, value.size() - 2)
                   : value;
    }
    return {};
}

const TEncoding* EncodingNamed(StringView name) {
    try {
        return name.empty() ? nullptr : &TEncoding::ForName(name);
    } catch (const EEncodingError&) {
        return nullptr;
    }
}

}  // namespace

String AddressWithoutUser(StringView url) {
    const std::size_t scheme = std::min(url.find(u':'), url.size());
    const bool hasScheme =
        SameText(url.substr(0, scheme), u"http") || SameText(url.substr(0, scheme), u"https");
    const std::size_t start = hasScheme ? std::min(url.find_first_not_of(u":/\\", scheme), url.size()) : 0;
    const StringView authority = url.substr(start, url.find_first_of(u"/\\?#", start) - start);
    std::size_t user = authority.rfind(u'@');
    if (user == StringView::npos) {
        // The rest may hold a password with characters that end the authority.
        user = url.substr(start).rfind(u'@');
        if (user == StringView::npos || url.substr(start, user).find(u':') == StringView::npos)
            return String(url);
    }
    return String(url.substr(0, start)) + String(url.substr(start + user + 1));
}

String TextOfBody(std::string_view bytes, StringView contentType) {
    if (const TEncoding* const named = EncodingNamed(CharsetOf(contentType))) return named->GetString(bytes);
    if (const TEncoding* const marked = TEncoding::DetectByPreamble(bytes))
        return marked->GetString(bytes.substr(marked->GetPreamble().size()));
    String text = FromUtf8(bytes);
    if (ToUtf8(text) == bytes) return text;
    text.assign(bytes.size(), u'\0');
    std::ranges::transform(bytes, text.begin(), [](char c) { return static_cast<unsigned char>(c); });
    return text;
}

EIdHTTPProtocolException::EIdHTTPProtocolException(std::int32_t errorCode, StringView statusLine,
                                                   StringView body)
    : EIdException(statusLine), FErrorCode(errorCode), FBody(std::make_shared<const String>(body)) {}

EIdHTTPProtocolException::~EIdHTTPProtocolException() = default;

bool IsHostName(StringView text) noexcept {
    return !text.empty() && std::ranges::all_of(text, [](Char unit) {
        return unit > u' ' && unit != u'\x7F' && StringView(u"/@?#\\\"<>").find(unit) == StringView::npos;
    });
}

TIdIOHandler::TIdIOHandler() = default;

TIdIOHandler::~TIdIOHandler() = default;

TIdSSLIOHandlerSocketOpenSSL::TIdSSLIOHandlerSocketOpenSSL() = default;

TIdSSLIOHandlerSocketOpenSSL::~TIdSSLIOHandlerSocketOpenSSL() = default;

struct TIdHTTP::TImpl {
    TCurlHandles Handles;
    String UserAgent;
    String ContentType;
    std::int32_t ReadTimeout = 300'000;
    std::int32_t ConnectTimeout = kConnectTimeout;
    std::int64_t MaxResponseSize = std::int64_t{1} << 30;
    std::unique_ptr<TIdIOHandler> IOHandler;
    TIdProxyConnectionInfo Proxy;
    TWorkEvent OnWorkBegin, OnWork;
    std::unique_ptr<TIdHTTPResponse> Response;

    void Run(TIdHTTP& sender, const char* method, StringView url, TStream* source, TStream& target,
             StringView contentType) {
        Response.reset();
        const auto* const tls = dynamic_cast<TIdSSLIOHandlerSocketOpenSSL*>(IOHandler.get());
        const bool isSecure = HasScheme(url, u"https://");
        const auto fail = [&](StringView text) {
            throw EIdException(Format(text, {AddressWithoutUser(url)}));
        };
        if (!isSecure && !HasScheme(url, u"http://"))
            fail(url.find(u"://") == StringView::npos ? u"Address \"%s\" is not valid"
                                                      : u"Address \"%s\" is neither http nor https");
        if (url.find(u'\0') != StringView::npos) fail(u"Address \"%s\" is not valid");
        if (isSecure && tls == nullptr)
            fail(u"Address \"%s\" requires TLS, and the client has no I/O handler for it");
        const THttpRequestData request{.Url = ToUtf8(url),
                                       .Method = method,
                                       .Source = source,
                                       .Target = &target,
                                       .ContentType = HeaderText(contentType),
                                       .UserAgent = HeaderText(UserAgent),
                                       .ReadTimeout = ReadTimeout,
                                       .ConnectTimeout = ConnectTimeout,
                                       .MaxResponseSize = MaxResponseSize,
                                       .Tls = tls,
                                       .Proxy = &Proxy,
                                       .Sender = &sender,
                                       .OnWorkBegin = OnWorkBegin,
                                       .OnWork = OnWork};
        THttpExchange(Handles, request).Run(Response);
    }

    /// The same, with the body as text.
    String RunForText(TIdHTTP& sender, const char* method, StringView url, TStream* source,
                      StringView contentType) {
        TMemoryStream target;
        Run(sender, method, url, source, target, contentType);
        const std::span<const std::byte> bytes = target.GetBytes();
        return TextOfBody({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, Response->ContentType);
    }
};

TIdHTTP::TIdHTTP() : FImpl(std::make_unique<TImpl>()) {}

TIdHTTP::~TIdHTTP() = default;

// --- Settings ---

const String& TIdHTTP::GetUserAgent() const noexcept {
    return FImpl->UserAgent;
}

void TIdHTTP::SetUserAgent(StringView userAgent) {
    FImpl->UserAgent = userAgent;
}

const String& TIdHTTP::GetContentType() const noexcept {
    return FImpl->ContentType;
}

void TIdHTTP::SetContentType(StringView contentType) {
    FImpl->ContentType = contentType;
}

std::int32_t TIdHTTP::GetReadTimeout() const noexcept {
    return FImpl->ReadTimeout;
}

void TIdHTTP::SetReadTimeout(std::int32_t milliseconds) noexcept {
    FImpl->ReadTimeout = milliseconds;
}

void TIdHTTP::SetConnectTimeout(std::int32_t milliseconds) noexcept {
    FImpl->ConnectTimeout = milliseconds > 0 ? milliseconds : kConnectTimeout;
}

void TIdHTTP::SetMaxResponseSize(std::int64_t bytes) noexcept {
    FImpl->MaxResponseSize = bytes;
}

TIdIOHandler* TIdHTTP::GetIOHandler() const noexcept {
    return FImpl->IOHandler.get();
}

void TIdHTTP::SetIOHandler(std::unique_ptr<TIdIOHandler> handler) noexcept {
    FImpl->IOHandler = std::move(handler);
}

TIdProxyConnectionInfo& TIdHTTP::GetProxyParams() noexcept {
    return FImpl->Proxy;
}

void TIdHTTP::SetOnWorkBegin(TWorkEvent onWorkBegin) {
    FImpl->OnWorkBegin = std::move(onWorkBegin);
}

void TIdHTTP::SetOnWork(TWorkEvent onWork) {
    FImpl->OnWork = std::move(onWork);
}

// --- Exchanges ---

String TIdHTTP::Get(StringView url) {
    return FImpl->RunForText(*this, "GET", url, nullptr, {});
}

void TIdHTTP::Get(StringView url, TStream& response) {
    FImpl->Run(*this, "GET", url, nullptr, response, {});
}

String TIdHTTP::Post(StringView url, std::span<const String> form) {
    TMemoryStream source(BytesOf(FormBody(form)));
    return FImpl->RunForText(*this, "POST", url, &source,
                             FImpl->ContentType.empty() ? kForm : StringView(FImpl->ContentType));
}

void TIdHTTP::Post(StringView url, TStream& source, TStream& response) {
    FImpl->Run(*this, "POST", url, &source, response, FImpl->ContentType);
}

void TIdHTTP::Put(StringView url, TStream& source, TStream& response) {
    FImpl->Run(*this, "PUT", url, &source, response, FImpl->ContentType);
}

String TIdHTTP::Delete(StringView url) {
    return FImpl->RunForText(*this, "DELETE", url, nullptr, {});
}

void TIdHTTP::Delete(StringView url, TStream& response) {
    FImpl->Run(*this, "DELETE", url, nullptr, response, {});
}

const TIdHTTPResponse* TIdHTTP::GetResponse() const noexcept {
    return FImpl->Response.get();
}

std::int32_t TIdHTTP::GetResponseCode() const noexcept {
    return FImpl->Response ? FImpl->Response->ResponseCode : 0;
}

String TIdHTTP::GetResponseText() const {
    return FImpl->Response ? FImpl->Response->ResponseText : String();
}

}  // namespace Varnholt
