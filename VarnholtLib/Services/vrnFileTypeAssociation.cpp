#include "VarnholtLib/Services/vrnFileTypeAssociation.h"

#include "VarnholtLib/Services/vrnRegistryUtils.h"

namespace Varnholt {
namespace {

constexpr StringView kIconKey = u"DefaultIcon";
constexpr StringView kShellKey = u"shell";
constexpr StringView kCommandKey = u"Command";
constexpr StringView kDefaultValue;

}  // namespace

void TFileTypeAssociation::SetAction(StringView actionName, StringView command) {
    FActions[String(actionName)] = command;
}

void TFileTypeAssociation::Reset() {
    *this = TFileTypeAssociation();
}

void TFileTypeAssociation::Save() const {
    auto registry = TRegistryUtils::OpenKey(HKEY_CLASSES_ROOT, FExt, okmReadWrite);
    registry->WriteString(kDefaultValue, FFileTypeName);
    TRegistryUtils::OpenKey(*registry, FFileTypeName, okmReadWrite);
    registry->WriteString(kDefaultValue, FName);
    TRegistryUtils::WriteChildKeyString(*registry, kIconKey, kDefaultValue, FDefaultIcon);
    TRegistryUtils::OpenSubkey(registry, kShellKey, okmReadWrite, oskmReuse);
    registry->WriteString(kDefaultValue, FDefaultAction);
    for (const auto& [name, command] : FActions)
        TRegistryUtils::OpenSubkey(registry, name + u'\\' + String(kCommandKey), okmReadWrite, oskmNew)
            ->WriteString(kDefaultValue, command);
}

void TFileTypeAssociation::Load(StringView ext) {
    const String asked(ext);  // it may be a field
    Reset();
    FExt = asked;
    const auto registry = TRegistryUtils::OpenKey(HKEY_CLASSES_ROOT, FExt, okmReadOnly);
    FFileTypeName = registry->ReadString(kDefaultValue);
    TRegistryUtils::OpenKey(*registry, FFileTypeName, okmReadOnly);
    FName = registry->ReadString(kDefaultValue);
    FDefaultIcon = TRegistryUtils::ReadChildKeyString(*registry, kIconKey, kDefaultValue);
    TRegistryUtils::OpenSubkey(registry, kShellKey, okmReadOnly, oskmReuse);
    FDefaultAction = registry->ReadString(kDefaultValue);
    for (const String& name : TRegistryUtils::GetChildKeyNames(*registry)) {
        const auto action = TRegistryUtils::OpenSubkey(registry, name, okmReadOnly, oskmNew);
        SetAction(name, TRegistryUtils::ReadChildKeyString(*action, kCommandKey, kDefaultValue));
    }
}

void TFileTypeAssociation::Delete() const {
    for (const String& key : {FExt, FFileTypeName})
        if (!key.empty()) TRegistryUtils::DeleteKey(HKEY_CLASSES_ROOT, u"", key, true);
}

void TFileTypeAssociation::Delete(StringView ext) {
    TFileTypeAssociation association;
    association.Load(ext);
    association.Delete();
}

}  // namespace Varnholt
