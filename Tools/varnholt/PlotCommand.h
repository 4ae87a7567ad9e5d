#pragma once

namespace CLI {
class App;
}

namespace Varnholt::Tool {

/// `varnholt plot`: a picture of columns of a CSV file.
void AddPlotCommand(CLI::App& app);

}  // namespace Varnholt::Tool
