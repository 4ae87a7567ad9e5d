#include <libxml/SAX2.h>
#include <libxml/parser.h>

#include <mutex>
#include <new>

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

void RefuseDocType(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    Stop(context, "A document type declaration (DOCTYPE) is not accepted");
}

void StartElement(void* context, const xmlChar* name, const xmlChar* prefix, const xmlChar* uri,
                  int namespaces, const xmlChar** namespaceTexts, int attributes, int defaulted,
                  const xmlChar** attributeTexts) {
    if (static_cast<xmlParserCtxt*>(context)->nodeNr >= kMaxXmlDepth)
        return Stop(context, "The elements are nested more than 256 levels deep");
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
    const std::unique_ptr<xmlParserCtxt, TContextFree> context(xmlNewParserCtxt());
    if (!context) throw std::bad_alloc();
    TRefusal refusal;
    context->_private = &refusal;
    context->sax->internalSubset = RefuseDocType;
    context->sax->startElementNs = StartElement;
    context->sax->serror = KeepFirstError;
    TXmlDocPtr document(xmlCtxtReadMemory(context.get(), bytes.data(), static_cast<int>(bytes.size()),
                                          nullptr, nullptr,
                                          XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
    if (context->errNo == XML_ERR_NO_MEMORY) throw std::bad_alloc();
    if (!document || refusal.Ours != nullptr) Raise(refusal, path);
    return document;
}

}  // namespace Varnholt
