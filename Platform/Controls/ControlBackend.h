#pragma once

#include <cstdint>
#include <memory>

#include "Platform/Drawing/Geometry.h"
#include "Platform/Runtime/Export.h"

/// What shows the controls. Controls work in memory as they are; a back end adds windows of a toolkit to them.
///
///     SetControlBackend(std::make_shared<TMyBackend>());      // before the first form is shown
///
/// When a form is shown, the back end makes a peer for it and for each control inside, parents first. From then on each
/// change of a control is reported to its peer, which reads the control and updates its widget. What the user does
/// with a widget the peer reports to the control through the operations named `...ByUser`, which change the control and
/// raise its events as they do without a back end. So the control is always right, and the widget follows it: a peer must
/// not call `...ByUser` for a change that it made itself.
///
/// Threads: main thread only.
namespace Varnholt {

class TCanvas;
class TControl;
class TPopupMenu;

/// What has changed in a control.
enum TControlAspect : std::uint8_t {
    caText,       ///< text or caption, read-only, limits, number of a spin edit
    caState,      ///< enabled, visible, checked, default and cancel button, border, buttons of a page
    caBounds,     ///< left, top, width, height
    caLook,       ///< colour, font, hint, sizes of rows and columns
    caItems,      ///< items, rows, columns, pages, nodes, cells, counts, menu
    caSelection,  ///< selected items, position of the caret, active page
    caScroll,     ///< range and position of a scroll bar
    caFocus,      ///< the control has received or lost the focus
    caRepaint,    ///< it is to be drawn again
};

/// The widget of one control.
class IControlPeer {
public:
    virtual ~IControlPeer() = default;
    /// The control has changed; a call for an aspect that is the same as before is allowed.
    virtual void Update(TControlAspect aspect) = 0;
    /// The handle of the window, never 0.
    [[nodiscard]] virtual std::uintptr_t GetHandle() = 0;
    /// The upper left corner of the control on the screen.
    [[nodiscard]] virtual TPoint GetClientOrigin() = 0;
    /// The room for the children of a page control.
    [[nodiscard]] virtual TSize GetClientSize() = 0;
    /// Cells of a list view: the bounds in the control of a column, from 0, of a row, from 0.
    [[nodiscard]] virtual TRect GetCellRect(std::int32_t column, std::int32_t row) = 0;
    /// Draws the widget, with its children, at a point of the canvas.
    virtual void PaintTo(TCanvas& canvas, std::int32_t x, std::int32_t y) = 0;
};

class IControlBackend {
public:
    virtual ~IControlBackend() = default;
    /// A peer for a control whose parent has one; null for a control that it cannot show.
    [[nodiscard]] virtual std::unique_ptr<IControlPeer> CreatePeer(TControl& control) = 0;
    /// Handles one event of the toolkit, and waits for it at most so many milliseconds; without a limit if that is
    /// below 0. Returns whether there was one.
    virtual bool HandleMessage(std::int32_t maxWait) = 0;
    /// Shows a popup menu at its point, and calls its ChooseByUser or CloseByUser before it returns.
    virtual void ShowPopup(TPopupMenu& menu) = 0;
    /// Ends the waiting of HandleMessage. Called on any thread.
    virtual void Wake() = 0;
};

/// The back end of the process; null at first.
[[nodiscard]] VARNHOLT_EXPORT IControlBackend* ControlBackend() noexcept;
/// Sets it, or null. No form may be visible.
VARNHOLT_EXPORT void SetControlBackend(std::shared_ptr<IControlBackend> backend);

}  // namespace Varnholt
