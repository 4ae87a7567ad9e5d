#include "VarnholtLib/Data/vrnNotifyEventList.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace Varnholt {

INotifySender::~INotifySender() = default;

template class TInterfacedListEnumerator<TNotifyEvent>;
template class TInterfacedList<TNotifyEvent>;

TNotifyEvent MakeNotifyEvent(std::function<void(INotifySender*)> callback) {
    return std::make_shared<const std::function<void(INotifySender*)>>(std::move(callback));
}

void TNotifyEventList::Send(INotifySender* sender) {
    const std::vector<TNotifyEvent> events = ToArray();
    for (std::int32_t i = 0; const TNotifyEvent& event : events) {
        const bool isInPlace = i < Count() && GetItem(i) == event;  // saves the search in a long list
        ++i;
        if (event == nullptr || *event == nullptr || (!isInPlace && !Contains(event))) continue;
        try {
            (*event)(sender);
        } catch (...) {
            // An exception of one listener must reach neither the sender nor the other listeners.
        }
    }
}

}  // namespace Varnholt
