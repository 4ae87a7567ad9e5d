#pragma once

#include <algorithm>
#include <bit>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <type_traits>
#include <utility>
#include <vector>

#include "VarnholtLib/Data/vrnSmartArray.h"

/// The quicksort described at TSmartArray::Sort, on keys that are taken from their variants, for the array
/// and the table.
///
///     WithSortedItems(count, cell, id, [&](auto& items) {
///         SmartSort(std::span(items));
///         for (const auto& item : items) order.push_back(item.InitialIndex);
///     });
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// A text as a key: a view, preceded by its first code units, which decide most comparisons.
struct TTextKey {
    explicit TTextKey(StringView text) noexcept : Text(text) {
        for (std::size_t i = 0; i < 4; ++i) Prefix = Prefix << 16 | (i < text.size() ? text[i] : Char{0});
    }

    friend std::strong_ordering operator<=>(const TTextKey& a, const TTextKey& b) noexcept {
        return a.Prefix != b.Prefix ? a.Prefix <=> b.Prefix : a.Text <=> b.Text;
    }
    friend bool operator==(const TTextKey& a, const TTextKey& b) noexcept { return (a <=> b) == 0; }

    std::uint64_t Prefix = 0;
    StringView Text;
};

/// The offsets of the items in a block that end a scan, as far as they have not been swapped.
class TSmartStops {
public:
    static constexpr std::ptrdiff_t kBlock = 64;

    [[nodiscard]] bool IsEmpty() const noexcept { return FNext == FEnd; }
    [[nodiscard]] std::ptrdiff_t GetNext() const noexcept { return FOffsets[FNext]; }
    std::ptrdiff_t TakeNext() noexcept { return FOffsets[FNext++]; }

    template <typename TStops>
    void Find(TStops stops) noexcept {
        FNext = FEnd = 0;
        for (std::ptrdiff_t k = 0; k < kBlock; ++k) {
            FOffsets[FEnd] = static_cast<std::uint8_t>(k);
            FEnd += stops(k) ? 1U : 0U;
        }
    }

private:
    std::uint8_t FOffsets[kBlock];
    std::size_t FNext = 0;
    std::size_t FEnd = 0;
};

/// Does the work of SmartPartition between i and j up to the last two blocks, without a jump for each
/// comparison (BlockQuicksort, Edelkamp and Weiss 2016). A partition swaps the k-th item from the left that
/// is not below the pivot with the k-th from the right that is not above it, as long as they do not meet; so
/// does this.
template <typename T>
void SmartPartitionBlocks(TSortedItem<T>* a, std::ptrdiff_t& i, std::ptrdiff_t& j, T pivot) noexcept {
    constexpr std::ptrdiff_t kBlock = TSmartStops::kBlock;
    TSmartStops left, right;
    while (j - i + 1 >= 2 * kBlock) {
        if (left.IsEmpty()) left.Find([&](std::ptrdiff_t k) { return !(a[i + k].Value < pivot); });
        if (right.IsEmpty()) right.Find([&](std::ptrdiff_t k) { return !(a[j - k].Value > pivot); });
        while (!left.IsEmpty() && !right.IsEmpty())
            std::swap(a[i + left.TakeNext()], a[j - right.TakeNext()]);
        if (left.IsEmpty()) i += kBlock;
        if (right.IsEmpty()) j -= kBlock;
    }
    if (!left.IsEmpty()) i += left.GetNext();  // the items before are in place
    if (!right.IsEmpty()) j -= right.GetNext();
}

/// The part of the sort's steps between the choice of the pivot and the two sorts that follow; it leaves i
/// above j. No scan leaves the range: the pivot itself ends the first one of each side, and the swapped items
/// end the later ones.
template <typename T>
void SmartPartition(TSortedItem<T>* a, std::ptrdiff_t& i, std::ptrdiff_t& j, const T& pivot) {
    if constexpr (std::is_arithmetic_v<T>) SmartPartitionBlocks(a, i, j, pivot);
    do {
        while (a[i].Value < pivot) ++i;
        while (a[j].Value > pivot) --j;
        if (i <= j) std::swap(a[i++], a[j--]);
    } while (i <= j);
}

/// How a value compares: by the rank of its class of equal values, which is both Low and High. A value that
/// compares with nothing, a NaN, ends every scan: its Low is below and its High above all ranks.
struct TSmartRank {
    std::int32_t Low = -1;
    std::int32_t High = std::numeric_limits<std::int32_t>::max();
};

