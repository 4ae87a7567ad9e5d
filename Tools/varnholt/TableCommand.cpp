#include "Tools/varnholt/TableCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <limits>
#include <memory>
#include <numeric>
#include <optional>

#include "Tools/varnholt/InputOptions.h"
#include "Tools/varnholt/TableOutput.h"
#include "Tools/varnholt/TableSort.h"
#include "Tools/varnholt/TableSource.h"

namespace Varnholt::Tool {
namespace {

struct TTableOptions {
    std::string File;
    TInputOptions Input;
    std::optional<std::string> Sort;
    std::optional<std::string> Rows;
    std::optional<std::string> Columns;
    std::optional<std::string> Limit;
    std::optional<std::string> OutFile;
};

/// The number of rows to show, in decimal digits. CLI11 takes 010 for octal and truncates a number that is too
/// large.
std::size_t ReadLimit(const std::string& text) {
    std::size_t limit = 0;
    const char* const textEnd = text.data() + text.size();
    const auto [end, error] = std::from_chars(text.data(), textEnd, limit);
    if (error == std::errc::result_out_of_range && end == textEnd)
        return std::numeric_limits<std::size_t>::max();
    if (error != std::errc() || end != textEnd) {
        throw CLI::ValidationError("--limit", "\"" + text + "\" is not a whole number of 0 or more");
    }
    return limit;
}

std::vector<std::int32_t> AllRows(const TTableFile& file) {
    std::vector<std::int32_t> rows(static_cast<std::size_t>(file.Grid->GetRowCount()) - 1);
    std::iota(rows.begin(), rows.end(), 1);
    return rows;
}

std::vector<std::int32_t> PickRows(const TTableOptions& options, const TTableFile& file) {
    if (!options.Rows) return AllRows(file);
    try {
        return ReadRowNumbers(FromUtf8(*options.Rows), file);
    } catch (const EArgumentException& failure) {
        throw CLI::ValidationError("--rows", failure.what());
    }
}

void RunTable(const TTableOptions& options) {
    const auto limit = options.Limit ? ReadLimit(*options.Limit) : std::numeric_limits<std::size_t>::max();
    const TMissingValues missing = options.Input.GetMissingValues();
    const TEncoding& encoding = options.Input.GetEncoding();
    const String input = FromUtf8(options.File), output = FromUtf8(options.OutFile.value_or("-"));
    CheckOutputs({&input, 1}, {&output, 1});

    const TTableFile file = ReadTable(input, encoding);
    const TColumnNames names(file);
    const TSortOperation keys = options.Sort ? names.ReadSortKeys(FromUtf8(*options.Sort)) : TSortOperation();
    TTableView view{file, PickRows(options, file),
                    options.Columns ? names.ReadColumns(FromUtf8(*options.Columns)) : names.AllColumns()};
    std::vector<TVarType> types;
    if (!options.OutFile) {
        for (const std::int32_t column : view.Columns) {
            types.push_back(TypeOfColumn(*file.Grid, view.Rows, column, missing));
        }
    }
    if (keys.GetCount() > 0) view.Rows = SortRows(*file.Grid, view.Rows, keys, missing);
    view.Rows.resize(std::min(view.Rows.size(), limit));
    if (options.OutFile) {
        WriteTable(output, view);
    } else {
        PrintTable(view, types);
    }
}

}  // namespace

void AddTableCommand(CLI::App& app) {
    const auto options = std::make_shared<TTableOptions>();
    CLI::App* table =
        app.add_subcommand("table", "Print or write rows and columns of a CSV file, picked and sorted");
    table->add_option("file", options->File, "CSV file with a header row; - is standard input")
        ->required()
        ->type_name("");
    AddInputOptions(*table, options->Input);
    table
        ->add_option(
            "--sort", options->Sort,
            "Columns to sort by, the most significant first; :desc after a name sorts descending, and "
            "missing values are last in either direction")
        ->type_name("COLUMN[:desc],...");
    table
        ->add_option("--rows", options->Rows,
                     "Rows to take, counted from 1 in the order of the file, for example '1 - 5, 8'")
        ->type_name("RANGES");
    table->add_option("--columns", options->Columns, "Columns to show, in this order")
        ->type_name("COLUMN,...");
    table->add_option("--limit", options->Limit, "Show at most this many rows, after sorting")
        ->type_name("COUNT");
    table
        ->add_option("--out", options->OutFile,
                     "Write the cells as CSV to this file instead; - is standard output")
        ->type_name("FILE");
    table->callback([options] { RunTable(*options); });
}

}  // namespace Varnholt::Tool
