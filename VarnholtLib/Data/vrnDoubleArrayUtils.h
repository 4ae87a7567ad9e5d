#pragma once

#include <cstdint>

#include "VarnholtBaseLib/Arrays.h"

/// Operations on arrays of floats seen as data fields, in which one value stands for no data.
///
///     TDataRect rect;
///     if (DoubleArrayGetDataRect(field, -999.0, rect)) {
///         field = DoubleArrayExtractRect(field, rect);                       // without its empty margins
///         TIntegerArray packed = DoubleArrayToScaledIntArray(field[0], 100.0, -999.0);
///     }
///
/// A flat array is a row of values, a jagged one an array of such rows; it is rectangular if all its rows
/// have one length. Columns are x, rows y, both from 0. An empty array and an absent one are the same.
///
/// There are two tests for no data. The min-max operations keep the values greater than no data, which acts
/// as a floor, and keep every value if no data is a NaN. In all others a value is no data if both are NaNs,
/// or if the two are equal by SameValue with its default tolerance.
///
/// Failures raise the classes of vrnExceptions.h, with the name of the function as type and method; the
/// checks run in the order given here.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// A rectangle of cells, all four sides inclusive and counted from 0. All sides are -1 where there is no
/// cell.
struct TDataRect {
    std::int32_t Left = -1;
    std::int32_t Top = -1;
    std::int32_t Right = -1;
    std::int32_t Bottom = -1;

    bool operator==(const TDataRect&) const = default;
};

/// No data among the packed integers.
inline constexpr std::int32_t kScaledNoData = -9999;

// --- Range of values ---

/// The smallest and the largest of the values greater than noData, or of all where noData is a NaN. False,
/// and NaNs in both, if there is none. A NaN among the values is skipped unless nothing else is kept:
/// then the result is true with NaNs. Of zeros with different signs the first counts. Rows of a
/// jagged array may differ in length.
VARNHOLT_EXPORT bool DoubleArrayGetMinMax(const TDoubleArray& source, double noData, double& min,
                                          double& max);
VARNHOLT_EXPORT bool SingleArrayArrayGetMinMax(const TSingleArrayArray& source, float noData, float& min,
                                               float& max);
VARNHOLT_EXPORT bool DoubleArrayArrayGetMinMax(const TDoubleArrayArray& source, double noData, double& min,
                                               double& max);

// --- Reversal and shape ---

/// The elements in reverse order, in a new array.
[[nodiscard]] VARNHOLT_EXPORT TSingleArray SingleArrayReverse(const TSingleArray& source);
[[nodiscard]] VARNHOLT_EXPORT TDoubleArray DoubleArrayReverse(const TDoubleArray& source);

/// The rows in reverse order, in a new array. The rows themselves are shared with the source, not copied: a
/// value written through one array changes the other.
[[nodiscard]] VARNHOLT_EXPORT TSingleArrayArray SingleArrayArrayReverse(const TSingleArrayArray& source);
[[nodiscard]] VARNHOLT_EXPORT TDoubleArrayArray DoubleArrayArrayReverse(const TDoubleArrayArray& source);

/// Cuts a flat array into height rows of width elements: element x of row y is source[y * width + x]. Type
/// and method of both is "DoubleArray1DTo2DArray". Raises
/// - EExArgumentNilException for "Source" if it is empty
/// - EExArgumentException for "Source" if its length is not width * height:
///   "The specified array is %d in length, but is expected to be %d in length"
/// - EExArgumentException as DoubleArrayCreateJagged does if both are negative
[[nodiscard]] VARNHOLT_EXPORT TSingleArrayArray SingleArray1DTo2D(const TSingleArray& source,
                                                                  std::int32_t width, std::int32_t height);
[[nodiscard]] VARNHOLT_EXPORT TDoubleArrayArray DoubleArray1DTo2D(const TDoubleArray& source,
                                                                  std::int32_t width, std::int32_t height);

/// height rows of width zeros, or of the value. Raises
/// - EExArgumentException for "Width": "Width must be >= 1"
/// - EExArgumentException for "Height": "Height must be >= 1"
[[nodiscard]] VARNHOLT_EXPORT TDoubleArrayArray DoubleArrayCreateJagged(std::int32_t width,
                                                                        std::int32_t height);
[[nodiscard]] VARNHOLT_EXPORT TDoubleArrayArray DoubleArrayCreateJagged(std::int32_t width,
                                                                        std::int32_t height, double value);

// --- Rectangles ---

/// The smallest rectangle that holds every cell with data. False, and a rect of -1s, if there is none; also
/// a rect of -1s after an exception. Raises
/// - EExArgumentNilException for "Source" if it is empty
/// - EExException "The length of the first row in the specified jagged array is 0"
/// - EExException "A rectangular jagged array is expected. Row %d is %d in length, expected %d"
VARNHOLT_EXPORT bool DoubleArrayGetDataRect(const TDoubleArrayArray& source, double noData, TDataRect& rect);

/// A new array of the cells of the rectangle. Raises
/// - EExArgumentNilException for "Source" if it is empty
/// - EExArgumentException for "DataRect": Left or Top below 0, Left above Right, or Top above Bottom:
///   "DataRect contains one or more invalid values (Left=%d, Top=%d, Right=%d, Bottom=%d)"
/// - EExArgumentException for "DataRect":
///   "DataRect.Bottom (%d) exceeds the height of the specified array (%d)"
/// - EExArgumentException for "DataRect", the first row being empty: "The specified array width is 0"
/// - EExArgumentException for "DataRect":
///   "DataRect.Right (%d) exceeds the width of the specified array (%d)", that of the first
///   row
/// - EExArgumentException for "Source", a row within the rectangle differing in length from the first row:
///   "Source array is expected to be rectangular"
[[nodiscard]] VARNHOLT_EXPORT TDoubleArrayArray DoubleArrayExtractRect(const TDoubleArrayArray& source,
                                                                       const TDataRect& rect);

// --- Comparison ---

/// Whether both are the same array, or have one length and values that are equal in pairs by SameValue with
/// its default tolerance. A NaN equals nothing, but an array with NaNs equals itself. Jagged arrays are equal
/// if their rows are.
[[nodiscard]] VARNHOLT_EXPORT bool DoubleArraysEqual(const TDoubleArray& a, const TDoubleArray& b);
[[nodiscard]] VARNHOLT_EXPORT bool DoubleArraysEqual(const TDoubleArrayArray& a, const TDoubleArrayArray& b);

// --- Packing ---

/// Each value times scale, rounded to the nearest integer, halves to the even one; the product is taken in
/// Extended. No data becomes -9999. A product that is a NaN or does not fit in 32 bits raises ERangeError
/// "VALUE does not fit in a 32-bit integer".
[[nodiscard]] VARNHOLT_EXPORT TIntegerArray DoubleArrayToScaledIntArray(const TDoubleArray& source,
                                                                        double scale, double noData);

/// Each integer divided by scale; -9999 becomes noData, also where it is a scaled value. A scale of 0
/// gives infinities and NaNs.
[[nodiscard]] VARNHOLT_EXPORT TSingleArray SingleArrayFromScaledIntArray(const TIntegerArray& source,
                                                                         double scale, double noData);
[[nodiscard]] VARNHOLT_EXPORT TDoubleArray DoubleArrayFromScaledIntArray(const TIntegerArray& source,
                                                                         double scale, double noData);

}  // namespace Varnholt
