#include "Desktop/Station/StationGrid.h"

#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Numbers.h"

namespace Varnholt::Station {

TStationGrid::TStationGrid() {
    SetDefaultColWidth(110);
    SetColWidth(0, 60);
}

TStationGrid::~TStationGrid() = default;

void TStationGrid::SetTable(const TStationTable* table) {
    FTable = table;
    SetSelection({});
    TableChanged();
}

void TStationGrid::TableChanged() {
    for (std::int32_t column = 0; FTable != nullptr && column < FTable->GetColumnCount(); ++column)
        SetColAlignment(column + 1, FTable->GetType(column) == ctNumber ? taRightJustify : taLeftJustify);
    Changed(caItems);
}

TGridRect TStationGrid::GetTableSelection() const {
    const TGridRect cells = GetSelection();
    return cells.IsEmpty() ? TGridRect()
                           : TGridRect{cells.Left - 1, cells.Top - 1, cells.Right - 1, cells.Bottom - 1};
}

std::int32_t TStationGrid::GetColCount() const {
    return FTable == nullptr ? 1 : FTable->GetColumnCount() + 1;
}

std::int32_t TStationGrid::GetRowCount() const {
    return FTable == nullptr ? 1 : FTable->GetRowCount() + 1;
}

StringView TStationGrid::GetCell(std::int32_t col, std::int32_t row) const {
    if (FTable == nullptr || (col == 0 && row == 0)) return {};
    if (col > 0 && row > 0) return FTable->GetText(col - 1, row - 1);
    FText = row == 0 ? Heading(col - 1) : IntToStr(row);
    return FText;
}

/// The name, with an arrow and, of several keys, the number of the key.
String TStationGrid::Heading(std::int32_t column) const {
    const std::vector<TSortField>& keys = FTable->GetSortKeys();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i].ColumnIndex != column) continue;
        String heading = FTable->GetName(column) + (keys[i].OrderAscending ? u" \u25B2" : u" \u25BC");
        if (keys.size() > 1) heading += IntToStr(static_cast<std::int64_t>(i + 1));
        return heading;
    }
    return FTable->GetName(column);
}

}  // namespace Varnholt::Station
