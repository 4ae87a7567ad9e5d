#include <gmock/gmock.h>

#include <map>
#include <random>

#include "Platform/Controls/Buttons.h"
#include "Platform/Controls/Edits.h"
#include "Platform/Controls/Form.h"
#include "Platform/Controls/Lists.h"
#include "Platform/Controls/PageControl.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/UI/vrnCommonUIBookmarkValueAdapters.h"
#include "VarnholtLib/UI/vrnUIBookmarkXMLDb.h"

namespace Varnholt::Test {
namespace {

class TOwnEdit : public TEdit {};

class TOwnEditAdapter : public TEditUIBookmarkValueAdapter {
public:
    [[nodiscard]] String GetControlTypeName() const override { return u"TOwnEdit"; }
};

struct TDialog : TForm {
    TDialog() {
        Adapters->Add(std::make_shared<TComboBoxUIBookmarkValueAdapter>());
        Adapters->Add(std::make_shared<TPageControlUIBookmarkValueAdapter>());
        Binder->SetAdapters(Adapters);
        Combo.GetItems().SetLines({u"mean", u"sum", u"MEAN"});
        for (TControl* control :
             {static_cast<TControl*>(&Check), static_cast<TControl*>(&One), static_cast<TControl*>(&Two),
              static_cast<TControl*>(&Edit), static_cast<TControl*>(&Combo), static_cast<TControl*>(&Pages)})
            Binder->Add(control);
        const auto note = [this](const char* name) {
            return [this, name](TObject* sender) {
                Calls += name + std::string(sender == nullptr ? "0" : "") + " ";
            };
        };
        Check.SetOnClick(note("check"));
        Edit.SetOnChange(note("change"));
        Edit.SetOnExit(note("exit"));
        Combo.SetOnChange(note("combo"));
        Pages.SetOnChange(note("page"));
    }
    /// Restores from a bookmark and returns the calls of handlers.
    std::string Restore(const TUIBookmarkValues& values) {
        const auto bookmark = TUIBookmarkFactory::GetObject();
        bookmark->GetValues() = values;
        Calls.clear();
        Binder->UpdateControls(*bookmark);
        return Calls;
    }
    TUIBookmarkValues Taken() {
        const auto bookmark = TUIBookmarkFactory::GetObject();
        bookmark->SetValue(u"former", u"1");
        Binder->UpdateBookmark(*bookmark);
        return bookmark->GetValues();
    }

