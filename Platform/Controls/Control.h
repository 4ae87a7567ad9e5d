#pragma once

#include <concepts>
#include <utility>
#include <vector>

#include "Platform/Controls/Component.h"
#include "Platform/Controls/ControlBackend.h"
#include "Platform/Drawing/Colors.h"
#include "Platform/Drawing/Font.h"
#include "Platform/Runtime/EnumSet.h"

/// The base classes of all controls.
///
///     TForm form;
///     TEdit& name = form.Add<TEdit>(u"edName");
///     name.SetBounds(8, 8, 200, 23);
///     name.SetOnChange([&](TObject*) { ok.SetEnabled(!name.GetText().empty()); });
///
/// Ownership: a parent owns its children and destroys them, the last first. A reference to a control is never owned;
/// TComponentRef becomes null when the control is destroyed. A control must not be destroyed by its own event.
///
/// Walks over the controls of a container read its list at each step, so an event that removes controls may make a walk
/// pass over others. Controls are nested at most 1000 levels deep.
///
/// Operations named `...ByUser` are what a person does: they raise the events, and do nothing and return false while
/// the control is disabled or hidden, itself or through its parents. Back ends and tests call them.
///
/// Bounds are in pixels inside the parent. A parent lays out its aligned children when its size or one of them
/// changes: those at the top first, then bottom, left, right and the rest; among these in the order of creation.
///
/// Threads: main thread only.
namespace Varnholt {

class TCanvas;
class TCustomForm;
class TWinControl;

enum TAlign : std::uint8_t { alNone, alTop, alBottom, alLeft, alRight, alClient };

enum TAnchorKind : std::uint8_t { akLeft, akTop, akRight, akBottom };
using TAnchors = TEnumSet<TAnchorKind>;

class VARNHOLT_EXPORT TControl : public TComponent {
public:
    ~TControl() override;

    /// The control that contains this one; null for a form or a control that is not placed yet.
    [[nodiscard]] TWinControl* GetParent() const noexcept { return FParent; }
    /// The form that contains this control, or that it is; null if there is none.
    [[nodiscard]] TCustomForm* GetParentForm() noexcept;

    [[nodiscard]] std::int32_t GetLeft() const noexcept { return FLeft; }
    [[nodiscard]] std::int32_t GetTop() const noexcept { return FTop; }
    [[nodiscard]] std::int32_t GetWidth() const noexcept { return FWidth; }
    [[nodiscard]] std::int32_t GetHeight() const noexcept { return FHeight; }
    void SetLeft(std::int32_t left) { SetBounds(left, FTop, FWidth, FHeight); }
    void SetTop(std::int32_t top) { SetBounds(FLeft, top, FWidth, FHeight); }
    void SetWidth(std::int32_t width) { SetBounds(FLeft, FTop, width, FHeight); }
    void SetHeight(std::int32_t height) { SetBounds(FLeft, FTop, FWidth, height); }
    /// A width or height below 0 counts as 0. An aligned control is put back in its place.
    void SetBounds(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height);
    [[nodiscard]] TAlign GetAlign() const noexcept { return FAlign; }
    void SetAlign(TAlign align);
    /// The edges of the parent that the control's edges follow when the parent's size changes; at first left and
    /// top. Without left and right, or without top and bottom, the control stays as it is in that direction.
    /// Aligned controls have no use for them.
    [[nodiscard]] TAnchors GetAnchors() const noexcept { return FAnchors; }
    void SetAnchors(TAnchors anchors) noexcept { FAnchors = anchors; }

    /// The control's own setting; a disabled or hidden parent disables or hides it as well.
    [[nodiscard]] bool GetEnabled() const noexcept { return FEnabled; }
    void SetEnabled(bool enabled);
    [[nodiscard]] bool GetVisible() const noexcept { return FVisible; }
    virtual void SetVisible(bool visible);
    /// Whether a person can use the control: it is in a visible form, and it and its parents are visible and enabled.
    [[nodiscard]] bool IsUsable() noexcept;

