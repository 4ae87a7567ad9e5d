#include "VarnholtLib/Services/vrnProxy.h"

#include <exception>

#include "Platform/Runtime/Files.h"
#include "Platform/System/PrivateFile.h"
#include "Platform/Xml/XmlDocument.h"
#include "VarnholtLib/Foundation/vrnPathText.h"
#include "VarnholtLib/Services/vrnSpecialFolders.h"

namespace Varnholt {
namespace {

/// The path of the file; empty if the user has no folder for it.
String InitFilename() {
    const String appData = TSpecialFolders::GetLocalAppData();
    if (appData.empty()) return {};
    const String folder = PathBelow(appData, u"Varnholt\\Settings");
    try {
        ForceDirectories(folder);
    } catch (const Exception&) {
        // Save reports it.
    }
    return PathBelow(folder, u"Proxy Settings.xml");
}

}  // namespace

TProxySettings::TProxySettings() : FFileName(InitFilename()), FExceptions(std::uncaught_exceptions()) {
    LoadSettings();
}

TProxySettings::~TProxySettings() noexcept(false) {
    if (!FChanged) return;
    try {
        Save();
    } catch (...) {
        if (std::uncaught_exceptions() <= FExceptions) throw;
    }
}

void TProxySettings::SetEnabled(bool enabled) {
    FEnabled = enabled;
    FChanged = true;
}

void TProxySettings::SetServer(StringView server) {
    FServer = server;
    FChanged = true;
}

void TProxySettings::SetPort(std::int32_t port) {
    FPort = port;
    FChanged = true;
}

void TProxySettings::SetUsername(StringView userName) {
    FUserName = userName;
    FChanged = true;
}

void TProxySettings::SetPassword(StringView password) {
    FPassword = password;
    FChanged = true;
}

void TProxySettings::RestoreDefaults() {
    FEnabled = false;
    FServer.clear();
    FPort = 0;
    FUserName.clear();
    FPassword.clear();
}

void TProxySettings::LoadSettings() {
    RestoreDefaults();
    if (!RegularFileExists(FFileName)) return;
    try {
        const std::shared_ptr<IXMLNode> root = LoadXMLDocument(FFileName)->GetDocumentElement();
        FEnabled = root->GetAttribute(u"enabled").ToBoolean();
        FServer = root->GetChildValue(u"server").ToText();
        const std::int32_t port = Variant(root->GetChildValue(u"port").ToText()).ToInt32();
        if (port < 0 || port > 65535) return;
        FPort = port;
        FUserName = root->GetChildValue(u"username").ToText();
        FPassword = root->GetChildValue(u"password").ToText();
    } catch (...) {
        // What was read before stays.
    }
}

void TProxySettings::Save() {
    const std::shared_ptr<IXMLDocument> document = NewXMLDocument(u"1.0");
    const std::shared_ptr<IXMLNode> root = document->AddChild(u"proxy-settings");
    root->SetAttribute(u"enabled", FEnabled ? -1 : 0);
    root->SetChildValue(u"server", FServer);
    root->SetChildValue(u"port", FPort);
    root->SetChildValue(u"username", FUserName);
    root->SetChildValue(u"password", FPassword);
    MakePrivateFile(FFileName);
    document->SaveToFile(FFileName);
}

void TProxySettings::Apply(TIdHTTP& idHttp) const {
    TIdProxyConnectionInfo& proxy = idHttp.GetProxyParams();
    proxy.Authentication.reset();
    if (!FEnabled) {
        proxy = {};
        return;
    }
    proxy.ProxyServer = FServer;
    proxy.ProxyPort = FPort;
    proxy.BasicAuthentication = GetAuthenticate();
    proxy.ProxyUsername = FUserName;
    proxy.ProxyPassword = FPassword;
}

void TProxySettings::ApplyTo(TIdHTTP& idHttp) {
    TProxySettings().Apply(idHttp);
}

}  // namespace Varnholt
