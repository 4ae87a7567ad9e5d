#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "Platform/Controls/Controls.h"

namespace Varnholt::Test {

/// What a person does with the controls of a shown form, by the means of a back end. Each operation returns whether
/// the control took it.
class IUserDriver {
public:
    virtual ~IUserDriver() = default;
    virtual bool Click(TControl& control) = 0;
    virtual bool Type(TCustomEdit& edit, StringView text) = 0;
    virtual bool Choose(TComboBox& comboBox, std::int32_t index) = 0;
    virtual bool Choose(TListBox& listBox, std::int32_t index) = 0;
    virtual bool Choose(TListView& listView, std::int32_t index, bool isAdded) = 0;
    virtual bool DoubleClick(TListView& listView, std::int32_t index) = 0;
    virtual bool Choose(TTreeView& treeView, TTreeNode& node) = 0;
    virtual bool Choose(TPageControl& pages, std::int32_t index) = 0;
    virtual bool Spin(TSpinEdit& edit, bool isUp) = 0;
    virtual bool Choose(TDrawGrid& grid, const TGridRect& cells) = 0;
    virtual bool ClickFixed(TDrawGrid& grid, std::int32_t col, bool isShiftDown) = 0;
    virtual bool Choose(TCustomForm& form, TMenuItem& item) = 0;
    virtual bool Key(TCustomForm& form, std::int32_t virtualKey, bool isShiftDown) = 0;
    virtual bool Close(TCustomForm& form) = 0;
};

/// What every control does, in memory and with each back end. A back end joins by one line, with a function that makes it
/// and its driver:
///
///     INSTANTIATE_TEST_SUITE_P(Qt, ControlContract, testing::Values(&MakeQtDriver));
class ControlContract : public testing::TestWithParam<std::unique_ptr<IUserDriver> (*)()> {
protected:
    const std::unique_ptr<IUserDriver> User = GetParam()();
};

}  // namespace Varnholt::Test
