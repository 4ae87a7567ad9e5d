#pragma once

#include <functional>
#include <optional>

#include "VarnholtBaseLib/Arrays.h"
#include "VarnholtLib/Data/vrnBasedArray.h"

/// A one-dimensional array of 32-bit floats with a settable first index.
///
///     TFloatArray rain(4);
///     rain.CopyFrom(values, 0, 0, 4);                    // -999, 3, -1000, 4
///     if (auto known = rain.Clean(-1000.0F, -999.0F)) {  // 3 and 4, at the indices 2 and 3
///         known->Sort();
///         Show(known->ToString());                       // 3.000,4.000
///     }
///
/// Results are single precision, sums included. Texts take their decimal separator from FormatSettings().
///
/// Threads: no lock; one thread at a time.
namespace Varnholt {

/// Returns whether a value is to be removed; the second argument is the `param` given to Filter.
using TFloatFilterFunction = std::function<bool(float, void*)>;

class VARNHOLT_EXPORT TFloatArray : public TBasedArray<float> {
public:
    /// `nItems` zeros from index 1. EGridException "Can't create a float array with a dimension less than
    /// 1".
    explicit TFloatArray(std::int32_t nItems);

    /// A number for the application's graphs; 1 after construction. No operation here reads it.
    [[nodiscard]] std::int32_t GetGraphInc() const noexcept { return FGraphInc; }
    void SetGraphInc(std::int32_t graphInc) noexcept { FGraphInc = graphInc; }

    /// The value at an index from base to last. EGridException "Index out of bounds in TFloatArray.GetFloat",
    /// CR, "Index = ", the index.
    [[nodiscard]] float GetFloat(std::int32_t index) const {
        return FBuffer[Position(index, u"TFloatArray.GetFloat")];
    }
    [[nodiscard]] float operator[](std::int32_t index) const { return GetFloat(index); }
    /// Sets the value at an index. EGridException "Index out of bounds in TFloatArray.WriteFloat", CR,
    /// "Index = ", the index.
    void WriteFloat(std::int32_t index, float value) {
        FBuffer[Position(index, u"TFloatArray.WriteFloat")] = value;
    }

    /// The values from one index to another, both included; none if the end is one before the start. Raises
    /// what GetFloat raises for the first index that is outside, and EGridException "Can't get a negative
    /// number of values from a TFloatArray".
    [[nodiscard]] TSingleArray GetRange(std::int32_t startIndex, std::int32_t endIndex) const;
    /// `count` values from an index. Raises what GetRange raises.
    [[nodiscard]] TSingleArray GetValues(std::int32_t startIndex, std::int32_t count) const;
    /// All values.
    [[nodiscard]] TSingleArray ToArray() const;

    /// Copies `count` values from source[sStart] to the 0-based position dStart; `source` may be a part of
    /// this array. Raises a plain Exception, with nothing changed:
    /// - "Size error in source buffer": sStart + count - 1 is beyond the source, or one of the two is
    ///   negative
    /// - "Size error is destination buffer", CR LF, the last position, "/", dStart + count - 1: that is
    ///   beyond
    ///   this array, or dStart is negative
    void CopyFrom(std::span<const float> source, std::int32_t sStart, std::int32_t dStart,
                  std::int32_t count);

    /// The sum from first to last, rounded to 32 bits at every addition.
    [[nodiscard]] float Sum() const noexcept;

    /// Sorts ascending: SortFloats.
    void Sort();
    /// Sorts ascending, stable: InsertionSortFloats.
    void InsertionSort();
    /// Sorts ascending and returns, with base 1, the 1-based position that each value had: IndexSortFloats.
    [[nodiscard]] TFloatArray IndexSort();
    /// Reverses the order of the values; the base is unchanged.
    void Reverse() noexcept;

    /// The values outside the closed range `min` to `max`, in order and without gaps, or nothing if there are
    /// none. The base of the result is the index that its first value has here. NaNs are kept.
    [[nodiscard]] std::optional<TFloatArray> Clean(float min, float max) const;

    /// Removes the values for which `filterFunc` returns true. Calls it once for each value, in order, with
    /// `param` passed through; the base is unchanged. If it raises, nothing is removed. EArgumentNilException
    /// "filterFunc" for an empty function.
    void Filter(const TFloatFilterFunction& filterFunc, void* param);

    /// The values with three decimals, joined by commas: "1.500,2.000". Empty for an empty array.
    [[nodiscard]] String ToString() const;

    /// Writes a file of lines "INDEX VALUE", the value with two decimals. Lines end in CR LF; the text is in
    /// the platform's default 8-bit encoding and the file is replaced as a whole. Raises what
    /// WriteFileInOneGo raises.
    void SaveToFile(StringView fileName) const;
    /// The same as lines "INDEX,VALUE" below the header "Index,Value".
    void SaveToCSVFile(StringView fileName) const;

private:
    TFloatArray(std::vector<float>&& buffer, std::int32_t base) noexcept;
    [[nodiscard]] TSingleArray ValuesFrom(std::int64_t startIndex, std::int64_t count) const;
    void SaveLines(StringView fileName, String text, StringView lineFormat) const;

    std::int32_t FGraphInc = 1;
};

}  // namespace Varnholt
