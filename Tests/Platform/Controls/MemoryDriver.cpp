#include "Tests/Platform/Controls/ControlContract.h"

namespace Varnholt::Test {

/// In memory a person's doings are the operations of the controls.
class TMemoryDriver final : public IUserDriver {
public:
    bool Click(TControl& control) override { return control.ClickByUser(); }
    bool Type(TCustomEdit& edit, StringView text) override { return edit.TypeByUser(text); }
    bool Choose(TComboBox& comboBox, std::int32_t index) override { return comboBox.SelectByUser(index); }
    bool Choose(TListBox& listBox, std::int32_t index) override { return listBox.SelectByUser(index); }
    bool Choose(TListView& view, std::int32_t index, bool isAdded) override {
        return view.SelectByUser(index, isAdded);
    }
    bool DoubleClick(TListView& view, std::int32_t index) override { return view.DoubleClickByUser(index); }
    bool Choose(TTreeView& treeView, TTreeNode& node) override { return treeView.SelectByUser(node); }
    bool Choose(TPageControl& pages, std::int32_t index) override { return pages.SelectPageByUser(index); }
    bool Spin(TSpinEdit& edit, bool isUp) override { return edit.SpinByUser(isUp); }
    bool Choose(TDrawGrid& grid, const TGridRect& cells) override { return grid.SelectByUser(cells); }
    bool ClickFixed(TDrawGrid& grid, std::int32_t col, bool isShiftDown) override {
        return grid.ClickFixedByUser(col, 0, isShiftDown);
    }
    bool Choose(TCustomForm& form, TMenuItem& item) override { return form.ChooseMenuByUser(item); }
    bool Key(TCustomForm& form, std::int32_t key, bool isShiftDown) override {
        return form.KeyByUser(key, isShiftDown);
    }
    bool Close(TCustomForm& form) override { return form.CloseByUser(); }
};

std::unique_ptr<IUserDriver> MakeMemoryDriver() {
    return std::make_unique<TMemoryDriver>();
}

INSTANTIATE_TEST_SUITE_P(Memory, ControlContract, testing::Values(&MakeMemoryDriver));

}  // namespace Varnholt::Test