    TCheckBox& Check = Add<TCheckBox>(u"Check");
    TRadioButton& One = Add<TRadioButton>(u"One");
    TRadioButton& Two = Add<TRadioButton>(u"Two");
    TEdit& Edit = Add<TEdit>(u"Edit");
    TComboBox& Combo = Add<TComboBox>(u"Combo");
    TPageControl& Pages = Add<TPageControl>(u"Pages");
    TTabSheet& First = Pages.Add<TTabSheet>(u"first");
    TTabSheet& Second = Pages.Add<TTabSheet>(u"second");
    std::shared_ptr<TUIBookmarkValueAdapters> Adapters = std::make_shared<TUIBookmarkValueAdapters>();
    std::shared_ptr<IUIBookmarkBinder> Binder = TUIBookmarkBinderFactory::GetObject();
    std::string Calls;
};

TEST(UIBookmarkBinder, RefusesWhatItCannotBind) {
    TForm form;
    TEdit& edit = form.Add<TEdit>(u"edit");
    TComboBox& combo = form.Add<TComboBox>(u"combo");
    TOwnEdit& own = form.Add<TOwnEdit>(u"own");
    TEdit& other = form.Add<TEdit>(u"edit");
    const auto binder = TUIBookmarkBinderFactory::GetObject();
    EXPECT_EQ(Raised<EInvalidOperation>([&] { binder->Add(&edit); }), u"Adapters object not specified");
    binder->SetAdapters(std::make_shared<TUIBookmarkValueAdapters>());
    binder->Add(&edit);
    ExpectRaised<EInvalidOperation>(
        {{[&] { binder->Add(nullptr); }, u"Control cannot be null"},
         {[&] { binder->Add(&combo); }, u"A value adapter for control type \"TComboBox\" not found"},
         {[&] { binder->Add(&own); }, u"A value adapter for control type \"TOwnEdit\" not found"}});
    ExpectRaised<EListError>(
        {{[&] { binder->Add(&edit, u"again"); }, u"Control \"edit\" is bound already"},
         {[&] { binder->Add(&other); }, u"Key \"edit\" is bound already"},
         {[&] { static_cast<void>(binder->GetBinding(&combo)); }, u"The control is not bound"},
         {[&] { static_cast<void>(binder->GetBinding(u"again")); }, u"Key \"again\" is not bound"}});
    edit.SetText(u"1");
    other.SetText(u"2");
    const auto bookmark = TUIBookmarkFactory::GetObject();
    binder->UpdateBookmark(*bookmark);  // the refused bindings take part
    EXPECT_EQ(bookmark->GetValues(), (TUIBookmarkValues{{u"again", u"1"}, {u"edit", u"2"}}));
    EXPECT_EQ(binder->GetBinding(&other)->GetValueKey(), u"edit");
    binder->GetBinding(&edit)->SetValueKey(u"new");
    EXPECT_EQ(binder->GetBinding(u"edit")->GetValueKey(), u"new");
    static_cast<void>(form.Remove(edit));  // destroys it
    EXPECT_EQ(binder->GetBinding(u"edit")->GetControl(), nullptr);
    binder->UpdateBookmark(*bookmark);
    EXPECT_EQ(bookmark->GetValues(), (TUIBookmarkValues{{u"edit", u"2"}}));
    binder->GetAdapters()->Add(std::make_shared<TOwnEditAdapter>());
    binder->Add(&own, u"edit");  // the key of a control that is gone is free
    EXPECT_EQ(binder->GetBinding(u"edit")->GetControl(), &own);
}

TEST(UIBookmarkBinder, EachControlHasItsText) {
    TDialog dialog;
    dialog.Check.SetChecked(true);
    dialog.Edit.SetText(u"\u00E9 ");
    EXPECT_EQ(dialog.Taken(), (TUIBookmarkValues{{u"Check", u"-1"},
                                                 {u"One", u"0"},
                                                 {u"Two", u"0"},
                                                 {u"Edit", u"\u00E9 "},
                                                 {u"Combo", u"##_INVALID_INDEX_##"},
                                                 {u"Pages", u"page:first"}}));
    EXPECT_EQ(dialog.Restore({}), "");
    // A changed property raises its event by itself, and the restoring raises it once more.
    EXPECT_EQ(dialog.Restore(
                  {{u"Check", u"False"}, {u"Edit", u"x"}, {u"Combo", u"MEAN"}, {u"Pages", u"page:second"}}),
              "check check0 change change0 exit0 combo0 page ");
    EXPECT_TRUE(!dialog.Check.GetChecked() && dialog.Combo.GetItemIndex() == 2 && dialog.Second.GetVisible());
    EXPECT_EQ(dialog.Restore({{u"Check", u"maybe"}, {u"One", u"7"}, {u"Edit", u"x"}, {u"Unbound", u"1"}}),
              "change0 exit0 ");
    EXPECT_TRUE(dialog.One.GetChecked() && dialog.Edit.GetText() == u"x");
    for (const StringView gone : {u"##_INVALID_INDEX_##", u"median", u"Mean"}) {
        dialog.Combo.SetItemIndex(1);
        EXPECT_EQ(dialog.Restore({{u"Combo", String(gone)}}), "combo0 ");
        EXPECT_EQ(dialog.Combo.GetItemIndex(), -1);
    }
    for (const StringView ignored :
         {u"page:nil", u"page:third", u"Page:first", u"page:first:", u"first", u""})
        EXPECT_EQ(dialog.Restore({{u"Pages", String(ignored)}}), "") << ToUtf8(ignored);
    EXPECT_EQ(dialog.Pages.GetActivePage(), &dialog.Second);
    dialog.Pages.SetActivePage(nullptr);
    EXPECT_EQ(dialog.Taken().at(u"Pages"), u"page:nil");
    dialog.Check.SetOnClick([](TObject*) { throw std::runtime_error("costs its control alone"); });
    dialog.Restore({{u"Check", u"-1"}, {u"Edit", u"next"}});
    EXPECT_EQ(dialog.Edit.GetText(), u"next");
    TOwnEdit own;
    EXPECT_EQ(Raised<EInvalidOperation>([&] { return TCheckBoxUIBookmarkValueAdapter().GetData(own); }),
              u"Control \"\" is not a TCheckBox");
}

TEST(UIBookmarkBinder, AnyDialogComesBackFromItsFile) {
    const TTemporaryFolder folder;
    const String path = folder.GetPath(u"a.xml");
    TDialog dialog;
    dialog.Show();
    TUIBookmarkValues model = dialog.Taken();
    std::mt19937 random(7);
    const auto db = TUIBookmarkXMLDbFactory::GetObject();
    db->Load(path);
    std::vector<TUIBookmarkValues> kept;
    for (int round = 0; round < 300; ++round) {
        const auto number = static_cast<std::int32_t>(random() % 3);
        switch (random() % 6) {
            case 0:
                dialog.Check.ClickByUser();
                model[u"Check"] = model[u"Check"] == u"0" ? u"-1" : u"0";
                break;
            case 1:
                (number == 0 ? dialog.One : dialog.Two).ClickByUser();
                model[u"One"] = number == 0 ? u"-1" : u"0";
                model[u"Two"] = number == 0 ? u"0" : u"-1";
                break;
            case 2:
                dialog.Edit.SelectAll();
                dialog.Edit.TypeByUser(String(static_cast<std::size_t>(number), u'<') + u"\t&");
                model[u"Edit"] = String(static_cast<std::size_t>(number), u'<') + u"\t&";
                break;
            case 3:
                dialog.Combo.SelectByUser(number);
                model[u"Combo"] = dialog.Combo.GetItems()[number];
                break;
            case 4:
                dialog.Pages.SelectPageByUser(number / 2);
                model[u"Pages"] = number < 2 ? u"page:first" : u"page:second";
                break;
            default:
                const auto bookmark = TUIBookmarkFactory::GetObject();
                dialog.Binder->UpdateBookmark(*bookmark);
                db->GetCollection(u"Main")->Add(bookmark);
                kept.push_back(model);
        }
        ASSERT_EQ(dialog.Taken(), model) << round;
    }
    db->Save();
    const auto loaded = TUIBookmarkXMLDbFactory::GetObject();
    loaded->Load(path);
    ASSERT_EQ(loaded->GetCollection(u"Main")->Count(), std::ssize(kept));
    for (std::size_t i = 0; i < kept.size(); ++i) {
        dialog.Binder->UpdateControls(*loaded->GetCollection(u"Main")->GetItem(static_cast<std::int32_t>(i)));
        EXPECT_EQ(dialog.Taken(), kept[i]) << i;
    }
}

}  // namespace
}  // namespace Varnholt::Test
