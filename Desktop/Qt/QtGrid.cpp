#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>

#include "Desktop/Qt/QtItemsPrivate.h"
#include "Desktop/Qt/QtPeersPrivate.h"
#include "Platform/Controls/StringGrid.h"

namespace Varnholt {
namespace {

/// The cells that are not fixed, with the last fixed row and column as headings. Texts are read when they are to be seen.
class TGridModel final : public QAbstractTableModel {
public:
    explicit TGridModel(const TDrawGrid& grid)
        : FGrid(grid), FTexts(dynamic_cast<const TStringGrid*>(&grid)) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : FGrid.GetRowCount() - FGrid.GetFixedRows();
    }
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : FGrid.GetColCount() - FGrid.GetFixedCols();
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        if (role == Qt::TextAlignmentRole) return AlignmentOf(index.column() + FGrid.GetFixedCols());
        if (role != Qt::DisplayRole) return {};
        return TextOf(index.column() + FGrid.GetFixedCols(), index.row() + FGrid.GetFixedRows());
    }
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        if (role != Qt::DisplayRole) return {};
        return orientation == Qt::Horizontal
                   ? TextOf(section + FGrid.GetFixedCols(), FGrid.GetFixedRows() - 1)
                   : TextOf(FGrid.GetFixedCols() - 1, section + FGrid.GetFixedRows());
    }
    void Reset() {
        beginResetModel();
        endResetModel();
    }

private:
    [[nodiscard]] QVariant AlignmentOf(std::int32_t col) const {
        const TAlignment alignment = FGrid.GetColAlignment(col);
        const Qt::Alignment across = alignment == taRightJustify ? Qt::AlignRight
                                     : alignment == taCenter     ? Qt::AlignHCenter
                                                                 : Qt::AlignLeft;
        return QVariant::fromValue(across | Qt::AlignVCenter);
    }
    [[nodiscard]] QVariant TextOf(std::int32_t col, std::int32_t row) const {
        const bool isThere = col >= 0 && row >= 0 && col < FGrid.GetColCount() && row < FGrid.GetRowCount();
        return isThere && FTexts != nullptr ? ToQt(FTexts->GetCell(col, row)) : QString();
    }

    const TDrawGrid& FGrid;
    const TStringGrid* FTexts;
};

class TGridPeer : public TQtPeerOf<TDrawGrid, QTableView> {
public:
    explicit TGridPeer(TDrawGrid& grid) : TQtPeerOf(grid, new QTableView(ParentOf(grid))), FModel(grid) {
        Widget.setModel(&FModel);
        Widget.setSelectionMode(QAbstractItemView::ContiguousSelection);
        Widget.setEditTriggers(QAbstractItemView::NoEditTriggers);
        Widget.setTabKeyNavigation(false);
        Widget.setWordWrap(false);
        Widget.setCornerButtonEnabled(false);
        QHeaderView& rows = *Widget.verticalHeader();
        QHeaderView& columns = *Widget.horizontalHeader();
        rows.setSectionResizeMode(QHeaderView::Fixed);
        rows.setMinimumSectionSize(1);
        columns.setMinimumSectionSize(1);
        columns.setHighlightSections(false);
        rows.setHighlightSections(false);
        rows.setDefaultAlignment(Qt::AlignRight | Qt::AlignVCenter);
        columns.setSectionsClickable(true);
        // A click on a heading is the application's matter, and selects nothing by itself.
        for (QHeaderView* const header : {&rows, &columns}) {
            QObject::disconnect(header, &QHeaderView::sectionPressed, &Widget, nullptr);
            QObject::disconnect(header, &QHeaderView::sectionEntered, &Widget, nullptr);
        }
        QObject::connect(&columns, &QHeaderView::sectionClicked, [this](int section) {
            ClickFixed(section + Control.GetFixedCols(), Control.GetFixedRows() - 1);
        });
        QObject::connect(&rows, &QHeaderView::sectionClicked, [this](int section) {
            ClickFixed(Control.GetFixedCols() - 1, section + Control.GetFixedRows());
        });
        QObject::connect(&columns, &QHeaderView::sectionResized, [this](int section, int, int width) {
            TakeOver([&] { Control.SetColWidth(section + Control.GetFixedCols(), width); });
        });
        QObject::connect(Widget.selectionModel(), &QItemSelectionModel::selectionChanged,
                         [this] { Report(caSelection, [this] { TakeSelection(); }); });
    }
    ~TGridPeer() override { DropWidget(); }  // before the model

protected:
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect == caItems) {
            // Other texts in the same cells leave the view where it is.
            if (FCounts == Counts()) {
                Widget.viewport()->update();
                Widget.horizontalHeader()->viewport()->update();
                Widget.verticalHeader()->viewport()->update();
            } else {
                FCounts = Counts();
                FModel.Reset();
            }
            Widget.horizontalHeader()->setVisible(Control.GetFixedRows() > 0);
            Widget.verticalHeader()->setVisible(Control.GetFixedCols() > 0);
        }
        if (aspect == caItems || aspect == caLook) UpdateSizes();
        if (aspect == caItems || aspect == caSelection) UpdateSelection();
    }
    [[nodiscard]] QPalette::ColorRole GetColorRole() const override { return QPalette::Base; }

