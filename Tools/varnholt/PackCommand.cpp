#include "Tools/varnholt/PackCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <memory>
#include <optional>
#include <set>

#include "Platform/Runtime/Characters.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Paths.h"
#include "Tools/varnholt/CsvFile.h"
#include "Tools/varnholt/Output.h"
#include "VarnholtLib/Files/vrnCompress.h"

namespace Varnholt::Tool {
namespace {

namespace fs = std::filesystem;

struct TPackOptions {
    std::string Archive;
    std::vector<std::string> Files;
    std::optional<std::string> Base;
    std::string Level = "2";
    bool KeepFolders = false;
};

String AbsolutePath(const fs::path& path) {
    String library = FromNativePath(fs::absolute(path).lexically_normal().string());
    if (library.starts_with(u'/'))
        throw Exception(Format(u"%s: A name with a backslash cannot be stored", {FromUtf8(path.string())}));
    return library;
}

/// The files of a folder and of the folders below it, sorted; links to folders are not followed.
std::vector<fs::path> FilesBelow(const fs::path& folder) {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        } else if (!entry.is_directory()) {
            Warn(Format(u"%s: Not a regular file; it is left out", {FromUtf8(entry.path().string())}));
        }
    }
    std::ranges::sort(files);
    return files;
}

/// The sources as absolute library paths, in the order of the arguments.
std::vector<String> FindSources(const TPackOptions& options, const String& archive) {
    std::vector<String> sources;
    for (const std::string& file : options.Files) {
        const fs::path path(file);
        if (!fs::exists(path))
            throw Exception(Format(u"Cannot open file \"%s\": %s", {FromUtf8(file), SystemReason(ENOENT)}));
        const std::vector<fs::path> found = fs::is_directory(path) ? FilesBelow(path) : std::vector{path};
        for (const fs::path& source : found) {
            sources.push_back(AbsolutePath(source));
            if (!IsSameFile(sources.back(), archive)) continue;
            Warn(Format(u"%s: The archive itself; it is left out", {FromUtf8(source.string())}));
            sources.pop_back();
        }
    }
    return sources;
}

/// No reader would open an archive with two entries of one name.
void CheckNames(TVarnCompressor& compressor) {
    std::set<String> names;
    for (std::int32_t i = 0; i < compressor.GetFileCount(); ++i) {
        const String& name = compressor.GetFileName(i).NewFileName;
        if (names.insert(ToLower(name)).second) continue;
        const StringView hint =
            compressor.GetKeepSubfolders() ? u"" : u"; --keep-folders stores them with their folders";
        throw Exception(Format(u"Two files would be stored as \"%s\"%s", {name, hint}));
    }
}

std::uint8_t ReadLevel(const std::string& text) {
    if (text.size() == 1 && text[0] >= '0' && text[0] <= '3') return static_cast<std::uint8_t>(text[0] - '0');
    throw CLI::ValidationError("--level", "\"" + text + "\" is not a level from 0 to 3");
}

void RunPack(const TPackOptions& options) {
    const std::uint8_t level = ReadLevel(options.Level);
    const String archive = FromUtf8(options.Archive);
    const std::vector<String> sources = FindSources(options, archive);
    CheckOutputs(sources, {&archive, 1});

    TVarnCompressor compressor(AbsolutePath(options.Base.value_or(".")), options.KeepFolders,
                               options.Base.has_value());
    String base = ExcludeTrailingPathDelimiter(compressor.GetBaseDirectory());
    compressor.SetBaseDirectory(base + u'\\');
    compressor.SetCompressionLevel(level);
    for (const String& source : sources) {
        const TFileStream readable(source, fmOpenRead);  // raises with the name of the file
        compressor.AddFile(source);
    }
    CheckNames(compressor);
    TProgress progress;
    compressor.SetOnProgress([&](std::int32_t file, std::int32_t total) { progress.Show(file, total); });
    const bool isNew = !FileExists(archive);
    try {
        compressor.SaveToFile(archive);
    } catch (const Exception&) {
        if (isNew && FileExists(archive)) DeleteFile(archive);  // the files before the failure
        throw;
    }
}

}  // namespace

void AddPackCommand(CLI::App& app) {
    const auto options = std::make_shared<TPackOptions>();
    CLI::App* const pack = app.add_subcommand("pack", "Pack files and folders into an archive");
    pack->add_option("archive", options->Archive, "Archive to write")->required()->type_name("");
    pack->add_option("files", options->Files, "Files, and folders with all files below them")
        ->required()
        ->type_name("");
    pack->add_flag("--keep-folders", options->KeepFolders,
                   "Store names with their folders, from the base folder on");
    pack->add_option("--base", options->Base,
                     "Base folder, which must contain all files; by default the working directory, "
                     "and files elsewhere are stored by their names")
        ->type_name("DIR");
    pack->add_option("--level", options->Level, "Compression: 0 none, 1 fastest, 2 the default, 3 maximum")
        ->type_name("0..3");
    pack->callback([options] { RunPack(*options); });
}

}  // namespace Varnholt::Tool
