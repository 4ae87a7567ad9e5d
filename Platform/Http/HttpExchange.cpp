#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <mutex>

#include "Platform/Http/HttpExchangePrivate.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Immortal.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt {
namespace {

constexpr long kMaxRedirects = 15;
constexpr std::size_t kMaxHeaderSize = 262'144;
constexpr std::size_t kMaxErrorBody = 1'048'576;  // what an error message keeps of a body

template <typename TValue>
void Set(CURL* easy, CURLoption option, TValue value) {
    if (curl_easy_setopt(easy, option, value) != CURLE_OK) throw EIdException(u"Cannot start an HTTP client");
}

std::int64_t NumberOf(CURL* easy, CURLINFO info) {
    curl_off_t number = 0;
    curl_easy_getinfo(easy, info, &number);
    return number;
}

EIdException Ending() {
    return EIdException(u"The program is ending");
}

long StatusOf(CURL* easy, CURLINFO info = CURLINFO_RESPONSE_CODE) {
    long status = 0;
    curl_easy_getinfo(easy, info, &status);
    return status;
}

}  // namespace

// --- The use of libcurl ---

namespace {

struct TUses {
    std::mutex Mutex;
    std::condition_variable Ended;
    std::vector<CURLM*> Running;  // what drives the exchanges in progress
    std::vector<void*> Left;      // the handles of clients that were destroyed while the process ended
    int Count = 0;
    CURLcode Code = CURLE_OK;  // of the initialisation
    std::atomic<bool> IsEnding = false;
};

TUses& Uses() {
    static TImmortal<TUses> uses;
    return *uses;
}

thread_local int usesOfThread = 0;

/// Keeps a handle reachable, so that a leak checker can tell it from one that was lost.
void LeaveToTheSystem(void* handle) noexcept {
    TUses& uses = Uses();
    const std::lock_guard lock(uses.Mutex);
    try {
        uses.Left.push_back(handle);
    } catch (const std::bad_alloc&) {  // the process ends; the list serves leak checkers alone
    }
}

void Initialise() {
    static std::once_flag once;
    std::call_once(once, [] {
        Uses().Code = curl_global_init(CURL_GLOBAL_DEFAULT);
        // What is registered later runs earlier: before the TLS library ends.
        if (std::atexit(EndHttpExchanges) != 0) Uses().Code = CURLE_OUT_OF_MEMORY;
    });
}

}  // namespace

void EndHttpExchanges() noexcept {
    TUses& uses = Uses();
    std::unique_lock lock(uses.Mutex);
    uses.IsEnding = true;
    for (CURLM* const multi : uses.Running) curl_multi_wakeup(multi);
    uses.Ended.wait_for(lock, std::chrono::seconds(10), [&] { return uses.Count == usesOfThread; });
}

TCurlUse::TCurlUse(CURLM* multi) noexcept : FMulti(multi) {
    Initialise();
    TUses& uses = Uses();
    const std::lock_guard lock(uses.Mutex);
    if (uses.IsEnding || uses.Code != CURLE_OK) return;
    if (FMulti != nullptr) uses.Running.push_back(FMulti);
    ++uses.Count;
    ++usesOfThread;
    FIsAllowed = true;
}

TCurlUse::~TCurlUse() {
    if (!FIsAllowed) return;
    TUses& uses = Uses();
    const std::lock_guard lock(uses.Mutex);
    if (FMulti != nullptr) std::erase(uses.Running, FMulti);
    --uses.Count;
    --usesOfThread;
    uses.Ended.notify_all();
}

bool TCurlUse::IsEnding() noexcept {
    return Uses().IsEnding;
}

TCurlHandles::TCurlHandles() {
    const TCurlUse use(nullptr);
    if (use.IsAllowed()) {
        Multi = curl_multi_init();
        Easy = curl_easy_init();
    }
    if (Multi != nullptr && Easy != nullptr) return;
    curl_easy_cleanup(Easy);
    curl_multi_cleanup(Multi);
    throw EIdException(u"Cannot start an HTTP client");
}

TCurlHandles::~TCurlHandles() {
    const TCurlUse use(nullptr);
    if (!use.IsAllowed()) {
        LeaveToTheSystem(Easy);
        LeaveToTheSystem(Multi);
        return;
    }
    curl_easy_cleanup(Easy);
    curl_multi_cleanup(Multi);
}