private:
    [[nodiscard]] std::vector<std::int32_t> Counts() const {
        return {Control.GetColCount(), Control.GetRowCount(), Control.GetFixedCols(), Control.GetFixedRows()};
    }
    void UpdateSizes() {
        Widget.verticalHeader()->setDefaultSectionSize(std::max(Control.GetDefaultRowHeight(), 1));
        for (std::int32_t col = Control.GetFixedCols(); col < Control.GetColCount(); ++col)
            Widget.setColumnWidth(col - Control.GetFixedCols(), std::max(Control.GetColWidth(col), 1));
    }
    void UpdateSelection() {
        const TGridRect selection = Control.GetSelection();
        if (selection.IsEmpty()) return Widget.clearSelection();
        const std::int32_t left = Control.GetFixedCols(), top = Control.GetFixedRows();
        const QItemSelection cells(FModel.index(selection.Top - top, selection.Left - left, {}),
                                   FModel.index(selection.Bottom - top, selection.Right - left, {}));
        if (Widget.selectionModel()->selection() == cells) return;
        Widget.selectionModel()->select(cells, QItemSelectionModel::ClearAndSelect);
        Widget.selectionModel()->setCurrentIndex(cells.constFirst().topLeft(), QItemSelectionModel::NoUpdate);
    }
    void TakeSelection() {
        TGridRect selection{INT32_MAX, INT32_MAX, -1, -1};
        const std::int32_t left = Control.GetFixedCols(), top = Control.GetFixedRows();
        for (const QItemSelectionRange& range : Widget.selectionModel()->selection())
            selection = {std::min(selection.Left, range.left() + left),
                         std::min(selection.Top, range.top() + top),
                         std::max(selection.Right, range.right() + left),
                         std::max(selection.Bottom, range.bottom() + top)};
        if (selection.IsEmpty()) selection = {};
        if (selection != Control.GetSelection()) Control.SelectByUser(selection);
    }
    void ClickFixed(std::int32_t col, std::int32_t row) {
        const bool isShiftDown = (QApplication::keyboardModifiers() & Qt::ShiftModifier) != 0;
        Report(caSelection, [&] { Control.ClickFixedByUser(col, row, isShiftDown); });
    }

    TGridModel FModel;
    std::vector<std::int32_t> FCounts;
};

}  // namespace

std::unique_ptr<TQtPeer> MakeGridPeer(TDrawGrid& grid) {
    return std::make_unique<TGridPeer>(grid);
}

}  // namespace Varnholt
