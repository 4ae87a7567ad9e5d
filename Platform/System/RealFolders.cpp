#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>

#include "Platform/Runtime/Paths.h"
#include "Platform/System/RealPlatformPrivate.h"

namespace Varnholt {
namespace {

constexpr mode_t kUserMode = 0700;
constexpr mode_t kCommonMode = 0755;
constexpr std::uintmax_t kMaxUserDirectoriesSize = 1 << 20;

bool IsFolder(const std::string& path) {
    struct stat facts {};
    return stat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

// --- Environment and password database. A path that is missing or relative is an empty text. ---

std::string Variable(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && value[0] == '/' ? value : "";
}

std::string HomeOfDatabase() {
    constexpr std::size_t kMaxBuffer = 1 << 20;
    std::vector<char> buffer(1024);
    passwd entry{};
    passwd* found = nullptr;
    while (getpwuid_r(getuid(), &entry, buffer.data(), buffer.size(), &found) == ERANGE &&
           buffer.size() < kMaxBuffer) {
        buffer.resize(buffer.size() * 2);
    }
    const bool isKnown = found != nullptr && found->pw_dir != nullptr && found->pw_dir[0] == '/';
    return isKnown ? found->pw_dir : "";
}

/// Empty if it does not exist.
std::string Home() {
    std::string home = Variable("HOME");
    if (home.empty()) home = HomeOfDatabase();
    return IsFolder(home) ? home : "";
}

std::string Below(const std::string& folder, const char* name) {
    return folder.empty() ? "" : folder + "/" + name;
}

std::string VariableOrBelowHome(const char* variable, const char* name) {
    const std::string folder = Variable(variable);
    return folder.empty() ? Below(Home(), name) : folder;
}

std::string ConfigFolder() {
    return VariableOrBelowHome("XDG_CONFIG_HOME", ".config");
}

std::string CommonFolder() {
    const std::string folder = Variable("VARNHOLT_COMMON_DATA");
    return folder.empty() ? "/var/lib/varnholt" : folder;
}

// --- user-dirs.dirs ---

bool Skip(std::string_view& text, std::string_view expected) {
    if (!text.starts_with(expected)) return false;
    text.remove_prefix(expected.size());
    return true;
}

void SkipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
}

/// Reads up to the closing quote, which must exist.
std::optional<std::string> ReadQuoted(std::string_view text) {
    std::string value;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '"') return value;
        if (text[at] == '\\' && ++at == text.size()) break;
        value += text[at];
    }
    return std::nullopt;
}

/// The folder that the line gives to the name, if it does.
std::optional<std::string> ReadUserDirectory(std::string_view line, std::string_view name,
                                             const std::string& home) {
    SkipBlanks(line);
    if (!Skip(line, name)) return std::nullopt;
    SkipBlanks(line);
    if (!Skip(line, "=")) return std::nullopt;
    SkipBlanks(line);
    if (!Skip(line, "\"")) return std::nullopt;
    const bool isBelowHome = Skip(line, "$HOME");
    const bool isPath = line.starts_with('/') || (isBelowHome && line.starts_with('"'));
    if (!isPath || (isBelowHome && home.empty())) return std::nullopt;
    const auto value = ReadQuoted(line);
    if (!value || value->find('\0') != std::string::npos) return std::nullopt;
    return isBelowHome ? home + *value : *value;
}

std::string UserDirectory(std::string_view name, const char* nameBelowHome) {
    const std::string home = Home();
    std::string folder = Below(home, nameBelowHome);
    const std::string config = ConfigFolder();
    if (config.empty()) return folder;
    const std::filesystem::path path = config + "/user-dirs.dirs";
    std::error_code failure;
    if (!std::filesystem::is_regular_file(path, failure)) return folder;
    if (std::filesystem::file_size(path, failure) > kMaxUserDirectoriesSize) return folder;
    std::ifstream file(path);
    for (std::string line; std::getline(file, line);) {
        if (const auto value = ReadUserDirectory(line, name, home)) folder = *value;
    }
    return folder;
}

// --- Creating and naming ---

/// Whether the folder exists afterwards. At most PATH_MAX levels deep.
bool EnsureFolder(const std::string& folder, mode_t mode) {
    if (IsFolder(folder)) return true;
    const std::size_t slash = folder.find_last_of('/');
    if (slash == std::string::npos) return false;
    if (slash > 0 && !EnsureFolder(folder.substr(0, slash), mode)) return false;
    // Another process may create it at the same time.
    return mkdir(folder.c_str(), mode) == 0 || IsFolder(folder);
}

std::string WithoutSlashesAtEnd(std::string path) {
    while (path.size() > 1 && path.ends_with('/')) path.pop_back();
    return path;
}

String Existing(const std::string& path) {
    const bool isText = ToUtf8(FromUtf8(path)) == path;
    return isText && IsFolder(path) ? FromNativePath(path) : String();
}

String Created(const std::string& folder, mode_t mode) {
    const std::string path = WithoutSlashesAtEnd(folder);
    const bool isUsable = !path.empty() && path.size() < PATH_MAX;
    return isUsable && EnsureFolder(path, mode) ? Existing(path) : String();
}

class TRealKnownFolders : public IKnownFolders {
public:
    String Find(TKnownFolder folder) override {
        switch (folder) {
            case kfAppData:
                return Created(ConfigFolder(), kUserMode);
            case kfLocalAppData:
                return Created(VariableOrBelowHome("XDG_DATA_HOME", ".local/share"), kUserMode);
            case kfCommonAppData:
                return Created(CommonFolder(), kCommonMode);
            case kfPersonal:
                return Created(UserDirectory("XDG_DOCUMENTS_DIR", "Documents"), kUserMode);
            case kfMyPictures:
                return Created(UserDirectory("XDG_PICTURES_DIR", "Pictures"), kUserMode);
            case kfCommonDocuments:
                return Created(CommonFolder() + "/documents", kCommonMode);
            case kfProgramFiles:
                return Existing("/opt");
            case kfSystem:
                return Existing("/usr/bin");
            case kfWindows:
                break;
        }
        return {};
    }
};

}  // namespace

std::shared_ptr<IKnownFolders> RealKnownFolders() {
    return std::make_shared<TRealKnownFolders>();
}

}  // namespace Varnholt
