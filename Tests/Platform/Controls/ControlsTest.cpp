#include "Platform/Controls/Controls.h"

#include <gmock/gmock.h>

#include "Tests/Support/MessageBoxes.h"
#include "Tests/Support/Raised.h"
#include "VarnholtLib/Services/vrnWindows.h"

namespace Varnholt::Test {
namespace {

using testing::ElementsAre;

std::vector<std::int32_t> BoundsOf(const TControl& c) {
    return {c.GetLeft(), c.GetTop(), c.GetWidth(), c.GetHeight()};
}

template <typename>
struct TScope {
    class TInner : public TEdit {};
};

template <typename T>
struct TWrapped : TPanel {};

TEST(Controls, AlignedAndAnchoredControlsFollowTheirParent) {
    TPanel parent;
    parent.SetBounds(0, 0, 100, 80);
    const std::tuple<TAlign, std::int32_t, std::vector<std::int32_t>> aligned[] = {
        {alClient, 10, {10, 30, 75, 30}}, {alTop, 20, {0, 0, 100, 20}},    {alLeft, 10, {0, 30, 10, 30}},
        {alBottom, 20, {0, 60, 100, 20}}, {alRight, 15, {85, 30, 15, 30}}, {alTop, 10, {0, 20, 100, 10}}};
    for (const auto& [align, size, bounds] : aligned) {
        TPanel& child = parent.Add<TPanel>(u"");
        child.SetBounds(7, 7, size, size);
        child.SetAlign(align);
    }
    TEdit& corner = parent.Add<TEdit>(u"");
    corner.SetBounds(60, 50, 30, 20);
    corner.SetAnchors({akRight, akBottom});
    TEdit& wide = parent.Add<TEdit>(u"");
    wide.SetBounds(10, 10, 80, 20);
    wide.SetAnchors({akLeft, akTop, akRight, akBottom});
    for (std::int32_t i = 0; const auto& [align, size, bounds] : aligned)
        EXPECT_EQ(BoundsOf(parent.GetControl(i++)), bounds) << i;
    parent.SetBounds(5, 5, 120, 70);
    EXPECT_THAT(BoundsOf(corner), ElementsAre(80, 40, 30, 20));
    EXPECT_THAT(BoundsOf(wide), ElementsAre(10, 10, 100, 10));
    EXPECT_THAT(BoundsOf(parent.GetControl(0)), ElementsAre(10, 30, 95, 20));
    parent.GetControl(1).SetVisible(false);
    EXPECT_THAT(BoundsOf(parent.GetControl(5)), ElementsAre(0, 0, 120, 10));
    corner.SetBounds(INT32_MAX, INT32_MIN, -5, -5);
    parent.SetBounds(0, 0, INT32_MAX, INT32_MAX);
    EXPECT_THAT(BoundsOf(corner), ElementsAre(INT32_MAX, INT32_MIN + INT32_MAX - 70, 0, 0));
}

TEST(Controls, KnowTheirClassFamilyAndEnd) {
    TForm form;
    EXPECT_EQ(form.Add<TWrapped<TEdit>>(u"w").ClassName().substr(0, 9), u"TWrapped<");
    EXPECT_EQ(form.ClassName(), u"TForm");
    EXPECT_EQ(TScope<int>::TInner().ClassName(), u"TInner");
    TPanel& panel = form.Add<TPanel>(u"panel");
    TEdit& edit = panel.Add<TEdit>(u"edit");
    EXPECT_TRUE(form.FindControl(u"edit") == &edit && form.FindControl(u"Edit") == nullptr);
    EXPECT_TRUE(edit.GetParentForm() == &form && edit.GetClientOrigin() == (TPoint{0, 0}));
    const TComponentRef<TEdit> ref(&edit);
    std::unique_ptr<TControl> removed = form.Remove(panel);
    EXPECT_TRUE(ref && edit.GetParentForm() == nullptr && !edit.IsUsable());
    removed.reset();
    EXPECT_TRUE(!ref && TComponentRef<TEdit>().Get() == nullptr);
    TLabel other;
    other.SetName(u"other");
    form.SetName(u"form");
    EXPECT_EQ(Raised<EInvalidOperation>([&] { return form.Remove(other); }),
              u"Control \"form\" has no child \"other\"");
    EXPECT_EQ(Raised<EArgumentNilException>([&] { form.Insert(std::unique_ptr<TLabel>()); }), u"child");
    EXPECT_EQ(Raised<EListError>([&] { return &form.GetControl(1); }), u"List index out of bounds (1)");
    TWinControl* at = &form;
    for (int i = 1; i < 1000; ++i) at = &at->Add<TPanel>(u"");
    EXPECT_EQ(Raised<EInvalidOperation>([&] { at->Add<TPanel>(u""); }),
              u"Controls are nested more than 1000 levels deep");
}

TEST(Controls, ScrollBarsStayInTheirRange) {
    TPanel panel;
    const auto set = [&](std::uint32_t mask, std::int32_t min, std::int32_t max, std::uint32_t page,
                         std::int32_t position) {
        EXPECT_TRUE(panel.SetScrollInfo(sbVertical, {28, mask, min, max, page, position, 0}, true));
        TScrollInfo info;
        info.Mask = kScrollPosition;
        panel.GetScrollInfo(sbVertical, info);
        return info.Position;
    };
    EXPECT_EQ(set(kScrollRange | kScrollPosition, 0, 100, 0, 500), 100);
    EXPECT_EQ(set(kScrollPage, 0, 0, 11, 0), 90);
    EXPECT_EQ(set(kScrollPosition, 0, 0, 0, -7), 0);
    EXPECT_EQ(set(kScrollRange | kScrollPage, INT32_MIN, INT32_MAX, UINT32_MAX, 0), INT32_MIN + 1);
    EXPECT_EQ(set(kScrollRange, 9, 3, 0, 0), 9);
    TScrollInfo wrong;
    wrong.Size = 27;
    EXPECT_TRUE(!panel.SetScrollInfo(sbVertical, wrong, true) && !panel.SetScrollInfo(2, {}, true) &&
                !panel.GetScrollInfo(2, wrong));
}

TEST(Controls, WithoutAUserAModalFormSaysSo) {
    TForm form;
    form.SetName(u"form");
    const auto show = [&] { form.ShowModal(); };
    EXPECT_EQ(Raised<EInvalidOperation>(show),
              u"Form \"form\" waits for an answer, but nothing can give one");
    EXPECT_FALSE(form.GetVisible());
    TRecordedBoxes boxes;
    Application().SetOnException([](TObject*, const Exception&) { throw EConvertError(u"of the handler"); });
    Application().Post([] { throw EConvertError(u"of the step"); });
    EXPECT_EQ(Raised<EInvalidOperation>(show),
              u"Form \"form\" waits for an answer, but nothing can give one");
    Application().SetOnException({});
    ASSERT_EQ(boxes.Boxes.size(), 1U);
    EXPECT_EQ(boxes.Boxes[0].Text, u"of the handler");
    form.SetOnShow([](TObject*) { throw EConvertError(u"of the showing"); });
    EXPECT_EQ(Raised<EConvertError>(show), u"of the showing");
    EXPECT_EQ(Screen().GetFormCount(), 0);
}

TEST(Controls, EventsHaveIdentity) {
    int calls = 0;
    TNotifyEvent event([&](TObject*) { ++calls; });
    const TNotifyEvent same = event, none, empty{std::function<void(TObject*)>()};
    EXPECT_TRUE(same == event && same != TNotifyEvent([&](TObject*) { ++calls; }) && none == empty && !none);
    TButton button;
    button.SetOnClick([&](TObject*) { button.SetOnClick({}), ++calls; });  // replaces itself while it runs
    button.Click();
    button.Click();
    none(nullptr);
    same(nullptr);
    EXPECT_EQ(calls, 2);
}

/// Notes what the controls report.
struct TRecordingBackend : IControlBackend {
    struct TPeer : IControlPeer {
        TPeer(TRecordingBackend& backend, TControl& control)
            : Backend(backend), Name(ToUtf8(control.GetName())) {
            Backend.Notes += "new " + Name + "; ";
        }
        ~TPeer() override { Backend.Notes += "end " + Name + "; "; }
        void Update(TControlAspect aspect) override {
            Backend.Notes += Name + " " + std::to_string(aspect) + "; ";
        }
        std::uintptr_t GetHandle() override { return 4711; }
        TPoint GetClientOrigin() override { return {30, 40}; }
        TSize GetClientSize() override { return {}; }
        TRect GetCellRect(std::int32_t column, std::int32_t row) override { return {column, row, 1, 1}; }
        void PaintTo(TCanvas&, std::int32_t x, std::int32_t) override {
            Backend.Notes += "paint " + std::to_string(x);
        }
        TRecordingBackend& Backend;
        const std::string Name;
    };
    std::unique_ptr<IControlPeer> CreatePeer(TControl& control) override {
        return std::make_unique<TPeer>(*this, control);
    }
    bool HandleMessage(std::int32_t maxWait) override {
        Notes += "wait " + std::to_string(maxWait) + "; ";
        if (maxWait != 0) Application().Terminate();
        return false;
    }
    void ShowPopup(TPopupMenu& menu) override { menu.ChooseByUser(menu.GetItems().GetItem(0)); }
    void Wake() override { Notes += "wake; "; }
    std::string Take() { return std::exchange(Notes, std::string()); }
    std::string Notes;
};

TEST(Controls, ReportEachChangeToTheBackEnd) {
    const auto backend = std::make_shared<TRecordingBackend>();
    SetControlBackend(backend);
    {
        TForm form;
        form.SetName(u"form");
        TPanel& panel = form.Add<TPanel>(u"panel");
        TEdit& edit = panel.Add<TEdit>(u"edit");
        edit.SetText(u"before");
        EXPECT_EQ(backend->Take(), "");
        form.Show();
        EXPECT_EQ(backend->Take(), "new form; new panel; new edit; form 1; form 7; edit 7; ");
        edit.SetText(u"x");
        edit.SetEnabled(false);
        edit.SetBounds(1, 2, 3, 4);
        edit.SetColor(clRed);
        edit.SetScrollInfo(sbVertical, {}, true);
        edit.Repaint();
        EXPECT_EQ(backend->Take(), "edit 0; edit 5; edit 1; edit 7; edit 2; edit 3; edit 6; edit 8; ");
        RepaintAll(form);
        EXPECT_EQ(backend->Take(), "edit 8; panel 8; form 8; ");
        TListView& list = form.Add<TListView>(u"list");
        list.AddColumn(u"c", 5);
        list.AddItem(u"i").SetSelected(true);
        EXPECT_EQ(backend->Take(), "new list; list 4; list 4; list 5; ");
        EXPECT_TRUE(list.GetCellRect(0, 0) == (TRect{0, 0, 1, 1}) && list.GetHandle() == 4711);
        EXPECT_EQ(Platform().Screen->GetActiveFormHandle(), 4711U);
        static_cast<void>(form.Remove(list));
        EXPECT_EQ(backend->Take(), "end list; ");
        int chosen = 0;
        TPopupMenu menu;
        menu.GetItems().Add(std::make_unique<TMenuItem>()).SetOnClick([&](TObject*) { ++chosen; });
        menu.Popup(1, 2);
        EXPECT_EQ(chosen, 1);
        Application().Post([] {});
        Application().ProcessMessages();
        EXPECT_EQ(backend->Take(), "wake; wait 0; ");
        Application().Run(form);
        EXPECT_EQ(backend->Take(), "wait -1; form 1; ");
    }
    EXPECT_EQ(backend->Take(), "end edit; end panel; end form; ");
    SetControlBackend(nullptr);
}

}  // namespace
}  // namespace Varnholt::Test
