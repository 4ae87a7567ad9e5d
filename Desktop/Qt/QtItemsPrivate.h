#pragma once

#include <QAbstractItemView>
#include <QAbstractListModel>
#include <QItemSelectionModel>
#include <QMouseEvent>
#include <functional>
#include <vector>

#include "Desktop/Qt/QtTextPrivate.h"
#include "Platform/Controls/Lists.h"

namespace Varnholt {

/// The items of a combo box or a list box.
class TItemsModel final : public QAbstractListModel {
public:
    explicit TItemsModel(const TControlItems& items) : FItems(items) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : FItems.GetCount();
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        const bool isText = role == Qt::DisplayRole || role == Qt::EditRole;
        return isText && index.row() < FItems.GetCount() ? ToQt(FItems[index.row()]) : QVariant();
    }
    /// The items are other ones.
    void Reset() {
        beginResetModel();
        endResetModel();
    }

private:
    const TControlItems& FItems;
};

/// A view that says whether a selection comes from the press of a mouse button.
template <typename TView>
class TPressView : public TView {
public:
    using TView::TView;
    /// A row was pressed, from 0.
    std::function<void(int row, Qt::KeyboardModifiers keys)> OnPress;

    [[nodiscard]] bool IsPressing() const { return FIsPressing; }

protected:
    void mousePressEvent(QMouseEvent* event) override {
        const QModelIndex index = this->indexAt(event->pos());
        const bool isRange = (event->modifiers() & Qt::ShiftModifier) != 0;
        FIsPressing = !isRange;
        TView::mousePressEvent(event);
        FIsPressing = false;
        if (OnPress && index.isValid() && !isRange && event->button() == Qt::LeftButton)
            OnPress(index.row(), event->modifiers());
    }

private:
    bool FIsPressing = false;
};

/// Makes the selection of a view that of the control, with the current row, -1 for none.
template <typename TIsSelected>
void SelectRows(QAbstractItemView& view, int current, TIsSelected&& isSelected) {
    const QAbstractItemModel& model = *view.model();
    QItemSelection selection;
    for (int row = 0, count = model.rowCount(); row < count; ++row) {
        if (!isSelected(row)) continue;
        const int first = row;
        while (row + 1 < count && isSelected(row + 1)) ++row;
        selection.select(model.index(first, 0), model.index(row, std::max(model.columnCount() - 1, 0)));
    }
    if (current >= 0)
        view.selectionModel()->setCurrentIndex(model.index(current, 0), QItemSelectionModel::NoUpdate);
    view.selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

/// The rows in which the selections of the view and of the control differ.
template <typename TIsSelected>
[[nodiscard]] std::vector<int> ChangedRows(const QAbstractItemView& view, TIsSelected&& isSelected) {
    std::vector<int> changed;
    const QItemSelectionModel& selection = *view.selectionModel();
    for (int row = 0, count = view.model()->rowCount(); row < count; ++row)
        if (selection.isSelected(view.model()->index(row, 0)) != isSelected(row)) changed.push_back(row);
    return changed;
}

}  // namespace Varnholt
