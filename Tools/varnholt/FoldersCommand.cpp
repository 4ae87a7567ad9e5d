#include "Tools/varnholt/FoldersCommand.h"

#include <CLI/CLI.hpp>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/Text.h"
#include "Tools/varnholt/Output.h"
#include "VarnholtLib/Services/vrnSpecialFolders.h"

namespace Varnholt::Tool {
namespace {

struct TRow {
    StringView Name;
    int Number;
};

constexpr TRow kRows[] = {
    {u"AppData", 26},      {u"CommonAppData", 35}, {u"CommonDocuments", 46},
    {u"LocalAppData", 28}, {u"MyPictures", 39},    {u"Personal", 5},
    {u"ProgramFiles", 38}, {u"System", 37},        {u"Windows", 36},
};

void PrintFolders() {
    for (const TRow& row : kRows) {
        String path;
        const bool isFound = TSpecialFolders::GetSpecialFolderString(path, row.Number);
        const String native = isFound ? u"  " + OnOneLine(FromUtf8(ToNativePath(path))) : String();
        PrintLine(Format(u"%-15s  %2d%s", {row.Name, row.Number, native}));
    }
}

}  // namespace

void AddFoldersCommand(CLI::App& app) {
    CLI::App* const folders = app.add_subcommand(
        "folders",
        "Print the folders for the user's settings, data and documents; create those that are missing");
    folders->callback(PrintFolders);
}

}  // namespace Varnholt::Tool
