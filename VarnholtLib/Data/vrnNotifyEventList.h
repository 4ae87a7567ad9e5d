#pragma once

#include "Platform/Runtime/Event.h"
#include "VarnholtLib/Data/vrnList.h"

/// A list of event callbacks that are called together.
///
///     TNotifyEventList onChange;  // a field of a class derived from TObject
///     const TNotifyEvent redraw([this](TObject*) { Redraw(); });
///     onChange.Add(redraw);
///     onChange.Send(this);
///     onChange.Remove(redraw);
///
/// Remove, IndexOf and Contains compare events by their identity, so keep a copy of an event to remove it. The list
/// is an ordinary TInterfacedList.
///
/// Do not delete the list from one of its callbacks: Send uses it after the callback has returned.
///
/// Threads: none inside; one thread at a time.
namespace Varnholt {

extern template class TInterfacedListEnumerator<TNotifyEvent>;
extern template class TInterfacedList<TNotifyEvent>;

class VARNHOLT_EXPORT TNotifyEventList : public TInterfacedList<TNotifyEvent> {
public:
    /// Calls every callback in list order, with the sender (which may be null). Any exception of a callback
    /// is swallowed, and the next one is called. Events without a callback are skipped.
    ///
    /// A callback may change the list, but must not delete it. An event added meanwhile is first called by
    /// the next Send; one removed before its turn is not called (if it is in the list twice, when both are
    /// removed); one that is moved is called once. While the order is unchanged an event takes constant time,
    /// after a change the time of a search in the list.
    ///
    /// Raises only std::bad_alloc, before the first call.
    void Send(TObject* sender);
};

}  // namespace Varnholt
