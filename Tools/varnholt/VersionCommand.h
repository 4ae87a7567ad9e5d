#pragma once

namespace CLI {
class App;
}

namespace Varnholt::Tool {

/// `varnholt version`: prints the version that an executable file carries.
void AddVersionCommand(CLI::App& app);

}  // namespace Varnholt::Tool
