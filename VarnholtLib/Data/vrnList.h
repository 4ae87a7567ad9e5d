#pragma once

#include "Platform/Runtime/Variant.h"
#include "VarnholtLib/Data/vrnListBodies.h"

/// The library's list: ordered items behind reference-counted interfaces, with the usual operations and a
/// small set of queries.
///
///     const std::shared_ptr<IList<String>> stations = TInterfacedList<String>::CreateFromArray({u"Graz"});
///     stations->Add(u"Wien");
///     stations->Add(u"Linz");
///     const auto found = stations->Where([](const String& name) { return name.ends_with(u'z'); });
///     for (const String& name : found) Show(name);   // Graz, Linz
///
/// Positions count from 0. A position outside the list raises EListError "List index out of bounds (INDEX)"
/// and changes nothing. An empty callback raises EArgumentNilException with the parameter's name.
///
/// Items are returned by value, so a callback may change the list: every walk reads the count and the next
/// item at each step, and an item that is deleted meanwhile exists until the callback has returned. A
/// callback that adds items prolongs the walk; one that deletes at or before its position makes the walk skip
/// an item. A callback must not release the last reference to the list. Queries run at once and return new,
/// independent lists.
///
/// Equality of items is ==: exact for texts, identity for shared pointers. Searches, and changes other than
/// at the end, take time in proportion to the number of items.
///
/// Lists of Variant and of String are compiled into the library; lists of other types are compiled where they
/// are used, from vrnListBodies.h. The contract of each operation is in vrnListInterfaces.h.
///
/// Threads: none inside; a list and its enumerators serve one thread at a time. References to a list are
/// counted atomically.
namespace Varnholt {

extern template class TInterfacedListEnumerator<Variant>;
extern template class TInterfacedListEnumerator<String>;
extern template class TInterfacedList<Variant>;
extern template class TInterfacedList<String>;

}  // namespace Varnholt
