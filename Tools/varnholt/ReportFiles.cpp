#include "Tools/varnholt/ReportFiles.h"

#include <array>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Paths.h"
#include "Tools/varnholt/CsvFile.h"
#include "Tools/varnholt/ReportStatistics.h"

namespace Varnholt::Tool {
namespace {

// --- Tables ---

void AddRow(TCsvOutput& file, std::initializer_list<StringView> fields) {
    for (const StringView field : fields) file.AddField(field);
    file.EndRow();
}

void WriteMonths(TCsvOutput& file, const TStationSummary& summary) {
    AddRow(file, {u"month", u"mean_temperature", u"precipitation", u"wet_days", u"day_length",
                  u"extraterrestrial_radiation", u"surface_radiation", u"pet"});
    std::int64_t number = 0;
    for (const TCalendarMonth& month : summary.Months) {
        AddRow(file, {IntToStr(++number), NumberText(month.MeanTemperature), NumberText(month.Precipitation),
                      NumberText(month.WetDays), NumberText(month.DayLength),
                      NumberText(month.ExtraterrestrialRadiation), NumberText(month.SurfaceRadiation),
                      NumberText(month.Pet)});
    }
}

void WriteYears(TCsvOutput& file, const TStationSummary& summary) {
    AddRow(file, {u"year", u"rows", u"mean_temperature", u"precipitation"});
    for (const TYear& year : summary.Years) {
        AddRow(file, {IntToStr(year.Number), IntToStr(year.Rows), NumberText(year.MeanTemperature),
                      NumberText(year.Precipitation)});
    }
}

void WriteSummary(TCsvOutput& file, const TStationSummary& summary) {
    AddRow(file, {u"quantity", u"value"});
    for (const auto& quantities : {StationFacts(summary), Statistics(summary)}) {
        for (const TQuantity& quantity : quantities) AddRow(file, {quantity.Name, quantity.Value});
    }
}

// --- The folder ---

/// Creates a folder and those above it as far as they are missing, and removes them again unless they are
/// kept.
class TNewFolder {
public:
    explicit TNewFolder(StringView path) : FPath(path) {
        for (String folder = FPath; !folder.empty() && !DirectoryExists(folder);) {
            FMissing.push_back(folder);
            folder = ExcludeTrailingPathDelimiter(ExtractFilePath(folder));
        }
    }
    ~TNewFolder() {
        try {
            for (const String& folder : FMissing) {
                if (DirectoryExists(folder)) RemoveDirectory(folder);
            }
        } catch (const Exception&) {  // another program uses it already
        }
    }
    TNewFolder(const TNewFolder&) = delete;
    TNewFolder& operator=(const TNewFolder&) = delete;

    void Create() { ForceDirectories(FPath); }
    void Keep() { FMissing.clear(); }

private:
    String FPath;
    std::vector<String> FMissing;  // the innermost first
};

std::array<String, 3> PathsIn(StringView folder) {
    const auto path = [&](StringView name) { return Format(u"%s/%s", {folder, name}); };
    return {path(u"monthly.csv"), path(u"yearly.csv"), path(u"summary.csv")};
}

}  // namespace

void CheckReportFiles(StringView folder, StringView stationPath, const std::optional<String>& chartPath) {
    const StringView station = stationPath == u"-" ? u"/dev/stdin" : stationPath;
    const auto tables = PathsIn(folder);
    std::vector<String> paths;
    if (DirectoryExists(folder)) paths.assign(tables.begin(), tables.end());
    if (chartPath) paths.push_back(*chartPath);
    for (const String& path : paths) {
        const StringView reason = IsSameFile(station, path) ? u"It is also the input"
                                  : FileExists(path) && TDraftFileStream::IsWrittenDirectly(path)
                                      ? u"It cannot be replaced together with the other files of the report"
                                      : StringView();
        if (!reason.empty()) throw Exception(Format(u"Cannot write file \"%s\": %s", {path, reason}));
    }
    paths.emplace_back(u"-");
    CheckOutputs({}, paths);
}

void WriteReportFiles(StringView folder, const TStationSummary& summary,
                      const std::optional<TReportChart>& chart) {
    TNewFolder newFolder(folder);
    newFolder.Create();
    std::optional<TDraftFileStream> picture;
    if (chart) picture.emplace(chart->Path).WriteBuffer(BytesOf(chart->Bytes));
    const auto [monthsPath, yearsPath, summaryPath] = PathsIn(folder);
    TCsvOutput months(monthsPath), years(yearsPath), figures(summaryPath);
    WriteMonths(months, summary);
    WriteYears(years, summary);
    WriteSummary(figures, summary);
    TCsvOutput::FinishTogether({&months, &years, &figures}, picture ? &*picture : nullptr);
    newFolder.Keep();
}

}  // namespace Varnholt::Tool
