#include "VarnholtLib/Data/vrnSmartSortPrivate.h"

#include <numeric>

namespace Varnholt {
namespace {

// The quicksort with scans that skip. A tree over the positions holds, for each subtree, the least Low and
// the greatest High, so a scan finds its next stop in log2(n) steps. A partition swaps no more often than its
// smaller part has items, plus one; an item is in a smaller part log2(n) times at most.
class TRankSort {
public:
    explicit TRankSort(std::span<const TSmartRank> ranks)
        : FLeaves(std::bit_ceil(ranks.size())), FTree(2 * FLeaves, kNever), FSources(ranks.size()) {
        std::ranges::copy(ranks, FTree.begin() + std::ssize(FTree) / 2);
        for (std::size_t node = FLeaves - 1; node > 0; --node) Join(node);
        std::iota(FSources.begin(), FSources.end(), 0);
    }

    // Both included; recursion takes the smaller part.
    void Sort(std::ptrdiff_t lo, std::ptrdiff_t hi) {
        while (lo < hi) {
            const TSmartRank pivot = FTree[Leaf(lo + (hi - lo) / 2)];
            std::ptrdiff_t i = lo, j = hi;
            do {
                i = NextNotBelow(i, pivot);
                j = PreviousNotAbove(j, pivot);
                if (i <= j) Swap(i++, j--);
            } while (i <= j);
            if (j - lo < hi - i) {
                Sort(lo, j);
                lo = i;
            } else {
                Sort(i, hi);
                hi = j;
            }
        }
    }

    [[nodiscard]] std::vector<std::int32_t> TakeSources() noexcept { return std::move(FSources); }

private:
    // Ends no scan to the right, and is to the right of where scans to the left begin.
    static constexpr TSmartRank kNever = {std::numeric_limits<std::int32_t>::max(), -2};

    [[nodiscard]] std::size_t Leaf(std::ptrdiff_t position) const noexcept {
        return FLeaves + static_cast<std::size_t>(position);
    }
    [[nodiscard]] std::ptrdiff_t PositionOf(std::size_t leaf) const noexcept {
        return static_cast<std::ptrdiff_t>(leaf - FLeaves);
    }

    void Join(std::size_t node) noexcept {
        const TSmartRank &left = FTree[2 * node], &right = FTree[2 * node + 1];
        FTree[node] = {std::min(left.Low, right.Low), std::max(left.High, right.High)};
    }

    void Swap(std::ptrdiff_t i, std::ptrdiff_t j) noexcept {
        std::swap(FSources[static_cast<std::size_t>(i)], FSources[static_cast<std::size_t>(j)]);
        std::swap(FTree[Leaf(i)], FTree[Leaf(j)]);
        for (std::size_t node = Leaf(i) / 2; node > 0; node /= 2) Join(node);
        for (std::size_t node = Leaf(j) / 2; node > 0; node /= 2) Join(node);
    }

    // The first position from this one on that stops the scan upwards; SmartPartition says why there is one.
    [[nodiscard]] std::ptrdiff_t NextNotBelow(std::ptrdiff_t position, TSmartRank pivot) const noexcept {
        const auto stops = [&](std::size_t node) { return FTree[node].High >= pivot.Low; };
        std::size_t node = Leaf(position);
        while (!stops(node)) {
            while (node % 2 == 1) node /= 2;
            ++node;
        }
        while (node < FLeaves) node = stops(2 * node) ? 2 * node : 2 * node + 1;
        return PositionOf(node);
    }

    // The same downwards.
    [[nodiscard]] std::ptrdiff_t PreviousNotAbove(std::ptrdiff_t position, TSmartRank pivot) const noexcept {
        const auto stops = [&](std::size_t node) { return FTree[node].Low <= pivot.High; };
        std::size_t node = Leaf(position);
        while (!stops(node)) {
            while (node % 2 == 0) node /= 2;
            --node;
        }
        while (node < FLeaves) node = stops(2 * node + 1) ? 2 * node + 1 : 2 * node;
        return PositionOf(node);
    }

    std::size_t FLeaves;
    std::vector<TSmartRank> FTree;  // node k has the children 2k and 2k + 1; the leaves come last
    std::vector<std::int32_t> FSources;
};

constexpr TVarType kTextTypes[] = {varString};
constexpr TVarType kFloatTypes[] = {
    varSmallint, varInteger,  varSingle, varDouble,  // a double holds them all
    varBoolean,  varShortInt, varByte,   varWord,   varLongWord};
constexpr TVarType kIntegerTypes[] = {varSmallint, varInteger, varBoolean,  varShortInt,
                                      varByte,     varWord,    varLongWord, varInt64};

// A bit for each code of a variant's type; the one of texts follows that of the last number type.
constexpr std::uint32_t TypeBit(TVarType type) noexcept {
    return std::uint32_t{1} << (type == varString ? varInt64 + 1 : type);
}

constexpr std::uint32_t TypeBits(std::span<const TVarType> types) noexcept {
    std::uint32_t bits = 0;
    for (const TVarType type : types) bits |= TypeBit(type);
    return bits;
}

}  // namespace

std::vector<std::int32_t> SmartSortRanks(std::span<const TSmartRank> ranks) {
    TRankSort sort(ranks);
    sort.Sort(0, std::ssize(ranks) - 1);
    return sort.TakeSources();
}

std::uint32_t SmartTypeBit(TVarType type) noexcept {
    return TypeBit(type);
}

TSmartKey SmartKeyFor(std::uint32_t typeBits) noexcept {
    if ((typeBits & ~TypeBits(kFloatTypes)) == 0) return TSmartKey::Float;
    if ((typeBits & ~TypeBits(kIntegerTypes)) == 0) return TSmartKey::Integer;
    if ((typeBits & ~TypeBits(kTextTypes)) == 0) return TSmartKey::Text;
    return TSmartKey::Any;
}

}  // namespace Varnholt
