#pragma once

#include <functional>
#include <memory>

#include "VarnholtLib/Data/vrnList.h"

/// A list of event callbacks that are called together.
///
///     TNotifyEventList onChange;  // a field of a class derived from INotifySender
///     const TNotifyEvent redraw = MakeNotifyEvent([this](INotifySender*) { Redraw(); });
///     onChange.Add(redraw);
///     onChange.Send(this);
///     onChange.Remove(redraw);
///
/// An event is a shared pointer to its callback. Remove, IndexOf and Contains compare the pointers, so keep a
/// copy of an event to remove it. The list is an ordinary TInterfacedList.
///
/// Do not delete the list from one of its callbacks: Send uses it after the callback has returned.
///
/// Threads: none inside; one thread at a time.
namespace Varnholt {

/// The base of classes that send events. It has no operations; a callback for several kinds of sender can
/// find out by dynamic_cast which one called it. Most callbacks capture what they need and ignore it.
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
    /// Calls every callback in list order, with the sender (which may be null). Any exception of a callback
    /// is swallowed, and the next one is called. Null pointers and empty callbacks are skipped.
    ///
    /// A callback may change the list, but must not delete it. An event added meanwhile is first called by
    /// the next Send; one removed before its turn is not called (if it is in the list twice, when both are
    /// removed); one that is moved is called once. While the order is unchanged an event takes constant time,
    /// after a change the time of a search in the list.
    ///
    /// Raises only std::bad_alloc, before the first call.
    void Send(INotifySender* sender);
};

}  // namespace Varnholt
