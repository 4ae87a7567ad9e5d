#include "Tools/varnholt/PlotCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

#include "Platform/Drawing/Picture.h"
#include "Platform/Runtime/DateTime.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/Text.h"
#include "Tools/varnholt/CsvFile.h"
#include "Tools/varnholt/InputOptions.h"
#include "Tools/varnholt/Output.h"
#include "Tools/varnholt/PictureOption.h"
#include "Tools/varnholt/PlotFit.h"
#include "VarnholtLib/Foundation/vrnString.h"
#include "VarnholtLib/UI/vrnChart.h"
#include "VarnholtLib/UI/vrnColorConvert.h"

namespace Varnholt::Tool {
namespace {

constexpr double kDaysOfYear = 365.2425;

struct TPlotOptions {
    std::string File;
    std::string X;
    std::string Y;
    std::optional<std::string> Fit;
    std::optional<std::string> OutFile;
    std::optional<std::string> Title;
    std::string Size = "800x500";
    bool HasPoints = false;
    TInputOptions Input;
};

/// YYYY-MM-DD or YYYYMMDD, and after it, if present, a blank or "T" and a time HH:MM or HH:MM:SS, as the days of a
/// chart's axis.
std::optional<double> ReadDate(StringView cell) {
    String text(TrimView(cell));
    if (text.size() == 8 && std::ranges::all_of(text, [](Char unit) { return unit >= u'0' && unit <= u'9'; }))
        text.insert(6, u"-").insert(4, u"-");
    if (text.size() > 10 && text[10] == u'T') text[10] = u' ';
    TDateTime date = 0;
    const bool isDate = text.size() >= 10 && text[4] == u'-' && text[7] == u'-';
    if (!isDate || !TryStrToDateTime(text, date, TFormatSettings::Invariant())) return std::nullopt;
    return AxisDate(date);
}

/// The columns that are drawn. A column of dates is in days.
struct TPlotData {
    std::vector<double> X;
    std::vector<String> Names;
    std::vector<std::vector<double>> Columns;
    TAxisScale Scale = asNumber;
};

/// The names of the columns: a name that holds commas, or several with commas between.
std::vector<String> NamesOf(const TCsvInput& file, const std::string& option) {
    const String text = FromUtf8(option);
    if (std::ranges::count(file.GetHeader(), text) > 0) return {text};
    std::vector<String> names = SplitString(text, u',', false);
    if (names.empty()) throw CLI::ValidationError("--y", "No column is named");
    return names;
}

class TPlotReader {
public:
    TPlotReader(TCsvInput& file, const TPlotOptions& options)
        : FFile(file),
          FMissing(options.Input.GetMissingValues()),
          FXName(FromUtf8(options.X)),
          FXIndex(file.ColumnIndex(FXName)) {
        FData.Names = NamesOf(file, options.Y);
        for (const String& name : FData.Names) FIndexes.push_back(file.ColumnIndex(name));
        FData.Columns.resize(FData.Names.size());
    }

    TPlotData Read() {
        TRow row;
        while (FFile.ReadRow(row)) {
            FFile.CheckWidth(row);
            row.resize(FFile.GetHeader().size());
            FData.X.push_back(ReadX(row[FXIndex]));
            for (std::size_t c = 0; c < FIndexes.size(); ++c)
                FData.Columns[c].push_back(ReadNumber(row[FIndexes[c]], FData.Names[c]));
        }
        return std::move(FData);
    }
    void ReportFindings() const {
        FFile.ReportShortRows();
        FTexts.Report();
    }

private:
    double ReadNumber(StringView cell, StringView column) {
        double value = NAN;
        if (FMissing.Read(cell, value) == ckText) FTexts.Add(FFile, cell, column);
        return value;
    }

    /// The first cell that is not missing tells whether the column holds dates.
    double ReadX(StringView cell) {
        double value = NAN;
        if (FMissing.Read(cell, value) == ckMissing) return NAN;
        const std::optional<double> date = ReadDate(cell);
        if (!FIsKnown) FData.Scale = date ? asDate : asNumber;
        FIsKnown = true;
        if (FData.Scale == asNumber) return ReadNumber(cell, FXName);
        if (!date) FFile.Fail(Format(u"\"%s\" is not a date", {cell}));
        return *date;
    }