// --- An exchange ---

THttpExchange::THttpExchange(TCurlHandles& handles, const THttpRequestData& request)
    : FHandles(handles), FRequest(request), FErrorText(CURL_ERROR_SIZE) {}

// --- Settings ---

void THttpExchange::Prepare() {
    CURL* const easy = FHandles.Easy;
    curl_easy_reset(easy);  // connections are kept
    Set(easy, CURLOPT_ERRORBUFFER, FErrorText.data());
    Set(easy, CURLOPT_NOSIGNAL, 1L);
    Set(easy, CURLOPT_URL, FRequest.Url.c_str());
    Set(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    Set(easy, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    Set(easy, CURLOPT_FOLLOWLOCATION, 1L);
    Set(easy, CURLOPT_MAXREDIRS, kMaxRedirects);
    Set(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    Set(easy, CURLOPT_ACCEPT_ENCODING, "gzip");
    // Refused, and without need for it, while the handle has a buffer from a failed exchange.
    curl_easy_setopt(easy, CURLOPT_BUFFERSIZE, 256 * 1024L);
    Set(easy, CURLOPT_CONNECTTIMEOUT_MS, static_cast<long>(FRequest.ConnectTimeout));
    if (!FRequest.UserAgent.empty()) Set(easy, CURLOPT_USERAGENT, FRequest.UserAgent.c_str());
    Set(easy, CURLOPT_HEADERFUNCTION, &OnHeader);
    Set(easy, CURLOPT_HEADERDATA, this);
    Set(easy, CURLOPT_WRITEFUNCTION, &OnBody);
    Set(easy, CURLOPT_WRITEDATA, this);
    Set(easy, CURLOPT_PREREQFUNCTION, &OnConnected);
    Set(easy, CURLOPT_PREREQDATA, this);
    PrepareBody();
    PrepareTls();
    PrepareProxy();
}

void THttpExchange::PrepareBody() {
    CURL* const easy = FHandles.Easy;
    const auto add = [&](const char* line) {
        curl_slist* const longer = curl_slist_append(FHeaders.get(), line);
        if (longer == nullptr) throw std::bad_alloc();
        static_cast<void>(FHeaders.release());
        FHeaders.reset(longer);
    };
    add("Expect:");  // a body is sent without waiting for permission
    if (FRequest.Source == nullptr) {
        if (FRequest.Method == "DELETE") Set(easy, CURLOPT_CUSTOMREQUEST, "DELETE");
    } else {
        FSourceStart = FRequest.Source->GetPosition();
        FSourceSize = std::max<std::int64_t>(FRequest.Source->GetSize() - FSourceStart, 0);
        Set(easy, CURLOPT_READFUNCTION, &OnSend);
        Set(easy, CURLOPT_READDATA, this);
        Set(easy, CURLOPT_SEEKFUNCTION, &OnSeek);
        Set(easy, CURLOPT_SEEKDATA, this);
        const bool isPost = FRequest.Method == "POST";
        Set(easy, isPost ? CURLOPT_POST : CURLOPT_UPLOAD, 1L);
        Set(easy, isPost ? CURLOPT_POSTFIELDSIZE_LARGE : CURLOPT_INFILESIZE_LARGE,
            static_cast<curl_off_t>(FSourceSize));
        add(FRequest.ContentType.empty() ? "Content-Type:"
                                         : ("Content-Type: " + FRequest.ContentType).c_str());
    }
    Set(easy, CURLOPT_HTTPHEADER, FHeaders.get());
}

void THttpExchange::PrepareTls() {
    CURL* const easy = FHandles.Easy;
    if (const char* const file = std::getenv("SSL_CERT_FILE"); file != nullptr && *file != '\0') {
        Set(easy, CURLOPT_CAINFO, file);
        Set(easy, CURLOPT_CAPATH, static_cast<const char*>(nullptr));
    }
    // Without a version of our own the library keeps to the policy of the system. A version set here would replace it.
    const TIdSSLVersions versions =
        FRequest.Tls == nullptr ? TIdSSLVersions() : FRequest.Tls->GetSSLVersions();
    if (!versions.IsEmpty() && !versions.Contains(sslvTLSv1))
        Set(easy, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
}

void THttpExchange::PrepareProxy() {
    CURL* const easy = FHandles.Easy;
    TIdProxyConnectionInfo& proxy = *FRequest.Proxy;
    Set(easy, CURLOPT_SUPPRESS_CONNECT_HEADERS, 1L);
    Set(easy, CURLOPT_NOPROXY, "");
    Set(easy, CURLOPT_PROXY, "");  // none, whatever the environment says
    if (proxy.ProxyServer.empty()) return;
    const std::string server = ToUtf8(proxy.ProxyServer);
    if (!IsHostName(proxy.ProxyServer))
        throw EIdException(
            Format(u"Proxy \"%s\" is not a host name", {AddressWithoutUser(proxy.ProxyServer)}));
    if (proxy.ProxyPort < 1 || proxy.ProxyPort > 65535)
        throw EIdException(Format(u"Proxy port %d is not between 1 and 65535", {proxy.ProxyPort}));
    const bool isIpv6 = server.find(':') != std::string::npos && !server.starts_with('[');
    Set(easy, CURLOPT_PROXY, ("http://" + (isIpv6 ? "[" + server + "]" : server)).c_str());
    Set(easy, CURLOPT_PROXYPORT, static_cast<long>(proxy.ProxyPort));
    if (!proxy.BasicAuthentication) return;
    if (!proxy.Authentication)
        proxy.Authentication = std::make_unique<TIdAuthentication>(proxy.ProxyUsername, proxy.ProxyPassword);
    Set(easy, CURLOPT_PROXYAUTH, static_cast<long>(CURLAUTH_BASIC));
    Set(easy, CURLOPT_PROXYUSERNAME, ToUtf8(proxy.Authentication->UserName).c_str());
    Set(easy, CURLOPT_PROXYPASSWORD, ToUtf8(proxy.Authentication->Password).c_str());
}

// --- The transfer ---

void THttpExchange::Run(std::unique_ptr<TIdHTTPResponse>& response) {
    response.reset();
    const TCurlUse use(FHandles.Multi);
    if (!use.IsAllowed()) throw Ending();
    Prepare();
    const CURLcode code = Transfer();
    CURL* const easy = FHandles.Easy;
    const long status = StatusOf(easy);
    if (status != 0) {
        response = std::make_unique<TIdHTTPResponse>();
        response->ResponseCode = static_cast<std::int32_t>(status);
        response->ResponseText = TextOfBody(FStatusLine, {});
        const char* type = nullptr;
        curl_easy_getinfo(easy, CURLINFO_CONTENT_TYPE, &type);
        response->ContentType = type == nullptr ? String() : TextOfBody(type, {});
        response->ContentLength = NumberOf(easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T);
    }
    if (FRaised) std::rethrow_exception(FRaised);
    if (code != CURLE_OK) Fail(code);
    if (status >= 400)
        throw EIdHTTPProtocolException(response->ResponseCode, response->ResponseText,
                                       TextOfBody(FErrorBody, response->ContentType));
    if (FReceived == 0) Guarded([&] { FRequest.OnWorkBegin(FRequest.Sender, wmRead, 0); });
    if (FRaised) std::rethrow_exception(FRaised);
}

CURLcode THttpExchange::Transfer() {
    struct TAttached {
        CURLM* Multi;
        CURL* Easy;
        ~TAttached() { curl_multi_remove_handle(Multi, Easy); }
    };
    CURLM* const multi = FHandles.Multi;
    CURL* const easy = FHandles.Easy;
    if (curl_multi_add_handle(multi, easy) != CURLM_OK) return CURLE_OUT_OF_MEMORY;
    const TAttached attached{multi, easy};
    FLastData = std::chrono::steady_clock::now();
    for (;;) {
        int running = 0;
        if (curl_multi_perform(multi, &running) != CURLM_OK) return CURLE_OUT_OF_MEMORY;
        int rest = 0;
        if (const CURLMsg* const message = curl_multi_info_read(multi, &rest)) return message->data.result;
        if (running == 0) return CURLE_OUT_OF_MEMORY;
        if (TCurlUse::IsEnding()) return CURLE_ABORTED_BY_CALLBACK;
        const std::int32_t limit = WaitLimit();
        const auto waited = std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now() - FLastData);
        if (limit > 0 && waited.count() >= limit) {
            FIsLate = true;
            return CURLE_OPERATION_TIMEDOUT;
        }
        const auto left = limit > 0 ? std::min<std::int64_t>(limit - waited.count(), 1000) : 1000;
        if (curl_multi_poll(multi, nullptr, 0, static_cast<int>(left), nullptr) != CURLM_OK)
            return CURLE_OUT_OF_MEMORY;
    }
}

/// The longest wait for data at this moment; 0 for none. While connecting libcurl has a limit of its own.
std::int32_t THttpExchange::WaitLimit() const noexcept {
    if (FIsConnected || FRequest.ReadTimeout <= 0) return std::max(FRequest.ReadTimeout, 0);
    return std::max(FRequest.ReadTimeout, FRequest.ConnectTimeout);
}

String THttpExchange::Where() const {
    return AddressWithoutUser(FromUtf8(FRequest.Url));
}

void THttpExchange::Fail(CURLcode code) {
    const String where = Where();
    const auto failed = [&](StringView text) { return EIdException(Format(text, {where})); };
    const String reason = FromUtf8(FErrorText[0] == '\0' ? curl_easy_strerror(code) : FErrorText.data());
    if (FIsLate) throw EIdException(Format(u"\"%s\" sent no data for %d ms", {where, WaitLimit()}));
    if (const long status = StatusOf(FHandles.Easy, CURLINFO_HTTP_CONNECTCODE); status >= 300)
        throw EIdException(
            Format(u"The proxy refused the connection to \"%s\" with status %d", {where, status}));
    if (TCurlUse::IsEnding()) throw Ending();
    switch (code) {
        case CURLE_OUT_OF_MEMORY:
            throw std::bad_alloc();
        case CURLE_URL_MALFORMAT:
            throw failed(u"Address \"%s\" is not valid");
        case CURLE_UNSUPPORTED_PROTOCOL:
            throw failed(StatusOf(FHandles.Easy) == 0
                             ? u"Address \"%s\" is neither http nor https"
                             : u"\"%s\" redirects to an address that is neither http nor https");
        case CURLE_COULDNT_RESOLVE_HOST:
            throw failed(u"Cannot find host \"%s\"");
        case CURLE_COULDNT_RESOLVE_PROXY:
            throw EIdException(Format(u"Cannot find proxy \"%s\"", {FRequest.Proxy->ProxyServer}));
        case CURLE_COULDNT_CONNECT:
            throw failed(u"Cannot connect to \"%s\"");
        case CURLE_OPERATION_TIMEDOUT:
            throw EIdException(
                Format(u"Connecting to \"%s\" took more than %d ms", {where, FRequest.ConnectTimeout}));
        case CURLE_TOO_MANY_REDIRECTS:
            throw failed(u"\"%s\" redirects more than 15 times");
        case CURLE_PARTIAL_FILE:
        case CURLE_GOT_NOTHING:
            throw failed(u"The response of \"%s\" is incomplete");
        case CURLE_SSL_CONNECT_ERROR:
        case CURLE_PEER_FAILED_VERIFICATION:
        case CURLE_SSL_CACERT_BADFILE:
        case CURLE_SSL_CIPHER:
        case CURLE_SSL_ISSUER_ERROR:
            throw EIdException(Format(u"The connection to \"%s\" is not secure: %s", {where, reason}));
        default:
            throw EIdException(Format(u"The exchange with \"%s\" failed: %s", {where, reason}));
    }
}

// --- Callbacks ---

template <typename TCall>
bool THttpExchange::Guarded(TCall call) noexcept {
    try {
        FLastData = std::chrono::steady_clock::now();
        call();
        return true;
    } catch (...) {
        FRaised = std::current_exception();
        return false;
    }
}

int THttpExchange::OnConnected(void* self, char*, char*, int, int) {
    auto& exchange = *static_cast<THttpExchange*>(self);
    exchange.FIsConnected = true;
    exchange.FLastData = std::chrono::steady_clock::now();
    return CURL_PREREQFUNC_OK;
}

std::size_t THttpExchange::OnHeader(char* bytes, std::size_t size, std::size_t count, void* self) {
    auto& exchange = *static_cast<THttpExchange*>(self);
    const bool isTaken = exchange.Guarded([&] { exchange.TakeHeader({bytes, size * count}); });
    return isTaken ? size * count : 0;
}

void THttpExchange::TakeHeader(std::string_view line) {
    if (line.starts_with("HTTP/")) {
        FStatusLine = line.substr(0, line.find_last_not_of("\r\n") + 1);
        FHeaderSize = 0;
        FIsCompressed = false;
    }
    FHeaderSize += line.size();
    if (FHeaderSize > kMaxHeaderSize)
        throw EIdException(Format(u"The header of the response of \"%s\" is larger than %d bytes",
                                  {Where(), std::int64_t{kMaxHeaderSize}}));
    if (SameText(FromUtf8(line.substr(0, std::min(line.find(':'), line.size()))), u"Content-Encoding"))
        FIsCompressed = true;
    const long status = StatusOf(FHandles.Easy);
    const bool isEnd = line.find_first_not_of("\r\n") == std::string_view::npos;
    if (isEnd && status >= 300 && status < 400) FIsConnected = false;  // the next request may have to connect
}

std::size_t THttpExchange::OnBody(char* bytes, std::size_t size, std::size_t count, void* self) {
    auto& exchange = *static_cast<THttpExchange*>(self);
    const std::string_view body(bytes, size * count);
    return exchange.Guarded([&] { exchange.TakeBody(BytesOf(body)); }) ? body.size() : 0;
}

void THttpExchange::TakeBody(std::span<const std::byte> bytes) {
    CURL* const easy = FHandles.Easy;
    FIsConnected = true;
    const auto size = static_cast<std::int64_t>(bytes.size());
    if (size > FRequest.MaxResponseSize - FReceived)
        throw EIdException(
            Format(u"The response of \"%s\" is larger than %d bytes", {Where(), FRequest.MaxResponseSize}));
    if (StatusOf(easy) >= 400) {
        FReceived += size;
        const auto* const text = reinterpret_cast<const char*>(bytes.data());
        FErrorBody.append(text, std::min(bytes.size(), kMaxErrorBody - FErrorBody.size()));
        return;
    }
    if (FReceived == 0) {
        const std::int64_t whole =
            std::max<std::int64_t>(NumberOf(easy, CURLINFO_CONTENT_LENGTH_DOWNLOAD_T), 0);
        FRequest.OnWorkBegin(FRequest.Sender, wmRead, FIsCompressed ? 0 : whole);
    }
    FRequest.Target->WriteBuffer(bytes);
    FReceived += size;
    FRequest.OnWork(FRequest.Sender, wmRead, FReceived);
}

std::size_t THttpExchange::OnSend(char* buffer, std::size_t size, std::size_t count, void* self) {
    auto& exchange = *static_cast<THttpExchange*>(self);
    std::size_t given = 0;
    const std::span<char> room(buffer, size * count);
    const bool isGiven = exchange.Guarded([&] { given = exchange.GiveBody(std::as_writable_bytes(room)); });
    return isGiven ? given : CURL_READFUNC_ABORT;
}

std::size_t THttpExchange::GiveBody(std::span<std::byte> buffer) {
    if (FSent == 0) FRequest.OnWorkBegin(FRequest.Sender, wmWrite, FSourceSize);
    const std::int64_t rest = FSourceSize - FSent;
    const auto wanted =
        static_cast<std::size_t>(std::min<std::int64_t>(rest, static_cast<std::int64_t>(buffer.size())));
    if (wanted == 0) return 0;
    FRequest.Source->ReadBuffer(buffer.first(wanted));
    FSent += static_cast<std::int64_t>(wanted);
    FRequest.OnWork(FRequest.Sender, wmWrite, FSent);
    return wanted;
}

int THttpExchange::OnSeek(void* self, curl_off_t offset, int origin) {
    auto& exchange = *static_cast<THttpExchange*>(self);
    if (origin != SEEK_SET) return CURL_SEEKFUNC_CANTSEEK;
    const bool isThere = exchange.Guarded([&] {
        exchange.FRequest.Source->SetPosition(exchange.FSourceStart + offset);
        exchange.FSent = offset;
    });
    return isThere ? CURL_SEEKFUNC_OK : CURL_SEEKFUNC_FAIL;
}

}  // namespace Varnholt
