#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <type_traits>
#include <vector>

/// The sort by a caller's comparison.
///
///     const std::vector<std::uint32_t> order = SortedPositions(
///         rows.size(), [&](std::uint32_t a, std::uint32_t b) { return rows[a].Year < rows[b].Year; });
///
/// A caller's comparison can contradict itself (a NaN among the keys suffices) and can raise. std::sort and
/// std::stable_sort may then read outside their range. A merge sort whose loops are all bounded by positions
/// does not: each merge writes every item once, whatever the comparison returns, so the result is always a
/// permutation.
///
/// Threads: the functions keep no state.
namespace Varnholt {

/// Sorts small, trivially copyable items: keys, positions or pairs of them. Stable; about n log2(n)
/// comparisons, n if the items are already in order. If `isLess` raises, the items are unchanged.
template <typename T, typename TIsLess>
void SafeSort(std::vector<T>& items, TIsLess isLess) {
    static_assert(std::is_trivially_copyable_v<T>, "items with resources are sorted by their positions");
    constexpr std::size_t kRun = 16;
    const std::size_t count = items.size();
    std::vector<T> sorted = items;
    for (std::size_t begin = 0; begin < count; begin += std::min(kRun, count - begin)) {
        const std::size_t end = begin + std::min(kRun, count - begin);
        for (std::size_t next = begin + 1; next < end; ++next) {
            const T item = sorted[next];
            std::size_t hole = next;
            for (; hole > begin && isLess(item, sorted[hole - 1]); --hole) sorted[hole] = sorted[hole - 1];
            sorted[hole] = item;
        }
    }
    std::vector<T> merged(count > kRun ? count : 0);
    for (std::size_t width = kRun; width < count; width *= 2) {
        for (std::size_t begin = 0; begin < count; begin += std::min(2 * width, count - begin)) {
            const std::size_t middle = begin + std::min(width, count - begin);
            const std::size_t end = begin + std::min(2 * width, count - begin);
            std::size_t left = begin, right = middle, place = begin;
            // Two runs that are already in order are copied by the two lines after this loop.
            if (right < end && isLess(sorted[right], sorted[right - 1])) {
                while (left < middle && right < end) {
                    merged[place++] = isLess(sorted[right], sorted[left]) ? sorted[right++] : sorted[left++];
                }
            }
            while (left < middle) merged[place++] = sorted[left++];
            while (right < end) merged[place++] = sorted[right++];
        }
        sorted.swap(merged);
    }
    items.swap(sorted);
}

/// The positions 0 to count - 1 in the order of `isLess(a, b)`, which takes two positions. Stable; for at
/// most 2^32 items.
template <typename TIsLess>
[[nodiscard]] std::vector<std::uint32_t> SortedPositions(std::size_t count, TIsLess isLess) {
    std::vector<std::uint32_t> positions(count);
    std::iota(positions.begin(), positions.end(), std::uint32_t{0});
    SafeSort(positions, isLess);
    return positions;
}

}  // namespace Varnholt
