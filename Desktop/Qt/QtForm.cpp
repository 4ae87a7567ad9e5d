#include <QApplication>
#include <QCloseEvent>
#include <QDeadlineTimer>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QMimeData>
#include <QScreen>
#include <QUrl>
#include <QWindow>

#include "Desktop/Qt/QtMenusPrivate.h"
#include "Desktop/Qt/QtPeersPrivate.h"
#include "Desktop/Qt/QtTextPrivate.h"

namespace Varnholt {
namespace {

/// The full paths of dragged files.
std::vector<String> FilesOf(const QMimeData& data) {
    std::vector<String> files;
    for (const QUrl& url : data.urls())
        if (url.isLocalFile()) files.push_back(PathFromQt(url.toLocalFile()));
    return files;
}

/// The window that was asked last to become the active one, until the window system answers. It may refuse without a
/// word, so the request is forgotten after a while.
QPointer<QWidget> requestedWindow;
QDeadlineTimer requestEnd;
constexpr int kRequestMilliseconds = 1000;

bool IsRequestOpen() {
    return requestedWindow != nullptr && !requestEnd.hasExpired();
}

class TFormWidget : public QWidget {
public:
    using QWidget::QWidget;
    std::function<void()> OnClose, OnPlace, OnActivate;
    std::function<void(const std::vector<String>& files)> OnDrop;

protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore();  // the form decides
        if (OnClose) OnClose();
    }
    void resizeEvent(QResizeEvent*) override {
        if (OnPlace) OnPlace();
    }
    void moveEvent(QMoveEvent*) override {
        if (OnPlace) OnPlace();
    }
    void changeEvent(QEvent* event) override {
        if (event->type() == QEvent::ActivationChange && isActiveWindow() && OnActivate) OnActivate();
        QWidget::changeEvent(event);
    }
    void dragEnterEvent(QDragEnterEvent* event) override {
        if (!FilesOf(*event->mimeData()).empty()) event->acceptProposedAction();
    }
    void dropEvent(QDropEvent* event) override {
        event->acceptProposedAction();
        if (OnDrop) OnDrop(FilesOf(*event->mimeData()));
    }
};

/// A window with the menu bar and, below it, the area of the controls.
class TFormPeer : public TQtPeerOf<TCustomForm, TFormWidget> {
public:
    explicit TFormPeer(TCustomForm& form)
        : TQtPeerOf(form, new TFormWidget), FClient(*new QWidget(&Widget)), FMenuBar(*new QMenuBar(&Widget)) {
        FMenuBar.setNativeMenuBar(false);
        Widget.setAutoFillBackground(true);
        Widget.setAcceptDrops(true);
        Widget.OnClose = [this] { Report(caState, [this] { Control.CloseByUser(); }); };
        Widget.OnPlace = [this] { PlaceTaken(); };
        Widget.OnActivate = [this] { Activated(); };
        Widget.OnDrop = [this](const std::vector<String>& files) {
            Report(caState, [&] { Control.DropFilesByUser(files); });
        };
        if (auto* const parent = static_cast<TFormPeer*>(Of(form.GetMDIParent())))
            FFrame = parent->GetMdiArea().addSubWindow(&Widget);
    }
    ~TFormPeer() override {
        const QPointer<QMdiSubWindow> frame(FFrame);
        DropWidget();
        delete frame;
    }

    [[nodiscard]] QWidget& GetContainer() override { return FClient; }

protected:
    void UpdateOwn(TControlAspect aspect) override {
        if (aspect == caText) Widget.setWindowTitle(ToQt(Control.GetCaption()));
        if (aspect == caItems) UpdateMenu();
        if (aspect == caFocus && Screen().GetActiveForm() == &Control) Activate();
    }
    void UpdatePlace() override {
        const int width = std::min(Control.GetWidth(), QWIDGETSIZE_MAX);
        const int height = std::min(Control.GetHeight(), QWIDGETSIZE_MAX - MenuHeight()) + MenuHeight();
        const bool isSizeable = Control.GetBorderStyle() == bsSizeable;
        Widget.setMinimumSize(isSizeable ? QSize(0, 0) : QSize(width, height));
        Widget.setMaximumSize(isSizeable ? QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX) : QSize(width, height));
        if (FFrame != nullptr) {
            FFrame->move(Control.GetLeft(), Control.GetTop());
            FFrame->resize(FFrame->size() + QSize(width, height) - Widget.size());
        } else {
            Widget.move(Control.GetLeft(), Control.GetTop());
            Widget.resize(width, height);
        }
        Arrange();
    }
    void UpdateVisible() override {
        UpdateFlags();
        QWidget& frame = FFrame == nullptr ? static_cast<QWidget&>(Widget) : *FFrame;
        const bool isShown = !frame.isHidden();
        if (isShown == Control.GetVisible()) return;
        if (!isShown && FFrame == nullptr) BelongToActiveForm();
        frame.setVisible(!isShown);
        if (!isShown) UpdatePlace();  // now the frame is known
    }

private:
    [[nodiscard]] int MenuHeight() const { return FMenuBar.isHidden() ? 0 : FMenuBar.sizeHint().height(); }

