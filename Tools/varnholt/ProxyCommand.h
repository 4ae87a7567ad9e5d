#pragma once

namespace CLI {
class App;
}

namespace Varnholt::Tool {

/// Adds the subcommand "proxy".
void AddProxyCommand(CLI::App& app);

}  // namespace Varnholt::Tool
