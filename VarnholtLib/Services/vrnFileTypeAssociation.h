#pragma once

#include <map>

#include "Platform/Runtime/Types.h"

/// Which application opens files of an extension, in the registry.
///
///     TFileTypeAssociation type;
///     type.SetExt(u".vrn");
///     type.SetFileTypeName(u"Station.Archive");
///     type.SetName(u"Station archive");
///     type.SetDefaultAction(u"open");
///     type.SetAction(u"open", u"station \"%1\"");
///     type.Save();
///
/// Below HKEY_CLASSES_ROOT, all as default values: the key of the extension has the name of the file type; the key
/// of that name has the display name, its key `DefaultIcon` the icon, its key `shell` the default action, and
/// `shell\ACTION\Command` the command of each action.
///
/// Raises Exception `Failed to open registry key`, and ERegistryException (Registry.h).
///
/// Threads: an object serves one thread at a time.
namespace Varnholt {

class VARNHOLT_EXPORT TFileTypeAssociation {
public:
    using TActions = std::map<String, String>;  // commands by the names of actions

    /// The extension with its full stop.
    [[nodiscard]] const String& GetExt() const noexcept { return FExt; }
    void SetExt(StringView ext) { FExt = ext; }
    [[nodiscard]] const String& GetFileTypeName() const noexcept { return FFileTypeName; }
    void SetFileTypeName(StringView name) { FFileTypeName = name; }
    [[nodiscard]] const String& GetName() const noexcept { return FName; }
    void SetName(StringView name) { FName = name; }
    [[nodiscard]] const String& GetDefaultIcon() const noexcept { return FDefaultIcon; }
    void SetDefaultIcon(StringView icon) { FDefaultIcon = icon; }
    [[nodiscard]] const String& GetDefaultAction() const noexcept { return FDefaultAction; }
    void SetDefaultAction(StringView action) { FDefaultAction = action; }
    [[nodiscard]] const TActions& GetActions() const noexcept { return FActions; }
    /// Adds an action, or replaces the command of one.
    void SetAction(StringView actionName, StringView command);

    /// Empties all fields and the actions.
    void Reset();
    /// Writes all keys. Actions that an earlier save wrote stay.
    void Save() const;
    /// Reads the registration of an extension after a Reset. After a failure the object holds what was read before it.
    void Load(StringView ext);
    /// Deletes the keys of the extension and of the file type, each unless its name is empty.
    void Delete() const;
    /// The same for the registration of an extension.
    static void Delete(StringView ext);

private:
    String FDefaultIcon;
    String FName;
    String FDefaultAction;
    String FExt;
    TActions FActions;
    String FFileTypeName;
};

}  // namespace Varnholt
