#include "VarnholtLib/Files/vrnFileIO.h"

#include <filesystem>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/Random.h"
#include "VarnholtLib/Foundation/vrnPathText.h"

namespace Varnholt {
namespace {

namespace fs = std::filesystem;

constexpr int kAttempts = 100'000;

/// Whether a name matches a mask. Only the last star is ever tried anew, so the time is at most that of both lengths
/// multiplied.
bool Matches(std::string_view name, std::string_view mask) {
    std::size_t at = 0, in = 0, star = mask.size(), tried = 0;
    while (at < name.size()) {
        if (in < mask.size() && mask[in] == '*') {
            star = in++;
            tried = at;
        } else if (in < mask.size() && (mask[in] == '?' || mask[in] == name[at])) {
            // One "?" is one character, whatever its number of bytes.
            do ++at;
            while (mask[in] == '?' && at < name.size() && (name[at] & 0xC0) == 0x80);
            ++in;
        } else if (star < mask.size()) {
            in = star + 1;
            at = ++tried;
        } else {
            return false;
        }
    }
    return mask.find_first_not_of('*', in) == std::string_view::npos;
}

[[noreturn]] void RaiseNoName(StringView nameTemplate) {
    throw EInOutError(Format(u"No free name for \"%s\"", {nameTemplate}));
}

String TemporaryFolder(StringView subFolder) {
    std::error_code error;
    const fs::path root = fs::temp_directory_path(error);
    if (error) throw EInOutError(u"Cannot find the temporary folder: " + FromUtf8(error.message()));
    String folder = PathBelow(FromNativePath(root.string()), {});
    while (subFolder.starts_with(u'\\') || subFolder.starts_with(u'/')) subFolder.remove_prefix(1);
    if (!subFolder.empty()) folder = PathBelow(PathBelow(folder, subFolder), {});
    const String path = ExcludeTrailingPathDelimiter(folder);
    if (!DirectoryExists(path)) ForceDirectories(path);
    return folder;
}

String FilledTemplate(StringView nameTemplate) {
    String name;
    for (const Char c : nameTemplate)
        if (c == u'*')
            name += IntToStr(RandomRange(0, 9999));
        else
            name += c;
    return name;
}

/// A name in the folder that is not taken.
template <typename TIsTaken>
String FreeName(const String& folder, StringView nameTemplate, TIsTaken isTaken) {
    const int attempts = nameTemplate.find(u'*') == StringView::npos ? 1 : kAttempts;
    Randomize();
    for (int i = 0; i < attempts; ++i) {
        String path = folder + FilledTemplate(nameTemplate);
        if (!isTaken(path)) return path;
    }
    RaiseNoName(nameTemplate);
}

}  // namespace

bool DelFiles(StringView mask) {
    const String folder = ExtractFilePath(mask);
    const std::string pattern = ToUtf8(ExtractFileName(mask));
    const fs::path native = folder.empty() ? fs::path(".") : fs::path(ToNativePath(folder));
    bool isFound = false;
    std::error_code ignored;
    for (fs::directory_iterator entry(native, ignored), end; entry != end; entry.increment(ignored)) {
        if (pattern != "*.*" && !Matches(entry->path().filename().string(), pattern)) continue;
        isFound = true;
        std::error_code unused;
        const fs::file_status status = entry->symlink_status(unused);
        const bool isReadOnly = status.type() == fs::file_type::regular &&
                                (status.permissions() & fs::perms::owner_write) == fs::perms::none;
        if (status.type() != fs::file_type::directory && !isReadOnly) fs::remove(entry->path(), unused);
    }
    return isFound;
}

String GetTempFileName(StringView subFolder, StringView nameTemplate) {
    const String folder = TemporaryFolder(subFolder);
    if (nameTemplate.empty()) return ExcludeTrailingPathDelimiter(folder);
    return FreeName(folder, nameTemplate, [](const String& path) { return FileExists(path); });
}

String GetTempFolder(StringView subFolder, StringView nameTemplate) {
    const String folder = TemporaryFolder(subFolder);
    if (nameTemplate.empty()) RaiseNoName(nameTemplate);
    return FreeName(folder, nameTemplate,
                    [](const String& path) { return FileExists(path) || DirectoryExists(path); });
}

String GetFinalDirectoryName(StringView path) {
    String folder(path);
    if (FileExists(folder)) folder = ExtractFilePath(folder);
    if (folder.size() > 1 && folder.back() == u'\\') folder.pop_back();
    if (folder.size() < 2) return {};
    return folder.substr(folder.rfind(u'\\') + 1);
}

}  // namespace Varnholt
