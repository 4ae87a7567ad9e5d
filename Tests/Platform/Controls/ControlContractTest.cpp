#include "Tests/Platform/Controls/ControlContract.h"

#include <gmock/gmock.h>

#include <thread>

#include "Platform/Drawing/Bitmap.h"
#include "Platform/Runtime/MainThread.h"
#include "Tests/Support/MessageBoxes.h"
#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;

/// Notes the names of what is raised.
struct TNotes {
    auto operator()(const char* name) {
        return [this, name](TObject* sender) {
            Text += name;
            Text += dynamic_cast<TComponent*>(sender) == nullptr ? "? " : " ";
        };
    }
    std::string Take() { return std::exchange(Text, std::string()); }
    std::string Text;
};

TEST_P(ControlContract, ButtonsClickAndCheck) {
    TForm form;
    TNotes notes;
    TButton& button = form.Add<TButton>(u"button");
    TCheckBox& check = form.Add<TCheckBox>(u"check");
    TRadioButton& one = form.Add<TRadioButton>(u"one");
    TRadioButton& two = form.Add<TRadioButton>(u"two");
    button.SetOnClick(notes("button"));
    check.SetOnClick(notes("check"));
    one.SetOnClick(notes("one"));
    two.SetOnClick(notes("two"));
    EXPECT_FALSE(User->Click(button));  // the form is hidden
    form.Show();
    EXPECT_TRUE(User->Click(button) && User->Click(check) && User->Click(one) && User->Click(two) &&
                User->Click(two));
    EXPECT_EQ(notes.Take(), "button check one two ");
    EXPECT_TRUE(check.GetChecked() && !one.GetChecked() && two.GetChecked() && two.Focused());
    check.SetChecked(true);
    check.SetChecked(false);
    one.SetChecked(true);
    EXPECT_EQ(notes.Take(), "check one ");
    EXPECT_FALSE(two.GetChecked());
    button.SetEnabled(false);
    check.SetVisible(false);
    EXPECT_TRUE(!User->Click(button) && !User->Click(check) && notes.Take().empty());
    form.SetEnabled(false);
    EXPECT_FALSE(User->Click(two));
}

TEST_P(ControlContract, FieldsTakeWhatIsTyped) {
    TForm form;
    TNotes notes;
    TEdit& edit = form.Add<TEdit>(u"edit");
    TMemo& memo = form.Add<TMemo>(u"memo");
    TSpinEdit& spin = form.Add<TSpinEdit>(u"spin");
    edit.SetOnChange(notes("edit"));
    edit.SetOnEnter(notes("enter"));
    edit.SetOnExit(notes("exit"));
    memo.SetOnChange(notes("memo"));
    spin.SetOnChange(notes("spin"));
    edit.SetText(u"a\r\nb");
    edit.SetText(u"ab");
    EXPECT_EQ(notes.Take(), "edit ");
    form.Show();
    edit.Select(1, 5);
    EXPECT_TRUE(edit.GetSelLength() == 1 && User->Type(edit, u"xy") && edit.GetText() == u"axy");
    EXPECT_EQ(edit.GetSelStart(), 3);
    edit.SetMaxLength(4);
    EXPECT_TRUE(User->Type(edit, u"12") && edit.GetText() == u"axy1");
    EXPECT_EQ(notes.Take(), "enter edit edit ");
    edit.SetReadOnly(true);
    EXPECT_FALSE(User->Type(edit, u"2"));
    EXPECT_TRUE(User->Type(memo, u"a") && User->Key(form, kKeyEnter, false) && User->Type(memo, u"b"));
    EXPECT_EQ(memo.GetText(), u"a\r\nb");
    EXPECT_EQ(notes.Take(), "exit memo memo memo ");
    EXPECT_EQ(memo.GetLines().GetCount(), 2);
    spin.SetRange(1, 3);
    EXPECT_EQ(spin.GetValue(), 1);
    EXPECT_TRUE(User->Spin(spin, true) && User->Spin(spin, true) && User->Spin(spin, true) &&
                spin.GetText() == u"3");
    EXPECT_EQ(notes.Take(), "spin spin ");
    spin.SetText(u"many");
    EXPECT_EQ(spin.GetValue(), 1);
    spin.SetRange(0, 0);
    spin.SetValue(INT32_MIN);
    EXPECT_TRUE(User->Spin(spin, false) && spin.GetValue() == INT32_MIN);
}

