#pragma once

namespace CLI {
class App;
}

namespace Varnholt::Tool {

/// `varnholt unpack` and `varnholt list`: extract the files of an archive, or print what it contains.
void AddUnpackCommands(CLI::App& app);

}  // namespace Varnholt::Tool
