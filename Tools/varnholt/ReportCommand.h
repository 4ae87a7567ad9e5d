#pragma once

namespace CLI {
class App;
}

namespace Varnholt::Tool {

/// `varnholt report`: the climate of a station from a CSV file of daily values.
void AddReportCommand(CLI::App& app);

}  // namespace Varnholt::Tool
