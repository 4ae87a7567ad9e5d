#include "VarnholtLib/Data/vrnDoubleArrayUtils.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "Platform/Runtime/FloatMath.h"
#include "Platform/Runtime/Format.h"
#include "VarnholtBaseLib/Extremes.h"
#include "VarnholtLib/Foundation/vrnExceptions.h"

namespace Varnholt {
namespace {

template <typename T>
bool IsKept(T value, T noData) {
    return std::isnan(noData) || value > noData;
}

template <typename T>
void WidenMinMax(const TDynArray<T>& source, T noData, bool& hasValue, T& min, T& max) {
    for (const T value : source) {
        if (!IsKept(value, noData)) continue;
        hasValue = true;
        TakeMin(min, value);
        TakeMax(max, value);
    }
}

template <typename T>
bool RowMinMax(const TDynArray<T>& source, T noData, T& min, T& max) {
    bool hasValue = false;
    min = max = std::numeric_limits<T>::quiet_NaN();
    WidenMinMax(source, noData, hasValue, min, max);
    return hasValue;
}

template <typename T>
bool FieldMinMax(const TDynArray<TDynArray<T>>& source, T noData, T& min, T& max) {
    bool hasValue = false;
    min = max = std::numeric_limits<T>::quiet_NaN();
    for (const TDynArray<T>& row : source) WidenMinMax(row, noData, hasValue, min, max);
    return hasValue;
}

template <typename T>
TDynArray<T> Reversed(const TDynArray<T>& source) {
    const std::span<const T> items = source.GetSpan();
    return TDynArray<T>(items.rbegin(), items.rend());
}

void CheckShape(StringView method, std::int32_t width, std::int32_t height) {
    if (width < 1) throw EExArgumentException(method, u"Width", u"Width must be >= 1");
    if (height < 1) throw EExArgumentException(method, u"Height", u"Height must be >= 1");
}

template <typename T>
TDynArray<TDynArray<T>> CutIntoRows(const TDynArray<T>& source, std::int32_t width, std::int32_t height) {
    constexpr StringView kMethod = u"DoubleArray1DTo2DArray";
    if (source.IsEmpty()) throw EExArgumentNilException(kMethod, u"Source");
    const std::int64_t expected = std::int64_t{width} * height;
    if (source.GetLength() != expected) {
        throw EExArgumentException(
            kMethod, u"Source",
            Format(u"The specified array is %d in length, but is expected to be %d in length",
                   {source.GetLength(), expected}));
    }
    CheckShape(kMethod, width, height);
    const auto rowLength = static_cast<std::size_t>(width);
    std::vector<TDynArray<T>> rows;
    for (auto rest = source.GetSpan(); !rest.empty(); rest = rest.subspan(rowLength)) {
        rows.emplace_back(rest.first(rowLength));
    }
    return TDynArray<TDynArray<T>>(std::move(rows));
}

bool IsNoData(double value, double noData) {
    return std::isnan(noData) ? std::isnan(value) : SameValue(value, noData);
}

constexpr StringView kExtractRect = u"DoubleArrayExtractRect";

EExArgumentException BadDataRect(StringView info) {
    return EExArgumentException(kExtractRect, u"DataRect", info);
}

void CheckDataRect(const TDoubleArrayArray& source, const TDataRect& rect) {
    if (source.IsEmpty()) throw EExArgumentNilException(kExtractRect, u"Source");
    if (rect.Left < 0 || rect.Top < 0 || rect.Left > rect.Right || rect.Top > rect.Bottom) {
        throw BadDataRect(
            Format(u"DataRect contains one or more invalid values (Left=%d, Top=%d, Right=%d, Bottom=%d)",
                   {rect.Left, rect.Top, rect.Right, rect.Bottom}));
    }
    if (rect.Bottom >= source.GetLength()) {
        throw BadDataRect(Format(u"DataRect.Bottom (%d) exceeds the height of the specified array (%d)",
                                 {rect.Bottom, source.GetLength()}));
    }
    const std::int32_t width = source[0].GetLength();
    if (width == 0) throw BadDataRect(u"The specified array width is 0");
    if (rect.Right >= width) {
        throw BadDataRect(Format(u"DataRect.Right (%d) exceeds the width of the specified array (%d)",
                                 {rect.Right, width}));
    }
    for (std::int32_t y = rect.Top; y <= rect.Bottom; ++y) {
        if (source[y].GetLength() == width) continue;
        throw EExArgumentException(kExtractRect, u"Source", u"Source array is expected to be rectangular");
    }
}

/// The comparison of both forms: isEqual compares two elements.
template <typename T, typename TIsEqual>
bool AreEqual(const TDynArray<T>& a, const TDynArray<T>& b, TIsEqual isEqual) {
    return a.SharesWith(b) || std::equal(a.begin(), a.end(), b.begin(), b.end(), isEqual);
}

template <typename T>
TDynArray<T> Unpacked(const TIntegerArray& source, double scale, double noData) {
    std::vector<T> values;
    values.reserve(source.size());
    for (const std::int32_t packed : source) {
        const Extended value = static_cast<Extended>(packed) / scale;
        values.push_back(static_cast<T>(packed == kScaledNoData ? noData : value));
    }
    return TDynArray<T>(std::move(values));
}

}  // namespace

bool DoubleArrayGetMinMax(const TDoubleArray& source, double noData, double& min, double& max) {
    return RowMinMax(source, noData, min, max);
}

bool SingleArrayArrayGetMinMax(const TSingleArrayArray& source, float noData, float& min, float& max) {
    return FieldMinMax(source, noData, min, max);
}

bool DoubleArrayArrayGetMinMax(const TDoubleArrayArray& source, double noData, double& min, double& max) {
    return FieldMinMax(source, noData, min, max);
}

TSingleArray SingleArrayReverse(const TSingleArray& source) {
    return Reversed(source);
}

TDoubleArray DoubleArrayReverse(const TDoubleArray& source) {
    return Reversed(source);
}

TSingleArrayArray SingleArrayArrayReverse(const TSingleArrayArray& source) {
    return Reversed(source);
}

TDoubleArrayArray DoubleArrayArrayReverse(const TDoubleArrayArray& source) {
    return Reversed(source);
}

TSingleArrayArray SingleArray1DTo2D(const TSingleArray& source, std::int32_t width, std::int32_t height) {
    return CutIntoRows(source, width, height);
}

TDoubleArrayArray DoubleArray1DTo2D(const TDoubleArray& source, std::int32_t width, std::int32_t height) {
    return CutIntoRows(source, width, height);
}

TDoubleArrayArray DoubleArrayCreateJagged(std::int32_t width, std::int32_t height) {
    return DoubleArrayCreateJagged(width, height, 0.0);
}

TDoubleArrayArray DoubleArrayCreateJagged(std::int32_t width, std::int32_t height, double value) {
    CheckShape(u"DoubleArrayCreateJagged", width, height);
    std::vector<TDoubleArray> rows;
    rows.reserve(static_cast<std::size_t>(height));
    for (std::int32_t y = 0; y < height; ++y) rows.push_back(TDoubleArray::WithLength(width, value));
    return TDoubleArrayArray(std::move(rows));
}

bool DoubleArrayGetDataRect(const TDoubleArrayArray& source, double noData, TDataRect& rect) {
    constexpr StringView kMethod = u"DoubleArrayGetDataRect";
    rect = TDataRect();
    if (source.IsEmpty()) throw EExArgumentNilException(kMethod, u"Source");
    const std::int32_t width = source[0].GetLength();
    if (width == 0) {
        throw EExException(kMethod, u"The length of the first row in the specified jagged array is 0");
    }
    TDataRect found;
    for (std::int32_t y = 0; y < source.GetLength(); ++y) {
        const TDoubleArray& row = source[y];
        if (row.GetLength() != width) {
            throw EExException(
                kMethod,
                Format(u"A rectangular jagged array is expected. Row %d is %d in length, expected %d",
                       {y, row.GetLength(), width}));
        }
        for (std::int32_t x = 0; x < width; ++x) {
            if (IsNoData(row[x], noData)) continue;
            const bool isFirst = found.Top < 0;
            if (isFirst) found.Top = y;
            found.Left = isFirst ? x : std::min(found.Left, x);
            found.Right = std::max(found.Right, x);
            found.Bottom = y;
        }
    }
    rect = found;
    return rect.Top >= 0;
}

TDoubleArrayArray DoubleArrayExtractRect(const TDoubleArrayArray& source, const TDataRect& rect) {
    CheckDataRect(source, rect);
    const auto left = static_cast<std::size_t>(rect.Left);
    const auto width = static_cast<std::size_t>(rect.Right) - left + 1;
    std::vector<TDoubleArray> rows;
    for (std::int32_t y = rect.Top; y <= rect.Bottom; ++y) {
        rows.emplace_back(source[y].GetSpan().subspan(left, width));
    }
    return TDoubleArrayArray(std::move(rows));
}

bool DoubleArraysEqual(const TDoubleArray& a, const TDoubleArray& b) {
    return AreEqual(a, b, [](double x, double y) { return SameValue(x, y); });
}

bool DoubleArraysEqual(const TDoubleArrayArray& a, const TDoubleArrayArray& b) {
    return AreEqual(a, b,
                    [](const TDoubleArray& x, const TDoubleArray& y) { return DoubleArraysEqual(x, y); });
}

TIntegerArray DoubleArrayToScaledIntArray(const TDoubleArray& source, double scale, double noData) {
    std::vector<std::int32_t> packed;
    packed.reserve(source.size());
    for (const double value : source) {
        packed.push_back(IsNoData(value, noData) ? kScaledNoData : RoundToInt(Extended{value} * scale));
    }
    return TIntegerArray(std::move(packed));
}

TSingleArray SingleArrayFromScaledIntArray(const TIntegerArray& source, double scale, double noData) {
    return Unpacked<float>(source, scale, noData);
}

TDoubleArray DoubleArrayFromScaledIntArray(const TIntegerArray& source, double scale, double noData) {
    return Unpacked<double>(source, scale, noData);
}

}  // namespace Varnholt
