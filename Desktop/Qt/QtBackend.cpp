#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QKeyEvent>
#include <QTimer>

#include "Desktop/Qt/QtBackendPrivate.h"
#include "Desktop/Qt/QtPeersPrivate.h"
#include "Platform/Runtime/MainThread.h"

namespace Varnholt {
namespace {

QEvent::Type WakeEvent() {
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

/// Makes a peer if the control is of that kind.
template <typename TKind>
std::unique_ptr<TQtPeer> PeerIf(TControl& control, std::unique_ptr<TQtPeer> (*make)(TKind&)) {
    auto* const matching = dynamic_cast<TKind*>(&control);
    return matching == nullptr ? nullptr : make(*matching);
}

template <typename... TKinds>
std::unique_ptr<TQtPeer> FirstPeer(TControl& control, std::unique_ptr<TQtPeer> (*... makers)(TKinds&)) {
    std::unique_ptr<TQtPeer> peer;
    static_cast<void>(((peer = PeerIf<TKinds>(control, makers)) || ...));
    return peer;
}

/// The key by the code that forms know; 0 for others.
std::int32_t KeyOfForm(const QKeyEvent& event) {
    if ((event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0) return 0;
    switch (event.key()) {
        case Qt::Key_Tab:
        case Qt::Key_Backtab:
            return kKeyTab;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return kKeyEnter;
        case Qt::Key_Escape:
            return kKeyEscape;
        default:
            return 0;
    }
}

}  // namespace

TQtBackend::TQtBackend() {
    qApp->installEventFilter(this);
}

TQtBackend::~TQtBackend() = default;

std::unique_ptr<IControlPeer> TQtBackend::CreatePeer(TControl& control) {
    // A kind comes before those that it is derived from.
    std::unique_ptr<TQtPeer> peer =
        FirstPeer(control, &MakeFormPeer, &MakeTabSheetPeer, &MakePageControlPeer, &MakeCheckBoxPeer,
                  &MakeRadioButtonPeer, &MakeButtonPeer, &MakeMemoPeer, &MakeSpinEditPeer, &MakeEditPeer,
                  &MakeSpinButtonPeer, &MakeComboBoxPeer, &MakeListBoxPeer, &MakeListViewPeer,
                  &MakeTreeViewPeer, &MakeGridPeer, &MakeLabelPeer, &MakePanelPeer, &MakeProgressBarPeer,
                  &MakePaintBoxPeer, &MakeOtherPeer);
    if (peer != nullptr) peer->UpdateAll();
    return peer;
}

// --- The event loop ---

bool TQtBackend::HandleMessage(std::int32_t maxWait) {
    QAbstractEventDispatcher* const dispatcher = QAbstractEventDispatcher::instance();
    if (maxWait == 0) return dispatcher->processEvents(QEventLoop::AllEvents);
    QTimer limit;
    limit.setSingleShot(true);
    if (maxWait > 0) limit.start(maxWait);
    return dispatcher->processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void TQtBackend::Wake() {
    if (!FIsWoken.exchange(true)) QCoreApplication::postEvent(this, new QEvent(WakeEvent()));
}

bool TQtBackend::event(QEvent* event) {
    if (event->type() != WakeEvent()) return QObject::event(event);
    FIsWoken = false;
    try {
        while (HandleStep()) {
        }
    } catch (...) {
        Application().HandleException(&Application());
        Wake();  // for the steps after it
    }
    return true;
}

bool TQtBackend::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (type != QEvent::KeyPress && type != QEvent::FocusIn && type != QEvent::MouseButtonPress &&
        type != QEvent::MouseButtonRelease)
        return false;
    auto* const widget = qobject_cast<QWidget*>(watched);
    TQtPeer* const peer = TQtPeer::Around(widget);
    if (peer == nullptr) return false;
    peer->UpdateItemsNow();  // what the user meets is what the control has
    if (type == QEvent::FocusIn) {
        // Of a window that becomes the active one the form knows, and to a menu or a list the focus is only lent.
        const bool isOfWindow =
            static_cast<const QFocusEvent&>(*event).reason() == Qt::ActiveWindowFocusReason;
        if (!isOfWindow && QApplication::activePopupWidget() == nullptr) peer->Focused();
        return false;
    }
    if (type == QEvent::MouseButtonRelease) {
        const auto& mouse = static_cast<const QMouseEvent&>(*event);
        if (&peer->GetContainer() == widget && mouse.button() == Qt::LeftButton &&
            widget->rect().contains(mouse.pos()))
            peer->Clicked();
        return false;
    }
    if (type != QEvent::KeyPress) return false;
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const std::int32_t code = KeyOfForm(key);
    if (code == 0 || QApplication::activePopupWidget() != nullptr || peer->KeepsKey(code)) return false;
    const QWidget* const focus = widget->window()->focusWidget();
    if (focus != nullptr && focus != widget) return false;  // it has been offered to the form already
    return KeyPressed(*peer, code,
                      key.key() == Qt::Key_Backtab || (key.modifiers() & Qt::ShiftModifier) != 0);
}

}  // namespace Varnholt
