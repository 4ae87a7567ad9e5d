#pragma once

#include <QWidget>

#include "Desktop/Qt/Desktop.h"
#include "Tests/Platform/Controls/ControlContract.h"

namespace Varnholt::Test {

/// A person at the desktop, by mouse, keyboard and input method.
class TQtDriver final : public IUserDriver {
public:
    TQtDriver();
    bool Click(TControl& control) override;
    bool Type(TCustomEdit& edit, StringView text) override;
    bool Choose(TComboBox& comboBox, std::int32_t index) override;
    bool Choose(TListBox& listBox, std::int32_t index) override;
    bool Choose(TListView& listView, std::int32_t index, bool isAdded) override;
    bool DoubleClick(TListView& listView, std::int32_t index) override;
    bool Choose(TTreeView& treeView, TTreeNode& node) override;
    bool Choose(TPageControl& pages, std::int32_t index) override;
    bool Spin(TSpinEdit& edit, bool isUp) override;
    bool Choose(TDrawGrid& grid, const TGridRect& cells) override;
    bool ClickFixed(TDrawGrid& grid, std::int32_t col, bool isShiftDown) override;
    bool Choose(TCustomForm& form, TMenuItem& item) override;
    bool Key(TCustomForm& form, std::int32_t virtualKey, bool isShiftDown) override;
    bool Close(TCustomForm& form) override;

private:
    TDesktop FDesktop;
};

/// The widget of a control that is shown.
[[nodiscard]] QWidget& WidgetOf(TControl& control);
/// Makes a window the active one, as a window manager does for a person who has seen the last change. Popups and what a
/// modal window covers stay as they are.
void BringToFront(QWidget& window);
/// Presses and releases the left button at a point of a widget, as the window system would.
void ClickAt(QWidget& widget, QPoint point, Qt::KeyboardModifiers modifiers = {});

}  // namespace Varnholt::Test
