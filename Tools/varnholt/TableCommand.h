#pragma once

namespace CLI {
class App;
}

namespace Varnholt::Tool {

/// `varnholt table`: prints or writes the rows of a CSV file as a typed table, picked and sorted.
void AddTableCommand(CLI::App& app);

}  // namespace Varnholt::Tool
