#pragma once

#include <cstdint>

#include "Platform/Http/IdHTTP.h"

/// The proxy that a user has chosen, once for all applications of the family.
///
///     TProxySettings settings;                        // loads the user's file
///     settings.SetServer(u"proxy.example.org");
///     settings.SetPort(3128);
///     settings.SetEnabled(true);
///     settings.Save();
///
///     TProxySettings::ApplyTo(client);                // the settings of this moment
///
/// File. `Varnholt\Settings\Proxy Settings.xml` in the folder of TSpecialFolders::GetLocalAppData:
///
///     <proxy-settings enabled="-1">
///       <server>proxy.example.org</server><port>3128</port><username/><password/>
///     </proxy-settings>
///
/// `enabled` is -1 or 0 when written, and read as Variant::ToBoolean reads a text. A missing element reads as an
/// empty text. The password is in the file as it is; so only the owner can read the file (mode 0600, from the
/// moment it exists), and it is replaced as a whole or not at all. No message or log contains the password.
///
/// Loading reports nothing: what could be read before the first bad value is kept, the rest has its default. Bad are an
/// `enabled` or a port that does not convert, and a port outside 0 to 65535, 0 standing for none.
///
/// Threads: an object serves one thread. The file has no lock; it is replaced in one step, so readers see the former
/// settings or the new ones.
namespace Varnholt {

class VARNHOLT_EXPORT TProxySettings {
public:
    /// Creates the folder of the file, with those above it, if it is missing; loads the file. A folder that cannot
    /// be created is reported by Save.
    TProxySettings();
    /// Writes the file if a property was set. Raises as Save, unless another exception is being handled, when the
    /// failure is not reported. Applications call Save.
    ~TProxySettings() noexcept(false);
    TProxySettings(const TProxySettings&) = delete;
    TProxySettings& operator=(const TProxySettings&) = delete;

    [[nodiscard]] bool GetEnabled() const noexcept { return FEnabled; }
    void SetEnabled(bool enabled);
    [[nodiscard]] const String& GetServer() const noexcept { return FServer; }
    void SetServer(StringView server);
    /// 0 for none.
    [[nodiscard]] std::int32_t GetPort() const noexcept { return FPort; }
    void SetPort(std::int32_t port);
    /// Empty if the proxy needs no log-in.
    [[nodiscard]] const String& GetUsername() const noexcept { return FUserName; }
    void SetUsername(StringView userName);
    [[nodiscard]] const String& GetPassword() const noexcept { return FPassword; }
    void SetPassword(StringView password);
    /// Whether there is a user name.
    [[nodiscard]] bool GetAuthenticate() const noexcept { return !FUserName.empty(); }

    /// Puts the settings on a client: its proxy, or none if they are not enabled. Frees the log-in of an earlier
    /// exchange.
    void Apply(TIdHTTP& idHttp) const;
    /// Loads the settings and puts them on a client.
    static void ApplyTo(TIdHTTP& idHttp);
    /// Writes the file in any case; a changed object writes it again when it is destroyed. Raises as
    /// IXMLDocument::SaveToFile, and EXMLDocError for a text that XML cannot hold.
    void Save();
    /// Not enabled, no texts, port 0. Does not count as a change.
    void RestoreDefaults();

private:
    void LoadSettings();

    bool FChanged = false;
    String FServer;
    std::int32_t FPort = 0;
    String FUserName;
    String FPassword;
    bool FEnabled = false;
    String FFileName;
    int FExceptions = 0;  // in progress when the object was made
};

}  // namespace Varnholt
