#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "Platform/Runtime/Exceptions.h"

/// A store of texts in a tree of keys, one for each user and shared by all programs.
///
///     TRegistry registry;
///     registry.SetRootKey(HKEY_CLASSES_ROOT);
///     if (registry.OpenKey(u"Station.File\\shell", true)) registry.WriteString(u"", u"open");
///
/// Keys and values. A path is names with backslashes between them; one backslash at its beginning or end is
/// ignored, and the empty path is the root itself. A path has at most 512 names. Names of keys and values compare
/// without regard to case and keep the spelling of their creation. A value has a name or, as the default value, an
/// empty one. An unpaired surrogate becomes U+FFFD.
///
/// Store. The file `Varnholt\Registry.sqlite` in the user's folder for local application data (kfLocalAppData), in
/// the format of SQLite, created with mode 0600 by the first writing. As long as it is missing, the roots have no
/// keys. Each operation is done whole or not at all, also if the process is killed; several processes may work on
/// it at the same time, and one that finds it locked waits for up to 10 seconds.
///
/// ERegistryException (`%s: %s` with the path of the store and the reason) is raised if the store cannot be opened, is
/// damaged or belongs to another program, which changes nothing, or stays locked; further
/// `No registry key is open`, `The registry key is open only for reading` and `The registry key was deleted`.
///
/// Threads: an object serves one thread at a time.
namespace Varnholt {

// NOLINTNEXTLINE(readability-identifier-naming): names that applications know
enum TRootKey : std::uint8_t { HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE };

class VARNHOLT_EXPORT ERegistryException : public Exception {
public:
    using Exception::Exception;
};

class VARNHOLT_EXPORT TRegistry {
public:
    /// Nothing is open; the root is HKEY_CURRENT_USER.
    TRegistry();
    ~TRegistry();
    TRegistry(const TRegistry&) = delete;
    TRegistry& operator=(const TRegistry&) = delete;

    /// The root from which paths start. Setting it closes the key.
    [[nodiscard]] TRootKey GetRootKey() const noexcept { return FRootKey; }
    void SetRootKey(TRootKey rootKey) noexcept;
    /// The path of the open key, without a backslash at its beginning or end; empty if none is open.
    [[nodiscard]] const String& GetCurrentPath() const noexcept { return FCurrentPath; }

    /// Opens a key for reading and writing; if it is missing, creates it with the keys above it, or fails. After a
    /// failure, also for a path with an empty name, the key that was open before stays open.
    bool OpenKey(StringView path, bool canCreate);
    /// Opens a key for reading.
    bool OpenKeyReadOnly(StringView path);
    void CloseKey() noexcept;

    /// The value of the open key; empty if it has none of that name.
    [[nodiscard]] String ReadString(StringView name) const;
    void WriteString(StringView name, StringView value);
    /// Deletes a key below the open one, with its values. False if it is missing or has keys itself.
    bool DeleteKey(StringView path);
    /// The names of the keys directly below the open one, in the order of their lower-case forms.
    [[nodiscard]] std::vector<String> GetKeyNames() const;

private:
    class TStore;

    bool Open(StringView path, bool canCreate, bool canWrite);
    void CheckOpen(bool forWriting) const;
    [[nodiscard]] TStore* Store(bool canCreate) const;

    mutable std::unique_ptr<TStore> FStore;  // none as long as its file is missing
    TRootKey FRootKey = HKEY_CURRENT_USER;
    String FCurrentPath;
    std::int64_t FKey = 0;  // none, or the number of the key in the store
    bool FIsWritable = false;
};

}  // namespace Varnholt