TEST_P(ControlContract, ListsSelect) {
    TForm form;
    TNotes notes;
    TComboBox& combo = form.Add<TComboBox>(u"combo");
    TListBox& box = form.Add<TListBox>(u"box");
    combo.SetOnChange(notes("combo"));
    box.SetOnClick(notes("box"));
    combo.GetItems().SetLines({u"a", u"B", u"b"});
    box.GetItems().SetLines({u"x", u"y", u"z"});
    form.Show();
    combo.SetItemIndex(1);
    EXPECT_TRUE(combo.GetText() == u"B" && notes.Take().empty());
    EXPECT_TRUE(User->Choose(combo, 2) && combo.GetItemIndex() == 2 && !User->Choose(combo, 3) &&
                !User->Choose(combo, -1));
    EXPECT_EQ(notes.Take(), "combo ");
    combo.GetItems().Delete(0);
    EXPECT_TRUE(combo.GetItemIndex() == -1 && combo.GetItems().IndexOf(u"b") == 1 &&
                combo.GetItems().IndexOf(u"A") == -1);
    combo.SetText(u"B");
    EXPECT_EQ(combo.GetItemIndex(), 0);
    EXPECT_TRUE(User->Choose(box, 1) && User->Choose(box, 2));
    EXPECT_TRUE(!box.GetSelected(1) && box.GetSelected(2) && box.GetItemIndex() == 2);
    box.SetMultiSelect(true);
    EXPECT_TRUE(User->Choose(box, 0) && User->Choose(box, 2));
    EXPECT_TRUE(box.GetSelected(0) && !box.GetSelected(2));
    box.GetItems().SetLines({u"x"});
    EXPECT_EQ(box.GetItemIndex(), -1);
    EXPECT_EQ(Raised<EListError>([&] { return box.GetSelected(1); }), u"List index out of bounds (1)");
}

