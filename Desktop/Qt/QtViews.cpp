#include <QHeaderView>
#include <QTreeView>

#include "Desktop/Qt/QtItemsPrivate.h"
#include "Desktop/Qt/QtPeersPrivate.h"

namespace Varnholt {
namespace {

// --- The list view ---

class TListViewModel final : public QAbstractTableModel {
public:
    explicit TListViewModel(TListView& view) : FView(view) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : FView.GetItemCount();
    }
    [[nodiscard]] int columnCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : FView.GetColumnCount();
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        if ((role != Qt::DisplayRole && role != Qt::EditRole) || index.row() >= FView.GetItemCount())
            return {};
        const TListItem& item = FView.GetItem(index.row());
        if (index.column() == 0) return ToQt(item.GetCaption());
        const auto sub = static_cast<std::size_t>(index.column() - 1);
        return sub < item.GetSubItems().size() ? ToQt(item.GetSubItems()[sub]) : QString();
    }
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
        const bool isCaption = role == Qt::DisplayRole && orientation == Qt::Horizontal;
        return isCaption && section < FView.GetColumnCount() ? ToQt(FView.GetColumn(section).Caption)
                                                             : QVariant();
    }
    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override {
        const bool isEditable = index.column() == 0 && !FView.GetReadOnly();
        return QAbstractTableModel::flags(index) | (isEditable ? Qt::ItemIsEditable : Qt::NoItemFlags);
    }
    bool setData(const QModelIndex& index, const QVariant& value, int role) override {
        if (role != Qt::EditRole || index.row() >= FView.GetItemCount()) return false;
        FView.GetItem(index.row()).SetCaption(FromQt(value.toString()));
        return true;
    }
    void Reset() {
        beginResetModel();
        endResetModel();
    }

private:
    TListView& FView;
};

class TListViewPeer : public TQtPeerOf<TListView, TPressView<QTreeView>> {
public:
    explicit TListViewPeer(TListView& view)
        : TQtPeerOf(view, new TPressView<QTreeView>(ParentOf(view))), FModel(view) {
        Widget.setModel(&FModel);
        Widget.setRootIsDecorated(false);
        Widget.setUniformRowHeights(true);
        Widget.header()->setStretchLastSection(false);
        Widget.OnPress = [this](int row, Qt::KeyboardModifiers keys) {
            const bool isAdded = (keys & Qt::ControlModifier) != 0;
            Report(caSelection, [&] { Control.SelectByUser(row, isAdded); });
        };
        QObject::connect(Widget.selectionModel(), &QItemSelectionModel::selectionChanged, [this] {
            if (!Widget.IsPressing()) Report(caSelection, [this] { TakeSelection(); });
        });
        QObject::connect(&Widget, &QAbstractItemView::doubleClicked, [this](const QModelIndex& index) {
            const int row = index.row();
            Report(caSelection, [&] { Control.DoubleClickByUser(row); });
        });
    }
    ~TListViewPeer() override { DropWidget(); }  // before the model

    /// While a caption is edited.
    [[nodiscard]] bool KeepsKey(std::int32_t) const override { return !Widget.hasFocus(); }
    [[nodiscard]] TRect GetCellRect(std::int32_t column, std::int32_t row) override {
        UpdateItemsNow();
        const QRect rect = Widget.visualRect(FModel.index(row, column));
        const QPoint origin = Widget.viewport()->mapTo(&Widget, rect.topLeft());
        return {origin.x(), origin.y(), origin.x() + rect.width(), origin.y() + rect.height()};
    }

protected:
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect == caState) UpdateState();
        if (aspect == caItems) {
            FModel.Reset();
            for (int i = 0; i < Control.GetColumnCount(); ++i) {
                Widget.header()->setSectionResizeMode(
                    i, Control.GetColumn(i).AutoSize ? QHeaderView::Stretch : QHeaderView::Interactive);
                if (!Control.GetColumn(i).AutoSize) Widget.setColumnWidth(i, Control.GetColumn(i).Width);
            }
        }
        if (aspect != caItems && aspect != caSelection) return;
        const TListItem* const first = Control.GetSelected();
        SelectRows(Widget, first == nullptr ? -1 : first->GetIndex(), IsSelected());
    }
    [[nodiscard]] QPalette::ColorRole GetColorRole() const override { return QPalette::Base; }

private:
    [[nodiscard]] std::function<bool(int row)> IsSelected() const {
        return [this](int row) { return row < Control.GetItemCount() && Control.GetItem(row).GetSelected(); };
    }
    void UpdateState() {
        Widget.setSelectionMode(Control.GetMultiSelect() ? QAbstractItemView::ExtendedSelection
                                                         : QAbstractItemView::SingleSelection);
        Widget.setAllColumnsShowFocus(Control.GetRowSelect());
        Widget.setEditTriggers(Control.GetReadOnly() ? QAbstractItemView::NoEditTriggers
                                                     : QAbstractItemView::EditKeyPressed);
    }
    /// Keys, dragging and ranges.
    void TakeSelection() {
        const std::vector<int> changed = ChangedRows(Widget, IsSelected());
        const QModelIndexList selected = Widget.selectionModel()->selectedRows();
        if (!changed.empty() && selected.size() == 1) {
            Control.SelectByUser(selected[0].row());
            return;
        }
        for (const int row : changed) Control.SelectByUser(row, true);
    }

    TListViewModel FModel;
};

