#include "Tests/Desktop/QtDriver.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <QToolButton>
#include <QWindow>

namespace Varnholt::Test {
namespace {

int argumentCount = 1;
char programName[] = "DesktopTests";
char* arguments[] = {programName, nullptr};

QModelIndex IndexOf(const QAbstractItemModel& model, const TTreeNode& node) {
    const TTreeNode* const parent = node.GetParent();
    if (parent == nullptr) return {};
    std::int32_t row = 0;
    while (&parent->GetChild(row) != &node) ++row;
    return model.index(row, 0, IndexOf(model, *parent));
}

/// Clicks on an item that is there, which is scrolled into view first.
bool ClickItem(TControl& control, const QModelIndex& index, Qt::KeyboardModifiers modifiers = {}) {
    if (!control.IsUsable() || !index.isValid()) return false;
    auto& view = dynamic_cast<QAbstractItemView&>(WidgetOf(control));
    view.scrollTo(index);
    ClickAt(*view.viewport(), view.visualRect(index).center(), modifiers);
    return true;
}

QModelIndex Row(TControl& view, std::int32_t row) {
    return dynamic_cast<QAbstractItemView&>(WidgetOf(view)).model()->index(row, 0);
}

}  // namespace

QWidget& WidgetOf(TControl& control) {
    return *reinterpret_cast<QWidget*>(control.GetPeer()->GetHandle());
}

void BringToFront(QWidget& window) {
    const QWidget* const modal = QApplication::activeModalWidget();
    if (window.windowType() == Qt::Popup || (modal != nullptr && modal != &window)) return;
    if (TCustomForm* const active = Screen().GetActiveForm(); active != nullptr)
        static_cast<void>(QTest::qWaitForWindowActive(&WidgetOf(*active)));
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
}

void ClickAt(QWidget& widget, QPoint point, Qt::KeyboardModifiers modifiers) {
    QWidget& window = *widget.window();
    for (QWidget* at = &widget; at != &window; at = at->parentWidget())
        at->raise();  // from under its neighbours
    static_cast<void>(QTest::qWaitForWindowExposed(&window));
    BringToFront(window);
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, modifiers, widget.mapTo(&window, point));
}

TQtDriver::TQtDriver() : FDesktop(argumentCount, arguments) {}

bool TQtDriver::Click(TControl& control) {
    const bool isUsable = control.IsUsable();
    if (control.GetPeer() == nullptr || !WidgetOf(control).isVisible()) return false;
    ClickAt(WidgetOf(control), QPoint(8, control.GetHeight() / 2));  // on the mark of a check box
    return isUsable;
}

bool TQtDriver::Type(TCustomEdit& edit, StringView text) {
    const bool isOpen = edit.IsUsable() && !edit.GetReadOnly();
    QWidget& widget = WidgetOf(edit);
    widget.setFocus(Qt::MouseFocusReason);
    QInputMethodEvent typed;
    typed.setCommitString(QString::fromStdU16String(String(text)));
    QCoreApplication::sendEvent(&widget, &typed);
    return isOpen;
}

bool TQtDriver::Choose(TComboBox& comboBox, std::int32_t index) {
    if (!comboBox.IsUsable() || index < 0 || index >= comboBox.GetItems().GetCount()) return false;
    auto& widget = dynamic_cast<QComboBox&>(WidgetOf(comboBox));
    widget.showPopup();
    QAbstractItemView& list = *widget.view();
    ClickAt(*list.viewport(), list.visualRect(list.model()->index(index, 0)).center());
    return true;
}

bool TQtDriver::Choose(TListBox& listBox, std::int32_t index) {
    return ClickItem(listBox, Row(listBox, index));
}

bool TQtDriver::Choose(TListView& listView, std::int32_t index, bool isAdded) {
    return ClickItem(listView, Row(listView, index), isAdded ? Qt::ControlModifier : Qt::KeyboardModifiers());
}

