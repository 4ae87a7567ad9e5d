#include "VarnholtLib/Data/vrnList.h"

#include "VarnholtLib/Data/vrnSafeSortPrivate.h"

namespace Varnholt {

void ListSupport::RequireCallback(bool isSet, StringView name) {
    if (!isSet) throw EArgumentNilException(name);
}

void ListSupport::RequireRoom(std::size_t count) {
    if (count >= std::numeric_limits<std::int32_t>::max()) throw EListError(u"List capacity out of bounds");
}

std::vector<std::uint32_t> ListSupport::SortedPositions(
    std::size_t count, const std::function<bool(std::uint32_t, std::uint32_t)>& isLess) {
    return Varnholt::SortedPositions(count, std::cref(isLess));
}

template class TInterfacedListEnumerator<Variant>;
template class TInterfacedListEnumerator<String>;
template class TInterfacedList<Variant>;
template class TInterfacedList<String>;

}  // namespace Varnholt
