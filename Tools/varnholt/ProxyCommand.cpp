#include "Tools/varnholt/ProxyCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

#include "Platform/Runtime/Format.h"
#include "Tools/varnholt/Output.h"
#include "Tools/varnholt/Process.h"
#include "VarnholtLib/Services/vrnProxy.h"

namespace Varnholt::Tool {
namespace {

struct TProxyOptions {
    std::string Host;
    std::int32_t Port = 0;
    std::optional<std::string> User;
};

void RunShow() {
    const TProxySettings settings;
    PrintLine(Format(u"enabled   %s", {settings.GetEnabled() ? u"yes" : u"no"}));
    PrintLine(Format(u"server    %s", {OnOneLine(AddressWithoutUser(settings.GetServer()))}));
    PrintLine(Format(u"port      %d", {settings.GetPort()}));
    PrintLine(Format(u"user      %s", {OnOneLine(settings.GetUsername())}));
    PrintLine(Format(u"password  %s", {settings.GetPassword().empty() ? u"not set" : u"set"}));
}

void RunSet(const TProxyOptions& options) {
    const String host = FromUtf8(options.Host);
    if (!IsHostName(host))
        throw CLI::ValidationError("host", "\"" + ToUtf8(AddressWithoutUser(host)) + "\" is not a host name");
    const String user = options.User ? FromUtf8(*options.User) : String();
    const String password =
        user.empty() ? String() : ReadPassword(Format(u"Password of %s: ", {OnOneLine(user)}));
    TProxySettings settings;
    settings.SetServer(host);
    settings.SetPort(options.Port);
    settings.SetUsername(user);
    settings.SetPassword(password);
    settings.SetEnabled(true);
    settings.Save();
}

void RunOff() {
    TProxySettings settings;
    settings.SetEnabled(false);
    settings.Save();
}

}  // namespace

void AddProxyCommand(CLI::App& app) {
    const auto options = std::make_shared<TProxyOptions>();
    CLI::App* const proxy =
        app.add_subcommand("proxy", "Show or set the proxy for fetch and all applications of the family");
    proxy->require_subcommand(0, 1);
    proxy->callback([proxy] {
        if (proxy->get_subcommands().empty()) RunShow();
    });
    proxy->add_subcommand("show", "Print the settings, without the password")->callback(RunShow);
    CLI::App* const set = proxy->add_subcommand(
        "set", "Use a proxy; with --user, the password is read from the terminal or standard input");
    set->add_option("host", options->Host, "Host name or address")->required()->type_name("");
    set->add_option("port", options->Port, "Port")->required()->check(CLI::Range(1, 65535))->type_name("");
    set->add_option("--user", options->User, "User name at the proxy")->type_name("NAME");
    set->callback([options] { RunSet(*options); });
    proxy->add_subcommand("off", "Use no proxy, and keep the settings")->callback(RunOff);
}

}  // namespace Varnholt::Tool
