#pragma once

namespace CLI {
class App;
}

namespace Varnholt::Tool {

/// `varnholt config`: prints and changes the settings in a configuration file.
void AddConfigCommand(CLI::App& app);

}  // namespace Varnholt::Tool
