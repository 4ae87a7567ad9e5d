#pragma once

#include <functional>
#include <memory>

#include "VarnholtLib/Data/vrnList.h"

/// A list of event callbacks that are fired together.
///
///     TNotifyEventList onChange;  // a field of a class derived from INotifySender
///     const TNotifyEvent redraw = MakeNotifyEvent([this](INotifySender*) { Redraw(); });
///     onChange.Add(redraw);
///     onChange.Send(this);
///     onChange.Remove(redraw);
///
/// An event is a shared handle on its callback: the same handle is the same event, which is how Remove,
/// IndexOf and Contains know it. The list is an ordinary TInterfacedList.
///
/// Threads: none inside; one thread at a time.
namespace Varnholt {

/// What sends events: a base without operations, so that a callback for several kinds of sender can ask by
/// dynamic_cast which one it has. Most callbacks capture what they need and pass it over.
class VARNHOLT_EXPORT INotifySender {
public:
    virtual ~INotifySender();

protected:
    INotifySender() = default;
    INotifySender(const INotifySender&) = default;
    INotifySender& operator=(const INotifySender&) = default;
};

using TNotifyEvent = std::shared_ptr<const std::function<void(INotifySender*)>>;

extern template class TInterfacedListEnumerator<TNotifyEvent>;
extern template class TInterfacedList<TNotifyEvent>;

/// A new event, different from all others.
[[nodiscard]] VARNHOLT_EXPORT TNotifyEvent MakeNotifyEvent(std::function<void(INotifySender*)> callback);

class VARNHOLT_EXPORT TNotifyEventList : public TInterfacedList<TNotifyEvent> {
public:
    /// Calls every callback in list order, with the sender (which may be none). What a callback raises is
    /// swallowed, whatever it is, and the next one is called. A callback may change the list, but not end its
    /// life: one that is added meanwhile is first called by the next Send, one that is removed before
    /// its turn is not called (of a handle held twice: removed twice), and one that is moved is called once.
    /// Handles without a callback are passed over. Raises std::bad_alloc alone, before the first call.
    void Send(INotifySender* sender);
};

}  // namespace Varnholt
