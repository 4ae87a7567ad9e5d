#include <gmock/gmock.h>

#include "Platform/Controls/Application.h"
#include "Platform/Controls/Buttons.h"
#include "Platform/Controls/Labels.h"
#include "Platform/Runtime/Files.h"
#include "Platform/System/Platform.h"
#include "Tests/Support/MessageBoxes.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/Foundation/vrnExceptions.h"
#include "VarnholtLib/Services/vrnWindowUtils.h"
#include "VarnholtLib/Services/vrnWindows.h"
#include "VarnholtLib/UI/UI.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;

/// A desktop whose facts the test sets.
struct TDesktop : IScreen, IKeyboard, IFileDialogs {
    TDesktop() {
        Platform().Screen = {std::shared_ptr<void>(), this};
        Platform().Keyboard = {std::shared_ptr<void>(), this};
        Platform().FileDialogs = {std::shared_ptr<void>(), this};
    }
    std::uintptr_t GetActiveFormHandle() override { return Active; }
    void SetActiveFormHandle(std::uintptr_t handle) override { Active = handle; }
    bool BringWindowToTop(std::uintptr_t handle) override { return handle == 77; }
    std::int32_t GetPixelsPerInch() override { return Density; }
    std::int32_t GetWidth() override { return 1000; }
    std::int32_t GetHeight() override { return 500; }
    std::int16_t GetCursor() override { return Cursor; }
    void SetCursor(std::int16_t cursor) override { Cursor = cursor; }
    std::int16_t GetKeyState(std::int32_t key) override {
        return static_cast<std::int16_t>(key == 17 ? -128 : 1);
    }
    bool ChooseFile(TFileDialogRequest& request) override {
        Files.push_back(request);
        request.FileName = Chosen;
        return !Chosen.empty();
    }
    bool ChooseFolder(TFolderDialogRequest& request) override {
        Folders.push_back(request);
        request.Path = Chosen;
        return !Chosen.empty();
    }

    const TPlatformScope Scope;
    std::uintptr_t Active = 0;
    std::int32_t Density = 96;
    std::int16_t Cursor = 5;
    String Chosen;
    std::vector<TFileDialogRequest> Files;
    std::vector<TFolderDialogRequest> Folders;
};

TEST(WaitCursor, CallsAreNested) {
    TDesktop desktop;
    TWaitCursor::Wait();
    TWaitCursor::Wait();
    TWaitCursor::Restore();
    EXPECT_EQ(desktop.Cursor, -11);
    TWaitCursor::Restore();
    EXPECT_EQ(desktop.Cursor, 5);
    desktop.Cursor = 6;
    TWaitCursor::Restore();
    EXPECT_EQ(desktop.Cursor, 6);
    TWaitCursor::Wait();
    TWaitCursor::Wait();
    TWaitCursor::Reset();
    EXPECT_TRUE(desktop.Cursor == 6 && TWaitCursor::GetCount() == 0);
    TWaitCursor::SetCursor(9);
    EXPECT_TRUE(desktop.Cursor == 9 && TWaitCursor::GetCursor() == 6);
    EXPECT_TRUE(TKeyboard::IsKeyDown(17) && !TKeyboard::IsKeyDown(16));
}

