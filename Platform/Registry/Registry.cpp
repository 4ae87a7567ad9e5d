#include "Platform/Registry/Registry.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <new>
#include <optional>
#include <string>
#include <variant>

#include "Platform/Runtime/Characters.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/System/Platform.h"

namespace Varnholt {
namespace {

constexpr std::size_t kMaxDepth = 512;

/// The path without the backslashes that are ignored.
StringView Trimmed(StringView path) {
    if (path.starts_with(u'\\')) path.remove_prefix(1);
    if (path.ends_with(u'\\')) path.remove_suffix(1);
    return path;
}

/// The names of a path; nothing if one is empty, or there are too many.
std::optional<std::vector<String>> NamesOf(StringView path) {
    path = Trimmed(path);
    std::vector<String> names;
    while (!path.empty()) {
        if (names.size() == kMaxDepth) return std::nullopt;
        const std::size_t end = std::min(path.find(u'\\'), path.size());
        if (end == 0) return std::nullopt;
        names.emplace_back(path.substr(0, end));
        path.remove_prefix(std::min(end + 1, path.size()));
    }
    return names;
}

String StorePath() {
    const String folder = Platform().KnownFolders->Find(kfLocalAppData);
    if (folder.empty()) throw ERegistryException(u"The registry has no folder for local application data");
    return ExcludeTrailingPathDelimiter(folder) +
           (folder.starts_with(u'/') ? u"/Varnholt/Registry.sqlite" : u"\\Varnholt\\Registry.sqlite");
}

using TValue = std::variant<std::int64_t, String>;

}  // namespace

/// The tables: keys with their parents, the roots being 1 to 3, and their values. Names are kept as they are and in
/// lower case.
class TRegistry::TStore {
public:
    explicit TStore(const String& path) : FPath(path) {
        sqlite3* database = nullptr;
        // No part of the path may be a link; those of the folder are resolved before.
        const std::filesystem::path native = ToNativePath(path);
        std::error_code ignored;
        const auto folder = std::filesystem::canonical(native.parent_path(), ignored);
        const int code = sqlite3_open_v2((folder / native.filename()).c_str(), &database,
                                         SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOFOLLOW, nullptr);
        FDatabase.reset(database);
        if (code != SQLITE_OK) Raise();
        sqlite3_busy_timeout(database, 10'000);
        Prepare();
    }

    /// The number of the key, or nothing if it is missing.
    std::optional<std::int64_t> Find(std::int64_t parent, const String& name) {
        return Number("SELECT id FROM keys WHERE parent = ? AND folded = ?", {parent, ToLower(name)});
    }
    std::int64_t Create(std::int64_t parent, const String& name) {
        Run("INSERT OR IGNORE INTO keys (parent, name, folded) VALUES (?, ?, ?)",
            {parent, name, ToLower(name)});
        const auto key = Find(parent, name);
        if (!key) throw ERegistryException(Format(u"%s: The store is damaged", {FPath}));
        return *key;
    }
    [[nodiscard]] bool Exists(std::int64_t key) {
        return Number("SELECT 1 FROM keys WHERE id = ?", {key}).has_value();
    }
    [[nodiscard]] bool HasKeys(std::int64_t key) {
        return Number("SELECT 1 FROM keys WHERE parent = ?", {key}).has_value();
    }
    void Delete(std::int64_t key) { Run("DELETE FROM keys WHERE id = ?", {key}); }
    String Read(std::int64_t key, StringView name) {
        String value;
        Run("SELECT data FROM entries WHERE key = ? AND folded = ?", {key, ToLower(name)},
            [&](sqlite3_stmt* row) { value = Text(row); });
        return value;
    }
    void Write(std::int64_t key, StringView name, StringView value) {
        Run("INSERT INTO entries (key, name, folded, data) VALUES (?, ?, ?, ?) "
            "ON CONFLICT (key, folded) DO UPDATE SET data = excluded.data",
            {key, String(name), ToLower(name), String(value)});
    }
    std::vector<String> KeyNames(std::int64_t key) {
        std::vector<String> names;
        Run("SELECT name FROM keys WHERE parent = ? ORDER BY folded", {key},
            [&](sqlite3_stmt* row) { names.push_back(Text(row)); });
        return names;
    }

    /// Does several steps as one; they are undone after an exception.
    template <typename TSteps>
    void Together(TSteps steps) {
        Run("BEGIN IMMEDIATE", {});
        try {
            steps();
            Run("COMMIT", {});
        } catch (...) {
            sqlite3_exec(FDatabase.get(), "ROLLBACK", nullptr, nullptr, nullptr);
            throw;
        }
    }

private:
    struct TClose {
        void operator()(sqlite3* database) const noexcept { sqlite3_close_v2(database); }
    };
    struct TFinalize {
        void operator()(sqlite3_stmt* statement) const noexcept { sqlite3_finalize(statement); }
    };

    static constexpr std::int64_t kApplication = 0x56524E31;  // "VRN1", in the header of the file

    [[noreturn]] void Raise() const {
        if (!FDatabase || sqlite3_errcode(FDatabase.get()) == SQLITE_NOMEM) throw std::bad_alloc();
        throw ERegistryException(Format(u"%s: %s", {FPath, FromUtf8(sqlite3_errmsg(FDatabase.get()))}));
    }

    static String Text(sqlite3_stmt* row) {
        const auto* const bytes = reinterpret_cast<const char*>(sqlite3_column_text(row, 0));
        return bytes == nullptr ? String()
                                : FromUtf8({bytes, static_cast<std::size_t>(sqlite3_column_bytes(row, 0))});
    }

    /// Creates the tables in an empty file; refuses one that is not a registry.
    void Prepare() {
        Run("PRAGMA foreign_keys = ON", {});
        Run("PRAGMA trusted_schema = OFF", {});
        if (Number("PRAGMA application_id", {}) == kApplication) return;
        Together([&] {
            if (Number("PRAGMA application_id", {}) == kApplication) return;
            if (Number("SELECT 1 FROM sqlite_master", {}))
                throw ERegistryException(Format(u"%s: The file belongs to another program", {FPath}));
            Run("CREATE TABLE keys (id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER REFERENCES keys "
                "(id), "
                "name TEXT NOT NULL, folded TEXT NOT NULL, UNIQUE (parent, folded))",
                {});
            Run("CREATE TABLE entries (key INTEGER NOT NULL REFERENCES keys (id) ON DELETE CASCADE, "
                "name TEXT NOT NULL, folded TEXT NOT NULL, data TEXT NOT NULL, PRIMARY KEY (key, folded))",
                {});
            Run("INSERT INTO keys (id, name, folded) VALUES (1, '', ''), (2, '', ''), (3, '', '')", {});
            Run("PRAGMA application_id = 0x56524E31", {});
        });
    }

    void Run(const char* sql, std::initializer_list<TValue> values) {
        Run(sql, values, [](sqlite3_stmt*) {});
    }

    /// Calls with each row.
    template <typename TUse>
    void Run(const char* sql, std::initializer_list<TValue> values, TUse use) {
        sqlite3_stmt* prepared = nullptr;
        if (sqlite3_prepare_v2(FDatabase.get(), sql, -1, &prepared, nullptr) != SQLITE_OK) Raise();
        const std::unique_ptr<sqlite3_stmt, TFinalize> statement(prepared);
        int at = 0;
        for (const TValue& value : values) Bind(prepared, ++at, value);
        int code = sqlite3_step(prepared);
        for (; code == SQLITE_ROW; code = sqlite3_step(prepared)) use(prepared);
        if (code != SQLITE_DONE) Raise();
    }

    void Bind(sqlite3_stmt* statement, int at, const TValue& value) {
        int code = SQLITE_OK;
        if (const auto* const number = std::get_if<std::int64_t>(&value)) {
            code = sqlite3_bind_int64(statement, at, *number);
        } else {
            const std::string text = ToUtf8(std::get<String>(value));
            code =
                sqlite3_bind_text64(statement, at, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
        }
        if (code != SQLITE_OK) Raise();
    }

    std::optional<std::int64_t> Number(const char* sql, std::initializer_list<TValue> values) {
        std::optional<std::int64_t> number;
        Run(sql, values, [&](sqlite3_stmt* row) { number = sqlite3_column_int64(row, 0); });
        return number;
    }

    const String FPath;
    std::unique_ptr<sqlite3, TClose> FDatabase;
};

// --- TRegistry ---

TRegistry::TRegistry() = default;
TRegistry::~TRegistry() = default;

void TRegistry::SetRootKey(TRootKey rootKey) noexcept {
    CloseKey();
    FRootKey = rootKey;
}

TRegistry::TStore* TRegistry::Store(bool canCreate) const {
    if (FStore) return FStore.get();
    const String path = StorePath();
    if (!FileExists(path)) {
        if (!canCreate) return nullptr;
        ForceDirectories(ExcludeTrailingPathDelimiter(ExtractFilePath(path)));
        const int file = open(ToNativePath(path).c_str(), O_CREAT | O_RDWR | O_NOFOLLOW | O_CLOEXEC, 0600);
        if (file >= 0) close(file);
    }
    FStore = std::make_unique<TStore>(path);
    return FStore.get();
}

bool TRegistry::OpenKey(StringView path, bool canCreate) {
    return Open(path, canCreate, true);
}

bool TRegistry::OpenKeyReadOnly(StringView path) {
    return Open(path, false, false);
}

bool TRegistry::Open(StringView path, bool canCreate, bool canWrite) {
    const auto names = NamesOf(path);
    if (!names) return false;
    TStore* const store = Store(canCreate && !names->empty());
    if (store == nullptr && !names->empty()) return false;
    std::optional<std::int64_t> key = std::int64_t{FRootKey} + 1;
    std::size_t found = 0;
    for (; found < names->size(); ++found) {
        const auto next = store->Find(*key, (*names)[found]);
        if (!next) break;
        key = next;
    }
    if (found < names->size() && !canCreate) return false;
    if (found < names->size())
        store->Together([&] {
            key = std::int64_t{FRootKey} + 1;  // another process may have changed the path
            for (const String& name : *names) key = store->Create(*key, name);
        });
    FKey = *key;
    FIsWritable = canWrite;
    FCurrentPath = Trimmed(path);
    return true;
}

void TRegistry::CloseKey() noexcept {
    FKey = 0;
    FCurrentPath.clear();
}

void TRegistry::CheckOpen(bool forWriting) const {
    if (FKey == 0) throw ERegistryException(u"No registry key is open");
    if (forWriting && !FIsWritable) throw ERegistryException(u"The registry key is open only for reading");
    TStore* const store = Store(forWriting);
    const bool isRoot = FKey <= std::int64_t{HKEY_LOCAL_MACHINE} + 1;  // also of a store that is missing
    if (store == nullptr ? !isRoot : !store->Exists(FKey))
        throw ERegistryException(u"The registry key was deleted");
}

String TRegistry::ReadString(StringView name) const {
    CheckOpen(false);
    return FStore ? FStore->Read(FKey, name) : String();
}

void TRegistry::WriteString(StringView name, StringView value) {
    CheckOpen(true);
    FStore->Write(FKey, name, value);
}

bool TRegistry::DeleteKey(StringView path) {
    CheckOpen(true);
    const auto names = NamesOf(path);
    if (!names || names->empty()) return false;
    bool isDeleted = false;
    FStore->Together([&] {
        std::optional<std::int64_t> key = FKey;
        for (const String& name : *names)
            if (key) key = FStore->Find(*key, name);
        isDeleted = key && !FStore->HasKeys(*key);
        if (isDeleted) FStore->Delete(*key);
    });
    return isDeleted;
}

std::vector<String> TRegistry::GetKeyNames() const {
    CheckOpen(false);
    return FStore ? FStore->KeyNames(FKey) : std::vector<String>();
}

}  // namespace Varnholt
