#include "Tools/varnholt/StationFile.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt::Tool {
namespace {

/// The number that up to four ASCII digits spell.
std::optional<unsigned> ReadDigits(StringView digits) {
    unsigned number = 0;
    for (const Char c : digits) {
        if (c < u'0' || c > u'9') return std::nullopt;
        number = number * 10 + static_cast<unsigned>(c - u'0');
    }
    return number;
}

std::optional<std::chrono::year_month_day> ReadDate(StringView cell) {
    const StringView text = TrimView(cell);
    const bool isDashed = text.size() == 10 && text[4] == u'-' && text[7] == u'-';
    if (!isDashed && text.size() != 8) return std::nullopt;
    const auto year = ReadDigits(text.substr(0, 4));
    const auto month = ReadDigits(text.substr(isDashed ? 5 : 4, 2));
    const auto day = ReadDigits(text.substr(isDashed ? 8 : 6, 2));
    if (!year || !month || !day || *year == 0) return std::nullopt;
    const std::chrono::year_month_day date{std::chrono::year(static_cast<int>(*year)),
                                           std::chrono::month(*month), std::chrono::day(*day)};
    return date.ok() ? std::optional(date) : std::nullopt;
}

/// Whether the cell is a number of nines, such as -9999, -99.9 and 9999.00. Many files have one for a missing
/// value.
bool IsMadeOfNines(StringView cell) {
    constexpr std::ptrdiff_t kFewestNines = 2;
    StringView digits = TrimView(cell);
    if (digits.starts_with(u'-')) digits.remove_prefix(1);
    if (digits.find(u'.') != StringView::npos) digits = digits.substr(0, digits.find_last_not_of(u'0') + 1);
    return std::ranges::count(digits, u'9') >= kFewestNines &&
           digits.find_first_not_of(u"9.") == StringView::npos;
}

class TStationReader {
public:
    TStationReader(TCsvInput& file, const TStationColumns& columns, const TMissingValues& missing);

    TStation Read();

private:
    [[nodiscard]] std::chrono::year_month_day DateCell() const;
    float NumberCell(std::size_t index);
    void CheckWeather(const TStationDay& day);
    void AddImplausible(TImplausible kind, std::size_t index, float value);