TEST(ScrollBarAssist, KeepsThePositionThatWasAskedFor) {
    TPanel panel;
    TScrollBarAssist assist(panel, sbVertical, 0, 10);
    const auto bar = [&] {
        TScrollInfo info;
        info.Mask = kScrollRange | kScrollPosition;
        panel.GetScrollInfo(sbVertical, info);
        return std::vector{info.Min, info.Max, info.Position, assist.GetPosition()};
    };
    assist.SetMax(10);
    int changes = 0;
    assist.SetOnChange([&](TScrollBarAssist& sender) { changes += &sender == &assist; });
    const std::tuple<std::uint32_t, std::int32_t, std::int32_t> steps[] = {
        // code, bar, position
        {0, 0, -1},  {1, 0, 0}, {3, 5, 5},   {3, 10, 10}, {3, 10, 15},
        {2, 10, 10}, {6, 0, 0}, {7, 10, 10}, {8, 10, 10}, {0x10001, 10, 11}};
    for (const auto& [code, position, asked] : steps) {
        assist.HandleScrollMessage(code);
        EXPECT_THAT(bar(), ElementsAre(0, 10, position, asked)) << code;
    }
    EXPECT_EQ(changes, 9);
    assist.SetMin(20);  // above the maximum
    EXPECT_THAT(bar(), ElementsAre(10, 20, 10, 11));
    assist.SetMax(5);
    EXPECT_THAT(bar(), ElementsAre(5, 20, 10, 11));
    assist.SetMin(0);  // the position moves to the maximum
    EXPECT_THAT(bar(), ElementsAre(0, 5, 5, 5));
    assist.SetPosition(6);
    assist.SetMax(5);  // also by one
    EXPECT_THAT(bar(), ElementsAre(0, 5, 5, 5));
    assist.SetOnChange(
        [&](TScrollBarAssist&) { assist.SetPosition(assist.GetPosition() + 1), assist.SetMax(100); });
    assist.SetPosition(1);  // within its own change a position is only stored, but the range is sent
    EXPECT_THAT(bar(), ElementsAre(0, 100, 1, 3));
    assist.SetOnChange({});
    assist.SetLineChange(INT32_MAX);
    assist.HandleScrollMessage(1);
    EXPECT_EQ(assist.GetPosition(), INT32_MAX);

    TForm form;
    TPanel& inner = form.Add<TPanel>(u"");
    TScrollBarAssist dragged(inner, sbHorizontal, 0, 50);
    dragged.SetMax(50);
    form.Show();
    EXPECT_TRUE(inner.TrackScrollByUser(sbHorizontal, 33));
    dragged.HandleScrollMessage(5);
    EXPECT_EQ(dragged.GetPosition(), 33);
    dragged.HandleScrollMessage(4);
    EXPECT_EQ(dragged.GetPosition(), 33);
    static_cast<void>(form.Remove(inner));  // destroys the control
    dragged.HandleScrollMessage(7);
    EXPECT_EQ(dragged.GetPosition(), 50);
}

TEST(MessageBox, KindsAndAnswers) {
    TDesktop desktop;
    TRecordedBoxes boxes;
    boxes.Answers = {mrNo, mrCancel};
    TForm form;
    TEdit& edit = form.Add<TEdit>(u"edit");
    TEdit& other = form.Add<TEdit>(u"other");
    form.Show();
    EXPECT_TRUE(ClickedNo(TMsgBox::YesNo(u"%d?", {7}, u"A")));
    EXPECT_TRUE(ClickedCancel(TMsgBox::YesNoCancel(u"b", u"B")));
    TMsgBox::Error(u"c", u"C", &other);
    EXPECT_TRUE(other.Focused());
    edit.SetEnabled(false);
    TMsgBox::Info(u"%s", u"D", {u"d"}, &edit);
    EXPECT_TRUE(other.Focused());
    EXPECT_TRUE(ClickedCancel(TMsgBox::Show(u"e", u"E", 0x1F1, nullptr)));  // unknown icon, second button
    std::string all;
    for (const TMessageBox& box : boxes.Boxes) {
        EXPECT_EQ(box.Owner, form.GetHandle());
        all += ToUtf8(box.Text + u' ' + box.Title + u' ') + std::to_string(box.Icon) +
               testing::PrintToString(box.Buttons) + std::to_string(box.DefaultButton) + ";";
    }
    EXPECT_EQ(all, "7? A 2{ 6, 7 }0;b B 2{ 6, 7, 2 }0;c C 1{ 1 }0;d D 4{ 1 }0;e E 0{ 1, 2 }1;");
    EXPECT_TRUE(ClickedYes(6) && !ClickedYes(1));
}

