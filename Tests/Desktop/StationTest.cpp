#include "Desktop/Station/MainForm.h"

#include <gmock/gmock.h>
#include <QAbstractItemView>
#include <QApplication>
#include <QDir>
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
#include "Tests/Support/TemporaryFolder.h"

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
        FForm = std::make_unique<TMainForm>();
        FForm->Show();
        static_cast<void>(QTest::qWaitForWindowExposed(&WidgetOf(*FForm)));
    }

    [[nodiscard]] String Path(StringView name) { return FFolder.GetPath(name); }

    /// The screen as it is, for people; below the build.
    static void Shot(const char* name) {
        QTest::qWait(50);
        QDir().mkpath(VARNHOLT_SCREENSHOTS);
        QGuiApplication::primaryScreen()->grabWindow(0).save(QString(VARNHOLT_SCREENSHOTS "/") + name +
                                                             ".png");
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
        QTest::keyClick(WidgetOf(*FForm).windowHandle(), key, modifiers);
    }
    static void Type(TCustomEdit& edit, StringView text) {
        edit.SelectAll();
        WidgetOf(edit).setFocus(Qt::MouseFocusReason);
        QTest::keyClick(&WidgetOf(edit), Qt::Key_Delete);
        QTest::keyClicks(&WidgetOf(edit), QString::fromStdU16String(String(text)));
    }
    /// Does something in the dialog or box that the next action opens.
    static void InDialog(std::function<void()> act) {
        QTimer::singleShot(10, [act = std::move(act)] {
            if (QApplication::activeModalWidget() == nullptr ||
                !QApplication::activeModalWidget()->isVisible())
                return InDialog(act);
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

    TTemporaryFolder FFolder;
    TQtDriver FUser;
    std::unique_ptr<TMainForm> FForm;
};

TEST_F(StationWalk, OpensSortsFiltersAndCalculates) {
    Shot("1-start");
    InDialog([] {
        Shot("2-open");
        QTest::keyClicks(QApplication::focusWidget(), VARNHOLT_SAMPLE);
        Press(Qt::Key_Return);
    });
    PressInForm(Qt::Key_O, Qt::ControlModifier);
    ASSERT_EQ(FForm->Grid.GetRowCount(), 1462);
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

}  // namespace
}  // namespace Varnholt::Test
