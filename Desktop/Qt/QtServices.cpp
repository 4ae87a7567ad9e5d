#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QKeyEvent>
#include <QMessageBox>
#include <QMimeData>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <set>

#include "Desktop/Qt/QtServicesPrivate.h"
#include "Desktop/Qt/QtTextPrivate.h"
#include "Platform/Controls/Application.h"

namespace Varnholt {
namespace {

/// The window of a handle; null if there is none.
QWidget* WindowOf(std::uintptr_t handle) {
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (reinterpret_cast<std::uintptr_t>(window) == handle) return window;
    return nullptr;
}

/// Shows a dialog and handles the application's messages until it is closed. Not every window manager makes the
/// former window the active one again.
void Await(QDialog& dialog) {
    const QPointer<QWidget> former = QApplication::activeWindow();
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.show();
    while (dialog.isVisible()) Application().HandleMessage(true);
    if (former) former->activateWindow();
}

// --- Message boxes ---

class TQtMessageBoxes final : public IMessageBoxes {
public:
    TModalResult Show(const TMessageBox& box) override {
        static constexpr QMessageBox::Icon kIcons[] = {QMessageBox::NoIcon, QMessageBox::Critical,
                                                       QMessageBox::Question, QMessageBox::Warning,
                                                       QMessageBox::Information};
        QMessageBox shown(kIcons[box.Icon], ToQt(box.Title), ToQt(box.Text), QMessageBox::NoButton,
                          WindowOf(box.Owner));
        shown.setTextFormat(Qt::PlainText);
        std::vector<QPushButton*> buttons;
        for (const TModalResult answer : box.Buttons) {
            buttons.push_back(shown.addButton(StandardButton(answer)));
            if (answer == mrCancel || box.Buttons.size() == 1) shown.setEscapeButton(buttons.back());
        }
        shown.setDefaultButton(buttons[box.DefaultButton]);
        Await(shown);
        const auto answer = std::ranges::find(buttons, shown.clickedButton());
        return answer == buttons.end() ? box.Buttons[box.DefaultButton]
                                       : box.Buttons[static_cast<std::size_t>(answer - buttons.begin())];
    }

private:
    static QMessageBox::StandardButton StandardButton(TModalResult answer) {
        switch (answer) {
            case mrCancel:
                return QMessageBox::Cancel;
            case mrAbort:
                return QMessageBox::Abort;
            case mrRetry:
                return QMessageBox::Retry;
            case mrIgnore:
                return QMessageBox::Ignore;
            case mrYes:
                return QMessageBox::Yes;
            case mrNo:
                return QMessageBox::No;
            default:
                return QMessageBox::Ok;
        }
    }
};

// --- File dialogs ---

/// `name|pattern;pattern|...` in the form `name (pattern pattern)` of the toolkit.
QStringList NameFilters(StringView filter) {
    const QStringList parts = ToQt(filter).split(u'|');
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QString name = parts[i];
        if (const qsizetype patterns = name.lastIndexOf(u" ("); patterns > 0 && name.endsWith(u')'))
            name.truncate(patterns);
        QString patterns = parts[i + 1];
        patterns.replace(u';', u' ').replace(QStringLiteral("*.*"), QStringLiteral("*"));
        filters << name + QStringLiteral(" (") + patterns + u')';
    }
    return filters;
}

class TQtFileDialogs final : public IFileDialogs {
public:
    bool ChooseFile(TFileDialogRequest& request) override {
        QFileDialog dialog(WindowOf(request.Owner), ToQt(request.Title));
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.OverwritePrompt);
        dialog.setAcceptMode(request.IsSave ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
        dialog.setFileMode(request.IsSave ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
        dialog.setDefaultSuffix(ToQt(request.DefaultExt));
        if (!request.InitialDir.empty()) dialog.setDirectory(PathToQt(request.InitialDir));
        const QStringList filters = NameFilters(request.Filter);
        if (!filters.empty()) {
            dialog.setNameFilters(filters);
            dialog.selectNameFilter(filters.value(request.FilterIndex - 1, filters[0]));
        }
        if (!request.FileName.empty()) dialog.selectFile(PathToQt(request.FileName));
        Await(dialog);
        if (dialog.result() != QDialog::Accepted || dialog.selectedFiles().empty()) return false;
        request.FileName = PathFromQt(dialog.selectedFiles().constFirst());
        request.FilterIndex = static_cast<std::int32_t>(filters.indexOf(dialog.selectedNameFilter())) + 1;
        return true;
    }

    bool ChooseFolder(TFolderDialogRequest& request) override {
        QFileDialog dialog(WindowOf(request.Owner), ToQt(request.Title));
        dialog.setOption(QFileDialog::DontUseNativeDialog);
        dialog.setOption(QFileDialog::ShowDirsOnly);
        dialog.setOption(QFileDialog::ReadOnly, !request.MayCreate);
        dialog.setFileMode(QFileDialog::Directory);
        if (!request.Path.empty()) dialog.setDirectory(PathToQt(request.Path));
        Await(dialog);
        if (dialog.result() != QDialog::Accepted || dialog.selectedFiles().empty()) return false;
        request.Path = PathFromQt(dialog.selectedFiles().constFirst());
        return true;
    }
};

// --- Clipboard, keyboard, screen ---

class TQtClipboard final : public IClipboard {
public:
    [[nodiscard]] bool HasText() override {
        const QMimeData* const data = QGuiApplication::clipboard()->mimeData();
        return data != nullptr && data->hasText();
    }
    [[nodiscard]] String GetText() override { return FromQt(QGuiApplication::clipboard()->text()); }
    void SetText(StringView text) override { QGuiApplication::clipboard()->setText(ToQt(text)); }
};

/// Knows the keys that were pressed in the application's windows; the modifiers also elsewhere.
class TQtKeyboard final : public QObject, public IKeyboard {
public:
    TQtKeyboard() { qApp->installEventFilter(this); }

