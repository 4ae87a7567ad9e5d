#pragma once

#include "Platform/Registry/Registry.h"

/// Opening and deleting keys of the registry, with an exception where the registry itself returns false.
///
///     const auto type = TRegistryUtils::OpenKey(HKEY_CLASSES_ROOT, u"Station.File", okmReadWrite);
///     TRegistryUtils::WriteChildKeyString(*type, u"DefaultIcon", u"", u"station.png");
///
/// Every operation raises Exception `Failed to open registry key` for a key that is missing, if it is not created, and
/// ERegistryException as the registry.
///
/// Threads: as the registry.
namespace Varnholt {

enum TOpenKeyMode : std::uint8_t { okmReadWrite, okmReadOnly };
enum TOpenSubkeyMode : std::uint8_t { oskmNew, oskmReuse };

class VARNHOLT_EXPORT TRegistryUtils {
public:
    TRegistryUtils() = delete;
    /// A new registry object with an open key. okmReadWrite creates a missing key.
    [[nodiscard]] static std::shared_ptr<TRegistry> OpenKey(TRootKey rootKey, StringView key,
                                                            TOpenKeyMode openMode);
    /// Opens another key, from the root, on the same object. What was open before is closed, also after a failure.
    static void OpenKey(TRegistry& registry, StringView key, TOpenKeyMode openMode);
    /// Opens a key below the open one: on the same object, which is returned, or on a new one.
    static std::shared_ptr<TRegistry> OpenSubkey(const std::shared_ptr<TRegistry>& registry,
                                                 StringView keyName, TOpenKeyMode openMode,
                                                 TOpenSubkeyMode openSubKeyMode);
    /// The names of the keys directly below a key.
    [[nodiscard]] static std::vector<String> GetChildKeyNames(TRootKey rootKey, StringView key);
    [[nodiscard]] static std::vector<String> GetChildKeyNames(const TRegistry& registry);
    /// A value of a key below the open one.
    [[nodiscard]] static String ReadChildKeyString(const TRegistry& registry, StringView keyName,
                                                   StringView valueName);
    /// The key is created if it is missing.
    static void WriteChildKeyString(const TRegistry& registry, StringView keyName, StringView valueName,
                                    StringView value);
    /// Deletes a key; with recursive, the keys below it first. Without, one that has keys stays.
    static void DeleteKey(TRootKey rootKey, StringView parentKey, StringView key, bool recursive);
};

}  // namespace Varnholt
