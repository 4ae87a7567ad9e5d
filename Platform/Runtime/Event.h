#pragma once

#include <concepts>
#include <functional>
#include <memory>
#include <utility>

#include "Platform/Runtime/Export.h"

/// Events: callbacks that an object calls when something has happened, with identity.
///
///     button.SetOnClick([this](TObject*) { Save(); });
///
///     const TNotifyEvent redraw([this](TObject*) { Redraw(); });
///     list.SetOnChange(redraw);
///     if (list.GetOnChange() == redraw) list.SetOnChange({});        // only if it is still this one
///
/// Threads: an event may be copied by any thread; what it calls decides on which threads it may be called.
namespace Varnholt {

/// The base of everything that sends events. It has no operations; a callback for several kinds of sender can
/// find out by dynamic_cast which one called it. Most callbacks capture what they need and ignore it.
class VARNHOLT_EXPORT TObject {
public:
    virtual ~TObject();

protected:
    TObject() = default;
    TObject(const TObject&) = default;
    TObject& operator=(const TObject&) = default;
};

/// A shared handle on a callback. Copies are equal; two events that were made separately are different, even if they
/// call the same. An event without a callback does nothing when it is called, and all of these are equal.
template <typename... TArgs>
class VARNHOLT_EXPORT TEvent {
public:
    TEvent() = default;
    // NOLINTBEGIN(bugprone-forwarding-reference-overload): copies and moves are excluded
    template <typename TCallback>
    requires(!std::same_as<std::remove_cvref_t<TCallback>, TEvent> &&
             std::constructible_from<std::function<void(TArgs...)>, TCallback>) TEvent(TCallback&& callback) {
        std::function<void(TArgs...)> function(std::forward<TCallback>(callback));
        if (function) FFunction = std::make_shared<const std::function<void(TArgs...)>>(std::move(function));
    }
    // NOLINTEND(bugprone-forwarding-reference-overload)

    [[nodiscard]] explicit operator bool() const noexcept { return FFunction != nullptr; }
    bool operator==(const TEvent&) const noexcept = default;

    /// Passes on what the callback raises. The callback may replace or destroy the event.
    void operator()(TArgs... args) const {
        const auto function = FFunction;
        if (function) (*function)(std::forward<TArgs>(args)...);
    }

private:
    std::shared_ptr<const std::function<void(TArgs...)>> FFunction;
};

/// An event that names only its sender, which may be null.
using TNotifyEvent = TEvent<TObject*>;

}  // namespace Varnholt