    [[nodiscard]] std::int16_t GetKeyState(std::int32_t virtualKey) override {
        constexpr std::int16_t kIsDown = 0x80;
        const Qt::KeyboardModifiers modifiers = QGuiApplication::queryKeyboardModifiers();
        bool isDown = FDown.contains(virtualKey);
        if (virtualKey == 16) isDown = (modifiers & Qt::ShiftModifier) != 0;
        if (virtualKey == 17) isDown = (modifiers & Qt::ControlModifier) != 0;
        if (virtualKey == 18) isDown = (modifiers & Qt::AltModifier) != 0;
        return isDown ? kIsDown : std::int16_t{0};
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::ApplicationDeactivate) FDown.clear();
        const bool isPress = event->type() == QEvent::KeyPress;
        if (!isPress && event->type() != QEvent::KeyRelease) return false;
        const std::int32_t key = VirtualKey(static_cast<const QKeyEvent&>(*event).key());
        if (isPress && key != 0)
            FDown.insert(key);
        else
            FDown.erase(key);
        return false;
    }

private:
    static std::int32_t VirtualKey(int key) {
        switch (key) {
            case Qt::Key_Backspace:
                return 8;
            case Qt::Key_Tab:
                return 9;
            case Qt::Key_Return:
            case Qt::Key_Enter:
                return 13;
            case Qt::Key_Escape:
                return 27;
            case Qt::Key_Left:
                return 37;
            case Qt::Key_Up:
                return 38;
            case Qt::Key_Right:
                return 39;
            case Qt::Key_Down:
                return 40;
            case Qt::Key_Delete:
                return 46;
            default:
                break;
        }
        const bool isSame = key == Qt::Key_Space || (key >= Qt::Key_0 && key <= Qt::Key_9) ||
                            (key >= Qt::Key_A && key <= Qt::Key_Z);
        return isSame ? key : 0;
    }

    std::set<std::int32_t> FDown;
};

class TQtScreen final : public IScreen {
public:
    ~TQtScreen() override { SetCursor(0); }
    [[nodiscard]] std::uintptr_t GetActiveFormHandle() override { return FActive; }
    void SetActiveFormHandle(std::uintptr_t handle) override { FActive = handle; }
    bool BringWindowToTop(std::uintptr_t handle) override {
        QWidget* const window = WindowOf(handle);
        if (window == nullptr) return false;
        window->raise();
        window->activateWindow();
        return true;
    }
    [[nodiscard]] std::int32_t GetPixelsPerInch() override {
        return static_cast<std::int32_t>(std::lround(QGuiApplication::primaryScreen()->logicalDotsPerInch()));
    }
    [[nodiscard]] std::int32_t GetWidth() override {
        return QGuiApplication::primaryScreen()->size().width();
    }
    [[nodiscard]] std::int32_t GetHeight() override {
        return QGuiApplication::primaryScreen()->size().height();
    }
    [[nodiscard]] std::int16_t GetCursor() override { return FCursor; }
    void SetCursor(std::int16_t cursor) override {
        if (FCursor != 0) QGuiApplication::restoreOverrideCursor();
        FCursor = cursor;
        if (cursor != 0) QGuiApplication::setOverrideCursor(QCursor(Shape(cursor)));
    }

private:
    static Qt::CursorShape Shape(std::int16_t cursor) {
        switch (cursor) {
            case -3:
                return Qt::CrossCursor;
            case -4:
                return Qt::IBeamCursor;
            case -11:
                return Qt::WaitCursor;
            case -19:
                return Qt::BusyCursor;
            case -21:
                return Qt::PointingHandCursor;
            default:
                return Qt::ArrowCursor;
        }
    }

    std::uintptr_t FActive = 0;
    std::int16_t FCursor = 0;
};

}  // namespace

void UseQtServices(TPlatform& platform) {
    platform.MessageBoxes = std::make_shared<TQtMessageBoxes>();
    platform.FileDialogs = std::make_shared<TQtFileDialogs>();
    platform.Clipboard = std::make_shared<TQtClipboard>();
    platform.Keyboard = std::make_shared<TQtKeyboard>();
    platform.Screen = std::make_shared<TQtScreen>();
}

}  // namespace Varnholt
