#include "VarnholtLib/UI/vrnChartAxis.h"

#include <algorithm>
#include <cmath>

#include "Platform/Runtime/DateTime.h"
#include "Platform/Runtime/FloatMath.h"
#include "Platform/Runtime/Numbers.h"

namespace Varnholt {
namespace {

/// The least of 1, 2 and 5 times a power of ten that is not below a positive number.
Extended RoundStep(Extended step) noexcept {
    const Extended power = std::pow(Extended{10}, std::floor(std::log10(step)));
    for (const Extended factor : {1.0L, 2.0L, 5.0L})
        if (factor * power >= step * 0.999999L) return factor * power;
    return 10 * power;
}

// --- Dates ---

constexpr int kLastYear = 9999;

enum TDateUnit : std::uint8_t { duDay, duMonth, duYear };

/// Ticks every so many units; a day may have parts.
struct TDateStep {
    TDateUnit Unit;
    double Count;
    double Days;
    StringView Format;
};

constexpr double kHour = 1.0 / 24, kMinute = kHour / 60, kSecond = kMinute / 60;
constexpr TDateStep kDateSteps[] = {
    {duDay, kSecond, kSecond, u"hh:nn:ss"},
    {duDay, 5 * kSecond, 5 * kSecond, u"hh:nn:ss"},
    {duDay, 15 * kSecond, 15 * kSecond, u"hh:nn:ss"},
    {duDay, kMinute, kMinute, u"hh:nn"},
    {duDay, 5 * kMinute, 5 * kMinute, u"hh:nn"},
    {duDay, 15 * kMinute, 15 * kMinute, u"hh:nn"},
    {duDay, kHour, kHour, u"hh:nn"},
    {duDay, 3 * kHour, 3 * kHour, u"hh:nn"},
    {duDay, 6 * kHour, 6 * kHour, u"hh:nn"},
    {duDay, 1, 1, u"yyyy-mm-dd"},
    {duDay, 2, 2, u"yyyy-mm-dd"},
    {duDay, 7, 7, u"yyyy-mm-dd"},
    {duDay, 14, 14, u"yyyy-mm-dd"},
    {duMonth, 1, 31, u"yyyy-mm"},
    {duMonth, 2, 61, u"yyyy-mm"},
    {duMonth, 3, 92, u"yyyy-mm"},
    {duMonth, 6, 184, u"yyyy-mm"},
    {duYear, 1, 366, u"yyyy"},
    {duYear, 2, 731, u"yyyy"},
    {duYear, 5, 1827, u"yyyy"},
    {duYear, 10, 3653, u"yyyy"},
    {duYear, 20, 7305, u"yyyy"},
    {duYear, 50, 18263, u"yyyy"},
    {duYear, 100, 36525, u"yyyy"},
    {duYear, 200, 73049, u"yyyy"},
    {duYear, 500, 182622, u"yyyy"},
    {duYear, 1000, 365243, u"yyyy"},
    {duYear, 5000, 1826213, u"yyyy"},
};

/// The dates of the ticks of a step from one date to another.
std::vector<double> DatesOf(const TDateStep& step, double from, double to) {
    std::vector<double> dates;
    const auto add = [&](double date) {
        if (date >= from && date <= to) dates.push_back(date);
        return date <= to;
    };
    if (step.Unit == duDay) {
        // A tick is computed from its number, so that no error adds up. One at the beginning is not lost by rounding.
        for (double number = std::ceil(from / step.Count - 1e-6); add(std::max(number * step.Count, from));)
            ++number;
        return dates;
    }
    const int months = static_cast<int>(step.Count) * (step.Unit == duYear ? 12 : 1);
    const TDateTimeFields first = DecodeDateTime(DateOfAxis(from));
    int month = ((first.Year * 12 + first.Month - 1) / months) * months;
    for (; month / 12 <= kLastYear; month += months)
        if (month >= 12 && !add(EncodeDate(month / 12, month % 12 + 1, 1))) break;
    return dates;
}

}  // namespace

double AxisDate(double dateTime) noexcept {
    const double day = std::trunc(dateTime);
    return day + std::fabs(dateTime - day);
}

double DateOfAxis(double days) noexcept {
    return JoinDateTime(std::floor(days), days - std::floor(days));
}

bool IsDateRange(Extended min, Extended max) {
    return min >= EncodeDate(1, 1, 1) && max < EncodeDate(kLastYear, 12, 31) + 1;
}

void TChartRange::Include(double value) noexcept {
    if (!std::isfinite(value)) return;
    Min = IsEmpty ? value : std::min<Extended>(Min, value);
    Max = IsEmpty ? value : std::max<Extended>(Max, value);
    IsEmpty = false;
}

TChartAxis::TChartAxis(const TChartRange& range, TAxisScale scale, std::int32_t maxTicks, bool isLoose)
    : FMin(range.Min), FMax(range.IsEmpty ? 1 : range.Max) {
    maxTicks = std::clamp(maxTicks, 2, 1000);
    const bool isDate = scale == asDate && !range.IsEmpty && IsDateRange(FMin, FMax);
    // Numbers that differ only in their last digits could not be told apart in labels of 15 digits.
    if (FMax - FMin <= 1e-12L * std::max(std::fabs(FMin), std::fabs(FMax)) && !range.IsEmpty) {
        const bool isByOne = isDate || scale == asWhole || FMin == 0;
        const Extended half = isByOne ? 1 : std::fabs(FMin) / 10;
        FMin -= half;
        FMax += half;
    }
    if (isDate && IsDateRange(FMin, FMax))
        PutDates(maxTicks);
    else
        PutNumbers(maxTicks, scale == asWhole, isLoose);
}

void TChartAxis::PutNumbers(std::int32_t maxTicks, bool isWhole, bool isLoose) {
    const Extended least = isWhole ? 1 : 0;
    const Extended step = std::max(RoundStep((FMax - FMin) / (maxTicks - 1)), least);
    // An end that differs from a tick by a rounding error is that tick.
    const auto below = [&](Extended value) { return std::floor(value / step + 1e-9L); };
    const auto above = [&](Extended value) { return std::ceil(value / step - 1e-9L); };
    const Extended first = isLoose ? below(FMin) : above(FMin);
    const Extended last = isLoose ? above(FMax) : below(FMax);
    for (int i = 0; first + i <= last; ++i)
        FTicks.push_back({(first + i) * step, FloatToStr((first + i) * step, TFormatSettings::Invariant())});
    if (!isLoose) return;
    FMin = first * step;
    FMax = last * step;
}

void TChartAxis::PutDates(std::int32_t maxTicks) {
    const auto* const step = std::ranges::find_if(kDateSteps, [&](const TDateStep& candidate) {
        return (FMax - FMin) / candidate.Days <= maxTicks - 1;
    });
    const TDateStep& chosen = step == std::end(kDateSteps) ? *std::prev(step) : *step;
    for (const double date : DatesOf(chosen, static_cast<double>(FMin), static_cast<double>(FMax)))
        FTicks.push_back(
            {date, FormatDateTime(chosen.Format, DateOfAxis(date), TFormatSettings::Invariant())});
    if (chosen.Days < 1) NameDays();
}

/// Of ticks within days those at midnight name the day, or the first one if there is none.
void TChartAxis::NameDays() {
    const auto day = [](const TChartTick& tick) {
        // A tick may be less than a second away from midnight by its rounding.
        return FormatDateTime(u"yyyy-mm-dd", DateOfAxis(static_cast<double>(tick.Value) + 1e-6),
                              TFormatSettings::Invariant());
    };
    bool isNamed = false;
    for (TChartTick& tick : FTicks) {
        if (!tick.Label.starts_with(u"00:00") || (tick.Label.size() > 5 && !tick.Label.ends_with(u"00")))
            continue;
        tick.Label = day(tick);
        isNamed = true;
    }
    if (!isNamed && !FTicks.empty()) FTicks[0].Label.insert(0, day(FTicks[0]) + u" ");
}

std::int32_t TChartAxis::Position(Extended value, std::int32_t atMin, std::int32_t atMax) const noexcept {
    constexpr Extended kFar = 1'000'000;
    const Extended share = (value - FMin) / (FMax - FMin);
    const Extended pixel = atMin + share * (static_cast<Extended>(atMax) - atMin);
    if (!(pixel > -kFar)) return static_cast<std::int32_t>(-kFar);
    return static_cast<std::int32_t>(*TryRoundToInt64(std::min(pixel, kFar)));
}

}  // namespace Varnholt
