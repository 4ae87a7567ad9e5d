#pragma once

namespace CLI {
class App;
}

namespace Varnholt::Tool {

/// `varnholt pack`: packs files and folders into an archive.
void AddPackCommand(CLI::App& app);

}  // namespace Varnholt::Tool