    [[nodiscard]] TColor GetColor() const noexcept { return FColor; }
    void SetColor(TColor color);
    [[nodiscard]] const TFont& GetFont() const noexcept { return FFont; }
    void SetFont(const TFont& font);
    /// The text that appears while the mouse rests on the control.
    [[nodiscard]] const String& GetHint() const noexcept { return FHint; }
    void SetHint(StringView hint);

    [[nodiscard]] const TNotifyEvent& GetOnClick() const noexcept { return FOnClick; }
    void SetOnClick(TNotifyEvent onClick) { FOnClick = std::move(onClick); }
    /// Raises OnClick with this control as sender.
    virtual void Click();
    /// A person clicks on the control.
    virtual bool ClickByUser();

    /// Draws the control again.
    void Repaint();
    /// Draws the control and its visible children with its upper left corner at a point of the canvas. Without a back end
    /// a control is its area in its colour, with its text in its font.
    void PaintTo(TCanvas& canvas, std::int32_t x, std::int32_t y);
    /// The upper left corner of the control on the screen. Without a back end a form is at its own bounds.
    [[nodiscard]] TPoint GetClientOrigin();

    /// The peer of the back end, or null.
    [[nodiscard]] IControlPeer* GetPeer() const noexcept { return FPeer.get(); }

protected:
    TControl();

    /// Reports a change to the peer.
    void Changed(TControlAspect aspect);
    /// Called after the bounds have changed.
    virtual void Resized(TSize former);
    virtual void CreatePeers();
    virtual void FreePeers() noexcept;
    /// Draws the control, which has no peer.
    virtual void Paint(TCanvas& canvas, std::int32_t x, std::int32_t y);
    /// The rectangle of the control with its upper left corner at a point.
    [[nodiscard]] TRect AreaAt(std::int32_t x, std::int32_t y) const noexcept;
    /// The text inside the control.
    [[nodiscard]] virtual StringView GetPaintedText() const noexcept { return {}; }

private:
    friend class TWinControl;

    TWinControl* FParent = nullptr;
    std::unique_ptr<IControlPeer> FPeer;
    std::int32_t FLeft = 0, FTop = 0, FWidth = 100, FHeight = 25;
    TFont FFont;
    TColor FColor = clWindow;
    String FHint;
    TNotifyEvent FOnClick;
    TAnchors FAnchors = {akLeft, akTop};
    TAlign FAlign = alNone;
    bool FEnabled = true;
    bool FVisible = true;
};

/// The bars of a control that scrolls.
enum TScrollBarKind : std::uint32_t { sbHorizontal = 0, sbVertical = 1 };

/// The parts of a TScrollInfo, as bits of its Mask.
inline constexpr std::uint32_t kScrollRange = 1;
inline constexpr std::uint32_t kScrollPage = 2;
inline constexpr std::uint32_t kScrollPosition = 4;
inline constexpr std::uint32_t kScrollTrackPosition = 16;

/// A record of 28 bytes, whose size is its first field.
struct TScrollInfo {
    std::uint32_t Size = 28;
    std::uint32_t Mask = 0;
    std::int32_t Min = 0;
    std::int32_t Max = 0;
    std::uint32_t Page = 0;
    std::int32_t Position = 0;
    std::int32_t TrackPosition = 0;
};

/// A control that can contain others and have the focus.
class VARNHOLT_EXPORT TWinControl : public TControl {
public:
    ~TWinControl() override;

    // --- Children ---

    /// Takes the control as the last child and returns it. Raises EArgumentNilException `child` for null, and
    /// EInvalidOperation `A form cannot be placed in a control` for a form, and `Controls are nested more than 1000
    /// levels deep`.
    template <std::derived_from<TControl> T>
    T& Insert(std::unique_ptr<T> child) {
        T* const inserted = child.get();
        InsertControl(std::move(child));
        return *inserted;
    }
    /// Makes a child with that name.
    template <std::derived_from<TControl> T, typename... TArgs>
    T& Add(StringView name, TArgs&&... args) {
        auto child = std::make_unique<T>(std::forward<TArgs>(args)...);
        child->SetName(name);
        return Insert(std::move(child));
    }
    /// Gives a child to the caller. EInvalidOperation `Control "%s" has no child "%s"` if it is not one.
    [[nodiscard]] std::unique_ptr<TControl> Remove(TControl& child);