    TCsvInput& FFile;
    const TMissingValues& FMissing;
    TRow FRow;
    std::size_t FDate, FTMax, FTMin, FPrecipitation;  // places in a row
    TStation FStation;
    std::vector<float> FPossibleCodes;  // the numbers of FStation.PossibleCodes
};

TStationReader::TStationReader(TCsvInput& file, const TStationColumns& columns, const TMissingValues& missing)
    : FFile(file),
      FMissing(missing),
      FDate(file.ColumnIndex(columns.Date)),
      FTMax(file.ColumnIndex(columns.TMax)),
      FTMin(file.ColumnIndex(columns.TMin)),
      FPrecipitation(file.ColumnIndex(columns.Precipitation)) {}

std::chrono::year_month_day TStationReader::DateCell() const {
    const StringView cell = FDate < FRow.size() ? StringView(FRow[FDate]) : StringView();
    const auto date = ReadDate(cell);
    if (!date) FFile.Fail(Format(u"\"%s\" is not a date YYYY-MM-DD or YYYYMMDD", {cell}));
    if (FStation.Days.empty() || FStation.Days.back().Date < *date) return *date;
    if (FStation.Days.back().Date == *date) FFile.Fail(Format(u"%s appears twice", {DateText(*date)}));
    FFile.Fail(Format(u"%s comes after %s; rows must be in the order of their dates",
                      {DateText(*date), DateText(FStation.Days.back().Date)}));
}

float TStationReader::NumberCell(std::size_t index) {
    if (index >= FRow.size()) return kMissing;
    double value = 0;
    const TCellKind kind = FMissing.Read(FRow[index], value);
    if (kind == ckNumber && std::fabs(value) <= std::numeric_limits<float>::max()) {
        return static_cast<float>(value);
    }
    if (kind != ckMissing) FStation.Texts.Add(FFile, FRow[index], FFile.GetHeader()[index]);
    return kMissing;
}

void TStationReader::AddImplausible(TImplausible kind, std::size_t index, float value) {
    constexpr std::size_t kMostCodes = 4;
    TFinding& finding = FStation.Implausible[static_cast<std::size_t>(kind)];
    if (finding.Count++ == 0) {
        finding.First = FFile.AtRow(Format(u"\"%s\" in column %s", {FRow[index], FFile.GetHeader()[index]}));
    }
    if (FPossibleCodes.size() == kMostCodes || !IsMadeOfNines(FRow[index])) return;
    if (std::ranges::find(FPossibleCodes, value) != FPossibleCodes.end()) return;
    FPossibleCodes.push_back(value);
    FStation.PossibleCodes.emplace_back(TrimView(FRow[index]));
}

void TStationReader::CheckWeather(const TStationDay& day) {
    constexpr float kColdest = -95, kHottest = 65, kWettest = 2000;
    const auto isPossible = [](float temperature) {
        return temperature >= kColdest && temperature <= kHottest;
    };
    if (IsKnown(day.TMax) && !isPossible(day.TMax))
        AddImplausible(TImplausible::Temperature, FTMax, day.TMax);
    if (IsKnown(day.TMin) && !isPossible(day.TMin))
        AddImplausible(TImplausible::Temperature, FTMin, day.TMin);
    if (isPossible(day.TMax) && isPossible(day.TMin) && day.TMax < day.TMin) {
        AddImplausible(TImplausible::MaximumBelowMinimum, FTMax, day.TMax);
    }
    if (!IsKnown(day.Precipitation)) return;
    if (day.Precipitation < 0)
        AddImplausible(TImplausible::NegativePrecipitation, FPrecipitation, day.Precipitation);
    if (day.Precipitation > kWettest)
        AddImplausible(TImplausible::ExcessivePrecipitation, FPrecipitation, day.Precipitation);
}

TStation TStationReader::Read() {
    while (FFile.ReadRow(FRow)) {
        FFile.CheckWidth(FRow);
        TStationDay day;
        day.Date = DateCell();
        day.TMax = NumberCell(FTMax);
        day.TMin = NumberCell(FTMin);
        day.Precipitation = NumberCell(FPrecipitation);
        CheckWeather(day);
        FStation.Days.push_back(day);
    }
    if (FStation.Days.empty()) throw Exception(Format(u"%s has a header and no rows", {FFile.GetName()}));
    return std::move(FStation);
}

}  // namespace

TStation ReadStation(TCsvInput& file, const TStationColumns& columns, const TMissingValues& missing) {
    return TStationReader(file, columns, missing).Read();
}

void WarnOfFindings(const TStation& station) {
    static constexpr const Char* kVerdicts[kImplausibleKinds] = {u"is outside -95 to 65 degrees",
                                                                 u"is below the minimum of the day",
                                                                 u"is negative", u"is above 2,000 mm"};
    station.Texts.Report();
    for (std::size_t kind = 0; kind < kImplausibleKinds; ++kind) {
        const TFinding& finding = station.Implausible[kind];
        if (finding.Count == 0) continue;
        Warn(Format(u"%s %s and is used as it is; cells: %d",
                    {finding.First, kVerdicts[kind], finding.Count}));
    }
    String codes;
    for (const String& code : station.PossibleCodes) codes += (codes.empty() ? u"" : u",") + code;
    if (codes.empty()) return;
    const StringView which = station.PossibleCodes.size() > 1 ? u"any of " : u"";
    Warn(Format(u"If %s%s stands for a missing value, use --missing=%s", {which, codes, codes}));
}

String DateText(std::chrono::year_month_day date) {
    return Format(u"%.4d-%.2d-%.2d", {static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                                      static_cast<unsigned>(date.day())});
}

}  // namespace Varnholt::Tool
