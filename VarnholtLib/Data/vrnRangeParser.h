#pragma once

#include <cstdint>

#include "VarnholtBaseLib/Arrays.h"

/// Ranges written as text: "1 - 5, 8, 10 - 12".
///
///     TIntegerArray days = TRangeParser::Parse(u"1 - 5, 8");     // 1, 2, 3, 4, 5, 8
///     TRangeParser summer(u"Jun - Aug", monthNames);             // one range, 5 to 7
///
/// Ranges are parted by commas, the ends of a range by a minus with a blank behind it; a minus with a digit
/// behind it is the sign of a number: "-5" is the value -5, "-7 - -5" a range, and "1-5" no range. Blanks
/// around a value do not matter. Ranges may stand in any order, but no two of them share a value.
///
/// A value is what StrToInt reads, or a name: its position in a list, from 0, by the list's IndexOf. A name
/// can hold no comma, no minus with a blank behind it and no underscore, which also parts the ends of a range.
/// The value -1 is refused.
///
/// Empty text has no ranges. A part that is empty, as between two commas, or that has more than two ends, as
/// "1 - 2 - 3", is the range 0 to 0.
///
/// Leans on SplitString of vrnString.h. Threads: the functions keep no state; a parser never changes.
namespace Varnholt {

class TStringList;

struct VARNHOLT_EXPORT TRange {
    std::int32_t First = 0;
    std::int32_t Last = 0;  ///< included; a single value has First here, too

    /// "3" for the single value 3, "3 - 7" for a range.
    [[nodiscard]] String ToString() const;

    bool operator==(const TRange&) const = default;
};

enum TRangeType : std::uint8_t { rgtIndividual, rgtRange };

/// The greatest number of values that ToValuesArray makes an array of: 1 GiB of them.
inline constexpr std::int64_t kMaxRangeValues = 268'435'456;

class VARNHOLT_EXPORT TRangeParser {
public:
    /// Reads ranges of numbers. Raises, for the first part that is wrong, EConvertError as StrToInt does;
    /// Exception "Syntax Error" for a range that runs backwards; Exception "Syntax error" for the value -1.
    /// Exception "Syntax error" also if two ranges share a value.
    explicit TRangeParser(StringView text);

    /// Reads ranges of names, which become their positions in the list. A name that the list does not hold
    /// counts as -1, so it raises Exception "Syntax error", or "Syntax Error" as the last of a range whose
    /// first is in the list. All else as with numbers. The list is needed for the construction alone.
    TRangeParser(StringView text, const TStringList& names);

    /// The ranges, in the order of the text.
    [[nodiscard]] std::int32_t GetCount() const noexcept { return FRanges.GetLength(); }
    /// The range at an index from 0 on. An index outside raises ERangeError "Array index out of bounds
    /// (INDEX)".
    [[nodiscard]] TRange GetRange(std::int32_t index) const { return FRanges[index]; }
    /// A copy of the ranges.
    [[nodiscard]] TDynArray<TRange> ToArray() const { return FRanges.Copy(); }

    /// Every value of every range: ascending within a range, the ranges in the order of the text. Raises
    /// ERangeError "The ranges cover %d values, more than %d" beyond kMaxRangeValues, before any memory is
    /// taken, and "Not enough memory for %d values" where the system has no more.
    [[nodiscard]] TIntegerArray ToValuesArray() const;
    /// The same; any exception gives false and leaves values empty.
    [[nodiscard]] bool TryToValuesArray(TIntegerArray& values) const noexcept;

    /// The values of ranges of numbers. Raises what the constructor and ToValuesArray raise.
    [[nodiscard]] static TIntegerArray Parse(StringView text);
    /// The same; any exception gives false and leaves values empty.
    [[nodiscard]] static bool TryParse(StringView text, TIntegerArray& values) noexcept;
    /// Whether the text can be read as ranges of numbers.
    [[nodiscard]] static bool TestRangeString(StringView text) noexcept;

private:
    template <typename TReadValue>
    void Read(StringView text, TReadValue readValue);

    TDynArray<TRange> FRanges;
};

}  // namespace Varnholt