TEST(HiDpi, ScalesToTheDensity) {
    TDesktop desktop;
    EXPECT_EQ(HiDpiScaleValue(7), 7);
    desktop.Density = 144;
    EXPECT_THAT((std::vector{HiDpiScaleValue(5), HiDpiScaleValue(3), HiDpiScaleValue(-5),
                             HiDpiScaleValue(INT32_MAX), HiDpiScaleValue(INT32_MIN)}),
                ElementsAre(8, 4, -8, INT32_MAX, INT32_MIN));
    TForm form;
    const auto boundsOf = [](const TControl& c) {
        return std::vector{c.GetLeft(), c.GetTop(), c.GetWidth(), c.GetHeight()};
    };
    TPanel& top = form.Add<TPanel>(u"top");
    top.SetAlign(alTop);
    top.SetHeight(10);
    TPanel& inner = top.Add<TPanel>(u"inner");
    inner.SetBounds(2, 4, 20, 30);
    TEdit& deep = inner.Add<TEdit>(u"deep");
    deep.SetBounds(6, 8, 10, 12);
    HiDpiScaleLayout(form, false);
    EXPECT_THAT(boundsOf(deep), ElementsAre(9, 12, 10, 12));
    HiDpiScaleLayout(form, true);
    EXPECT_THAT(boundsOf(deep), ElementsAre(14, 18, 15, 18));
    EXPECT_THAT(boundsOf(top), ElementsAre(0, 0, 320, 15));
    HiDpiScaleControlSizes(&inner);
    EXPECT_THAT(boundsOf(inner), ElementsAre(4, 9, 45, 68));
    EXPECT_EQ(deep.GetWidth(), 22);
    HiDpiScaleControlSizes(nullptr);
    TDrawGrid grid;
    HiDpiScaleGrid(grid);
    EXPECT_TRUE(grid.GetDefaultRowHeight() == 36 && grid.GetDefaultColWidth() == 96);
    TSpinEdit spin;
    HiDpiFixSpinEdit(spin);
    EXPECT_TRUE(spin.GetWidth() == 121 && spin.GetButton().GetWidth() == 15 &&
                spin.GetButton().GetLeft() == 106);

    TScaledImageListCollection lists;
    EXPECT_EQ(lists.GetImageList(1), nullptr);
    TImageList two, one;
    lists.AddImageList(&two, 2);
    lists.AddImageList(&one, 1);
    EXPECT_TRUE(lists.GetImageList(1) == &one && lists.GetImageList(1.5F) == &two &&
                lists.GetImageList(3) == &two);
    EXPECT_EQ(lists.GetImageList(), &two);
    {
        const TImageList gone;
        lists.AddImageList(const_cast<TImageList*>(&gone), 3);
    }
    EXPECT_EQ(lists.GetImageList(2.5F), nullptr);
}

TEST(ListViewHelper, TextsAndSelection) {
    TListView view;
    EXPECT_EQ(TListViewHelper::GetSelectedItemsText(&view) + TListViewHelper::GetSelectedItemsText(nullptr),
              u"");
    view.AddColumn(u"Name", 100);
    TListItem& a = view.AddItem(u"a");
    a.AddSubItem(u"1");
    a.AddSubItem(u"2");
    view.AddItem(u"").AddSubItem(u"3");
    EXPECT_EQ(TListViewHelper::GetSelectedItemsText(&view), u"a\r\n\r\n");
    EXPECT_EQ(TListViewHelper::GetSelectedItemsTextDelim(&view, u"|"), u"a\r\n\r\n");
    view.AddColumn(u"Height", 40);
    EXPECT_EQ(TListViewHelper::GetSelectedItemsText(&view), u"a: 1 2\r\n 3\r\n");
    EXPECT_EQ(TListViewHelper::GetSelectedItemsTextDelim(&view, u"||"), u"a||1||2||3");
    TListViewHelper::SelectAll(&view);
    EXPECT_THAT(TListViewHelper::GetSelectedItems(view), ElementsAre());
    view.SetMultiSelect(true);
    TListViewHelper::SelectAll(&view);
    EXPECT_EQ(TListViewHelper::GetSelectedItems(view), TListViewHelper::GetAllItems(view));
    view.GetItem(0).SetSelected(false);
    EXPECT_THAT(TListViewHelper::GetSelectedItems(view), ElementsAre(&view.GetItem(1)));
    EXPECT_EQ(TListViewHelper::GetSubItemRect(view, view.GetItem(1), 1), (TRect{100, 41, 140, 58}));
    TListViewHelper::SelectAll(nullptr);
}