    [[nodiscard]] std::int32_t GetControlCount() const noexcept;
    /// A child by its index from 0, in the order of insertion. EListError as a list.
    [[nodiscard]] TControl& GetControl(std::int32_t index) const;
    /// The child of that name at any depth, the first in the order of a walk from parents to children; null if
    /// there is none.
    [[nodiscard]] TControl* FindControl(StringView name) const noexcept;

    /// Places the aligned children again, after a change that the control does not see by itself.
    void Realign() { AlignControls(); }

    // --- Focus ---

    /// Whether Tab reaches the control; at first true for those that take input.
    [[nodiscard]] bool GetTabStop() const noexcept { return FTabStop; }
    void SetTabStop(bool tabStop) noexcept { FTabStop = tabStop; }
    [[nodiscard]] bool Focused() const noexcept;
    /// Whether the control can have the focus: it takes input, and IsUsable.
    [[nodiscard]] bool CanFocus() noexcept;
    /// Moves the focus here: OnExit of the control that had it, then OnEnter. A handler of these may move it on;
    /// handlers that never stop to do so are stopped after 100 moves. EInvalidOperation `Cannot focus control "%s",
    /// which is disabled or invisible` if CanFocus is false.
    void SetFocus();
    /// A person puts the focus here, as with the mouse or Tab.
    bool FocusByUser();
    [[nodiscard]] const TNotifyEvent& GetOnEnter() const noexcept { return FOnEnter; }
    void SetOnEnter(TNotifyEvent onEnter) { FOnEnter = std::move(onEnter); }
    [[nodiscard]] const TNotifyEvent& GetOnExit() const noexcept { return FOnExit; }
    void SetOnExit(TNotifyEvent onExit) { FOnExit = std::move(onExit); }

    // --- Window ---

    /// The handle of the window, unique in the process and never 0. Without a back end it names no window.
    [[nodiscard]] std::uintptr_t GetHandle();

    /// Reads the parts of the mask. False for a bar other than sbHorizontal and sbVertical.
    bool GetScrollInfo(std::uint32_t bar, TScrollInfo& info) const noexcept;
    /// Sets the parts of the mask, and puts the position into the range. False for another bar, or a record of
    /// another size.
    bool SetScrollInfo(std::uint32_t bar, const TScrollInfo& info, bool redraw);
    /// A person drags the box of a bar, without releasing it.
    bool TrackScrollByUser(TScrollBarKind bar, std::int32_t trackPosition);

protected:
    TWinControl();

    void Resized(TSize former) override;
    void CreatePeers() override;
    void FreePeers() noexcept override;
    void Paint(TCanvas& canvas, std::int32_t x, std::int32_t y) override;
    /// A person presses a key while the control has the focus. False if the control does nothing with it.
    virtual bool PressedByUser(std::int32_t virtualKey);
    /// Whether the control is the form's button for a key that its focused control has no use for.
    [[nodiscard]] virtual bool AnswersKey(std::int32_t virtualKey) const noexcept;
    /// Whether controls of this class take input; true unless overridden.
    [[nodiscard]] virtual bool TakesInput() const noexcept { return true; }
    [[nodiscard]] virtual TSize GetClientSize() const { return {GetWidth(), GetHeight()}; }
    void AlignControls();
    /// A child was inserted or removed.
    virtual void ControlsChanged() {}

private:
    friend class TControl;
    friend class TCustomForm;

    void InsertControl(std::unique_ptr<TControl> child);
    void FollowAnchors(TControl& child, TSize former);
    void FocusLost();
    void FocusReceived();
    [[nodiscard]] bool IsAbove(const TControl& control) const noexcept;

    std::vector<std::unique_ptr<TControl>> FControls;
    TNotifyEvent FOnEnter;
    TNotifyEvent FOnExit;
    TScrollInfo FScrollInfos[2];
    std::uintptr_t FHandle = 0;
    bool FTabStop = true;
    bool FAligning = false;
};

}  // namespace Varnholt
