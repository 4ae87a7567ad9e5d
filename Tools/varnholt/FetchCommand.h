#pragma once

namespace CLI {
class App;
}

namespace Varnholt::Tool {

/// Adds the subcommand "fetch".
void AddFetchCommand(CLI::App& app);

}  // namespace Varnholt::Tool
