#include "Tools/varnholt/CalcCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <optional>
#include <set>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Tools/varnholt/CalcRows.h"
#include "Tools/varnholt/InputOptions.h"
#include "Tools/varnholt/Output.h"
#include "VarnholtLib/Numerics/vrnMath.h"

namespace Varnholt::Tool {
namespace {

struct TCalcOptions {
    std::string Expression;
    std::vector<std::string> Settings;
    std::optional<std::string> CsvFile;
    TInputOptions Input;
    std::vector<std::string> Aliases;
    std::optional<std::string> OutFile;
    std::string NewColumn = "value";
    bool Summary = false;
    bool Keywords = false;
};

/// A keyword with a value of its own, from --set.
struct TSetting {
    String Name;
    Extended Value;
};

/// Whether an expression can refer to the keyword.
bool IsKeywordName(const String& name) {
    try {
        TCalc calc(u"$" + name);
        const auto* keyword = dynamic_cast<const TKeywordNum*>(&calc.GetItems(0));
        return calc.Get_Count() == 1 && keyword != nullptr && keyword->GetKeyword() == name;
    } catch (const Exception&) {
        return false;
    }
}

/// Reads the options NAME=TEXT, each name at most once.
class TAssignmentReader {
public:
    /// Calls take with name and text; it returns whether the text is valid. Raises CLI::ValidationError.
    template <typename TTake>
    void Read(const std::vector<std::string>& values, const std::string& option, const std::string& form,
              TTake take) {
        for (const std::string& value : values) {
            const std::size_t equals = std::min(value.find('='), value.size());
            const String name = FromUtf8(value.substr(0, equals));
            const bool isValid = equals < value.size() && take(name, FromUtf8(value.substr(equals + 1)));
            if (!isValid) {
                const String message = Format(u"\"%s\" is not %s", {FromUtf8(value), FromUtf8(form)});
                throw CLI::ValidationError(option, ToUtf8(message));
            }
            if (!IsKeywordName(name)) {
                throw CLI::ValidationError(option, "An expression cannot hold the name of \"" + value + "\"");
            }
            if (!FNames.insert(name).second) {
                throw CLI::ValidationError(option, "\"" + ToUtf8(name) + "\" has a meaning already");
            }
        }
    }

private:
    std::set<String> FNames;
};

struct TOwnKeywords {
    std::vector<TSetting> Settings;
    std::vector<TColumnAlias> Aliases;
};

TOwnKeywords ReadOwnKeywords(const TCalcOptions& options) {
    TOwnKeywords keywords;
    TAssignmentReader reader;
    reader.Read(options.Settings, "--set", "NAME=NUMBER", [&](const String& name, const String& text) {
        Extended value = 0;
        const bool isNumber = TryStrToFloat(text, value, TFormatSettings::Invariant());
        keywords.Settings.push_back({name, value});
        return isNumber;
    });
    reader.Read(options.Aliases, "--as", "NAME=COLUMN", [&](const String& name, const String& column) {
        keywords.Aliases.push_back({name, column});
        return true;
    });
    return keywords;
}

void RegisterSettings(TCalc& calc, const std::vector<TSetting>& settings) {
    for (const TSetting& setting : settings) {
        const Extended value = setting.Value;
        calc.RegisterKeyword(setting.Name, [value](TCalc&, const String&, void*) { return value; });
    }
}

void PrintKeywords(const TCalc& calc) {
    for (const TKeyword* keyword : KeywordsOf(calc)) PrintLine(keyword->GetKeyword());
}

void PrintSummary(const TRowSummary& summary) {
    PrintLine(Format(u"rows: %d", {summary.Rows}));
    PrintLine(Format(u"calculated: %d", {summary.Calculated}));
    PrintLine(Format(u"missing: %d", {summary.Rows - summary.Calculated}));
    PrintLine(u"mean: " + ValueText(summary.Mean()));
    PrintLine(u"min: " + ValueText(summary.Min));
    PrintLine(u"max: " + ValueText(summary.Max));
}

std::unique_ptr<TRowSink> MakeSink(const TCalcOptions& options, const TCsvInput& file) {
    if (options.OutFile) {
        return std::make_unique<TCsvRowSink>(FromUtf8(*options.OutFile), file, FromUtf8(options.NewColumn));
    }
    if (options.Summary) return std::make_unique<TRowSink>();
    return std::make_unique<TPrintedRowSink>();
}

void CheckNewColumn(const TCalcOptions& options, const TCsvInput& file) {
    const String name = FromUtf8(options.NewColumn);
    if (!options.OutFile || std::ranges::find(file.GetHeader(), name) == file.GetHeader().end()) return;
    throw Exception(Format(u"%s: Column \"%s\" exists already; --name gives the new column another name",
                           {file.GetName(), name}));
}

void ReportRows(const TCsvInput& file, const TRowSummary& summary, const TTextCells& textCells) {
    file.ReportShortRows();
    textCells.Report();
    const auto report = [&](StringView what, std::int64_t rows) {
        if (rows > 0) Warn(Format(u"%s: %s; rows: %d", {file.GetName(), what, rows}));
    };
    report(ECalcException::CDivideByZero, summary.DivisionsByZero);
    report(u"The value is not a number", summary.NotNumbers);
    report(u"The value is infinite or from -1000 to -999, and will be read as missing",
           summary.ReadAsMissing);
}

void CalculateFile(TCalc& calc, const TCalcOptions& options, const std::vector<TColumnAlias>& aliases) {
    const TMissingValues missing = options.Input.GetMissingValues();
    const TEncoding& encoding = options.Input.GetEncoding();
    const String input = FromUtf8(*options.CsvFile);
    std::vector<String> outputs;
    if (options.OutFile) outputs.push_back(FromUtf8(*options.OutFile));
    if (!options.OutFile || options.Summary) outputs.emplace_back(u"-");
    CheckOutputs({&input, 1}, outputs);

    TCsvInput file(input, encoding);
    CheckNewColumn(options, file);
    TRowCalculator rows(calc, file, missing, aliases);
    calc.Set_Exp(FromUtf8(options.Expression));
    if (options.Keywords) return PrintKeywords(calc);
    static_cast<void>(KeywordsOf(calc));  // an unknown one raises before anything is written

    const std::unique_ptr<TRowSink> sink = MakeSink(options, file);
    const TRowSummary summary = rows.Run(*sink);
    sink->Finish();
    if (options.Summary) PrintSummary(summary);
    FlushOutput();  // before the warnings
    ReportRows(file, summary, rows.GetTextCells());
}

void RunCalc(const TCalcOptions& options) {
    if (options.Summary && options.OutFile == "-") {
        throw CLI::ValidationError("--out", "- and --summary cannot both write to standard output");
    }
    const TOwnKeywords keywords = ReadOwnKeywords(options);
    TCalc calc;
    RegisterSettings(calc, keywords.Settings);
    if (options.CsvFile) {
        CalculateFile(calc, options, keywords.Aliases);
    } else {
        calc.Set_Exp(FromUtf8(options.Expression));
        if (options.Keywords) {
            PrintKeywords(calc);
        } else {
            PrintLine(ValueText(calc.Calculate()));
        }
    }
    FlushOutput();
}

}  // namespace

void AddCalcCommand(CLI::App& app) {
    const auto options = std::make_shared<TCalcOptions>();
    CLI::App* calc =
        app.add_subcommand("calc", "Calculate an expression, once or for each row of a CSV file");
    calc->add_option("expression", options->Expression,
                     "For example '2 * ($rain + 1.5)'; put -- before one that begins with a minus")
        ->required()
        ->type_name("");
    calc->add_option("--set", options->Settings, "Give a keyword a value")
        ->type_name("NAME=NUMBER")
        ->allow_extra_args(false);
    CLI::Option* csv =
        calc->add_option("--csv", options->CsvFile,
                         "Calculate each row of this file, with its columns as keywords; - is standard input")
            ->type_name("FILE");
    AddInputOptions(*calc, options->Input, csv);
    calc->add_option("--as", options->Aliases,
                     "Give a column another keyword, if an expression cannot hold its name")
        ->type_name("NAME=COLUMN")
        ->allow_extra_args(false)
        ->needs(csv);
    CLI::Option* out =
        calc->add_option("--out", options->OutFile,
                         "Write the columns and the values as CSV to this file; - is standard output")
            ->type_name("FILE")
            ->needs(csv);
    calc->add_option("--name", options->NewColumn, "The name of the column of values, by default \"value\"")
        ->type_name("COLUMN")
        ->needs(out);
    calc->add_flag("--summary", options->Summary, "Print counts, mean, minimum and maximum instead of values")
        ->needs(csv);
    calc->add_flag("--keywords", options->Keywords, "Print the keywords that the expression uses, and stop");
    calc->callback([options] { RunCalc(*options); });
}

}  // namespace Varnholt::Tool
