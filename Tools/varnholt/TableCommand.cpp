#include "Tools/varnholt/TableCommand.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <optional>

#include "Platform/Runtime/Exceptions.h"
#include "Tools/varnholt/TableOutput.h"
#include "Tools/varnholt/TableSource.h"

namespace Varnholt::Tool {
namespace {

struct TTableOptions {
    std::string File;
    std::string Sort;
    std::optional<std::string> Rows;
    std::optional<std::string> Columns;
    std::optional<std::int64_t> Limit;
    std::optional<std::string> OutFile;
};

std::unique_ptr<TTableData> LoadTable(const TStringGrid& grid, const std::optional<std::string>& rows) {
    if (!rows) return TTableData::FromStringGrid(&grid);
    const TPickedRows picked(grid, ReadRowNumbers(FromUtf8(*rows), grid));
    return TTableData::FromStringGrid(&picked);
}

void RunTable(const TTableOptions& options) {
    std::unique_ptr<TStringGrid> grid = ReadGrid(FromUtf8(options.File));
    const TColumnNames names(*grid);
    const TSortOperation keys = names.ReadSortKeys(FromUtf8(options.Sort));
    TTableView view;
    view.Columns = options.Columns ? names.ReadColumns(FromUtf8(*options.Columns)) : names.AllColumns();
    const std::unique_ptr<TTableData> table = LoadTable(*grid, options.Rows);
    grid.reset();  // a large file need not be held twice

    const bool isSorted = keys.GetCount() > 0;
    if (isSorted) table->ExecuteSort(keys);
    const TTableDataRows& rows = isSorted ? table->GetSorted() : table->GetData();
    const auto count = static_cast<std::size_t>(rows.GetCount());
    const auto limit = static_cast<std::size_t>(options.Limit.value_or(rows.GetCount()));
    view.Rows = {rows.begin(), std::min(count, limit)};
    if (options.OutFile) {
        WriteTable(FromUtf8(*options.OutFile), names, view);
    } else {
        PrintTable(names, *table, view);
    }
}

}  // namespace

void AddTableCommand(CLI::App& app) {
    const auto options = std::make_shared<TTableOptions>();
    CLI::App* table = app.add_subcommand("table", "Print a CSV file as a typed table, picked and sorted");
    table->add_option("file", options->File, "CSV file with a header row")->required();
    table->add_option(
        "--sort", options->Sort,
        "Columns to sort by, the first one first, each ascending or with :desc behind its name: "
        "COLUMN[:desc][,COLUMN[:desc]...]");
    table->add_option("--rows", options->Rows,
                      "Rows to take, counted from 1 in the file's order, for example '1 - 5, 8'");
    table->add_option("--columns", options->Columns, "Columns to show, in this order, with commas between");
    table->add_option("--limit", options->Limit, "Show the first rows alone, that many, after sorting")
        ->check(CLI::NonNegativeNumber);
    table->add_option("--out", options->OutFile, "Write the table as CSV, and print nothing");
    table->callback([options] { RunTable(*options); });
}

}  // namespace Varnholt::Tool
