#pragma once

namespace CLI {
class App;
}

namespace Varnholt::Tool {

/// `varnholt calc`: calculates an expression once, or for each row of a CSV file.
void AddCalcCommand(CLI::App& app);

}  // namespace Varnholt::Tool
