#pragma once

#include <vector>

#include "Platform/Runtime/Types.h"

/// The axis of a chart: its range, and ticks at round numbers and dates.
///
///     TChartRange range;
///     for (const double value : rain) range.Include(value);
///     const TChartAxis axis(range, asNumber, 8, true);           // 0 to 250 in steps of 50, say
///     const std::int32_t y = axis.Position(rain[0], bottom, top);
///
/// Threads: plain values.
namespace Varnholt {

/// What the numbers of an axis are. Whole numbers, such as years, have ticks at whole numbers alone. Dates are days since
/// 30 December 1899, which count evenly also before it: half a day before it is -0.5, which as a TDateTime would be
/// its noon.
enum TAxisScale : std::uint8_t { asNumber, asWhole, asDate };

/// The days of a TDateTime, and back.
[[nodiscard]] VARNHOLT_EXPORT double AxisDate(double dateTime) noexcept;
[[nodiscard]] VARNHOLT_EXPORT double DateOfAxis(double days) noexcept;
/// Whether both ends are in the years 1 to 9999.
[[nodiscard]] VARNHOLT_EXPORT bool IsDateRange(Extended min, Extended max);

/// The smallest and the largest of some numbers.
struct VARNHOLT_EXPORT TChartRange {
    Extended Min = 0;
    Extended Max = 0;
    bool IsEmpty = true;

    /// Nothing for a NaN or an infinity.
    void Include(double value) noexcept;
};

struct TChartTick {
    Extended Value = 0;
    String Label;
};

class VARNHOLT_EXPORT TChartAxis {
public:
    /// An axis for a range with about so many ticks at most, at multiples of 1, 2 or 5 times a power of ten, or at
    /// whole seconds, minutes, hours, days, months or years. With `isLoose` the axis of numbers begins and ends at a tick.
    ///
    /// An empty range becomes 0 to 1. A range of one number is widened by a tenth of it to either side, or 1; of one
    /// whole number by 1, of one date by a day. Dates outside the years 1 to 9999 are shown as numbers.
    TChartAxis(const TChartRange& range, TAxisScale scale, std::int32_t maxTicks, bool isLoose);

    [[nodiscard]] Extended GetMin() const noexcept { return FMin; }
    [[nodiscard]] Extended GetMax() const noexcept { return FMax; }
    [[nodiscard]] const std::vector<TChartTick>& GetTicks() const noexcept { return FTicks; }
    /// The pixel of a value on an axis whose ends are at two pixels; of values outside, one at most a million pixels
    /// away.
    [[nodiscard]] std::int32_t Position(Extended value, std::int32_t atMin,
                                        std::int32_t atMax) const noexcept;

private:
    void PutNumbers(std::int32_t maxTicks, bool isWhole, bool isLoose);
    void PutDates(std::int32_t maxTicks);
    void NameDays();

    Extended FMin;
    Extended FMax;
    std::vector<TChartTick> FTicks;
};

}  // namespace Varnholt
