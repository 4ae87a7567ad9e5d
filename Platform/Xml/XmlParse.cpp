#include <libxml/SAX2.h>
#include <libxml/parser.h>

#include <algorithm>
#include <mutex>
#include <new>
#include <optional>

#include "Platform/Runtime/Encoding.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Text.h"
#include "Platform/Xml/XmlDocument.h"
#include "Platform/Xml/XmlParsePrivate.h"
#include "Platform/Xml/XmlTextPrivate.h"

namespace Varnholt {
namespace {

struct TContextFree {
    void operator()(xmlParserCtxt* context) const noexcept { xmlFreeParserCtxt(context); }
};

bool IsSupported(std::string_view encoding) {
    static constexpr StringView kPrefixes[] = {u"utf-8",  u"utf8",      u"us-ascii",    u"ascii",
                                               u"utf-16", u"iso-8859-", u"windows-125", u"latin1"};
    const String name = LowerCase(FromUtf8(encoding));
    return std::ranges::any_of(kPrefixes, [&](StringView prefix) { return name.starts_with(prefix); });
}

/// The text in UTF-8 if the file is in UTF-16, or in UTF-32 with a mark; otherwise nothing.
std::optional<std::string> Converted(std::string_view bytes) {
    using namespace std::string_view_literals;
    const TEncoding* encoding = TEncoding::DetectByPreamble(bytes);
    if (encoding == &TEncoding::Utf8()) return std::nullopt;
    if (encoding == nullptr && bytes.starts_with("<\0"sv)) encoding = &TEncoding::Utf16LE();
    if (encoding == nullptr && bytes.starts_with("\0<"sv)) encoding = &TEncoding::Utf16BE();
    if (encoding == nullptr) return std::nullopt;
    if (bytes.starts_with(encoding->GetPreamble())) bytes.remove_prefix(encoding->GetPreamble().size());
    String text;
    TDecoder(*encoding, ibRefuse).Decode(bytes, true, text);
    return ToUtf8(text);
}

/// The most attributes of a start tag. Bytes of markup stand for nothing else in the encodings that are accepted.
int MostAttributes(std::string_view bytes) {
    constexpr std::pair<std::string_view, std::string_view> kOthers[] = {
        {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}};
    int most = 0;
    for (std::size_t at = bytes.find('<'); at < bytes.size(); at = bytes.find('<', at)) {
        const std::string_view rest = bytes.substr(at);
        const auto other =
            std::ranges::find_if(kOthers, [&](const auto& o) { return rest.starts_with(o.first); });
        if (other != std::end(kOthers)) {
            at = bytes.find(other->second, at + other->first.size());
            continue;
        }
        // A tag contains no other "<", and an attribute takes five bytes.
        const std::size_t next = std::min(bytes.find('<', at + 1), bytes.size());
        if (next - at < std::size_t{5} * kMaxXmlAttributes) {
            at = next;
            continue;
        }
        int count = 0;
        char quote = 0;
        for (; at < bytes.size() && (quote != 0 || bytes[at] != '>'); ++at) {
            const char c = bytes[at];
            if (c == '=' && quote == 0) ++count;
            if (quote == 0 ? c == '"' || c == '\'' : c == quote) quote = quote == 0 ? c : '\0';
        }
        most = std::max(most, count);
    }
    return most;
}

/// Why a document is refused: the first fatal error, or a refusal of our own. The callbacks belong to C code, so
/// they raise nothing.
struct TRefusal {
    const char* Ours = nullptr;
    int Line = 0;
    char Message[500] = "";

