#include "Tools/varnholt/UnpackCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <memory>
#include <utility>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/System/Platform.h"
#include "Tools/varnholt/Output.h"
#include "VarnholtLib/Files/vrnCompress.h"

namespace Varnholt::Tool {
namespace {

struct TUnpackOptions {
    std::string Archive;
    std::string Folder = ".";
    bool Overwrite = false;
    bool Skip = false;
};

/// Keeps what the library reports of a failed extraction.
class TReasons final : public IDebugOutput {
public:
    void Write(StringView text) override {
        constexpr StringView kMark = u", Error=";
        const std::size_t size = text.rfind(u", Entry.OSize=");  // a name may hold the mark, too
        const std::size_t at = size == StringView::npos ? size : text.find(kMark, size);
        FReason = text.substr(at == StringView::npos ? 0 : at + kMark.size());
    }
    [[nodiscard]] String Take() {
        if (FReason.empty()) return u"The file is shorter than the archive says";
        return std::exchange(FReason, String());
    }

private:
    String FReason;
};

/// Raises with the name of the archive.
std::unique_ptr<TVarnDecompressor> Open(const std::string& archive) {
    const String path = FromUtf8(archive);
    try {
        return std::make_unique<TVarnDecompressor>(path);
    } catch (const Exception& failure) {
        throw Exception(Format(u"%s: %s", {path, failure.GetMessage()}));
    }
}

void RunUnpack(const TUnpackOptions& options) {
    const auto archive = Open(options.Archive);
    const String folder = FromNativePath(std::filesystem::absolute(options.Folder).string());
    ForceDirectories(folder);
    String existing;
    archive->SetOnOverwriteRequest(
        [&](auto&, const String& file, const TFileEntry&, bool& allowOverwrite, bool& cancelExtract) {
            allowOverwrite = options.Overwrite;
            cancelExtract = !options.Overwrite && !options.Skip;
            if (cancelExtract) existing = file;
        });
    const TPlatformScope scope;
    const auto reasons = std::make_shared<TReasons>();
    Platform().DebugOutput = reasons;
    TProgress progress;
    std::int32_t failures = 0;
    for (std::int32_t i = 0; i < archive->GetFileEntryCount(); ++i) {
        if (!archive->ExtractTo(i, folder)) {
            if (!existing.empty())
                throw Exception(
                    Format(u"File \"%s\" exists; --overwrite replaces such files, --skip leaves them",
                           {FromUtf8(ToNativePath(existing))}));
            Warn(Format(u"%s: %s", {archive->GetFileEntryAt(i).FileName, reasons->Take()}));
            ++failures;
        }
        progress.Show(i + 1, archive->GetFileEntryCount());
    }
    if (failures > 0)
        throw Exception(
            Format(u"%d of %d files were not extracted", {failures, archive->GetFileEntryCount()}));
}

void RunList(const std::string& file) {
    const auto archive = Open(file);
    PrintLine(Format(u"%10s  %10s  %7s  %s", {u"size", u"packed", u"ratio", u"name"}));
    for (std::int32_t i = 0; i < archive->GetFileEntryCount(); ++i) {
        const TFileEntry entry = archive->GetFileEntryAt(i);
        const double ratio = 100.0 * entry.CompressedSize / std::max(entry.OriginalSize, 1);
        const String percent = entry.OriginalSize == 0 ? String(u"-") : Format(u"%.1f %%", {ratio});
        PrintLine(Format(u"%10d  %10d  %7s  %s",
                         {entry.OriginalSize, entry.CompressedSize, percent, OnOneLine(entry.FileName)}));
    }
}

}  // namespace

void AddUnpackCommands(CLI::App& app) {
    const auto options = std::make_shared<TUnpackOptions>();
    CLI::App* const unpack = app.add_subcommand("unpack", "Extract the files of an archive");
    unpack->add_option("archive", options->Archive, "Archive")->required()->type_name("");
    unpack->add_option("--to", options->Folder, "Folder to extract to, by default the working directory")
        ->type_name("DIR");
    CLI::Option* const overwrite =
        unpack->add_flag("--overwrite", options->Overwrite, "Replace files that exist");
    unpack->add_flag("--skip", options->Skip, "Leave files that exist as they are")->excludes(overwrite);
    unpack->callback([options] { RunUnpack(*options); });

    const auto file = std::make_shared<std::string>();
    CLI::App* const list = app.add_subcommand("list", "Print names and sizes of the files in an archive");
    list->add_option("archive", *file, "Archive")->required()->type_name("");
    list->callback([file] { RunList(*file); });
}

}  // namespace Varnholt::Tool
