#include "Tools/varnholt/StationFile.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt::Tool {
namespace {

// The number that ASCII digits alone spell, four at most.
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

class TStationReader {
public:
    TStationReader(StringView path, const TStationColumns& columns);

    TStation Read();

private:
    [[nodiscard]] std::size_t ColumnIndex(StringView name) const;
    [[nodiscard]] std::chrono::year_month_day DateCell() const;
    float NumberCell(std::size_t index);
    [[noreturn]] void RaiseInRow(const String& what) const;

    TCsvInput FFile;
    TRow FHeader;
    TRow FRow;
    std::size_t FDate = 0, FTMax = 0, FTMin = 0, FPrecipitation = 0;  // places in a row
    TStation FStation;
};

TStationReader::TStationReader(StringView path, const TStationColumns& columns) : FFile(path) {
    FHeader = FFile.GetHeader();
    FDate = ColumnIndex(columns.Date);
    FTMax = ColumnIndex(columns.TMax);
    FTMin = ColumnIndex(columns.TMin);
    FPrecipitation = ColumnIndex(columns.Precipitation);
}

std::size_t TStationReader::ColumnIndex(StringView name) const {
    const auto found = std::ranges::find(FHeader, name);
    if (found == FHeader.end()) {
        throw Exception(Format(u"%s: Column \"%s\" not found", {FFile.GetName(), name}));
    }
    return static_cast<std::size_t>(found - FHeader.begin());
}

void TStationReader::RaiseInRow(const String& what) const {
    throw Exception(Format(u"%s, row %d: %s", {FFile.GetName(), FFile.GetLineNumber(), what}));
}

std::chrono::year_month_day TStationReader::DateCell() const {
    const StringView cell = FDate < FRow.size() ? StringView(FRow[FDate]) : StringView();
    const auto date = ReadDate(cell);
    if (!date) RaiseInRow(Format(u"\"%s\" is not a date YYYY-MM-DD or YYYYMMDD", {cell}));
    if (FStation.Days.empty() || FStation.Days.back().Date < *date) return *date;
    if (FStation.Days.back().Date == *date) RaiseInRow(Format(u"%s is there twice", {DateText(*date)}));
    RaiseInRow(Format(u"%s comes after %s; rows must be in the order of their dates",
                      {DateText(*date), DateText(FStation.Days.back().Date)}));
}

// Files write the decimal point, whatever the locale.
float TStationReader::NumberCell(std::size_t index) {
    static const TFormatSettings settings = TFormatSettings::Invariant();
    constexpr auto missing = static_cast<float>(kMissing);
    double value = 0;
    if (index >= FRow.size() || TrimView(FRow[index]).empty()) return missing;
    if (TryStrToFloat(FRow[index], value, settings) && std::isfinite(static_cast<float>(value))) {
        const auto rounded = static_cast<float>(value);  // what the statistics compare with their codes
        return rounded >= -1000 && rounded <= -999 ? missing : rounded;
    }
    if (FStation.WordCount++ == 0) {
        FStation.FirstWord =
            Format(u"\"%s\" in row %d, column %s", {FRow[index], FFile.GetLineNumber(), FHeader[index]});
    }
    return missing;
}

TStation TStationReader::Read() {
    while (FFile.ReadRow(FRow)) {
        TStationDay day;
        day.Date = DateCell();
        day.TMax = NumberCell(FTMax);
        day.TMin = NumberCell(FTMin);
        day.Precipitation = NumberCell(FPrecipitation);
        FStation.Days.push_back(day);
    }
    if (FStation.Days.empty()) throw Exception(Format(u"%s has a header and no rows", {FFile.GetName()}));
    return std::move(FStation);
}

}  // namespace

TStation ReadStation(StringView path, const TStationColumns& columns) {
    return TStationReader(path, columns).Read();
}

String DateText(std::chrono::year_month_day date) {
    return Format(u"%.4d-%.2d-%.2d", {static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                                      static_cast<unsigned>(date.day())});
}

}  // namespace Varnholt::Tool