    QMdiArea& GetMdiArea() {
        if (FMdiArea == nullptr) {
            FMdiArea = new QMdiArea(&FClient);
            FMdiArea->lower();
            FMdiArea->show();
            Arrange();
        }
        return *FMdiArea;
    }

    void Arrange() {
        const int menu = MenuHeight();
        FMenuBar.setGeometry(0, 0, Widget.width(), menu);
        FClient.setGeometry(0, menu, Widget.width(), std::max(Widget.height() - menu, 0));
        if (FMdiArea != nullptr) FMdiArea->setGeometry(FClient.rect());
    }

    /// The user has moved or resized the window.
    void PlaceTaken() {
        Arrange();
        if (Widget.isHidden()) return;
        TakeOver([this] {
            const QPoint at = FFrame == nullptr ? Widget.pos() : FFrame->pos();
            Control.SetBounds(at.x(), at.y(), FClient.width(), FClient.height());
        });
    }

    void UpdateMenu() {
        TMainMenu* const menu = Control.GetMenu();
        FMenuBar.setVisible(menu != nullptr);
        FMenuBar.clear();
        if (menu != nullptr)
            FillMenuBar(FMenuBar, menu->GetItems(), [this](TMenuItem& item) {
                Report(caState, [&] { Control.ChooseMenuByUser(item); });
            });
        UpdatePlace();
    }

    void UpdateFlags() {
        const TFormBorderStyle style = Control.GetBorderStyle();
        const auto icon = [&](TBorderIcon which, Qt::WindowFlags flags) {
            return Control.GetBorderIcons().Contains(which) ? flags : Qt::WindowFlags();
        };
        Qt::WindowFlags flags = style == bsDialog       ? Qt::Dialog
                                : style == bsToolWindow ? Qt::Tool
                                                        : Qt::Window;
        flags |= Qt::CustomizeWindowHint;
        if (style == bsNone)
            flags |= Qt::FramelessWindowHint;
        else
            flags |= Qt::WindowTitleHint;
        flags |= icon(biSystemMenu, Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
        if (style != bsDialog)
            flags |= icon(biMinimize, Qt::WindowMinimizeButtonHint) |
                     icon(biMaximize, Qt::WindowMaximizeButtonHint);
        if (FFrame != nullptr || flags == FFlags) return;
        FFlags = flags;
        Widget.setWindowFlags(flags);  // hides the window
    }

    /// The window of a modal form stays above the one that was active.
    void BelongToActiveForm() {
        Widget.setWindowModality(Control.IsModal() ? Qt::ApplicationModal : Qt::NonModal);
        TQtPeer* const active = Of(Screen().GetActiveForm());
        Widget.winId();  // makes the window
        QWindow* const owner = active == nullptr ? nullptr : active->GetWidget().window()->windowHandle();
        Widget.windowHandle()->setTransientParent(Control.IsModal() ? owner : nullptr);
    }

    void Activate() {
        if (FFrame != nullptr) return FFrame->mdiArea()->setActiveSubWindow(FFrame);
        if (Widget.isActiveWindow() && !IsRequestOpen()) return;
        requestedWindow = &Widget;
        requestEnd.setRemainingTime(kRequestMilliseconds);
        Widget.raise();
        Widget.activateWindow();
    }

    /// The window system makes windows the active one some time after a request. What it reports meanwhile is older than
    /// the request; to follow it would have the two change places for ever.
    void Activated() {
        if (IsRequestOpen()) {
            if (requestedWindow == &Widget) requestedWindow = nullptr;
            return;
        }
        Report(caState, [this] { Control.BringToFront(); });
    }

    QWidget& FClient;
    QMenuBar& FMenuBar;
    QMdiArea* FMdiArea = nullptr;
    QPointer<QMdiSubWindow> FFrame;  // of a form inside another one
    Qt::WindowFlags FFlags;
};

}  // namespace

std::unique_ptr<TQtPeer> MakeFormPeer(TCustomForm& form) {
    return std::make_unique<TFormPeer>(form);
}

bool KeyPressed(TQtPeer& peer, std::int32_t key, bool isShiftDown) {
    TCustomForm* const form = peer.GetControl().GetParentForm();
    if (form == nullptr) return false;
    bool isUsed = false;
    try {
        isUsed = form->KeyByUser(key, isShiftDown);
    } catch (...) {
        Application().HandleException(form);
        isUsed = true;
    }
    return isUsed || key == kKeyTab || key == kKeyEnter;
}

}  // namespace Varnholt
