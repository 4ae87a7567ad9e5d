#include "Platform/Controls/TreeView.h"

#include <utility>

#include "Platform/Runtime/Indexes.h"

namespace Varnholt {

// --- TTreeNode ---

/// Takes the tree below apart without recursion, which deep trees would not survive.
TTreeNode::~TTreeNode() {
    if (FTreeView->FSelected == this) FTreeView->FSelected = nullptr;
    std::vector<std::unique_ptr<TTreeNode>> nodes = std::move(FChildren);
    while (!nodes.empty()) {
        const std::unique_ptr<TTreeNode> node = std::move(nodes.back());
        nodes.pop_back();
        for (std::unique_ptr<TTreeNode>& child : node->FChildren) nodes.push_back(std::move(child));
        node->FChildren.clear();
    }
}

void TTreeNode::SetText(StringView text) {
    FText = text;
    FTreeView->Changed(caItems);
}

TTreeNode& TTreeNode::AddChild(StringView text) {
    FChildren.push_back(std::make_unique<TTreeNode>(*FTreeView, this));
    FChildren.back()->FText = text;
    FTreeView->Changed(caItems);
    return *FChildren.back();
}

TTreeNode& TTreeNode::GetChild(std::int32_t index) const {
    return *FChildren[ListIndex(index, FChildren.size())];
}

void TTreeNode::DeleteChild(std::int32_t index) {
    FChildren.erase(FChildren.begin() + static_cast<std::ptrdiff_t>(ListIndex(index, FChildren.size())));
    FTreeView->Changed(caItems);
}

void TTreeNode::SetExpanded(bool expanded) {
    FExpanded = expanded;
    FTreeView->Changed(caItems);
}

// --- TTreeView ---

TTreeView::TTreeView() : FRoot(*this, nullptr) {
    SetBounds(0, 0, 121, 97);
}

TTreeView::~TTreeView() = default;

void TTreeView::SetSelected(TTreeNode* node) {
    FSelected = node;
    Changed(caSelection);
}

bool TTreeView::SelectByUser(TTreeNode& node) {
    if (!FocusByUser() || !CanFocus()) return false;
    if (FSelected == &node) return true;
    SetSelected(&node);
    const TNotifyEvent onChange = FOnChange;
    onChange(this);
    return true;
}

}  // namespace Varnholt
