#pragma once

#include <QPalette>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <utility>

#include "Platform/Controls/Application.h"
#include "Platform/Controls/Control.h"

class QScrollBar;

namespace Varnholt {

/// The widget of a control. Derived peers add what their kind of control has beyond place, look and state.
class TQtPeer : public IControlPeer {
public:
    ~TQtPeer() override;
    TQtPeer(const TQtPeer&) = delete;
    TQtPeer& operator=(const TQtPeer&) = delete;

    void Update(TControlAspect aspect) final;
    /// Brings the new widget to the state of the control.
    void UpdateAll();
    [[nodiscard]] std::uintptr_t GetHandle() override;
    [[nodiscard]] TPoint GetClientOrigin() override;
    [[nodiscard]] TSize GetClientSize() override;
    [[nodiscard]] TRect GetCellRect(std::int32_t column, std::int32_t row) override;
    void PaintTo(TCanvas& canvas, std::int32_t x, std::int32_t y) override;

    /// The widget inside which those of the children are.
    [[nodiscard]] virtual QWidget& GetContainer() { return *FWidget; }
    [[nodiscard]] QWidget& GetWidget() { return *FWidget; }
    [[nodiscard]] TControl& GetControl() noexcept { return FControl; }
    /// Whether the widget has a use of its own for a key of forms.
    [[nodiscard]] virtual bool KeepsKey(std::int32_t) const { return false; }
    /// Does at once what waits until the changes of many items are over.
    void UpdateItemsNow();
    /// The user has put the focus on the widget, or clicked on it.
    void Focused();
    void Clicked();
    /// The peer whose widget this is or is inside of; null for a widget of another origin.
    [[nodiscard]] static TQtPeer* Around(const QWidget* widget) noexcept;
    /// The peer of a control, null if it has none.
    [[nodiscard]] static TQtPeer* Of(const TControl* control) noexcept;
    /// The container of the parent of a control, which has a peer; null for a form.
    [[nodiscard]] static QWidget* ParentOf(const TControl& control);

protected:
    /// Takes the widget, whose parent widget deletes it if that goes first.
    TQtPeer(TControl& control, QWidget* widget);
    /// Deletes the widget, which reports nothing any more. Derived peers whose members the widget uses call it in their
    /// destructors.
    void DropWidget() noexcept;

    /// Brings the widget up to date after the base has done its part. Signals of the widget are not reported meanwhile.
    virtual void UpdateOwn(TControlAspect) {}
    /// For kinds of controls with many items: the items have changed, and UpdateOwn(caItems) follows, once for all
    /// changes, before the user can do anything. No update of the selection comes before it.
    virtual void ForgetItems() {}
    virtual void UpdatePlace();
    virtual void UpdateVisible();
    /// The part of the palette that has the colour of the control.
    [[nodiscard]] virtual QPalette::ColorRole GetColorRole() const { return QPalette::Window; }

    /// Whether a click is a matter of the mouse alone, and not of a button.
    [[nodiscard]] virtual bool TakesClicks() const { return false; }

    /// Reports what the user has done, unless the peer itself is changing the widget: `act` calls one of the
    /// control's operations for users. What it raises is handled by the application. Afterwards the widget shows
    /// `aspect` of the control again, which may have refused.
    template <typename TAct>
    void Report(TControlAspect aspect, TAct&& act) {
        if (FIsUpdating) return;
        const QPointer<QWidget> alive(FWidget);
        try {
            act();
        } catch (...) {
            Application().HandleException(&FControl);
        }
        if (alive) Update(aspect);
    }
    /// Takes over a state of the widget that raises no event, without an echo.
    template <typename TAct>
    void TakeOver(TAct&& act) {
        if (FIsUpdating) return;
        const TUpdating scope(FIsUpdating);
        act();
    }

private:
    /// Scopes nest.
    class TUpdating {
    public:
        explicit TUpdating(bool& flag) noexcept : FFlag(flag), FFormer(std::exchange(flag, true)) {}
        ~TUpdating() { FFlag = FFormer; }
        TUpdating(const TUpdating&) = delete;
        TUpdating& operator=(const TUpdating&) = delete;

    private:
        bool& FFlag;
        const bool FFormer;
    };

    void UpdateLook();
    void UpdateItemsLater();
    [[nodiscard]] QScrollBar* BarOf(TScrollBarKind kind) const;
    void ConnectScroll();
    void TakeScroll(TScrollBarKind kind);
    void UpdateScroll();

    TControl& FControl;
    QPointer<QWidget> FWidget;
    QTimer FItemsTimer;
    bool FIsUpdating = false;
    bool FHasNewItems = false;
};

/// A peer of a certain kind of control with a certain kind of widget.
template <typename TControlKind, typename TWidgetKind>
class TQtPeerOf : public TQtPeer {
public:
    ~TQtPeerOf() override { DropWidget(); }

protected:
    TQtPeerOf(TControlKind& control, TWidgetKind* widget)
        : TQtPeer(control, widget), Control(control), Widget(*widget) {}

    TControlKind& Control;
    TWidgetKind& Widget;
};

[[nodiscard]] QFont ToQt(const TFont& font);
[[nodiscard]] QColor ToQtColor(TColor color);

}  // namespace Varnholt
