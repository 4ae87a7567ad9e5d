#include "Tools/varnholt/TableCommand.h"

#include <CLI/CLI.hpp>
#include <charconv>
#include <limits>
#include <memory>
#include <optional>

#include "Platform/Runtime/Exceptions.h"
#include "Tools/varnholt/TableOutput.h"
#include "Tools/varnholt/TableSource.h"

namespace Varnholt::Tool {
namespace {

struct TTableOptions {
    std::string File;
    std::optional<std::string> Sort;
    std::optional<std::string> Rows;
    std::optional<std::string> Columns;
    std::optional<std::string> Limit;
    std::optional<std::string> OutFile;
};

std::unique_ptr<TTableData> LoadTable(const TStringGrid& grid, const std::optional<std::string>& rows) {
    if (!rows) return TTableData::FromStringGrid(&grid);
    const TPickedRows picked(grid, ReadRowNumbers(FromUtf8(*rows), grid));
    return TTableData::FromStringGrid(&picked);
}

/// How many rows to show: decimal digits alone. CLI11 takes 010 for octal and cuts a number that is too large.
std::size_t ReadLimit(const std::string& text) {
    std::size_t limit = 0;
    const char* const textEnd = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), textEnd, limit);
    if (error != std::errc() || end != textEnd) {
        throw CLI::ValidationError("--limit", "\"" + text + "\" is not a whole number of 0 or more");
    }
    return limit;
}

void RunTable(const TTableOptions& options) {
    const auto limit = options.Limit ? ReadLimit(*options.Limit) : std::numeric_limits<std::size_t>::max();
    std::unique_ptr<TStringGrid> grid = ReadGrid(FromUtf8(options.File));
    const TColumnNames names(*grid);
    const TSortOperation keys = options.Sort ? names.ReadSortKeys(FromUtf8(*options.Sort)) : TSortOperation();
    TTableView view;
    view.Columns = options.Columns ? names.ReadColumns(FromUtf8(*options.Columns)) : names.AllColumns();
    const std::unique_ptr<TTableData> table = LoadTable(*grid, options.Rows);
    grid.reset();  // a large file need not be held twice

    const bool isSorted = keys.GetCount() > 0;
    if (isSorted) table->ExecuteSort(keys);
    const TTableDataRows& rows = isSorted ? table->GetSorted() : table->GetData();
    const auto count = static_cast<std::size_t>(rows.GetCount());
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
    table->add_option("--limit", options->Limit, "Show the first rows alone, that many, after sorting");
    table->add_option("--out", options->OutFile, "Write the table as CSV, and print nothing");
    table->callback([options] { RunTable(*options); });
}

}  // namespace Varnholt::Tool