/// The quicksort of values with these ranks: element k of the result is the position that the value at k had.
/// Takes n log2(n)^2 steps at most, whatever the pivots are.
[[nodiscard]] std::vector<std::int32_t> SmartSortRanks(std::span<const TSmartRank> ranks);

template <typename T>
void SmartSortByRank(std::span<TSortedItem<T>> items) {
    std::vector<std::int32_t> ordered;
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (items[i].Value == items[i].Value) ordered.push_back(static_cast<std::int32_t>(i));
    }
    const auto value = [&](std::int32_t i) -> const T& { return items[static_cast<std::size_t>(i)].Value; };
    std::ranges::sort(ordered, [&](std::int32_t a, std::int32_t b) { return value(a) < value(b); });
    std::vector<TSmartRank> ranks(items.size());
    std::int32_t rank = 0;
    for (std::size_t k = 0; k < ordered.size(); ++k) {
        if (k > 0 && value(ordered[k - 1]) < value(ordered[k])) ++rank;
        ranks[static_cast<std::size_t>(ordered[k])] = {rank, rank};
    }
    std::vector<TSortedItem<T>> sorted;
    sorted.reserve(items.size());
    for (const std::int32_t source : SmartSortRanks(ranks)) {
        sorted.push_back(std::move(items[static_cast<std::size_t>(source)]));
    }
    std::ranges::move(sorted, items.begin());
}

/// Sorts lo to hi. The two parts of a split are independent, so the smaller one may be first: that limits the
/// stack to log2(n) frames. If the pivots are so bad that `levels` run out, the rest is sorted by ranks.
template <typename T>
void SmartSortRange(TSortedItem<T>* a, std::ptrdiff_t lo, std::ptrdiff_t hi, int levels) {
    constexpr std::ptrdiff_t kFewItems = 64;  // n^2 steps are fine up to here
    while (lo < hi) {
        if (levels-- <= 0 && hi - lo >= kFewItems) {
            return SmartSortByRank(std::span(a + lo, a + hi + 1));
        }
        const T pivot = a[lo + (hi - lo) / 2].Value;
        std::ptrdiff_t i = lo, j = hi;
        SmartPartition(a, i, j, pivot);
        if (j - lo < hi - i) {
            SmartSortRange(a, lo, j, levels);
            lo = i;
        } else {
            SmartSortRange(a, i, hi, levels);
            hi = j;
        }
    }
}

/// Sorts the items by the quicksort described at TSmartArray::Sort. If allocation fails (std::bad_alloc), the
/// items are left in some order.
template <typename T>
void SmartSort(std::span<TSortedItem<T>> items) {
    const int levels =
        4 * static_cast<int>(std::bit_width(items.size()));  // a random order takes about 3 log2(n)
    SmartSortRange(items.data(), 0, std::ssize(items) - 1, levels);
}

/// The types of keys that compare as the variants do from which they are made.
enum class TSmartKey : std::uint8_t { Float, Integer, Text, Any };

/// Which of them serves values of all these types. The argument has the bit of each type, from SmartTypeBit.
[[nodiscard]] TSmartKey SmartKeyFor(std::uint32_t typeBits) noexcept;
[[nodiscard]] std::uint32_t SmartTypeBit(TVarType type) noexcept;

/// Calls `use` with a vector of `count` items: item i has the variant cell(i) as its value, or a key that
/// compares like it, and id(i) as its initial index. A text key views the text of the variant.
template <typename TCell, typename TId, typename TUse>
void WithSortedItems(std::size_t count, TCell cell, TId id, TUse use) {
    const auto run = [&](auto key) {
        std::vector<TSortedItem<decltype(key(cell(0)))>> items;
        items.reserve(count);
        for (std::size_t i = 0; i < count; ++i) items.push_back({key(cell(i)), id(i)});
        use(items);
    };
    std::uint32_t typeBits = 0;
    for (std::size_t i = 0; i < count; ++i) typeBits |= SmartTypeBit(cell(i).GetType());
    switch (SmartKeyFor(typeBits)) {
        case TSmartKey::Float:
            return run([](const Variant& value) { return value.ToDouble(); });
        case TSmartKey::Integer:
            return run([](const Variant& value) { return value.ToInt64(); });
        case TSmartKey::Text:
            return run([](const Variant& value) { return TTextKey(value.GetTextView()); });
        case TSmartKey::Any:
            return run([](const Variant& value) { return value; });
    }
}

}  // namespace Varnholt
