#include "VarnholtLib/Data/vrnSmartArray.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <type_traits>
#include <utility>

#include "Platform/Runtime/Encoding.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Indexes.h"
#include "VarnholtLib/Data/vrnSmartSortPrivate.h"

namespace Varnholt {
namespace {

template <typename T>
void PutInOrder(std::span<Variant> values, std::span<const TSortedItem<T>> items) {
    if constexpr (std::is_same_v<T, double>) {
        if (std::ranges::all_of(values, [](const Variant& value) { return value.GetType() == varDouble; })) {
            std::ranges::transform(items, values.begin(), [](const auto& item) { return item.Value; });
            return;  // the keys are the values, and closer in memory
        }
    }
    std::vector<Variant> sorted;
    sorted.reserve(values.size());
    for (const auto& item : items) {
        sorted.push_back(std::move(values[static_cast<std::size_t>(item.InitialIndex)]));
    }
    std::ranges::move(sorted, values.begin());
}

}  // namespace

TSmartArray::TSmartArray(TVariantArray data) : FData(std::move(data)) {}

TSmartArray::TSmartArray(TVariantArray data, const Variant& valueToFilter) : TSmartArray(std::move(data)) {
    Filter(valueToFilter);
}

TSmartArray::TSmartArray(TVariantArray data, const Variant& filterRange1, const Variant& filterRange2)
    : TSmartArray(std::move(data)) {
    Filter(filterRange1, filterRange2);
}

TSmartArray::TSmartArray(std::int32_t size) : FData(TVariantArray::WithLength(size)) {}

TSmartArray::TSmartArray(std::int32_t size, const Variant& defaultValue)
    : FData(TVariantArray::WithLength(size, defaultValue)) {}

std::int64_t TSmartArray::Position(std::int32_t index) const {
    if (!IsIndex(index, FData.size())) RaiseArrayIndex(index);
    return FInverted ? GetCount() - 1 - index : index;
}

void TSmartArray::CheckNotEmpty() const {
    if (GetIsEmpty()) throw Exception(u"TSmartArray.Average");
}

Variant TSmartArray::GetData(std::int32_t index) const {
    return FData[Position(index)];
}

void TSmartArray::SetData(std::int32_t index, const Variant& value) {
    if (FSorted) throw Exception(u"TSmartArray.SetData");
    FData[index] = value;
}

std::int32_t TSmartArray::GetSortMapValue(std::int32_t index) const {
    if (!FSorted) throw Exception(u"TSmartArray.GetSortMapValue");
    return FSortMap[Position(index)];
}

// Sorts the values and returns the positions that they had. All memory is allocated before a value is moved.
TIntegerArray TSmartArray::SortStorage() {
    const std::span<Variant> values = FData.GetSpan();
    TIntegerArray map = TIntegerArray::WithLength(GetCount());
    WithSortedItems(
        values.size(), [&](std::size_t i) -> const Variant& { return values[i]; },
        [](std::size_t i) { return static_cast<std::int32_t>(i); },
        [&](auto& items) {
            SmartSort(std::span(items));
            std::ranges::transform(items, map.begin(), [](const auto& item) { return item.InitialIndex; });
            PutInOrder(values, std::span(std::as_const(items)));
        });
    return map;
}

void TSmartArray::Sort() {
    if (FSorted) return;
    FSortMap = SortStorage();
    FSorted = true;
}

void TSmartArray::UndoSort() {
    if (!FSorted) return;
    TVariantArray initial = TVariantArray::WithLength(GetCount());
    for (std::int32_t i = 0; i < GetCount(); ++i) initial[FSortMap[i]] = std::as_const(FData)[i];
    FData = std::move(initial);
    FinalizeSort();
}

void TSmartArray::FinalizeSort() noexcept {
    FSortMap = {};
    FSorted = false;
}

void TSmartArray::SortAndFinalize() {
    static_cast<void>(SortStorage());
    FinalizeSort();
}

std::int32_t TSmartArray::Refill(std::vector<Variant> kept, bool sortAgain) {
    FData = TVariantArray(std::move(kept));
    FinalizeSort();
    if (sortAgain) Sort();
    return GetCount();
}

std::int32_t TSmartArray::Filter(const Variant& value) {
    return Filter(value, value);
}

std::int32_t TSmartArray::Filter(const Variant& range1, const Variant& range2) {
    if (GetIsEmpty()) return 0;
    const bool wasSorted = FSorted;
    UndoSort();
    double low = range1.ToDouble();
    double high = range2.ToDouble();
    const bool allNumbers = std::isnan(low) || std::isnan(high);
    if (high < low) std::swap(low, high);
    std::vector<Variant> kept;
    for (const Variant& value : std::as_const(FData)) {
        const double number = value.ToDouble();
        if (allNumbers ? !std::isnan(number) : low <= number && number <= high) kept.push_back(value);
    }
    return Refill(std::move(kept), wasSorted);
}

std::int32_t TSmartArray::Filter(const TComparasonCallback& comparasonCallback,
                                 TComparasonAction comparasonAction) {
    if (GetIsEmpty()) return 0;
    if (!comparasonCallback) throw EArgumentNilException(u"comparasonCallback");
    const bool wasSorted = FSorted;
    UndoSort();
    const TVariantArray values = FData;  // a second holder: the callback may give the array another storage
    std::vector<Variant> kept;
    for (std::int32_t i = 0; i < values.GetLength(); ++i) {
        const bool isNamed = comparasonCallback(i, values[i]);
        if (isNamed != (comparasonAction == caKeep)) continue;
        kept.emplace_back(double{static_cast<float>(values[i].ToDouble())});
    }
    return Refill(std::move(kept), wasSorted);
}

void TSmartArray::Push(const TSingleArray& data) {
    if (data.GetLength() != GetCount()) throw Exception(u"Smart Array size much match provided data size");
    for (std::int32_t i = 0; i < GetCount(); ++i) SetData(i, double{data[i]});
}

double TSmartArray::Sum() const {
    CheckNotEmpty();
    const std::span<const Variant> values = FData.GetSpan();
    Variant total = 0;
    std::size_t next = 0;
    while (next < values.size() && total.GetType() != varDouble) total += values[next++];
    double sum = total.ToDouble();
    for (; next < values.size(); ++next) {  // a float and anything but a text add up as 64-bit floats
        const Variant& value = values[next];
        sum = value.IsText() ? (Variant(sum) + value).ToDouble() : sum + value.ToDouble();
    }
    return sum;
}

double TSmartArray::Average() const {
    return Sum() / GetCount();
}

double TSmartArray::Min() const {
    CheckNotEmpty();
    double best = FData[0].ToDouble();
    for (const Variant& value : FData) {
        const double number = value.ToDouble();
        if (number < best) best = number;
    }
    return best;
}

double TSmartArray::Max() const {
    CheckNotEmpty();
    double best = FData[0].ToDouble();
    for (const Variant& value : FData) {
        const double number = value.ToDouble();
        if (number > best) best = number;
    }
    return best;
}

double TSmartArray::Median() {
    CheckNotEmpty();
    Sort();
    const std::int32_t middle = GetCount() / 2;
    const Variant& upper = std::as_const(FData)[middle];
    if (GetCount() % 2 == 1) return upper.ToDouble();
    const Variant& lower = std::as_const(FData)[middle - 1];
    if (lower.IsText() && upper.IsText()) return (lower.ToDouble() + upper.ToDouble()) / 2;  // "+" joins them
    return ((lower + upper) / 2).ToDouble();
}

void TSmartArray::DumpToFile(StringView fileName) const {
    String text;
    for (std::int32_t i = 0; i < GetCount(); ++i) {
        text += Format(u"%.4f\r\n", {FData[Position(i)].ToDouble()});
    }
    WriteFileInOneGo(fileName, TEncoding::Default().GetBytes(text));
}

}  // namespace Varnholt