// --- The tree view ---

// The layout of the widget is recursive.
constexpr int kMostLevels = 500;

/// How many levels a node is below the root.
int LevelOf(const TTreeNode& node) {
    int level = 0;
    for (const TTreeNode* at = node.GetParent(); at != nullptr; at = at->GetParent()) ++level;
    return level;
}

/// The nodes of a tree; those more than kMostLevels deep are not shown.
class TTreeModel final : public QAbstractItemModel {
public:
    explicit TTreeModel(TTreeView& tree) : FTree(tree) {}

    [[nodiscard]] TTreeNode& NodeOf(const QModelIndex& index) const {
        return index.isValid() ? *static_cast<TTreeNode*>(index.internalPointer()) : FTree.GetRoot();
    }
    [[nodiscard]] QModelIndex IndexOf(TTreeNode& node) const {
        const TTreeNode* const parent = node.GetParent();
        if (parent == nullptr) return {};
        for (std::int32_t i = 0; i < parent->GetCount(); ++i)
            if (&parent->GetChild(i) == &node) return createIndex(i, 0, &node);
        return {};
    }

    [[nodiscard]] QModelIndex index(int row, int column, const QModelIndex& parent) const override {
        if (!hasIndex(row, column, parent)) return {};
        return createIndex(row, column, &NodeOf(parent).GetChild(row));
    }
    [[nodiscard]] QModelIndex parent(const QModelIndex& index) const override {
        TTreeNode* const parent = NodeOf(index).GetParent();
        return parent == nullptr ? QModelIndex() : IndexOf(*parent);
    }
    [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
        if (FIsForgotten) return 0;
        const TTreeNode& node = NodeOf(parent);
        return LevelOf(node) < kMostLevels ? node.GetCount() : 0;
    }
    [[nodiscard]] int columnCount(const QModelIndex&) const override { return 1; }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole ? ToQt(NodeOf(index).GetText()) : QVariant();
    }
    /// Is without nodes until the next Reset: some may have been deleted.
    void Forget() {
        if (FIsForgotten) return;
        FIsForgotten = true;
        beginResetModel();
        endResetModel();
    }
    void Reset() {
        beginResetModel();
        FIsForgotten = false;
        endResetModel();
    }

private:
    TTreeView& FTree;
    bool FIsForgotten = false;
};

class TTreeViewPeer : public TQtPeerOf<TTreeView, QTreeView> {
public:
    explicit TTreeViewPeer(TTreeView& tree) : TQtPeerOf(tree, new QTreeView(ParentOf(tree))), FModel(tree) {
        Widget.setHeaderHidden(true);
        Widget.setModel(&FModel);
        Widget.setUniformRowHeights(true);
        Widget.setEditTriggers(QAbstractItemView::NoEditTriggers);
        QObject::connect(Widget.selectionModel(), &QItemSelectionModel::currentChanged,
                         [this](const QModelIndex& to) {
                             if (to.isValid())
                                 Report(caSelection, [&] { Control.SelectByUser(FModel.NodeOf(to)); });
                         });
        const auto expand = [this](bool isExpanded) {
            return [this, isExpanded](const QModelIndex& index) {
                TakeOver([&] { FModel.NodeOf(index).SetExpanded(isExpanded); });
            };
        };
        QObject::connect(&Widget, &QTreeView::expanded, expand(true));
        QObject::connect(&Widget, &QTreeView::collapsed, expand(false));
    }
    ~TTreeViewPeer() override { DropWidget(); }  // before the model

protected:
    void ForgetItems() override { FModel.Forget(); }
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect == caItems) {
            FModel.Reset();
            Expand();
        }
        if (aspect != caItems && aspect != caSelection) return;
        TTreeNode* const node = Control.GetSelected();
        const bool isShown = node != nullptr && LevelOf(*node) <= kMostLevels;
        Widget.setCurrentIndex(isShown ? FModel.IndexOf(*node) : QModelIndex());
        if (!isShown) Widget.clearSelection();
    }
    [[nodiscard]] QPalette::ColorRole GetColorRole() const override { return QPalette::Base; }

private:
    void Expand() {
        std::vector<QModelIndex> open = {QModelIndex()};
        while (!open.empty()) {
            const QModelIndex parent = open.back();
            open.pop_back();
            for (int i = 0; i < FModel.rowCount(parent); ++i) {
                const QModelIndex child = FModel.index(i, 0, parent);
                if (FModel.NodeOf(child).GetExpanded()) Widget.setExpanded(child, true);
                if (FModel.NodeOf(child).GetCount() > 0) open.push_back(child);
            }
        }
    }

    TTreeModel FModel;
};

}  // namespace

std::unique_ptr<TQtPeer> MakeListViewPeer(TListView& listView) {
    return std::make_unique<TListViewPeer>(listView);
}

std::unique_ptr<TQtPeer> MakeTreeViewPeer(TTreeView& treeView) {
    return std::make_unique<TTreeViewPeer>(treeView);
}

}  // namespace Varnholt
