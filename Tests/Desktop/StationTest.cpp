#include "Desktop/Station/MainForm.h"

#include <gmock/gmock.h>
#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include "Desktop/Station/ReportDialog.h"
#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Paths.h"
#include "Tests/Desktop/QtDriver.h"
#include "Tests/Support/HttpServers.h"
#include "Tests/Support/TemporaryFolder.h"
#include "VarnholtLib/Services/vrnProxy.h"
#include "VarnholtLib/UI/vrnFavOrg.h"

namespace Varnholt::Test {
namespace {

using namespace Station;

/// A person at the application's window, and pictures of what the person sees.
class StationWalk : public testing::Test {
protected:
    StationWalk() {
        for (const char* const variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            qputenv(variable, QByteArray::fromStdString(ToNativePath(FFolder.GetPath(u"home"))));
        ForceDirectories(FFolder.GetPath(u"home\\Varnholt\\Station"));
        Start();
    }
    ~StationWalk() override { EXPECT_EQ(pending, 0) << "a dialog has not opened"; }

    void Start() {
        FForm = std::make_unique<TMainForm>();
        FForm->Show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&WidgetOf(*FForm)));
    }

    [[nodiscard]] String Path(StringView name) { return FFolder.GetPath(name); }

    /// The windows as they are on the screen, for people; below the build.
    static void Shot(const char* name) {
        QTest::qWait(50);
        if (QGuiApplication::platformName() == "offscreen") return;
        QDir().mkpath(VARNHOLT_SCREENSHOTS);
        QRect area;
        for (const QWidget* const window : QApplication::topLevelWidgets())
            if (window->isVisible()) area |= window->geometry();
        QScreen& screen = *QGuiApplication::primaryScreen();
        const QPixmap shot = screen.grabWindow(0, area.x(), area.y(), area.width(), area.height());
        shot.save(QString(VARNHOLT_SCREENSHOTS "/") + name + ".png");
    }
    /// Presses keys in the window that is in front.
    static void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QWidget* const modal = QApplication::activeModalWidget();
        QWidget* const popup = QApplication::activePopupWidget();
        QWidget& window = popup != nullptr   ? *popup
                          : modal != nullptr ? *modal
                                             : *QApplication::topLevelAt(120, 120);
        QTest::keyClick(window.windowHandle(), key, modifiers);
    }
    void PressInForm(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        BringToFront(WidgetOf(*FForm));  // shortcuts are those of the active window
        QTest::keyClick(WidgetOf(*FForm).windowHandle(), key, modifiers);
    }
    /// Writes where the focus of the dialog is.
    static void Write(const QString& text) {
        QWidget& dialog = *QApplication::activeModalWidget();
        BringToFront(dialog);
        QTest::keyClicks(dialog.focusWidget(), text);
    }
    static void Type(TCustomEdit& edit, StringView text) {
        edit.SelectAll();
        WidgetOf(edit).setFocus(Qt::MouseFocusReason);
        QTest::keyClick(&WidgetOf(edit), Qt::Key_Delete);
        QTest::keyClicks(&WidgetOf(edit), QString::fromStdU16String(String(text)));
    }
    /// Does something in the dialog or box that the next action opens.
    static void InDialog(std::function<void()> act) {
        ++pending;
        WaitFor(QApplication::activeModalWidget(), std::move(act));
    }
    static void WaitFor(QWidget* former, std::function<void()> act) {
        QTimer::singleShot(10, [former, act = std::move(act)] {
            QWidget* const modal = QApplication::activeModalWidget();
            if (modal == nullptr || modal == former || !modal->isVisible()) return WaitFor(former, act);
            const QWidget* const focus = QApplication::focusWidget();
            if (focus == nullptr || focus->window() != modal) {
                modal->activateWindow();
                return WaitFor(former, act);
            }
            --pending;
            act();
        });
    }
    template <typename T>
    static T& Dialog() {
        return dynamic_cast<T&>(*Screen().GetActiveForm());
    }
    void ClickHeading(int column, Qt::KeyboardModifiers modifiers = {}) {
        QHeaderView& heading = *dynamic_cast<QTableView&>(WidgetOf(FForm->Grid)).horizontalHeader();
        ClickAt(*heading.viewport(), QPoint(heading.sectionViewportPosition(column) + 20, 10), modifiers);
    }
    [[nodiscard]] String Cell(std::int32_t column, std::int32_t row) {
        return String(FForm->Grid.GetCell(column + 1, row + 1));
    }