TEST(Menus, AppearBesideAControl) {
    TForm form;
    form.SetBounds(100, 200, 300, 300);
    TButton& button = form.Add<TButton>(u"");
    button.SetBounds(10, 20, 50, 25);
    TPopupMenu menu;
    int clicked = 0;
    TObject* chosen = nullptr;
    TMenuItem& more = AddMenuItem(menu, u"More", 3, {});
    TMenuItem& item = AddSubMenuItem(more, u"Copy", 4, [&](TObject* sender) { chosen = sender, ++clicked; });
    EXPECT_TRUE(item.GetTag() == 4 && item.GetCaption() == u"Copy" && &more.GetItem(0) == &item);
    EXPECT_FALSE(menu.ChooseByUser(item));
    ShowPopup(menu, button, ppUnder);
    EXPECT_EQ(menu.GetPopupPoint(), (TPoint{110, 245}));
    ShowPopup(menu, button, ppRight);
    EXPECT_EQ(menu.GetPopupPoint(), (TPoint{160, 220}));
    EXPECT_FALSE(menu.ChooseByUser(more));
    more.SetEnabled(false);
    EXPECT_FALSE(menu.ChooseByUser(item));
    more.SetEnabled(true);
    EXPECT_TRUE(menu.ChooseByUser(item) && clicked == 1 && chosen == &item && !menu.IsOpen());
}

TEST(FileDialogs, StartWhereTheCurrentFileIs) {
    TDesktop desktop;
    const TTemporaryFolder folder;
    const String file = folder.GetPath(u"a.csv"), gone = folder.GetPath(u"b.csv");
    WriteFileInOneGo(file, "");
    const std::pair<String, String> cases[] = {
        {u"", u""}, {gone, u""}, {file, folder.GetPath()}, {folder.GetPath(), folder.GetPath()}};
    for (const auto& [current, start] : cases) {
        String name = current;
        EXPECT_FALSE(BrowseForFileOpen(u"T", name, u"F"));
        EXPECT_TRUE(name == current && desktop.Files.back().InitialDir == start) << ToUtf8(current);
    }
    desktop.Chosen = u"C:\\new";
    TEdit edit;
    edit.SetText(file);
    EXPECT_TRUE(BrowseForFileSave(u"T", edit, u"x|*.x", u"csv") && edit.GetText() == u"C:\\new");
    const TFileDialogRequest& save = desktop.Files.back();
    EXPECT_TRUE(save.IsSave && save.OverwritePrompt && save.DefaultExt == u"csv" && save.Filter == u"x|*.x");
    EXPECT_TRUE(save.Title == u"T" && save.FileName == file);
    String path = u"old";
    desktop.Active = 9;
    EXPECT_TRUE(BrowseForFolderDlg(u"T", path) && path == u"C:\\new\\");
    EXPECT_TRUE(desktop.Folders.back().Path == u"old" && desktop.Folders.back().IsFileSystemOnly &&
                desktop.Folders.back().MayCreate && desktop.Folders.back().Owner == 9);
    desktop.Chosen = u"";
    EXPECT_FALSE(SelectDirectoryDialog(3, u"T", path, false));
    EXPECT_TRUE(path == u"C:\\new\\" && !desktop.Folders.back().IsFileSystemOnly &&
                !desktop.Folders.back().MayCreate && desktop.Folders.back().Owner == 3);
}

TEST(SwitchToHelper, BringsTheWindowToTheTop) {
    TDesktop desktop;
    for (const std::uintptr_t handle : {77U, 78U}) {
        Application().Post([] {
            ASSERT_NE(SwitchToHelper(), nullptr);
            EXPECT_TRUE(SwitchToHelper()->GetSwitchTimer().GetEnabled() &&
                        SwitchToHelper()->GetLeft() == 328);
            SwitchToHelper()->GetSwitchTimer().Fire();
        });
        EXPECT_EQ(TSwitchToHelper::Execute(handle), handle == 77);
        EXPECT_EQ(SwitchToHelper(), nullptr);
    }
}

class TMarkedForm : public TForm, public ICommandableForm {};

