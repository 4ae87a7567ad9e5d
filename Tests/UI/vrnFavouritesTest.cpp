#include "VarnholtLib/UI/vrnFavourites.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>

#include "Platform/Controls/Application.h"
#include "Platform/Runtime/Files.h"
#include "Platform/System/Platform.h"
#include "Tests/Support/MessageBoxes.h"
#include "Tests/Support/Raised.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/UI/vrnFavAdd.h"
#include "VarnholtLib/UI/vrnFavOrg.h"

namespace Varnholt::Test {
namespace {

/// A favourite with a height, which must be a number.
class TPeak : public TBaseFavourite {
public:
    using TBaseFavourite::TBaseFavourite;
    static String GetFilename() { return u"Peaks"; }
    static String GetNodeName() { return u"peak"; }
    void SaveToNode(const std::shared_ptr<IXMLNode>& node) override {
        TBaseFavourite::SaveToNode(node);
        node->SetAttribute(u"height", Height);
    }
    void LoadFromNode(const std::shared_ptr<IXMLNode>& node) override {
        TBaseFavourite::LoadFromNode(node);
        Height = node->GetAttribute(u"height").ToInt32();
    }

    std::int32_t Height = 0;
};

class vrnFavourites : public ::testing::Test, public IKnownFolders {
protected:
    vrnFavourites() { Platform().KnownFolders = {std::shared_ptr<void>(), this}; }
    String Find(TKnownFolder folder) override { return folder == kfAppData ? AppData : String(); }

    /// The names of the favourites in a file of that content.
    String Loaded(std::string_view bytes) {
        WriteFileInOneGo(kPath, bytes);
        const TFavouriteData data(kPeaks);
        String names;
        for (std::int32_t i = 0; i < data.GetCount(); ++i) names += data[i].GetName() + u",";
        return names;
    }
    static void Add(TFavouriteData& data, StringView name) {
        auto favourite = data.CreateNewFavourite();
        favourite->SetName(name);
        data.Add(std::move(favourite));
    }

