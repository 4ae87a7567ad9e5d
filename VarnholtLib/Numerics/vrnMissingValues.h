#pragma once

#include <cstdint>
#include <vector>

#include "Platform/Runtime/Types.h"

/// Missing values: the range of codes that the statistics leave out, and how a cell of a table is read.
///
///     const TMissingValues missing(u"-9999, M");       // codes besides the usual ones
///     double rain = 0;
///     switch (missing.Read(cell, rain)) {
///         case ckNumber: total += rain; break;
///         case ckMissing: ++missingDays; break;
///         case ckText: Report(cell); break;            // neither: "3,5" or "trace"
///     }
///
/// The usual range compares after rounding to 32 bits, because the statistics work on 32-bit floats: what is
/// missing here is missing there. So -998.99999999 is missing.
///
/// Uses Platform/Runtime/Numbers.h. Threads: an object that does not change may be used on any number of
/// threads at once.
namespace Varnholt {

/// Every value from kLowestMissing to kMissing is missing, both included; kMissing is also the result where
/// there is none.
inline constexpr float kLowestMissing = -1000;
inline constexpr float kMissing = -999;

/// Whether the value, rounded to 32 bits, is from -1000 to -999.
[[nodiscard]] constexpr bool IsMissing(double value) noexcept {
    const auto rounded = static_cast<float>(value);
    return rounded >= kLowestMissing && rounded <= kMissing;
}

/// What a cell holds.
enum TCellKind : std::uint8_t { ckNumber, ckMissing, ckText };

/// Tells numbers, missing values and other texts apart.
class VARNHOLT_EXPORT TMissingValues {
public:
    /// The usual missing values only: a blank cell, "NA", "NaN", and the numbers for which IsMissing is true.
    TMissingValues() = default;
    /// Also these codes, with commas between: numbers, in any spelling, and texts. A whole number up to 2^53
    /// matches itself only; any other number matches those with the same rounding to 32 bits. Blanks around a code
    /// and empty codes are ignored.
    explicit TMissingValues(StringView codes);

    /// What the cell holds, and the value if it is a number; otherwise the value is left alone. A number is
    /// what TryStrToFloat reads with a decimal point, whatever the locale. Code units 32 and below around the
    /// cell are ignored, and ASCII letters match in either case.
    [[nodiscard]] TCellKind Read(StringView cell, double& value) const;

private:
    std::vector<double> FNumbers;
    std::vector<String> FTexts;
};

}  // namespace Varnholt