TEST_P(ControlContract, ViewsSelectAndDelete) {
    TForm form;
    TNotes notes;
    TListView& list = form.Add<TListView>(u"list");
    list.AddColumn(u"c", 10);
    list.SetOnSelectItem(notes("select"));
    list.SetOnDblClick(notes("twice"));
    for (const StringView name : {u"a", u"b", u"c"}) list.AddItem(name);
    form.Show();
    EXPECT_TRUE(User->Choose(list, 1, true) && User->Choose(list, 2, true) && User->DoubleClick(list, 0));
    EXPECT_EQ(notes.Take(), "select select select twice ");
    EXPECT_TRUE(list.GetSelCount() == 1 && list.GetSelected() == &list.GetItem(0));
    list.SetMultiSelect(true);
    EXPECT_TRUE(User->Choose(list, 2, true) && User->Choose(list, 0, true) && !User->Choose(list, 3, false));
    EXPECT_TRUE(list.GetSelCount() == 1 && list.GetSelected() == &list.GetItem(2));
    TListItem& last = list.GetItem(2);
    list.DeleteItem(0);
    EXPECT_TRUE(last.GetIndex() == 1 && &list.GetItem(1) == &last && list.GetSelected() == &last);
    list.DeleteItem(1);
    EXPECT_TRUE(list.GetSelCount() == 0 && list.GetSelected() == nullptr);
    EXPECT_EQ(Raised<EListError>([&] { list.DeleteItem(1); }), u"List index out of bounds (1)");
    list.ClearItems();

    TTreeView& tree = form.Add<TTreeView>(u"tree");
    tree.SetOnChange(notes("tree"));
    TTreeNode* deep = &tree.GetRoot();
    for (int i = 0; i < 100'000; ++i) deep = &deep->AddChild(u"n");
    EXPECT_TRUE(User->Choose(tree, *deep) && User->Choose(tree, *deep) && tree.GetSelected() == deep);
    EXPECT_EQ(notes.Take(), "select select tree ");
    tree.GetRoot().DeleteChild(0);
    EXPECT_TRUE(tree.GetSelected() == nullptr && tree.GetRoot().GetCount() == 0);
}

TEST_P(ControlContract, PagesShowOneAtATime) {
    TForm form;
    TNotes notes;
    TPageControl& pages = form.Add<TPageControl>(u"pages");
    pages.SetOnChange(notes("page"));
    TTabSheet& first = pages.Add<TTabSheet>(u"first");
    TTabSheet& second = pages.Add<TTabSheet>(u"second");
    TEdit& edit = second.Add<TEdit>(u"edit");
    form.Show();
    EXPECT_TRUE(pages.GetActivePage() == &first && first.GetVisible() && !second.GetVisible() &&
                !edit.CanFocus());
    EXPECT_EQ(first.GetWidth(), pages.GetWidth());
    EXPECT_TRUE(User->Choose(pages, 1) && User->Choose(pages, 1) && !User->Choose(pages, 2));
    EXPECT_EQ(notes.Take(), "page ");
    edit.SetFocus();
    pages.SetActivePage(&first);  // the focus leaves the hidden page
    EXPECT_TRUE(pages.Focused() && notes.Take().empty());
    TTabSheet other;
    EXPECT_EQ(Raised<EInvalidOperation>([&] { pages.SetActivePage(&other); }),
              u"Control \"pages\" has no child \"\"");
    static_cast<void>(pages.Remove(first));
    EXPECT_TRUE(pages.GetActivePage() == &second && second.GetVisible() && pages.GetPageCount() == 1);
    static_cast<void>(pages.Remove(second));
    EXPECT_EQ(pages.GetActivePage(), nullptr);
}

TEST_P(ControlContract, GridsMenusAndPaintBoxes) {
    TForm form;
    TNotes notes;
    TStringGrid& grid = form.Add<TStringGrid>(u"grid", 4, 5, 1, 1);
    grid.SetOnSelect(notes("select"));
    grid.SetOnFixedCellClick([&](TObject*, std::int32_t col, std::int32_t row, bool isShiftDown) {
        notes.Text += std::to_string(col) + std::to_string(row) + (isShiftDown ? "+ " : " ");
    });
    TMainMenu menu;
    TMenuItem& item = menu.GetItems().Add(std::make_unique<TMenuItem>()).Add(std::make_unique<TMenuItem>());
    item.SetCaption(u"Open");
    item.SetOnClick(notes("open"));
    form.SetMenu(&menu);
    TPaintBox& box = form.Add<TPaintBox>(u"box");
    TRect painted;
    box.SetOnPaint([&](TObject*, TCanvas&, const TRect& area) { painted = area; });
    TEdit& edit = form.Add<TEdit>(u"edit");
    edit.SetIsPassword(true);
    EXPECT_FALSE(form.DropFilesByUser({u"C:\\a"}));
    form.Show();
    EXPECT_TRUE(grid.GetSelection().IsEmpty() && User->Choose(grid, {1, 1, 2, 3}));
    EXPECT_EQ(grid.GetSelection(), (TGridRect{1, 1, 2, 3}));
    grid.SetRowCount(3);
    EXPECT_EQ(grid.GetSelection(), (TGridRect{1, 1, 2, 2}));
    EXPECT_EQ(notes.Take().substr(0, 7), "select ");
    grid.SetSelection({});
    EXPECT_TRUE(User->ClickFixed(grid, 2, false) && User->ClickFixed(grid, 1, true) &&
                !User->ClickFixed(grid, 4, false));
    EXPECT_TRUE(!grid.ClickFixedByUser(1, 1, false) && User->Choose(form, item));
    item.SetEnabled(false);
    EXPECT_FALSE(User->Choose(form, item));
    EXPECT_EQ(notes.Take(), "20 10+ open ");
    grid.SetColWidth(1, 30);
    grid.SetColWidth(1, -1);
    EXPECT_EQ(grid.GetColWidth(1), grid.GetDefaultColWidth());
    form.SetOnDropFiles([&](TObject*, const std::vector<String>& files) { edit.SetText(files[0]); });
    EXPECT_TRUE(form.DropFilesByUser({u"C:\\a"}) && edit.GetText() == u"C:\\a");
    TBitmap picture(200, 200);
    box.PaintTo(picture.GetCanvas(), 10, 20);
    EXPECT_EQ(painted.Right - painted.Left, box.GetWidth());
}

TEST_P(ControlContract, TheFocusMovesOnceAndInOrder) {
    TForm form;
    TNotes notes;
    form.SetOnShow(notes("show"));
    std::vector<TEdit*> edits;
    const char* const events[][2] = {{"+a", "-a"}, {"+b", "-b"}, {"+c", "-c"}};
    TPanel& panel = form.Add<TPanel>(u"panel");
    for (const auto& [enter, exit] : events) {
        TWinControl& parent = edits.size() == 1 ? static_cast<TWinControl&>(panel) : form;
        edits.push_back(&parent.Add<TEdit>(u""));
        edits.back()->SetOnEnter(notes(enter));
        edits.back()->SetOnExit(notes(exit));
    }
    form.SetActiveControl(edits[0]);
    form.Show();
    EXPECT_EQ(notes.Take(), "show +a ");
    // b is in the panel, which was made first.
    EXPECT_TRUE(User->Key(form, kKeyTab, false) && User->Key(form, kKeyTab, false) &&
                User->Key(form, kKeyTab, true));
    EXPECT_EQ(notes.Take(), "-a +c -c +b -b +c ");
    edits[2]->SetOnExit([&](TObject*) { edits[1]->SetFocus(); });
    edits[0]->SetFocus();  // the handler of the exit sends it elsewhere
    EXPECT_TRUE(edits[1]->Focused());
    EXPECT_EQ(notes.Take(), "+b ");
    panel.SetEnabled(false);
    EXPECT_TRUE(edits[0]->Focused());
    edits[1]->SetName(u"b");
    EXPECT_EQ(Raised<EInvalidOperation>([&] { edits[1]->SetFocus(); }),
              u"Cannot focus control \"b\", which is disabled or invisible");
    static_cast<void>(form.Remove(*edits[0]));
    EXPECT_EQ(form.GetActiveControl(), nullptr);
    edits[1]->SetOnEnter([&](TObject*) { edits[2]->SetFocus(); });
    edits[2]->SetOnEnter([&](TObject*) { edits[1]->SetFocus(); });
    panel.SetEnabled(true);
    edits[2]->SetFocus();  // handlers that never stop are stopped
    edits[2]->SetOnEnter({});
    TForm second;
    second.Show();
    EXPECT_TRUE(Screen().GetActiveForm() == &second && User->Click(*edits[2]) &&
                Screen().GetActiveForm() == &form);
}

TEST_P(ControlContract, ModalFormsWaitForTheirAnswer) {
    TForm main, dialog, nested;
    TButton& behind = main.Add<TButton>(u"");
    TButton& ok = dialog.Add<TButton>(u"ok");
    TButton& cancel = dialog.Add<TButton>(u"cancel");
    TEdit& edit = dialog.Add<TEdit>(u"edit");
    ok.SetDefault(true);
    ok.SetModalResult(mrOk);
    cancel.SetCancel(true);
    cancel.SetModalResult(mrCancel);
    main.Show();
    const auto answer = [&](std::function<void()> act) {
        Application().Post([&, act] {
            EXPECT_FALSE(User->Click(behind));
            edit.SetFocus();
            act();
        });
        return dialog.ShowModal();
    };
    EXPECT_EQ(answer([&] { User->Key(dialog, kKeyEnter, false); }), mrOk);
    EXPECT_EQ(answer([&] { User->Key(dialog, kKeyEscape, false); }), mrCancel);
    EXPECT_EQ(answer([&] { cancel.SetFocus(), User->Key(dialog, kKeyEnter, false); }), mrCancel);
    EXPECT_EQ(answer([&] { User->Close(dialog); }), mrCancel);
    EXPECT_EQ(answer([&] {
                  Application().Post([&] {
                      EXPECT_FALSE(User->Click(ok));
                      nested.SetModalResult(mrYes);
                  });
                  EXPECT_EQ(nested.ShowModal(), mrYes);
                  dialog.SetModalResult(mrNo);
              }),
              mrNo);
    EXPECT_TRUE(Screen().GetActiveForm() == &main && User->Click(behind));
    int asked = 0;
    dialog.SetOnCloseQuery([&](TObject*, bool& mayClose) {
        mayClose = ++asked > 2;
        if (asked == 1) throw EConvertError(u"not yet");
        Application().Post([&] { dialog.SetModalResult(mrRetry); });
    });
    TRecordedBoxes boxes;
    EXPECT_EQ(answer([&] {
                  dialog.SetModalResult(mrOk);
                  Application().Post([&] { dialog.SetModalResult(mrOk); });
              }),
              mrRetry);
    EXPECT_TRUE(asked == 3 && boxes.Boxes.size() == 1 && boxes.Boxes[0].Text == u"not yet");
    Application().ProcessMessages();
    main.SetName(u"main");
    EXPECT_EQ(Raised<EInvalidOperation>([&] { main.ShowModal(); }), u"Form \"main\" is visible already");
    EXPECT_EQ(Raised<EInvalidOperation>([&] { main.Insert(std::make_unique<TForm>()); }),
              u"A form cannot be placed in a control");
}

TEST_P(ControlContract, TheMainFormEndsTheApplication) {
    TForm main;
    TNotes notes;
    main.SetOnHide(notes("hide"));
    std::thread other;
    TTimer timer;
    timer.SetInterval(1);
    timer.SetOnTimer([&](TObject*) {
        timer.SetEnabled(false);
        other = std::thread([&] {
            Synchronize([&] { notes.Text += IsMainThread() ? "main " : "other "; });
            Application().Post([&] { EXPECT_TRUE(User->Close(main)); });
        });
        timer.SetEnabled(true);
        timer.SetInterval(1'000'000);
    });
    timer.SetEnabled(true);
    main.SetOnClose([&](TObject*, TCloseAction& action) {
        EXPECT_EQ(Application().GetMainForm(), &main);
        EXPECT_EQ(action, caHide);
    });
    Application().Run(main);
    other.join();
    EXPECT_EQ(notes.Take(), "main hide ");
    EXPECT_TRUE(Application().GetTerminated() && Application().GetMainForm() == nullptr &&
                !main.GetVisible());
    main.SetBorderIcons({});
    main.SetOnClose({});
    Application().Post([&] {
        EXPECT_FALSE(User->Close(main));
        TComponentRef<TCustomForm> child(&main.AddMDIChild(std::make_unique<TForm>()));
        EXPECT_EQ(child.Get()->GetMDIParent(), &main);
        child.Get()->Close();
        EXPECT_TRUE(child && main.GetMDIChildCount() == 0);  // destroyed when no event of it can run
        Application().Post([child] {
            EXPECT_FALSE(child);
            Application().Terminate();
        });
    });
    Application().Run(main);
    EXPECT_FALSE(main.GetVisible());
    Application().ProcessMessages();
}

}  // namespace

}  // namespace Varnholt::Test
