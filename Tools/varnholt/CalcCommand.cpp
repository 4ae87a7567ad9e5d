#include "Tools/varnholt/CalcCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <optional>

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Tools/varnholt/CalcRows.h"
#include "Tools/varnholt/Output.h"
#include "VarnholtLib/Numerics/vrnMath.h"

namespace Varnholt::Tool {
namespace {

struct TCalcOptions {
    std::string Expression;
    std::vector<std::string> Settings;
    std::optional<std::string> CsvFile;
    std::optional<std::string> OutFile;
    bool Summary = false;
    bool Keywords = false;
};

/// A keyword with a value of its own, from --set.
struct TSetting {
    String Name;
    Extended Value;
};

TSetting ReadSetting(const std::string& text) {
    const std::size_t equals = text.find('=');
    const bool hasBoth = equals != std::string::npos && equals > 0;
    TSetting setting{FromUtf8(text.substr(0, equals)), 0};
    if (!hasBoth || !TryStrToFloat(FromUtf8(text.substr(equals + 1)), setting.Value)) {
        throw CLI::ValidationError("--set", text + " is not NAME=NUMBER");
    }
    return setting;
}

std::vector<TSetting> ReadSettings(const std::vector<std::string>& texts) {
    std::vector<TSetting> settings;
    settings.reserve(texts.size());
    std::ranges::transform(texts, std::back_inserter(settings), ReadSetting);
    return settings;
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
    PrintLine(u"mean: " + FloatToStr(summary.Mean()));
    PrintLine(u"min: " + FloatToStr(summary.Min));
    PrintLine(u"max: " + FloatToStr(summary.Max));
}

void CalculateFile(TCalc& calc, const TCalcOptions& options) {
    TRowCalculator rows(calc, FromUtf8(*options.CsvFile));
    calc.Set_Exp(FromUtf8(options.Expression));
    if (options.Keywords) return PrintKeywords(calc);

    std::unique_ptr<TRowSink> sink = std::make_unique<TRowSink>();
    if (options.OutFile) {
        sink = std::make_unique<TCsvRowSink>(FromUtf8(*options.OutFile));
    } else if (!options.Summary) {
        sink = std::make_unique<TPrintedRowSink>();
    }
    const TRowSummary summary = rows.Run(*sink);
    sink->Finish();
    if (options.Summary) PrintSummary(summary);
    FlushOutput();  // before the warnings
    if (summary.DivisionsByZero > 0) {
        Warn(Format(u"%s; rows: %d", {ECalcException::CDivideByZero, summary.DivisionsByZero}));
    }
    if (summary.NotNumbers > 0) Warn(Format(u"The value is no number; rows: %d", {summary.NotNumbers}));
}

void RunCalc(const TCalcOptions& options) {
    TCalc calc;
    RegisterSettings(calc, ReadSettings(options.Settings));
    if (options.CsvFile) {
        CalculateFile(calc, options);
    } else {
        calc.Set_Exp(FromUtf8(options.Expression));
        if (options.Keywords) {
            PrintKeywords(calc);
        } else {
            PrintLine(FloatToStr(calc.Calculate()));
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
        ->required();
    calc->add_option("--set", options->Settings, "Give a keyword a value: NAME=VALUE")
        ->allow_extra_args(false);
    CLI::Option* csv =
        calc->add_option("--csv", options->CsvFile, "Calculate each row; every column is a keyword");
    calc->add_option("--out", options->OutFile, "Write the file's columns and the values as CSV")->needs(csv);
    calc->add_flag("--summary", options->Summary, "Print counts, mean, minimum and maximum instead of values")
        ->needs(csv);
    calc->add_flag("--keywords", options->Keywords, "Print the keywords that the expression uses, and stop");
    calc->callback([options] { RunCalc(*options); });
}

}  // namespace Varnholt::Tool
