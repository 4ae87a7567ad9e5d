#include "Desktop/Station/Session.h"

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/System/Platform.h"
#include "VarnholtLib/Files/vrnCompress.h"
#include "VarnholtLib/Services/vrnFileTypeAssociation.h"

namespace Varnholt::Station {
namespace {

constexpr StringView kTable = u"station.csv", kSettings = u"settings.VrnConfig",
                     kBookmarks = u"bookmarks.xml";

/// Replaces the file of an earlier unpacking.
String Extracted(TVarnDecompressor& archive, StringView name, StringView folder) {
    if (archive.GetEntryIndex(name) < 0) return {};
    String path = String(folder) + u"\\" + String(name);
    if (!archive.Extract(name, path)) throw Exception(Format(u"Cannot extract \"%s\"", {path}));
    return path;
}

}  // namespace

void PackSession(StringView archive, const TSession& session) {
    String table = String(archive) + u".csv";
    while (FileExists(table)) table += u'~';
    WriteFileInOneGo(table, ToUtf8(session.Table));
    try {
        TVarnCompressor compressor;
        compressor.AddFile(table, kTable);
        if (!session.Settings.empty()) compressor.AddFile(session.Settings, kSettings);
        if (!session.Bookmarks.empty()) compressor.AddFile(session.Bookmarks, kBookmarks);
        compressor.SaveToFile(archive);
    } catch (...) {
        DeleteFile(table);
        throw;
    }
    DeleteFile(table);
}

TSessionFiles UnpackSession(StringView archive, StringView folder) {
    TVarnDecompressor source(archive);
    if (source.GetEntryIndex(kTable) < 0)
        throw Exception(Format(u"\"%s\" holds no session", {String(archive)}));
    ForceDirectories(folder);
    source.SetOnOverwriteRequest([](auto&, const String&, const TFileEntry&, bool&, bool&) {});
    return {Extracted(source, kTable, folder), Extracted(source, kSettings, folder),
            Extracted(source, kBookmarks, folder)};
}

void AssociateSessions() {
    const String program = Platform().Process->GetExecutablePath();
    TFileTypeAssociation type;
    type.SetExt(kSessionExtension);
    type.SetFileTypeName(u"Varnholt.Station");
    type.SetName(u"Station session");
    type.SetDefaultIcon(program);
    type.SetDefaultAction(u"open");
    type.SetAction(u"open", u"\"" + program + u"\" \"%1\"");
    type.Save();
}

}  // namespace Varnholt::Station
