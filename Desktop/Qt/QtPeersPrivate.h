#pragma once

#include "Desktop/Qt/QtPeerPrivate.h"
#include "Platform/Controls/Buttons.h"
#include "Platform/Controls/DrawGrid.h"
#include "Platform/Controls/Edits.h"
#include "Platform/Controls/Labels.h"
#include "Platform/Controls/ListView.h"
#include "Platform/Controls/Lists.h"
#include "Platform/Controls/PageControl.h"
#include "Platform/Controls/TreeView.h"

namespace Varnholt {

// The peers by the files that they are in.

// --- QtForm.cpp ---
[[nodiscard]] std::unique_ptr<TQtPeer> MakeFormPeer(TCustomForm& form);
/// A key for the form of a control. Returns whether it is used up.
bool KeyPressed(TQtPeer& peer, std::int32_t key, bool isShiftDown);

// --- QtButtons.cpp ---
[[nodiscard]] std::unique_ptr<TQtPeer> MakeButtonPeer(TButton& button);
[[nodiscard]] std::unique_ptr<TQtPeer> MakeCheckBoxPeer(TCheckBox& checkBox);
[[nodiscard]] std::unique_ptr<TQtPeer> MakeRadioButtonPeer(TRadioButton& radioButton);

// --- QtEdits.cpp ---
[[nodiscard]] std::unique_ptr<TQtPeer> MakeEditPeer(TEdit& edit);
[[nodiscard]] std::unique_ptr<TQtPeer> MakeMemoPeer(TMemo& memo);
[[nodiscard]] std::unique_ptr<TQtPeer> MakeSpinEditPeer(TSpinEdit& edit);
[[nodiscard]] std::unique_ptr<TQtPeer> MakeSpinButtonPeer(TSpinButton& button);

// --- QtLists.cpp ---
[[nodiscard]] std::unique_ptr<TQtPeer> MakeComboBoxPeer(TComboBox& comboBox);
[[nodiscard]] std::unique_ptr<TQtPeer> MakeListBoxPeer(TListBox& listBox);

// --- QtViews.cpp ---
[[nodiscard]] std::unique_ptr<TQtPeer> MakeListViewPeer(TListView& listView);
[[nodiscard]] std::unique_ptr<TQtPeer> MakeTreeViewPeer(TTreeView& treeView);

// --- QtGrid.cpp ---
[[nodiscard]] std::unique_ptr<TQtPeer> MakeGridPeer(TDrawGrid& grid);

// --- QtPages.cpp ---
[[nodiscard]] std::unique_ptr<TQtPeer> MakePageControlPeer(TPageControl& pages);
[[nodiscard]] std::unique_ptr<TQtPeer> MakeTabSheetPeer(TTabSheet& page);

// --- QtLabels.cpp ---
[[nodiscard]] std::unique_ptr<TQtPeer> MakeLabelPeer(TLabel& label);
[[nodiscard]] std::unique_ptr<TQtPeer> MakePanelPeer(TPanel& panel);
[[nodiscard]] std::unique_ptr<TQtPeer> MakeProgressBarPeer(TProgressBar& bar);
[[nodiscard]] std::unique_ptr<TQtPeer> MakePaintBoxPeer(TPaintBox& box);
/// A plain surface, for the application's own kinds of controls that contain others.
[[nodiscard]] std::unique_ptr<TQtPeer> MakeOtherPeer(TWinControl& control);

}  // namespace Varnholt
