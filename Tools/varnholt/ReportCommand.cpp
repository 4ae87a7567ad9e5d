#include "Tools/varnholt/ReportCommand.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

#include "Platform/Drawing/Picture.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Paths.h"
#include "Tools/varnholt/InputOptions.h"
#include "Tools/varnholt/Output.h"
#include "Tools/varnholt/PictureOption.h"
#include "Tools/varnholt/ReportFiles.h"
#include "Tools/varnholt/ReportOutput.h"
#include "Tools/varnholt/StationChart.h"
#include "Tools/varnholt/StationFile.h"
#include "Tools/varnholt/StationSummary.h"
#include "VarnholtLib/Foundation/vrnString.h"
#include "VarnholtLib/Numerics/vrnCoordinates.h"

namespace Varnholt::Tool {
namespace {

struct TReportOptions {
    std::string File;
    std::string Latitude;
    std::optional<std::string> Columns;
    std::optional<std::string> Sunshine;
    std::optional<std::string> Angstrom;
    std::optional<std::string> OutFolder;
    std::optional<std::string> Chart;
    TInputOptions Input;
};

[[noreturn]] void RaiseWrongUsage(const std::string& option, StringView message) {
    throw CLI::ValidationError(option, ToUtf8(message));
}

/// Reads ROLE=COLUMN,... A name may hold commas: it ends only at one that is followed by a role and "=".
TStationColumns ReadColumns(const std::string& text) {
    struct TRole {
        StringView Prefix;
        String* Name;
        bool IsGiven = false;
    };
    TStationColumns columns;
    TRole roles[] = {{u"date=", &columns.Date},
                     {u"tmax=", &columns.TMax},
                     {u"tmin=", &columns.TMin},
                     {u"precipitation=", &columns.Precipitation}};
    const auto roleAt = [&](StringView part) {
        return std::ranges::find_if(roles, [&](const TRole& role) { return part.starts_with(role.Prefix); });
    };
    const String whole = FromUtf8(text);
    StringView rest = whole;
    do {
        std::size_t end = rest.find(u',');
        while (end < rest.size() && roleAt(rest.substr(end + 1)) == std::end(roles)) {
            end = rest.find(u',', end + 1);
        }
        const StringView part = rest.substr(0, end);
        TRole* const role = roleAt(part);
        if (role == std::end(roles) || part == role->Prefix) {
            RaiseWrongUsage("--columns",
                            Format(u"\"%s\" is not date=, tmax=, tmin= or precipitation= with the "
                                   u"name of a column",
                                   {part}));
        }
        if (role->IsGiven) {
            RaiseWrongUsage("--columns", Format(u"\"%s\" gives a column a second time", {part}));
        }
        role->IsGiven = true;
        *role->Name = part.substr(role->Prefix.size());
        rest.remove_prefix(std::min(part.size() + 1, rest.size()));
    } while (!rest.empty());
    return columns;
}

/// Exactly `count` numbers, none below 0.
std::vector<float> ReadNumbers(const std::string& option, const std::string& text, std::size_t count) {
    std::vector<float> numbers;
    for (const String& part : SplitString(FromUtf8(text), u',', false)) {
        double value = 0;
        const bool isNumber = TryStrToFloat(part, value, TFormatSettings::Invariant());
        numbers.push_back(static_cast<float>(value));
        if (!isNumber || value < 0 || !std::isfinite(numbers.back())) {
            RaiseWrongUsage(option, Format(u"\"%s\" is not a number of 0 or more", {part}));
        }
    }
    if (numbers.size() != count) {
        RaiseWrongUsage(option, Format(u"takes %d numbers, not %d", {count, numbers.size()}));
    }
    return numbers;
}

float ReadLatitude(const std::string& text) {
    try {
        const float latitude = GetLatitudeValue(FromUtf8(text));
        if (latitude >= -90 && latitude <= 90) return latitude;
    } catch (const Exception&) {  // no latitude at all
    }
    RaiseWrongUsage("--latitude", Format(u"\"%s\" is not a latitude from -90 to 90", {FromUtf8(text)}));
}

TSite ReadSite(const TReportOptions& options) {
    TSite site;
    site.Latitude = ReadLatitude(options.Latitude);
    if (options.Sunshine) {
        const std::vector<float> hours = ReadNumbers("--sunshine", *options.Sunshine, kMonths.size());
        std::ranges::copy(hours, site.Sunshine.emplace().begin());
    }
    if (options.Angstrom) {
        const std::vector<float> constants = ReadNumbers("--angstrom", *options.Angstrom, 2);
        site.AngstromA = constants[0];
        site.AngstromB = constants[1];
    }
    return site;
}

/// The folder for the files of the report.
std::optional<String> ReadOutFolder(const TReportOptions& options) {
    if (!options.OutFolder) return std::nullopt;
    if (*options.OutFolder == "-") RaiseWrongUsage("--out", u"takes a folder, not standard output");
    return FromUtf8(*options.OutFolder);
}

std::optional<String> ReadChart(const TReportOptions& options) {
    if (!options.Chart) return std::nullopt;
    const String path = FromUtf8(*options.Chart);
    CheckPicture("--chart", path, FromUtf8(options.File));
    return path;
}

/// Writes the tables and the chart as far as they are wanted, all or none.
void WriteFiles(const std::optional<String>& folder, const std::optional<String>& chart, StringView title,
                const TStationSummary& summary) {
    constexpr TSize kSize{800, 1000};
    const auto draw = [&](TCanvas& canvas) { DrawStationChart(canvas, kSize, title, summary); };
    if (folder) {
        std::optional<TReportChart> picture;
        if (chart) picture = {*chart, DrawPicture(*PictureFormatOf(*chart), kSize, draw)};
        WriteReportFiles(*folder, summary, picture);
    } else if (chart) {
        DrawToFile(*chart, kSize, draw);
    }
}

void RunReport(const TReportOptions& options) {
    const TStationColumns columns = options.Columns ? ReadColumns(*options.Columns) : TStationColumns();
    const TSite site = ReadSite(options);
    const std::optional<String> folder = ReadOutFolder(options);
    const std::optional<String> chart = ReadChart(options);
    const String path = FromUtf8(options.File);
    std::vector<String> outputs = {u"-"};
    if (chart) outputs.push_back(*chart);
    CheckOutputs({&path, 1}, outputs);
    if (folder) CheckReportFiles(*folder, path, chart);
    TCsvInput file(path, options.Input.GetEncoding());
    const TStation station = ReadStation(file, columns, options.Input.GetMissingValues());
    const TStationSummary summary = Summarise(station, site);
    const String title = ExtractFileName(file.GetName());
    WriteFiles(folder, chart, title, summary);
    PrintReport(title, summary);
    FlushOutput();  // before the warnings
    file.ReportShortRows();
    WarnOfFindings(station);
}

}  // namespace

void AddReportCommand(CLI::App& app) {
    const auto options = std::make_shared<TReportOptions>();
    CLI::App* report = app.add_subcommand("report", "Summarise the climate of a station");
    report->add_option("file", options->File, "CSV file with a row for each day; - is standard input")
        ->required()
        ->type_name("");
    report->add_option("--latitude", options->Latitude, "For example '47 DEG 36 MIN N', 33.5S or 47.6")
        ->required()
        ->type_name("LATITUDE");
    report
        ->add_option("--columns", options->Columns,
                     "Names of the columns; the default is "
                     "date=date,tmax=temp_max,tmin=temp_min,precipitation=precipitation")
        ->type_name("ROLE=COLUMN,...");
    CLI::Option* sunshine = report
                                ->add_option("--sunshine", options->Sunshine,
                                             "Hours of sunshine in each month, twelve numbers with commas")
                                ->type_name("HOURS");
    report
        ->add_option("--angstrom", options->Angstrom,
                     "Constants of the Angstrom formula for radiation; the default is 0.25,0.5")
        ->type_name("A,B")
        ->needs(sunshine);
    report
        ->add_option("--out", options->OutFolder,
                     "Folder for monthly.csv, yearly.csv and summary.csv, which are replaced together")
        ->type_name("FOLDER");
    report
        ->add_option("--chart", options->Chart,
                     "Climate diagram, yearly means and monthly totals as a picture: .svg, .png or .pdf")
        ->type_name("FILE");
    AddInputOptions(*report, options->Input);
    report->callback([options] { RunReport(*options); });
}

}  // namespace Varnholt::Tool