    static inline int pending = 0;  // dialogs that are expected

    TTemporaryFolder FFolder;
    TQtDriver FUser;
    std::unique_ptr<TMainForm> FForm;
};

TEST_F(StationWalk, OpensSortsFiltersAndCalculates) {
    Shot("1-start");
    InDialog([] {
        Shot("2-open");
        Write(VARNHOLT_SAMPLE);
        Press(Qt::Key_Return);
    });
    PressInForm(Qt::Key_O, Qt::ControlModifier);
    ASSERT_EQ(FForm->Grid.GetRowCount(), 1462);
    InDialog([] {  // where the file is
        EXPECT_EQ(dynamic_cast<QFileDialog&>(*QApplication::activeModalWidget()).directory(),
                  QFileInfo(VARNHOLT_SAMPLE).dir());
        Press(Qt::Key_Escape);
    });
    PressInForm(Qt::Key_O, Qt::ControlModifier);
    ClickHeading(1);
    PressInForm(Qt::Key_F, Qt::AltModifier);  // the recent file
    Press(Qt::Key_R);
    Press(Qt::Key_Return);
    EXPECT_EQ(FForm->Status.GetCaption(), u"1461 rows");
    ClickHeading(2);                     // temp_max
    ClickHeading(1, Qt::ShiftModifier);  // precipitation
    ClickHeading(2, Qt::ShiftModifier);  // downwards
    EXPECT_EQ(Cell(2, 0), u"35.6");
    EXPECT_EQ(FForm->Status.GetCaption(), u"1461 rows, sorted by temp_max from the largest, precipitation");
    Shot("3-sorted");
    PressInForm(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(Cell(0, 0), u"2012-01-01");

    Type(FForm->Filter.Edit, u"@gt($temp_max,");
    EXPECT_NE(FForm->Filter.Error.GetCaption(), u"");
    EXPECT_EQ(FForm->Grid.GetRowCount(), 1462);
    Shot("4-wrong-filter");
    Type(FForm->Filter.Edit, u"@and(@gt($temp_max,25) @eq($precipitation,0))");
    EXPECT_EQ(FForm->Filter.Error.GetCaption(), u"");
    EXPECT_EQ(FForm->Grid.GetRowCount(), 201);
    Type(FForm->Filter.Edit, u"");

    InDialog([] {
        auto& dialog = Dialog<TColumnDialog>();
        Type(dialog.edName, u"range");
        Type(dialog.Expression.Edit, u"$temp_max - $temp_min");
        Shot("5-computed-column");
        Press(Qt::Key_Return);
    });
    PressInForm(Qt::Key_F7);
    ASSERT_EQ(FForm->Grid.GetColCount(), 8);
    EXPECT_EQ(Cell(6, 0), u"7.8");
    EXPECT_EQ(FForm->Statistics.GetItem(0).GetCaption(), u"range");
    Shot("6-chart");

    InDialog([] {
        Shot("7-unsaved");
        Press(Qt::Key_Escape);
    });
    WidgetOf(*FForm).close();
    EXPECT_TRUE(FForm->GetVisible());
}

TEST_F(StationWalk, ReportsWithSettingsThatAreKept) {
    FForm->OpenFile(FromNativePath(VARNHOLT_SAMPLE));
    const auto fill = [](TReportDialog& dialog) {
        Type(dialog.edTitle, u"Seattle");
        Type(dialog.edLatitude, u"47.6N");
        Type(dialog.edSunshine, u"69.8,108.8,178.4,207.3,253.7,268.4,312.0,281.4,221.7,142.6,72.7,52.9");
    };
    InDialog([&] {
        auto& dialog = Dialog<TReportDialog>();
        fill(dialog);
        Type(dialog.edSunshine, u"1,2,3");
        InDialog([] {
            Shot("8-wrong-field");
            Press(Qt::Key_Return);
        });
        Press(Qt::Key_Return);
        EXPECT_TRUE(dialog.edSunshine.Focused());
        fill(dialog);
        WidgetOf(dialog.cbKept).setFocus(Qt::MouseFocusReason);
        Write("Seattle");
        FUser.Click(dialog.btKeep);
        Shot("9-report-dialog");
        FUser.Click(dialog.Ok);
    });
    PressInForm(Qt::Key_F8);
    ASSERT_EQ(FForm->ReportList.GetItemCount(), 13);
    EXPECT_THAT(FForm->ReportList.GetItem(12).GetSubItems(),
                testing::ElementsAre(u"12.3", u"1106.5", u"", u"1145.6"));
    Shot("10-report");

    FForm.reset();  // the application ends, and begins anew
    Start();
    FForm->OpenFile(FromNativePath(VARNHOLT_SAMPLE));
    InDialog([&] {
        auto& dialog = Dialog<TReportDialog>();
        EXPECT_EQ(dialog.edLatitude.GetText(), u"");
        EXPECT_TRUE(FUser.Choose(dialog.cbKept, 0));
        EXPECT_EQ(dialog.edLatitude.GetText(), u"47.6N");
        EXPECT_EQ(dialog.cbMaximum.GetText(), u"temp_max");
        Press(Qt::Key_Escape);
    });
    PressInForm(Qt::Key_F8);
}

TEST_F(StationWalk, KeepsFavouritesProxyAndSessions) {
    FForm->OpenFile(FromNativePath(VARNHOLT_SAMPLE));
    Type(FForm->Filter.Edit, u"@gt($precipitation,20)");
    InDialog([] {
        Write("heavy");
        Shot("11-favourite");
        Press(Qt::Key_Return);
    });
    PressInForm(Qt::Key_D, Qt::ControlModifier);
    const auto organize = [&](const std::function<void(TFavOrg&)>& act) {
        InDialog([&] {
            act(Dialog<TFavOrg>());
            Press(Qt::Key_Escape);
        });
        PressInForm(Qt::Key_A, Qt::AltModifier);
        Press(Qt::Key_O);
    };
    organize([&](TFavOrg& dialog) {
        InDialog([] {
            Press(Qt::Key_A, Qt::ControlModifier);
            Write("wet");
            Press(Qt::Key_Return);
        });
        FUser.DoubleClick(dialog.lvFavs, 0);
        EXPECT_EQ(dialog.lvFavs.GetItem(0).GetCaption(), u"wet");
        Shot("12-organize");
    });
    Type(FForm->Filter.Edit, u"");
    PressInForm(Qt::Key_A, Qt::AltModifier);
    Shot("13-menu");
    Press(Qt::Key_Up);
    Press(Qt::Key_Return);
    EXPECT_EQ(FForm->Filter.Edit.GetText(), u"@gt($precipitation,20)");
    organize([&](TFavOrg& dialog) {
        FUser.Choose(dialog.lvFavs, 0, false);
        InDialog([] { Press(Qt::Key_Y, Qt::AltModifier); });
        FUser.Click(dialog.Button1);
        EXPECT_EQ(dialog.lvFavs.GetItemCount(), 0);
    });

    InDialog([&] {
        auto& dialog = Dialog<TProxyDialog>();
        FUser.Click(dialog.cbEnabled);
        InDialog([] { Press(Qt::Key_Return); });
        Press(Qt::Key_Return);  // a proxy without a server
        EXPECT_TRUE(dialog.edServer.Focused());
        Type(dialog.edServer, u"proxy.example.org");
        Type(dialog.edPassword, u"secret");
        Shot("14-proxy");
        Press(Qt::Key_Return);
    });
    PressInForm(Qt::Key_O, Qt::AltModifier);
    Press(Qt::Key_P);
    EXPECT_EQ(TProxySettings().GetServer(), u"proxy.example.org");

    const String session = Path(u"wet.vrnstation");
    InDialog([&] {
        Write(QString::fromStdString(ToNativePath(session)));
        Press(Qt::Key_Return);
    });
    PressInForm(Qt::Key_F, Qt::AltModifier);
    Press(Qt::Key_P);
    Type(FForm->Filter.Edit, u"");
    FForm->OpenFile(session);
    EXPECT_EQ(FForm->Filter.Edit.GetText(), u"@gt($precipitation,20)");
    EXPECT_EQ(FForm->Grid.GetRowCount(), 52);
}

TEST_F(StationWalk, OpensFromAnAddressAndCancels) {
    const THttpServers& servers = THttpServers::Instance();
    const auto open = [&](const String& address, std::function<void(TAddressDialog&)> act) {
        InDialog([&, address] {
            auto& dialog = Dialog<TAddressDialog>();
            Type(dialog.edAddress, address);
            FUser.Click(dialog.Ok);
            act(dialog);
        });
        PressInForm(Qt::Key_F, Qt::AltModifier);
        Press(Qt::Key_A);
    };
    open(servers.Own(u"/never"), [](TAddressDialog& dialog) {
        EXPECT_FALSE(dialog.Ok.GetEnabled());
        Press(Qt::Key_Escape);
    });
    open(servers.Http(u"/missing"), [](TAddressDialog& dialog) {
        EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.Ok.GetEnabled(); }));
        EXPECT_EQ(dialog.Status.GetCaption(), u"HTTP/1.1 404 Not Found");
        Shot("17-address");
        Press(Qt::Key_Escape);
    });
    EXPECT_EQ(FForm->Grid.GetColCount(), 1);
    open(servers.Http(u"/hello"), [](TAddressDialog&) {});
    EXPECT_EQ(FForm->Grid.GetCell(1, 0), u"Gru\u00DF");
}

