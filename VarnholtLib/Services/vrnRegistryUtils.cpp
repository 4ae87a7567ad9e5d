#include "VarnholtLib/Services/vrnRegistryUtils.h"

namespace Varnholt {
namespace {

String Joined(StringView parent, StringView key) {
    return parent.empty() ? String(key) : String(parent) + u'\\' + String(key);
}

}  // namespace

std::shared_ptr<TRegistry> TRegistryUtils::OpenKey(TRootKey rootKey, StringView key, TOpenKeyMode openMode) {
    auto registry = std::make_shared<TRegistry>();
    registry->SetRootKey(rootKey);
    OpenKey(*registry, key, openMode);
    return registry;
}

void TRegistryUtils::OpenKey(TRegistry& registry, StringView key, TOpenKeyMode openMode) {
    const String path(key);  // it may be the current path
    registry.CloseKey();
    const bool isOpen =
        openMode == okmReadOnly ? registry.OpenKeyReadOnly(path) : registry.OpenKey(path, true);
    if (!isOpen) throw Exception(u"Failed to open registry key");
}

std::shared_ptr<TRegistry> TRegistryUtils::OpenSubkey(const std::shared_ptr<TRegistry>& registry,
                                                      StringView keyName, TOpenKeyMode openMode,
                                                      TOpenSubkeyMode openSubKeyMode) {
    const String path = Joined(registry->GetCurrentPath(), keyName);
    if (openSubKeyMode == oskmNew) return OpenKey(registry->GetRootKey(), path, openMode);
    OpenKey(*registry, path, openMode);
    return registry;
}

std::vector<String> TRegistryUtils::GetChildKeyNames(TRootKey rootKey, StringView key) {
    return OpenKey(rootKey, key, okmReadOnly)->GetKeyNames();
}

std::vector<String> TRegistryUtils::GetChildKeyNames(const TRegistry& registry) {
    return registry.GetKeyNames();
}

String TRegistryUtils::ReadChildKeyString(const TRegistry& registry, StringView keyName,
                                          StringView valueName) {
    const String path = Joined(registry.GetCurrentPath(), keyName);
    return OpenKey(registry.GetRootKey(), path, okmReadOnly)->ReadString(valueName);
}

void TRegistryUtils::WriteChildKeyString(const TRegistry& registry, StringView keyName, StringView valueName,
                                         StringView value) {
    const String path = Joined(registry.GetCurrentPath(), keyName);
    OpenKey(registry.GetRootKey(), path, okmReadWrite)->WriteString(valueName, value);
}

void TRegistryUtils::DeleteKey(TRootKey rootKey, StringView parentKey, StringView key, bool recursive) {
    const String path =
        Joined(parentKey, key);  // too long to be opened, if a damaged store has keys in a circle
    if (recursive)
        for (const String& child : GetChildKeyNames(rootKey, path)) DeleteKey(rootKey, path, child, true);
    OpenKey(rootKey, parentKey, okmReadWrite)->DeleteKey(key);
}

}  // namespace Varnholt