    TCsvInput& FFile;
    TMissingValues FMissing;
    String FXName;
    std::size_t FXIndex;
    std::vector<std::size_t> FIndexes;
    TPlotData FData;
    TTextCells FTexts;
    bool FIsKnown = false;
};

// --- Fits ---

TFitKind FitKindOf(const std::string& name) {
    return name == "exp" ? TFitKind::Exponential : TFitKind::Linear;
}

/// The equation, in years since the first date for dates.
String EquationOf(const TPlotFit& fit, TAxisScale scale) {
    String variable = u"x";
    double slope = fit.B;
    if (scale == asDate) {
        variable = u"(years since " +
                   FormatDateTime(u"yyyy-mm-dd", DateOfAxis(fit.Origin), TFormatSettings::Invariant()) + u")";
        slope *= kDaysOfYear;
    }
    const String rate = SignificantText(std::fabs(slope)) + u" " + variable;
    if (fit.Kind == TFitKind::Exponential)
        return SignificantText(fit.A) + (slope < 0 ? u" e^(-" : u" e^(") + rate + u")";
    return SignificantText(fit.A) + (slope < 0 ? u" - " : u" + ") + rate;
}

TChartSeries FitSeries(const TPlotData& data, std::size_t column, TFitKind kind, TColor color) {
    TChartRange range;
    for (const double x : data.X) range.Include(x);
    const auto first = static_cast<double>(range.Min), last = static_cast<double>(range.Max);
    const std::optional<TPlotFit> fit =
        FitPoints(kind, data.X, data.Columns[column], data.Scale == asDate ? first : 0);
    if (!fit)
        throw Exception(
            Format(u"Column \"%s\" cannot be fitted: it takes values at two different X at least%s",
                   {data.Names[column], kind == TFitKind::Linear ? u"" : u", all above 0"}));
    TChartSeries series{.Name = data.Names[column] + u" = " + EquationOf(*fit, data.Scale),
                        .Color = color,
                        .PenStyle = psDash};
    constexpr int kChords = 200;
    for (int i = 0; i <= kChords; ++i) {
        const double x = std::lerp(first, last, static_cast<double>(i) / kChords);
        series.X.push_back(x);
        series.Y.push_back(fit->At(x));
    }
    return series;
}

TChart ChartOf(TPlotData& data, const TPlotOptions& options, StringView title) {
    TChart chart;
    chart.SetTitle(title);
    chart.SetXTitle(FromUtf8(options.X));
    chart.SetXScale(data.Scale);
    if (data.Names.size() == 1) chart.SetYTitle(data.Names[0]);
    const std::vector<TColor> colors = ChartColors(static_cast<std::int32_t>(data.Names.size()));
    std::vector<TChartSeries> fits;
    for (std::size_t c = 0; c < data.Names.size(); ++c) {
        if (options.Fit)
            fits.push_back(FitSeries(data, c, FitKindOf(*options.Fit), DarkenColour(colors[c], 60)));
        chart.AddSeries({.Name = data.Names.size() == 1 && !options.Fit ? String() : data.Names[c],
                         .Style = options.HasPoints ? ssPoints : ssLine,
                         .Color = colors[c],
                         .X = data.X,
                         .Y = std::move(data.Columns[c])});
    }
    for (TChartSeries& fit : fits) chart.AddSeries(std::move(fit));
    return chart;
}

void RunPlot(const TPlotOptions& options) {
    const String path = FromUtf8(options.File), target = FromUtf8(options.OutFile.value_or("plot.svg"));
    CheckPicture("--out", target, path);
    const TSize size = ReadPictureSize("--size", options.Size);
    CheckOutputs({&path, 1}, {&target, 1});
    TCsvInput file(path, options.Input.GetEncoding());
    TPlotReader reader(file, options);
    TPlotData data = reader.Read();
    reader.ReportFindings();
    const String title = options.Title ? FromUtf8(*options.Title) : ExtractFileName(file.GetName());
    const TChart chart = ChartOf(data, options, title);
    DrawToFile(target, size, [&](TCanvas& canvas) { chart.Draw(canvas, {0, 0, size.Width, size.Height}); });
    if (!options.OutFile) PrintLine(u"Wrote " + target);
}

}  // namespace

void AddPlotCommand(CLI::App& app) {
    const auto options = std::make_shared<TPlotOptions>();
    CLI::App* const plot = app.add_subcommand("plot", "Draw columns of a CSV file");
    plot->add_option("file", options->File, "CSV file; - is standard input")->required()->type_name("");
    plot->add_option("--x", options->X, "Column of dates (YYYY-MM-DD, with a time if need be) or numbers")
        ->required()
        ->type_name("COLUMN");
    plot->add_option("--y", options->Y, "Columns to draw")->required()->type_name("COLUMN[,COLUMN...]");
    plot->add_flag("--points", options->HasPoints, "Draw points instead of lines");
    plot->add_option("--fit", options->Fit, "Curve through each column: linear or exp")
        ->check(CLI::IsMember({"linear", "exp"}))
        ->type_name("CURVE");
    plot->add_option("--out", options->OutFile,
                     "Picture, by its extension .svg, .png or .pdf; the default is plot.svg")
        ->type_name("FILE");
    plot->add_option("--title", options->Title, "Title; the default is the name of the file")
        ->type_name("TITLE");
    plot->add_option("--size", options->Size, "Size in pixels")
        ->capture_default_str()
        ->type_name("WIDTHxHEIGHT");
    AddInputOptions(*plot, options->Input);
    plot->callback([options] { RunPlot(*options); });
}

}  // namespace Varnholt::Tool
