#include "VarnholtLib/Data/vrnNotifyEventList.h"

#include <cstddef>
#include <vector>

namespace Varnholt {

template class TInterfacedListEnumerator<TNotifyEvent>;
template class TInterfacedList<TNotifyEvent>;

void TNotifyEventList::Send(TObject* sender) {
    const std::vector<TNotifyEvent> events = ToArray();
    for (std::int32_t i = 0; const TNotifyEvent& event : events) {
        const bool isInPlace = i < Count() && GetItem(i) == event;  // saves the search in a long list
        ++i;
        if (!event || (!isInPlace && !Contains(event))) continue;
        try {
            event(sender);
        } catch (...) {
            // An exception of one listener must reach neither the sender nor the other listeners.
        }
    }
}

}  // namespace Varnholt
