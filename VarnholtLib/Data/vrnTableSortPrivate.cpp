#include "VarnholtLib/Data/vrnTableSortPrivate.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <utility>

#include "VarnholtLib/Data/vrnSmartSortPrivate.h"

namespace Varnholt {
namespace {

/// Rows that are equal on all the keys so far, by their positions in the order.
struct TRun {
    std::size_t Start;
    std::size_t Count;
};

template <typename T>
void AddRunsOfEquals(std::span<TSortedItem<T>> items, std::size_t start, std::vector<TRun>& runs) {
    std::size_t next = 0;
    for (std::size_t first = 0; first < items.size(); first = next) {
        next = first + 1;
        while (next < items.size() && items[next].Value == items[next - 1].Value) ++next;
        if (next - first > 1) runs.push_back({start + first, next - first});
    }
}

/// Sorts each run by one key and returns the runs of rows that are equal on this key, too. Sorting all runs
/// key by key gives the same order as sorting each run by all further keys, because the runs do not overlap;
/// and it needs only one array of keys, however many runs there are.
std::vector<TRun> SortRuns(std::vector<TTableDataRow*>& order, const std::vector<TRun>& runs,
                           const TSortField& key) {
    std::vector<TTableDataRow*> rows;
    for (const TRun& run : runs) {
        const auto first = order.begin() + static_cast<std::ptrdiff_t>(run.Start);
        rows.insert(rows.end(), first, first + static_cast<std::ptrdiff_t>(run.Count));
    }
    std::vector<TRun> equal;
    const auto column = static_cast<std::size_t>(key.ColumnIndex);
    WithSortedItems(
        rows.size(), [&](std::size_t i) -> const Variant& { return rows[i]->GetValues()[column]; },
        [](std::size_t i) { return static_cast<std::int32_t>(i); },
        [&](auto& items) {
            auto rest = std::span(items);
            for (const TRun& run : runs) {
                const auto part = rest.first(run.Count);
                rest = rest.subspan(run.Count);
                SmartSort(part);
                if (!key.OrderAscending) std::ranges::reverse(part);
                for (std::size_t i = 0; i < part.size(); ++i) {
                    order[run.Start + i] = rows[static_cast<std::size_t>(part[i].InitialIndex)];
                }
                AddRunsOfEquals(part, run.Start, equal);
            }
        });
    return equal;
}

}  // namespace

void SortRowsByKeys(std::vector<TTableDataRow*>& rows, const TSortOperation& keys) {
    std::vector<TTableDataRow*> order = rows;
    std::vector<TRun> runs = {{0, order.size()}};
    for (std::int32_t k = 0; k < keys.GetCount() && !runs.empty(); ++k) runs = SortRuns(order, runs, keys[k]);
    rows.swap(order);
}

}  // namespace Varnholt