    static TRefusal& Of(void* context) {
        return *static_cast<TRefusal*>(static_cast<xmlParserCtxt*>(context)->_private);
    }
};

void Stop(void* context, const char* reason) {
    TRefusal::Of(context).Ours = reason;
    xmlStopParser(static_cast<xmlParserCtxt*>(context));
}

/// Refuses declared encodings in which bytes of markup could be parts of other characters.
void StartDocument(void* context) {
    const auto* const parser = static_cast<xmlParserCtxt*>(context);
    const auto* const declared = reinterpret_cast<const char*>(parser->input->encoding);
    if (declared != nullptr && !IsSupported(declared)) return Stop(context, "The encoding is not supported");
    xmlSAX2StartDocument(context);
}

void RefuseDocType(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    Stop(context, "A document type declaration (DOCTYPE) is not accepted");
}

void StartElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                  int namespaces, const xmlChar** namespaceTexts, int attributes, int defaulted,
                  const xmlChar** attributeTexts) {
    if (static_cast<xmlParserCtxt*>(context)->nodeNr >= kMaxXmlDepth)
        return Stop(context, "The elements are nested more than 256 levels deep");
    for (int i = 0; i < attributes; ++i)  // each has five pointers; the last two are those of its value
        if (attributeTexts[5 * i + 4] - attributeTexts[5 * i + 3] >
            static_cast<std::ptrdiff_t>(kMaxXmlAttribute))
            return Stop(context, "An XML attribute cannot have more than 1000000 bytes");
    xmlSAX2StartElementNs(context, name, prefix, uri, namespaces, namespaceTexts, attributes, defaulted,
                          attributeTexts);
}

void KeepFirstError(void* context, xmlError* error) {
    TRefusal& refusal = TRefusal::Of(context);
    if (error->level != XML_ERR_FATAL || refusal.Message[0] != '\0' || error->message == nullptr) return;
    refusal.Line = error->line;
    const std::string_view message(error->message);
    refusal.Message[message.copy(refusal.Message, sizeof refusal.Message - 1)] = '\0';
}

[[noreturn]] void Raise(const TRefusal& refusal, StringView path) {
    if (refusal.Ours != nullptr) throw EXMLDocError(Format(u"%s: %s", {path, FromUtf8(refusal.Ours)}));
    const String reason = Trim(FromUtf8(refusal.Message));
    if (reason.empty()) throw EXMLDocError(Format(u"%s: The file is not an XML document", {path}));
    throw EXMLDocError(Format(u"%s: line %d: %s", {path, refusal.Line, reason}));
}

}  // namespace

void StartXmlLibrary() {
    static std::once_flag once;
    std::call_once(once, xmlInitParser);
}

TXmlDocPtr ParseXml(std::string_view bytes, StringView path) {
    StartXmlLibrary();
    TRefusal refusal;
    std::optional<std::string> converted;
    try {
        converted = Converted(bytes);
    } catch (const EEncodingError& failure) {
        throw EXMLDocError(Format(u"%s: %s", {path, failure.GetMessage()}));
    }
    if (converted) bytes = *converted;
    if (bytes.size() > kMaxXmlFile) refusal.Ours = "The file has more than 67108864 bytes";
    if (bytes.starts_with("\x4C\x6F\xA7\x94")) refusal.Ours = "The encoding is not supported";  // EBCDIC
    if (MostAttributes(bytes) > kMaxXmlAttributes)
        refusal.Ours = "An element cannot have more than 256 attributes";
    if (refusal.Ours != nullptr) Raise(refusal, path);

    const std::unique_ptr<xmlParserCtxt, TContextFree> context(xmlNewParserCtxt());
    if (!context) throw std::bad_alloc();
    context->_private = &refusal;
    context->sax->startDocument = StartDocument;
    context->sax->internalSubset = RefuseDocType;
    context->sax->startElementNs = StartElement;
    context->sax->serror = KeepFirstError;
    TXmlDocPtr document(xmlCtxtReadMemory(
        context.get(), bytes.data(), static_cast<int>(bytes.size()), nullptr, converted ? "UTF-8" : nullptr,
        XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING | (converted ? XML_PARSE_IGNORE_ENC : 0)));
    if (context->errNo == XML_ERR_NO_MEMORY) throw std::bad_alloc();
    if (!document || refusal.Ours != nullptr) Raise(refusal, path);
    return document;
}

}  // namespace Varnholt
