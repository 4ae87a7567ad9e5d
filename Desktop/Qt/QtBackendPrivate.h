#pragma once

#include <QObject>
#include <atomic>

#include "Platform/Controls/ControlBackend.h"

namespace Varnholt {

/// Makes the peers, and connects the event loop of Qt with that of the application.
class TQtBackend final : public QObject, public IControlBackend {
public:
    TQtBackend();
    ~TQtBackend() override;

    [[nodiscard]] std::unique_ptr<IControlPeer> CreatePeer(TControl& control) override;
    bool HandleMessage(std::int32_t maxWait) override;
    void ShowPopup(TPopupMenu& menu) override;
    void Wake() override;

protected:
    /// Serves the steps of other threads in every event loop of Qt.
    bool event(QEvent* event) override;
    /// Sees all events of the application: keys of forms, focus, clicks.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::atomic<bool> FIsWoken = false;
};

}  // namespace Varnholt
