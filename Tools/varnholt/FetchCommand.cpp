#include "Tools/varnholt/FetchCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

#include "Platform/Runtime/DraftFile.h"
#include "Tools/varnholt/Output.h"
#include "VarnholtLib/Services/vrnIndyHttpRequest.h"
#include "VarnholtLib/Services/vrnProxy.h"
#include "VarnholtLib/Services/vrnSimpleHttpRequest.h"

namespace Varnholt::Tool {
namespace {

struct TFetchOptions {
    std::string Url;
    std::string Method = "GET";
    std::vector<std::string> Params;
    std::optional<std::string> OutFile;
};

/// Standard output as the target of an exchange.
class TPrintStream final : public TStream {
public:
    std::size_t Read(std::span<std::byte>) override { return 0; }
    std::size_t Write(std::span<const std::byte> bytes) override {
        PrintBytes(bytes);
        return bytes.size();
    }
    std::int64_t Seek(std::int64_t, TSeekOrigin) override { return 0; }
    [[nodiscard]] std::int64_t GetPosition() const override { return 0; }
    [[nodiscard]] std::int64_t GetSize() const override { return 0; }
    void SetSize(std::int64_t) override {}
};

/// The text in percent signs, by its bytes in UTF-8.
String Encoded(std::string_view text) {
    String units;
    for (const char byte : text) units += static_cast<unsigned char>(byte);
    return HttpParamEncode(units);
}

/// The parameters as a query, in their order. Raises CLI::ValidationError for one without a name.
String QueryOf(const std::vector<std::string>& params) {
    String query;
    for (const std::string& param : params) {
        const std::size_t separator = param.find('=');
        if (separator == 0 || separator == std::string::npos)
            throw CLI::ValidationError("--param", "\"" + param + "\" is not of the form NAME=VALUE");
        if (!query.empty()) query += u'&';
        const std::string_view text = param;
        query += Encoded(text.substr(0, separator)) + u'=' + Encoded(text.substr(separator + 1));
    }
    return query;
}

void Exchange(TIdHTTP& client, const TFetchOptions& options, const String& query, TStream& target) {
    const bool hasBody = options.Method == "POST" || options.Method == "PUT";
    String url = FromUtf8(options.Url);
    if (!hasBody && !query.empty()) {
        const std::size_t fragment = std::min(url.find(u'#'), url.size());
        url.insert(fragment, (url.find(u'?') < fragment ? u'&' : u'?') + query);
    }
    TMemoryStream body(BytesOf(ToUtf8(query)));
    if (hasBody && !query.empty()) client.SetContentType(u"application/x-www-form-urlencoded");
    if (options.Method == "POST") {
        client.Post(url, body, target);
    } else if (options.Method == "PUT") {
        client.Put(url, body, target);
    } else if (options.Method == "DELETE") {
        client.Delete(url, target);
    } else {
        client.Get(url, target);
    }
}

void RunFetch(const TFetchOptions& options) {
    const String query = QueryOf(options.Params);
    TIdHTTP client;
    TProxySettings::ApplyTo(client);
    client.SetUserAgent(kHttpUserAgent);
    client.SetReadTimeout(kHttpReadTimeout);
    client.SetIOHandler(NewHttpTlsHandler());
    TProgress progress;
    std::int64_t whole = 0;
    client.SetOnWorkBegin([&](TObject*, TWorkMode, std::int64_t max) { whole = max; });
    client.SetOnWork([&](TObject*, TWorkMode, std::int64_t count) {
        if (whole > 0) progress.Show(count, whole);
    });
    if (!options.OutFile || *options.OutFile == "-") {
        TPrintStream print;
        Exchange(client, options, query, print);
    } else {
        TDraftFileStream file(FromUtf8(*options.OutFile));
        Exchange(client, options, query, file);
        file.Commit();
    }
}

}  // namespace

void AddFetchCommand(CLI::App& app) {
    const auto options = std::make_shared<TFetchOptions>();
    CLI::App* const fetch =
        app.add_subcommand("fetch", "Fetch an address over http or https, through the user's proxy");
    fetch->add_option("url", options->Url, "Address")->required()->type_name("");
    fetch->add_option("--method", options->Method, "GET, POST, PUT or DELETE")
        ->check(CLI::IsMember({"GET", "POST", "PUT", "DELETE"}))
        ->capture_default_str()
        ->type_name("METHOD");
    fetch
        ->add_option("--param", options->Params,
                     "Parameter, in the address or, of POST and PUT, in the body; may be repeated")
        ->type_name("NAME=VALUE")
        ->expected(1)
        ->take_all();
    fetch->add_option("--out", options->OutFile, "Write the body to this file; - is standard output")
        ->type_name("FILE");
    fetch->callback([options] { RunFetch(*options); });
}

}  // namespace Varnholt::Tool
