#include "Tools/varnholt/TableSource.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <set>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "VarnholtLib/Data/vrnRangeParser.h"

namespace Varnholt::Tool {
namespace {

constexpr StringView kDescending = u":desc";

void AddGridRow(TStringGrid& grid, const TRow& cells) {
    const std::int32_t row = grid.GetRowCount();
    if (row == std::numeric_limits<std::int32_t>::max()) throw ERangeError(u"Too many rows");
    grid.SetRowCount(row + 1);
    std::int32_t col = 0;
    for (const String& cell : cells) grid.SetCell(col++, row, cell);
}

TRangeParser ParseRanges(StringView text) {
    try {
        return TRangeParser(text);
    } catch (const Exception&) {
        throw EArgumentException(
            Format(u"\"%s\" is not a list of ranges such as 1 - 5, 8 without a row that repeats", {text}));
    }
}

}  // namespace

TTableFile ReadTable(StringView path, const TEncoding& encoding) {
    TCsvInput input(path, encoding);
    const std::size_t width = input.GetHeader().size();
    TTableFile file{input.GetName(), input.GetFormat(),
                    std::make_unique<TStringGrid>(static_cast<std::int32_t>(width), 0, 0, 0)};
    AddGridRow(*file.Grid, input.GetHeader());
    file.Grid->SetFixedRows(1);
    TRow row;
    while (input.ReadRow(row)) {
        if (row.size() != width) input.FailWidth(row);
        AddGridRow(*file.Grid, row);
    }
    return file;
}

std::vector<std::int32_t> ReadRowNumbers(StringView text, const TTableFile& file) {
    const TRangeParser ranges = ParseRanges(text);
    if (ranges.GetCount() == 0) throw EArgumentException(u"No rows are given");
    const std::int32_t last = file.Grid->GetRowCount() - 1;
    for (const TRange& range : ranges.ToArray()) {
        if (range.First >= 1 && range.Last <= last) continue;
        const std::int32_t absent = range.First < 1 ? range.First : range.Last;
        throw ERangeError(Format(u"%s: Row %d not found, the file has %d rows", {file.Name, absent, last}));
    }
    const TIntegerArray rows = ranges.ToValuesArray();
    return {rows.begin(), rows.end()};
}

TColumnNames::TColumnNames(const TTableFile& file) : FFile(file) {
    std::set<std::size_t, std::greater<>> lengths;
    for (std::int32_t col = 0; col < file.Grid->GetColCount(); ++col) {
        const StringView name = file.Grid->GetCell(col, 0);
        FColumns.emplace(name, col);
        if (name.find(u',') == StringView::npos) continue;
        lengths.insert(name.size());
        lengths.insert(name.size() + kDescending.size());
    }
    FLengths.assign(lengths.begin(), lengths.end());
}

std::vector<std::int32_t> TColumnNames::AllColumns() const {
    std::vector<std::int32_t> columns(static_cast<std::size_t>(FFile.Grid->GetColCount()));
    std::iota(columns.begin(), columns.end(), 0);
    return columns;
}

bool TColumnNames::TryReadEntry(StringView text, TListKind kind, TEntry& entry) const {
    auto found = FColumns.find(text);
    const bool isAscending = found != FColumns.end();
    if (!isAscending && kind == lkSortKeys && text.ends_with(kDescending)) {
        found = FColumns.find(text.substr(0, text.size() - kDescending.size()));
    }
    if (found == FColumns.end()) return false;
    entry = {found->second, isAscending};
    return true;
}

/// Returns the length of the entry.
std::size_t TColumnNames::ReadLongestEntry(StringView list, TListKind kind, TEntry& entry) const {
    for (const std::size_t length : FLengths) {
        const bool isWhole = length == list.size() || (length < list.size() && list[length] == u',');
        if (isWhole && TryReadEntry(list.substr(0, length), kind, entry)) return length;
    }
    const StringView text = list.substr(0, list.find(u','));
    if (TryReadEntry(text, kind, entry)) return text.size();
    FailColumn(FFile.Name, text);
}

std::vector<TColumnNames::TEntry> TColumnNames::ReadList(StringView list, TListKind kind) const {
    std::vector<TEntry> entries;
    for (std::size_t start = 0; start <= list.size();) {
        TEntry entry{};
        start += ReadLongestEntry(list.substr(start), kind, entry) + 1;
        entries.push_back(entry);
    }
    return entries;
}

std::vector<std::int32_t> TColumnNames::ReadColumns(StringView list) const {
    std::vector<std::int32_t> columns;
    for (const TEntry& entry : ReadList(list, lkColumns)) columns.push_back(entry.Column);
    return columns;
}

TSortOperation TColumnNames::ReadSortKeys(StringView list) const {
    TSortOperation keys;
    for (const TEntry& entry : ReadList(list, lkSortKeys)) keys.Add(entry.Column, entry.IsAscending);
    return keys;
}

}  // namespace Varnholt::Tool