TEST_F(StationWalk, TakesRowsAndRefusesOtherFiles) {
    InDialog([] {
        Shot("15-unreadable");
        Press(Qt::Key_Return);
    });
    FForm->OpenFile(Path(u"missing.csv"));
    EXPECT_EQ(FForm->Grid.GetRowCount(), 1);
    FForm->OpenFile(FromNativePath(VARNHOLT_SAMPLE));
    FForm->Grid.SetSelection({1, 1, 3, 5});
    FForm->Grid.SetFocus();
    PressInForm(Qt::Key_C, Qt::ControlModifier);
    TMainForm other;
    other.Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&WidgetOf(other)));
    other.Grid.SetFocus();
    QTest::keyClick(WidgetOf(other).windowHandle(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(other.Grid.GetRowCount(), 6);
    EXPECT_EQ(other.Grid.GetColCount(), 4);
    EXPECT_EQ(other.Grid.GetCell(3, 5), u"8.9");

    // A file of 100,000 rows opens fast, and only what is seen is drawn.
    std::string rows = "day,value\n";
    for (int i = 0; i < 100'000; ++i) rows += std::to_string(i) + "," + std::to_string(i % 97) + "\n";
    WriteFileInOneGo(Path(u"long.csv"), rows);
    other.OpenFile(Path(u"long.csv"));
    EXPECT_EQ(other.Grid.GetRowCount(), 100'001);
    ClickAt(WidgetOf(other.Grid), QPoint(150, 200));
    QTest::keyClick(WidgetOf(other).windowHandle(), Qt::Key_End, Qt::ControlModifier);
    Shot("16-long");
}

}  // namespace
}  // namespace Varnholt::Test
