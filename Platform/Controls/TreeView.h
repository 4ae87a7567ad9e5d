#pragma once

#include <memory>
#include <vector>

#include "Platform/Controls/Control.h"

/// The tree view.
///
///     TTreeView& tree = form.Add<TTreeView>(u"tvStations");
///     TTreeNode& norway = tree.GetRoot().AddChild(u"Norway");
///     norway.AddChild(u"Bergen");
///     norway.SetExpanded(true);
///
/// Indices count from 0. One outside a list raises EListError as a list. A reference to a node is valid until the node is
/// deleted.
///
/// Threads: main thread only.
namespace Varnholt {

class TTreeView;

class VARNHOLT_EXPORT TTreeNode {
public:
    TTreeNode(TTreeView& treeView, TTreeNode* parent) noexcept : FTreeView(&treeView), FParent(parent) {}
    ~TTreeNode();
    TTreeNode(const TTreeNode&) = delete;
    TTreeNode& operator=(const TTreeNode&) = delete;

    [[nodiscard]] const String& GetText() const noexcept { return FText; }
    void SetText(StringView text);
    /// Null for the root.
    [[nodiscard]] TTreeNode* GetParent() const noexcept { return FParent; }
    TTreeNode& AddChild(StringView text);
    [[nodiscard]] std::int32_t GetCount() const noexcept {
        return static_cast<std::int32_t>(FChildren.size());
    }
    [[nodiscard]] TTreeNode& GetChild(std::int32_t index) const;
    /// Deletes a child with all below it. A selected node among them leaves no selection.
    void DeleteChild(std::int32_t index);
    [[nodiscard]] bool GetExpanded() const noexcept { return FExpanded; }
    void SetExpanded(bool expanded);
    /// What the node stands for; never owned.
    [[nodiscard]] void* GetData() const noexcept { return FData; }
    void SetData(void* data) noexcept { FData = data; }

private:
    TTreeView* FTreeView;
    TTreeNode* FParent;
    String FText;
    std::vector<std::unique_ptr<TTreeNode>> FChildren;
    void* FData = nullptr;
    bool FExpanded = false;
};

class VARNHOLT_EXPORT TTreeView : public TWinControl {
public:
    TTreeView();
    ~TTreeView() override;

    /// The parent of the nodes at the top; not shown itself.
    [[nodiscard]] TTreeNode& GetRoot() noexcept { return FRoot; }
    /// Null if no node is selected.
    [[nodiscard]] TTreeNode* GetSelected() const noexcept { return FSelected; }
    /// A node of this tree, or null.
    void SetSelected(TTreeNode* node);
    /// Raised when a person selects another node.
    [[nodiscard]] const TNotifyEvent& GetOnChange() const noexcept { return FOnChange; }
    void SetOnChange(TNotifyEvent onChange) { FOnChange = std::move(onChange); }
    bool SelectByUser(TTreeNode& node);

private:
    friend class TTreeNode;

    TNotifyEvent FOnChange;
    TTreeNode* FSelected = nullptr;
    TTreeNode FRoot;
};

}  // namespace Varnholt