TEST(ControlHelpers, EnableMarkAndCloseForms) {
    TMarkedForm form;
    TPanel& panel = form.Add<TPanel>(u"");
    TEdit& edit = panel.Add<TEdit>(u"");
    TControlEnumerator::SetEnabled(form, false, false);
    EXPECT_TRUE(form.GetEnabled() && !panel.GetEnabled() && edit.GetEnabled());
    TControlEnumerator::SetEnabled(form, false, true);
    EXPECT_FALSE(edit.GetEnabled());
    SetChildControlsState(form, true);
    EXPECT_TRUE(edit.GetEnabled() && edit.GetColor() == 0xFF000005 && panel.GetColor() == clBtnFace);
    SetChildControlsState(form, false);
    EXPECT_TRUE(!form.GetEnabled() && edit.GetColor() == 0xFF00000F && form.GetColor() == clBtnFace);
    ICommandableForm* found = nullptr;
    EXPECT_TRUE(GetCommandableForm(&form, found) && found == &form);
    EXPECT_TRUE(!GetCommandableForm(&panel, found) && found == nullptr && !GetCommandableForm(nullptr));

    TForm main;
    main.Show();
    const auto add = [&] { return TComponentRef<TCustomForm>(&main.AddMDIChild(std::make_unique<TForm>())); };
    const auto first = add(), second = add(), third = add();
    first.Get()->SetBorderIcons({biMinimize});
    second.Get()->SetOnCloseQuery([](TObject*, bool&) { throw EConvertError(u"not now"); });
    MDICloseAll(main);
    Application().ProcessMessages();  // destroys what was closed
    EXPECT_TRUE(main.GetMDIChildCount() == 2 && first && second && !third);
}

TEST(AppExceptionHandler, PutsExceptionsIntoWords) {
    TRecordedBoxes boxes;
    TAppExceptionHandler handler, later;
    Application().SetTitle(u"App");
    handler.Register();
    const std::pair<std::function<void()>, std::pair<StringView, StringView>> cases[] = {
        {[] { throw EExException(u"T.M", u"info"); }, {u"Exception", u"info\r\n\r\nMethod: T.M"}},
        {[] { throw EExArgumentNilException(u"T.M", u"A"); },
         {u"Parameter null exception",
          u"A method was provided a null parameter.\r\n\r\nMethod: T.M\r\nParameter: A"}},
        {[] { throw EExArgumentException(u"T.M", u"A", u"info"); },
         {u"Parameter invalid exception",
          u"A method was provided an invalid parameter.\r\n\r\ninfo\r\n\r\nMethod: T.M\r\nParameter: A"}},
        {[] { throw EExArgumentException(u"T.M", u"A", u""); },
         {u"Parameter invalid exception",
          u"A method was provided an invalid parameter:\r\n\r\nMethod: T.M\r\nParameter: A"}},
        {[] { throw EArgumentNilException(u"A"); },
         {u"Parameter null exception", u"A method was provided a null parameter:\r\n\r\nParameter: A"}},
        {[] { throw EArgumentException(u"why"); },
         {u"Parameter invalid exception", u"A method was provided an invalid parameter.\r\n\r\nwhy"}},
        {[] { throw EExObjectNotInitializedException(u"T.M", u"O", u"info"); },
         {u"", u"An object is not initialized (is null): \r\n\r\ninfo\r\n\r\nMethod: T.M\r\n\r\nObject: O"}},
        {[] { throw EExObjectNotInitializedException(u"T.M", u"O", u""); },
         {u"", u"An object is not initialized (is null): \r\n\r\nMethod: T.M\r\n\r\nObject: O"}},
        {[] { throw EConvertError(u"own"); }, {u"Error", u"own"}},
        {[] { throw std::runtime_error("standard"); }, {u"Error", u"standard"}},
        {[] { throw 5; }, {u"Error", u"Unknown exception"}}};
    for (const auto& [raise, expected] : cases) {
        boxes.Boxes.clear();
        Application().Post(raise);
        Application().ProcessMessages();
        ASSERT_EQ(boxes.Boxes.size(), 1U) << ToUtf8(expected.second);
        EXPECT_EQ(boxes.Boxes[0].Title, expected.first);
        EXPECT_EQ(boxes.Boxes[0].Text, expected.second);
        EXPECT_EQ(boxes.Boxes[0].Icon, miStop);
    }
    later.Register();
    handler.Unregister();
    EXPECT_TRUE(Application().GetOnException());
    later.Unregister();
    EXPECT_FALSE(Application().GetOnException());
    Application().SetOnException(
        [](TObject*, const Exception&) { throw std::runtime_error("of the event"); });
    Application().Post([] { throw EConvertError(u"own"); });
    Application().ProcessMessages();
    Application().SetOnException({});
    EXPECT_TRUE(boxes.Boxes.back().Text == u"of the event" && boxes.Boxes.back().Title == u"App");
    Application().SetTitle({});
}

}  // namespace
}  // namespace Varnholt::Test