bool TQtDriver::DoubleClick(TListView& listView, std::int32_t index) {
    if (!listView.IsUsable()) return false;
    auto& view = dynamic_cast<QAbstractItemView&>(WidgetOf(listView));
    const QPoint point = view.visualRect(Row(listView, index)).center();
    QTest::mouseDClick(view.window()->windowHandle(), Qt::LeftButton, {},
                       view.viewport()->mapTo(view.window(), point));
    return true;
}

bool TQtDriver::Choose(TTreeView& treeView, TTreeNode& node) {
    int level = 0;
    for (const TTreeNode* at = node.GetParent(); at != nullptr; at = at->GetParent()) ++level;
    if (level > 500) return treeView.SelectByUser(node);  // too deep for the widget
    return ClickItem(treeView, IndexOf(*dynamic_cast<QAbstractItemView&>(WidgetOf(treeView)).model(), node));
}

bool TQtDriver::Choose(TPageControl& pages, std::int32_t index) {
    if (!pages.IsUsable() || index >= pages.GetPageCount()) return false;
    QTabBar& tabs = *dynamic_cast<QTabWidget&>(WidgetOf(pages)).tabBar();
    ClickAt(tabs, tabs.tabRect(index).center());
    return true;
}

bool TQtDriver::Spin(TSpinEdit& edit, bool isUp) {
    const bool isOpen = edit.IsUsable() && !edit.GetReadOnly();
    for (QToolButton* const arrow : WidgetOf(edit.GetButton()).findChildren<QToolButton*>())
        if (arrow->arrowType() == (isUp ? Qt::UpArrow : Qt::DownArrow))
            ClickAt(*arrow, arrow->rect().center());
    return isOpen;
}

bool TQtDriver::Choose(TDrawGrid& grid, const TGridRect& cells) {
    if (!grid.IsUsable()) return false;
    auto& view = dynamic_cast<QTableView&>(WidgetOf(grid));
    const auto center = [&](std::int32_t col, std::int32_t row) {
        return view.visualRect(view.model()->index(row - grid.GetFixedRows(), col - grid.GetFixedCols()))
            .center();
    };
    ClickAt(*view.viewport(), center(cells.Left, cells.Top));
    ClickAt(*view.viewport(), center(cells.Right, cells.Bottom), Qt::ShiftModifier);
    return true;
}

bool TQtDriver::ClickFixed(TDrawGrid& grid, std::int32_t col, bool isShiftDown) {
    const std::int32_t section = col - grid.GetFixedCols();
    QHeaderView& heading = *dynamic_cast<QTableView&>(WidgetOf(grid)).horizontalHeader();
    if (!grid.IsUsable() || section < 0 || section >= heading.count()) return false;
    ClickAt(*heading.viewport(), QPoint(heading.sectionViewportPosition(section) + 20, 8),
            isShiftDown ? Qt::ShiftModifier : Qt::KeyboardModifiers());
    return true;
}

bool TQtDriver::Choose(TCustomForm& form, TMenuItem& item) {
    const bool isOpen = form.IsUsable() && item.GetEnabled();
    for (QAction* const action : WidgetOf(form).findChildren<QAction*>())
        if (action->text().toStdU16String() == item.GetCaption()) action->trigger();
    return isOpen;
}

bool TQtDriver::Key(TCustomForm& form, std::int32_t virtualKey, bool isShiftDown) {
    const bool isUsable = form.IsUsable();
    const Qt::Key key = virtualKey == kKeyTab     ? (isShiftDown ? Qt::Key_Backtab : Qt::Key_Tab)
                        : virtualKey == kKeyEnter ? Qt::Key_Return
                                                  : Qt::Key_Escape;
    QTest::keyClick(WidgetOf(form).windowHandle(), key, isShiftDown ? Qt::ShiftModifier : Qt::NoModifier);
    return isUsable;
}

bool TQtDriver::Close(TCustomForm& form) {
    WidgetOf(form).close();
    return !form.GetVisible() || form.GetModalResult() != mrNone;
}

std::unique_ptr<IUserDriver> MakeQtDriver() {
    return std::make_unique<TQtDriver>();
}

INSTANTIATE_TEST_SUITE_P(Qt, ControlContract, testing::Values(&MakeQtDriver));

}  // namespace Varnholt::Test

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
