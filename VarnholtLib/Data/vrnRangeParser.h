#pragma once

#include <cstdint>

#include "VarnholtBaseLib/Arrays.h"

/// Ranges written as text: "1 - 5, 8, 10 - 12".
///
///     TIntegerArray days = TRangeParser::Parse(u"1 - 5, 8");     // 1, 2, 3, 4, 5, 8
///     TRangeParser summer(u"Jun - Aug", monthNames);             // one range, 5 to 7
///
/// Ranges are separated by commas, the ends of a range by a minus followed by a blank; a minus followed by a
/// digit is the sign of a number: "-5" is the value -5, "-7 - -5" a range, and "1-5" no range. Blanks
/// around a value are ignored. Ranges may be in any order, but no two of them share a value.
///
/// A value is what StrToInt reads, or a name: its position in a list, from 0, by the list's IndexOf. A name
/// cannot contain a comma, a minus followed by a blank, or an underscore, which also separates the ends of a
/// range.
/// The value -1 is refused.
///
/// Empty text has no ranges. A part that is empty, as between two commas, or has more than two ends, as
/// "1 - 2 - 3", is the range 0 to 0.
///
/// Reading n ranges takes time of the order of n log(n).
///
/// Threads: the functions keep no state; a parser never changes.
namespace Varnholt {

class TStringList;

struct VARNHOLT_EXPORT TRange {
    std::int32_t First = 0;
    std::int32_t Last = 0;  ///< included; equal to First for a single value

    /// "3" for the single value 3, "3 - 7" for a range.
    [[nodiscard]] String ToString() const;

    bool operator==(const TRange&) const = default;
};

enum TRangeType : std::uint8_t { rgtIndividual, rgtRange };

/// The greatest number of values that ToValuesArray returns: 1 GiB of them. A short text, such as
/// "1 - 2000000000", must not make a program run out of memory.
inline constexpr std::int64_t kMaxRangeValues = 268'435'456;

class VARNHOLT_EXPORT TRangeParser {
public:
    /// Reads ranges of numbers. Raises, for the first part with an error, EConvertError as StrToInt does,
    /// Exception "Syntax Error" for a range whose last value is below its first, or Exception "Syntax error"
    /// for the value -1; then Exception "Syntax error" if two ranges share a value.
    explicit TRangeParser(StringView text);

    /// Reads ranges of names, which become their positions in the list. A name that is not in the list counts
    /// as -1, so it raises Exception "Syntax error", or "Syntax Error" as the last of a range whose first is
    /// in the list. All else is as with numbers. The list is used only by the constructor.
    TRangeParser(StringView text, const TStringList& names);

    /// The ranges, in the order of the text.
    [[nodiscard]] std::int32_t GetCount() const noexcept { return FRanges.GetLength(); }
    /// The range at an index from 0. An index outside raises ERangeError "Array index out of bounds
    /// (INDEX)".
    [[nodiscard]] TRange GetRange(std::int32_t index) const { return FRanges[index]; }
    /// A copy of the ranges.
    [[nodiscard]] TDynArray<TRange> ToArray() const { return FRanges.Copy(); }

    /// Every value of every range: ascending within a range, the ranges in the order of the text. Raises
    /// ERangeError "The ranges cover %d values, more than %d" beyond kMaxRangeValues, before any memory is
    /// allocated, and "Not enough memory for %d values" if allocation fails.
    [[nodiscard]] TIntegerArray ToValuesArray() const;
    /// The same, but returns false and empty values instead of raising.
    [[nodiscard]] bool TryToValuesArray(TIntegerArray& values) const noexcept;

    /// The values of ranges of numbers. Raises what the constructor and ToValuesArray raise.
    [[nodiscard]] static TIntegerArray Parse(StringView text);
    /// The same, but returns false and empty values instead of raising.
    [[nodiscard]] static bool TryParse(StringView text, TIntegerArray& values) noexcept;
    /// Whether the text can be read as ranges of numbers.
    [[nodiscard]] static bool TestRangeString(StringView text) noexcept;

private:
    template <typename TReadValue>
    void Read(StringView text, TReadValue readValue);

    TDynArray<TRange> FRanges;
};

}  // namespace Varnholt
