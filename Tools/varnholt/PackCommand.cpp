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

/// The absolute library path. A step ".." leads out of the folder that a link before it names.
String AbsolutePath(const fs::path& path) {
    const bool goesUp = std::ranges::find(path, fs::path("..")) != path.end();
    const fs::path absolute = goesUp ? fs::weakly_canonical(path) : fs::absolute(path).lexically_normal();
    String library = FromNativePath(absolute.string());
    if (library.starts_with(u'/'))
        throw Exception(Format(u"%s: A name with a backslash cannot be stored", {FromUtf8(path.string())}));
    return library;
}

/// Adds the files of a folder and of the folders below it, sorted. What is neither a file nor a folder, and links to folders,
/// are reported and left out.
void AppendFiles(const fs::path& folder, std::vector<fs::path>& files) {
    std::error_code error;
    std::vector<fs::path> entries;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error))
        entries.push_back(entry->path());
    if (error)
        throw Exception(Format(u"Cannot list folder \"%s\": %s",
                               {FromUtf8(folder.string()), SystemReason(error.value())}));
    std::ranges::sort(entries);
    for (const fs::path& entry : entries) {
        std::error_code unused;
        const bool isLink = fs::is_symlink(fs::symlink_status(entry, unused));
        const fs::file_status status = fs::status(entry, unused);
        if (fs::is_regular_file(status)) {
            files.push_back(entry);
        } else if (fs::is_directory(status) && !isLink) {
            AppendFiles(entry, files);
        } else {
            const StringView what = fs::is_directory(status) ? u"A link to a folder" : u"Not a regular file";
            Warn(Format(u"%s: %s; it is left out", {FromUtf8(entry.string()), what}));
        }
    }
}

/// The files that an argument names.
std::vector<fs::path> FilesOf(const std::string& argument) {
    const fs::path path(argument);
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (!fs::exists(status))
        throw Exception(Format(u"Cannot open file \"%s\": %s",
                               {FromUtf8(argument), SystemReason(error ? error.value() : ENOENT)}));
    if (fs::is_regular_file(status)) return {path};
    if (!fs::is_directory(status)) throw Exception(Format(u"%s: Not a regular file", {FromUtf8(argument)}));
    std::vector<fs::path> files;
    AppendFiles(path, files);
    return files;
}

/// The sources as absolute library paths, in the order of the arguments.
std::vector<String> FindSources(const TPackOptions& options, const String& archive) {
    std::vector<String> sources;
    for (const std::string& argument : options.Files) {
        for (const fs::path& source : FilesOf(argument)) {
            sources.push_back(AbsolutePath(source));
            if (!IsSameFile(sources.back(), archive)) continue;
            Warn(Format(u"%s: The archive itself; it is left out", {FromUtf8(source.string())}));
            sources.pop_back();
        }
    }
    return sources;
}

/// Names that no reader would extract, or that are not stored as they are, are refused.
void CheckNames(const TVarnCompressor& compressor) {
    constexpr std::size_t kMaxName = 200;
    std::set<String> names;
    for (std::int32_t i = 0; i < compressor.GetFileCount(); ++i) {
        const String name = compressor.GetStoredName(i);
        if (name.size() > kMaxName)
            throw Exception(Format(u"%s: The name has more than 200 characters", {name}));
        if (!IsExtractableName(name))
            throw Exception(Format(u"%s: A file of this name could not be extracted", {name}));
        if (names.insert(ToLower(name)).second) continue;
        const StringView hint =
            compressor.GetKeepSubfolders() ? u"" : u"; --keep-folders stores them with their folders";
        throw Exception(Format(u"Two files would be stored as \"%s\"%s", {name, hint}));
    }
}

void AddFile(TVarnCompressor& compressor, const String& source) {
    try {
        const TFileStream readable(source, fmOpenRead);  // raises with the name of the file
        compressor.AddFile(source);
    } catch (const EVarnCompress& failure) {
        throw Exception(Format(u"%s: %s", {FromUtf8(ToNativePath(source)), failure.GetMessage()}));
    }
}

std::uint8_t ReadLevel(const std::string& text) {
    if (text.size() == 1 && text[0] >= '0' && text[0] <= '3') return static_cast<std::uint8_t>(text[0] - '0');
    throw CLI::ValidationError("--level", "\"" + text + "\" is not a level from 0 to 3");
}

void RunPack(const TPackOptions& options) {
    const std::uint8_t level = ReadLevel(options.Level);
    if (options.Archive == "-")
        throw CLI::ValidationError("archive", "an archive cannot be written to standard output");
    const String archive = FromUtf8(options.Archive);
    const std::vector<String> sources = FindSources(options, archive);
    CheckOutputs(sources, {&archive, 1});

    TVarnCompressor compressor(AbsolutePath(options.Base.value_or(".")), options.KeepFolders,
                               options.Base.has_value());
    String base = ExcludeTrailingPathDelimiter(compressor.GetBaseDirectory());
    compressor.SetBaseDirectory(base + u'\\');
    compressor.SetCompressionLevel(level);
    for (const String& source : sources) AddFile(compressor, source);
    CheckNames(compressor);
    TProgress progress;
    compressor.SetOnProgress([&](std::int32_t file, std::int32_t total) { progress.Show(file, total); });
    try {
        compressor.SaveToFile(archive);
    } catch (const EVarnCompress& failure) {
        if (compressor.GetHasLeftPart()) DeleteFile(archive);
        throw Exception(Format(u"%s: %s", {archive, failure.GetMessage()}));
    } catch (const Exception&) {
        if (compressor.GetHasLeftPart()) DeleteFile(archive);
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
