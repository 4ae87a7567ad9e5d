#include "Platform/Xml/XmlDocument.h"

#include <new>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Streams.h"
#include "Platform/Xml/XmlTextPrivate.h"
#include "Platform/Xml/XmlTreePrivate.h"

namespace Varnholt {
namespace {

/// The bytes of a file of at most kMaxXmlFile bytes. The size that the system reports is not relied on.
std::string ReadXmlFile(StringView path) {
    TFileStream file(path, fmOpenRead);
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    std::string bytes;
    for (std::size_t used = 0;;) {
        bytes.resize(used + kPiece);
        const std::size_t count = file.Read(WritableBytesOf(bytes).subspan(used));
        used += count;
        bytes.resize(used);
        if (count == 0) return bytes;
        if (used > kMaxXmlFile)
            throw EXMLDocError(Format(u"%s: The file has more than %d bytes", {path, kMaxXmlFile}));
    }
}

}  // namespace

std::shared_ptr<IXMLDocument> NewXMLDocument(StringView version) {
    if (version != u"1.0") throw EXMLDocError(Format(u"XML version \"%s\" is not supported", {version}));
    StartXmlLibrary();
    TXmlDocPtr document(xmlNewDoc(nullptr));
    if (!document || (document->dict = xmlDictCreate()) == nullptr) throw std::bad_alloc();
    return std::make_shared<TXmlTree>(std::move(document));
}

std::shared_ptr<IXMLDocument> LoadXMLDocument(StringView fileName) {
    return std::make_shared<TXmlTree>(ParseXml(ReadXmlFile(fileName), fileName));
}

}  // namespace Varnholt