    const StringView kFolder = u"D:\\Varnholt\\Ombrix\\Favourites\\";
    const String kPath = String(kFolder) + u"Peaks.xml";
    const TFavouriteClass kPeaks = TFavouriteClass::Of<TPeak>();
    const TTemporaryDrive Drive{u'D'};
    String AppData = u"D:\\";

private:
    const TPlatformScope FScope;
};

TEST_F(vrnFavourites, KeepsFavouritesInTheFileOfTheirKind) {
    TFavouriteData data(kPeaks);
    EXPECT_TRUE(DirectoryExists(kFolder));
    for (const StringView name : {u"Ortler", u"\u00D6tscher", u"ORTLER"}) Add(data, name);
    EXPECT_FALSE(FileExists(kPath));
    dynamic_cast<TPeak&>(data[1]).Height = 1893;
    EXPECT_EQ(data.FindItems(u"ortler"), (std::vector<TBaseFavourite*>{&data[0], &data[2]}));
    EXPECT_TRUE(data.FindItems(u"\u00F6tscher").empty());
    data[0].Delete();
    data.CreateNewFavourite()->Delete();
    data.Save();
    EXPECT_EQ(ReadWholeFile(kPath),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<favourites>"
              "<peak name=\"\u00D6tscher\" height=\"1893\"/><peak name=\"ORTLER\" height=\"0\"/>"
              "</favourites>\n");
    TFavouriteData again(kPeaks);
    EXPECT_EQ(dynamic_cast<TPeak&>(again[0]).Height, 1893);
    again[1].Delete();
    again[0].Delete();
    again.Save();
    EXPECT_TRUE(ReadWholeFile(kPath).ends_with("<favourites/>\n"));

    ExpectRaised<EListError>({{[&] { static_cast<void>(data[2]); }, u"List index out of bounds (2)"}});
    ExpectRaised<EArgumentNilException>({{[&] { data.Add(nullptr); }, u"fav"},
                                         {[] {
                                              TFavouriteData kind(TFavouriteClass{u"F", u"n", nullptr});
                                          },
                                          u"favouriteClass"}});
    ExpectRaised<EArgumentException>(
        {{[&] { data.Add(again.CreateNewFavourite()); }, u"The favourite belongs to another list"}});
    TFavouriteData nothing({u"None", u"n", [](TFavouriteData&) { return nullptr; }});
    ExpectRaised<EInvalidOperation>({{[&] { static_cast<void>(nothing.CreateNewFavourite()); },
                                      u"The favourite class has made no favourite"}});
}

TEST_F(vrnFavourites, LoadsWhatIsWhole) {
    TFavouriteData create(kPeaks);
    EXPECT_EQ(
        Loaded("<peaks><peak name='a' height='1'/><Peak/><peak height='2'/><x><peak name='c'/></x></peaks>"),
        u"a,,");
    EXPECT_EQ(
        Loaded("<f><peak name='a' height='1'/><peak name='b' height='high'/><peak name='c' height='3'/></f>"),
        u"a,c,");
    EXPECT_EQ(Loaded("<f><peak name='a' height='1'/>"), u"");
    EXPECT_EQ(Loaded(""), u"");
    TFavouriteClass failing = kPeaks;
    int made = 0;
    failing.Create = [&](TFavouriteData& data) {
        if (++made == 2) throw EConvertError(u"cannot be made");
        return std::make_unique<TPeak>(data);
    };
    WriteFileInOneGo(kPath, "<f><peak name='a' height='1'/><peak name='b' height='2'/></f>");
    const TFavouriteData none(failing);
    EXPECT_EQ(none.GetCount(), 0);
}

TEST_F(vrnFavourites, KeepsADamagedFileBesideTheNewOne) {
    const std::string bad[] = {"<f>", "<f><peak height='high'/></f>", "&"};
    for (const std::string& bytes : bad) {
        static_cast<void>(TFavouriteData(kPeaks));
        WriteFileInOneGo(kPath, bytes);
        TFavouriteData data(kPeaks);
        Add(data, u"x\u0001");
        ExpectRaised<EXMLDocError>({{[&] { data.Save(); }, u"XML cannot hold character U+0001"}});
        EXPECT_EQ(ReadWholeFile(kPath), bytes);
        data[0].SetName(u"x");
        for (int i = 0; i < 2; ++i) data.Save();
    }
    EXPECT_EQ(ReadWholeFile(kPath + u".damaged"), bad[0]);
    EXPECT_EQ(ReadWholeFile(kPath + u".damaged2"), bad[1]);
    EXPECT_EQ(ReadWholeFile(kPath + u".damaged3"), bad[2]);
    EXPECT_FALSE(FileExists(kPath + u".damaged4")) << "the second Save has nothing to keep";
    WriteFileInOneGo(kPath, bad[0]);
    TFavouriteData data(kPeaks);
    for (int i = 0; i < 80; ++i) Add(data, String(900'000, u'x'));
    ExpectRaised<EXMLDocError>({{[&] { data.Save(); }, u"The XML document has more than 67108864 bytes"}});
    EXPECT_EQ(ReadWholeFile(kPath), bad[0]) << "a Save that fails at the file takes back what it kept";
}

TEST_F(vrnFavourites, FailsToSaveWithoutAFolderAndTouchesNothing) {
    WriteFileInOneGo(u"D:\\Varnholt", "a file of the user");
    for (const StringView appData : {u"D:\\", u""}) {
        AppData = appData;
        TFavouriteData data(kPeaks);
        EXPECT_EQ(data.GetFileName(), AppData + String(kFolder.substr(3)));
        const String message = Raised<EFCreateError>([&] { data.Save(); });
        EXPECT_TRUE(message.starts_with(u"Cannot create file \"" + data.GetFileName())) << ToUtf8(message);
    }
    DeleteFile(u"D:\\Varnholt");
    ForceDirectories(u"D:\\Varnholt\\Ombrix");
    WriteFileInOneGo(u"D:\\Varnholt\\Ombrix\\Favourites", "a file of the user");
    AppData = u"D:\\";
    TFavouriteData data(kPeaks);
    EXPECT_NE(Raised<EFCreateError>([&] { data.Save(); }), u"(nothing raised)");
    EXPECT_EQ(ReadWholeFile(u"D:\\Varnholt\\Ombrix\\Favourites"), "a file of the user");
}

TEST_F(vrnFavourites, ReadsTextsWithoutRaising) {
    const struct {
        StringView Text;
        bool Bool;
        std::int32_t Int;
        float Float;
    } rows[] = {{u"-1", true, -1, -1},
                {u"false", false, 7, 7.5F},
                {u"TRUE", true, 7, 7.5F},
                {u"0", false, 0, 0},
                {u"0.25", true, 7, 0.25F},
                {u"", true, 7, 7.5F},
                {u"2147483648", true, 7, 2147483648.0F},
                {u"3.40282346638529E38", true, 7, std::numeric_limits<float>::max()},
                {u"3.4028236e38", true, 7, 7.5F},
                {u"1e39", true, 7, 7.5F},
                {u"-1e39", true, 7, 7.5F}};
    for (const auto& row : rows) {
        SCOPED_TRACE(ToUtf8(row.Text));
        EXPECT_EQ(TBaseFavourite::SafeStrToBool(row.Text, true), row.Bool);
        EXPECT_EQ(TBaseFavourite::SafeStrToInt(row.Text, 7), row.Int);
        EXPECT_EQ(TBaseFavourite::SafeStrToFloat(row.Text, 7.5F), row.Float);
    }
    EXPECT_FALSE(TBaseFavourite::SafeStrToBool(u"yes", false));
}

TEST_F(vrnFavourites, NamesAreAskedUntilTheyAreFree) {
    TFavouriteData data(kPeaks);
    for (const StringView name : {u"Ortler", u"Piz"}) Add(data, name);
    TRecordedBoxes boxes;
    const auto ask = [&](TAddMethod method, TBaseFavourite* item, std::vector<StringView> names) {
        TFavAddDlg dialog(data, method, item);
        EXPECT_EQ(FavAddDlg(), &dialog);
        boxes.Boxes.clear();
        Application().Post([&] {
            EXPECT_EQ(dialog.edName.GetText(), item == nullptr ? u"" : item->GetName());
            for (const StringView& name : names) {
                dialog.edName.SelectAll();
                dialog.edName.TypeByUser(name);
                dialog.Button2.SetFocus();
                dialog.Button1.ClickByUser();
                EXPECT_EQ(dialog.edName.Focused(), &name != &names.back()) << ToUtf8(name);
            }
        });
        EXPECT_EQ(dialog.ShowModal(), mrOk);
        String texts;
        for (const TMessageBox& box : boxes.Boxes) {
            EXPECT_EQ(box.Title, u"Name");
            EXPECT_EQ(box.Icon,
                      method == amRename && !box.Text.starts_with(u"Please") ? miStop : miInformation);
            texts += box.Text + u"|";
        }
        return texts;
    };
    EXPECT_EQ(ask(amAdd, nullptr, {u"", u"ORTLER", u"Ort"}),
              u"Please enter a name.|An item with this name already exists.|");
    EXPECT_EQ(ask(amRename, &data[0], {u"", u"piz", u"ORTLER"}),
              u"Please enter a name.|An item with this name already exists.|");
    EXPECT_EQ(ask(amRename, &data[0], {u"Ortler"}), u"");
    EXPECT_EQ(data[0].GetName(), u"Ortler");
    TFavAddDlg dialog(data, amAdd);
    Application().Post([&] { dialog.KeyByUser(kKeyEscape); });
    EXPECT_EQ(dialog.ShowModal(), mrCancel);
}

TEST_F(vrnFavourites, AreOrganizedInTheirDialog) {
    TFavouriteData data(kPeaks);
    for (const StringView name : {u"Ortler", u"Piz", u"Ankogel"}) Add(data, name);
    TRecordedBoxes boxes;
    boxes.Answers = {mrNo, mrYes};
    TFavOrg dialog(data);
    const auto rename = [&](StringView name, bool isAccepted) {
        Application().Post([name, isAccepted] {
            FavAddDlg()->edName.SelectAll();
            FavAddDlg()->edName.TypeByUser(name);
            FavAddDlg()->KeyByUser(isAccepted ? kKeyEnter : kKeyEscape);
        });
    };
    Application().Post([&] {
        dialog.Button1.ClickByUser();
        dialog.Button2.ClickByUser();
        EXPECT_TRUE(boxes.Boxes.empty() && dialog.lvFavs.GetItemCount() == 3);
        dialog.lvFavs.SelectByUser(1);
        dialog.Button1.ClickByUser();
        EXPECT_TRUE(data.GetCount() == 3 && !FileExists(kPath));
        dialog.Button1.ClickByUser();
        EXPECT_TRUE(boxes.Boxes[1].Text == u"Delete selected favourite?" &&
                    boxes.Boxes[1].Title == u"Delete?" && boxes.Boxes[1].Icon == miQuestion);
        EXPECT_EQ(boxes.Boxes[1].Buttons, (std::vector<TModalResult>{mrYes, mrNo}));
        EXPECT_EQ(Loaded(ReadWholeFile(kPath)), u"Ortler,Ankogel,");
        rename(u"Hafner", true);
        dialog.lvFavs.DoubleClickByUser(1);
        EXPECT_EQ(dialog.lvFavs.GetItem(1).GetCaption(), u"Hafner");
        rename(u"Piz", false);
        dialog.Button2.ClickByUser();
        EXPECT_EQ(Loaded(ReadWholeFile(kPath)), u"Ortler,Hafner,");
        EXPECT_TRUE(FavOrg() == &dialog && FavAddDlg() == nullptr);
        dialog.KeyByUser(kKeyEscape);
    });
    EXPECT_EQ(dialog.ShowModal(), mrOk);
}

}  // namespace
}  // namespace Varnholt::Test
