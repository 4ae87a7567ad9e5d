#pragma once

namespace CLI {
class App;
}

namespace Varnholt::Tool {

/// `varnholt folders`: prints the known folders of this user.
void AddFoldersCommand(CLI::App& app);

}  // namespace Varnholt::Tool
