#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <utility>
#include <vector>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Indexes.h"
#include "VarnholtLib/Data/vrnListInterfaces.h"

/// The bodies of the list template, so that a list of any type can be compiled where it is used. Include
/// vrnList.h.
///
/// Threads: as for the lists.
namespace Varnholt {

namespace ListSupport {

/// Raises EArgumentNilException with the parameter's name unless the callback is set.
VARNHOLT_EXPORT void RequireCallback(bool isSet, StringView name);
/// Raises EListError "List capacity out of bounds" for a list that can hold no further item.
VARNHOLT_EXPORT void RequireRoom(std::size_t count);
/// The positions 0 to count - 1 in the order of `isLess`, which may contradict itself.
[[nodiscard]] VARNHOLT_EXPORT std::vector<std::uint32_t> SortedPositions(
    std::size_t count, const std::function<bool(std::uint32_t, std::uint32_t)>& isLess);

}  // namespace ListSupport

template <typename T>
TNewList<T, TInterfacedList<T>> TInterfacedList<T>::CreateFromArray(std::span<const T> items) {
    const auto list = std::make_shared<TInterfacedList>();
    list->AddArray(items);
    return list;
}

template <typename T>
TNewList<T, TInterfacedList<T>> TInterfacedList<T>::CreateFromArray(std::initializer_list<T> items) {
    return CreateFromArray(std::span<const T>(items.begin(), items.size()));
}

template <typename T>
std::int32_t TInterfacedList<T>::Count() const {
    return static_cast<std::int32_t>(FInternalList.size());
}

template <typename T>
bool TInterfacedList<T>::GetIsEmpty() const {
    return this->Count() == 0;
}

template <typename T>
T TInterfacedList<T>::GetItem(std::int32_t index) const {
    return FInternalList[ListIndex(index, FInternalList.size())];
}

template <typename T>
std::shared_ptr<IListEnumerator<T>> TInterfacedList<T>::GetEnumerator() const {
    return std::make_shared<TInterfacedListEnumerator<T>>(*this);
}

template <typename T>
std::vector<T> TInterfacedList<T>::ToArray() const {
    return FInternalList;
}

template <typename T>
std::int32_t TInterfacedList<T>::Add(T item) {
    InsertAt(FInternalList.size(), std::move(item));
    return TInterfacedList::Count() - 1;
}

template <typename T>
void TInterfacedList<T>::AddRange(const IReadOnlyList<T>& items) {
    const std::int32_t count = items.Count();  // read once: a list may be added to itself
    const auto enumerator = items.GetEnumerator();
    for (std::int32_t i = 0; i < count && enumerator->MoveNext(); ++i) this->Add(enumerator->GetCurrent());
}

template <typename T>
void TInterfacedList<T>::AddArray(std::span<const T> items) {
    for (const T& item : items) this->Add(item);
}

template <typename T>
void TInterfacedList<T>::Prepend(T item) {
    InsertAt(0, std::move(item));
}

template <typename T>
void TInterfacedList<T>::Insert(std::int32_t index, T item) {
    if (index != TInterfacedList::Count()) static_cast<void>(ListIndex(index, FInternalList.size()));
    InsertAt(static_cast<std::size_t>(index), std::move(item));
}

template <typename T>
void TInterfacedList<T>::InsertAt(std::size_t position, T item) {
    ListSupport::RequireRoom(FInternalList.size());
    FInternalList.insert(FInternalList.begin() + static_cast<std::ptrdiff_t>(position), std::move(item));
}

template <typename T>
void TInterfacedList<T>::Delete(std::int32_t index) {
    DeleteAt(ListIndex(index, FInternalList.size()));
}

template <typename T>
void TInterfacedList<T>::DeleteAt(std::size_t position) {
    // The item is destroyed when the list is whole again: its destructor may call back.
    [[maybe_unused]] const T removed = std::move(FInternalList[position]);
    FInternalList.erase(FInternalList.begin() + static_cast<std::ptrdiff_t>(position));
}

template <typename T>
std::int32_t TInterfacedList<T>::Remove(const T& item) {
    const std::int32_t index = TInterfacedList::IndexOf(item);
    if (index >= 0) DeleteAt(static_cast<std::size_t>(index));
    return index;
}

template <typename T>
void TInterfacedList<T>::SetItem(std::int32_t index, T item) {
    const std::size_t position = ListIndex(index, FInternalList.size());
    [[maybe_unused]] const T replaced = std::move(FInternalList[position]);
    FInternalList[position] = std::move(item);
}

template <typename T>
void TInterfacedList<T>::Clear() {
    const std::vector<T> removed = std::exchange(FInternalList, {});
}

template <typename T>
std::int32_t TInterfacedList<T>::IndexOf(const T& item) const {
    for (std::size_t i = 0; i < FInternalList.size(); ++i) {
        if (FInternalList[i] == item) return static_cast<std::int32_t>(i);
    }
    return -1;
}

template <typename T>
bool TInterfacedList<T>::Contains(const T& item) const {
    return this->IndexOf(item) >= 0;
}

template <typename T>
T TInterfacedList<T>::First() const {
    if (FInternalList.empty()) throw EInvalidOperation(u"The list is empty");
    return FInternalList.front();
}

template <typename T>
T TInterfacedList<T>::Last() const {
    if (FInternalList.empty()) throw EInvalidOperation(u"The list is empty");
    return FInternalList.back();
}

template <typename T>
T TInterfacedList<T>::FirstOrDefault(const T& defaultValue) const {
    return FInternalList.empty() ? defaultValue : T(FInternalList.front());
}

/// Calls `found(index, item)` for each item for which `matchFunc` returns `wanted`, until it returns false.
template <typename T>
template <typename TFound>
void TInterfacedList<T>::Walk(const TListMatchFunc<T>& matchFunc, StringView name, bool wanted,
                              TFound found) const {
    ListSupport::RequireCallback(matchFunc != nullptr, name);
    for (std::int32_t i = 0; i < this->Count(); ++i) {
        T item = this->GetItem(i);
        if (matchFunc(item) == wanted && !found(i, std::move(item))) return;
    }
}

template <typename T>
std::int32_t TInterfacedList<T>::Count(const TListMatchFunc<T>& func) const {
    std::int32_t count = 0;
    Walk(func, u"func", true, [&](std::int32_t, const T&) { return ++count > 0; });
    return count;
}

template <typename T>
void TInterfacedList<T>::Each(const TListEachProcedure<T>& eachFunc) const {
    ListSupport::RequireCallback(eachFunc != nullptr, u"eachFunc");
    const auto enumerator = this->GetEnumerator();
    while (enumerator->MoveNext()) eachFunc(enumerator->GetCurrent());
}

template <typename T>
std::int32_t TInterfacedList<T>::IndexOfMatch(const TListMatchFunc<T>& matchFunc) const {
    std::int32_t index = -1;
    Walk(matchFunc, u"matchFunc", true, [&](std::int32_t i, const T&) {
        index = i;
        return false;
    });
    return index;
}

template <typename T>
TNewList<T> TInterfacedList<T>::Where(const TListMatchFunc<T>& matchFunc) const {
    const auto list = std::make_shared<TInterfacedList>();
    Walk(matchFunc, u"matchFunc", true,
         [&](std::int32_t, T&& item) { return list->Add(std::move(item)) >= 0; });
    return list;
}

template <typename T>
bool TInterfacedList<T>::All(const TListMatchFunc<T>& matchFunc) const {
    bool all = true;
    Walk(matchFunc, u"matchFunc", false, [&](std::int32_t, const T&) { return all = false; });
    return all;
}

template <typename T>
bool TInterfacedList<T>::Any(const TListMatchFunc<T>& matchFunc) const {
    return TInterfacedList::IndexOfMatch(matchFunc) >= 0;
}

template <typename T>
T TInterfacedList<T>::FirstOrDefault(const TListMatchFunc<T>& matchFunc, const T& defaultValue) const {
    T first = defaultValue;
    Walk(matchFunc, u"matchFunc", true, [&](std::int32_t, T&& item) {
        first = std::move(item);
        return false;
    });
    return first;
}

template <typename T>
TNewList<T> TInterfacedList<T>::Part(std::int32_t begin, std::int32_t end) const {
    const auto list = std::make_shared<TInterfacedList>();
    for (std::int32_t i = begin; i < end; ++i) list->Add(this->GetItem(i));
    return list;
}

template <typename T>
TNewList<T> TInterfacedList<T>::Take(std::int32_t num) const {
    return Part(0, num);
}

template <typename T>
TNewList<T> TInterfacedList<T>::Skip(std::int32_t num) const {
    return Part(num, this->Count());
}

template <typename T>
TNewList<T> TInterfacedList<T>::OrderBy(const TListSortFunc<T>& sortFunc) const {
    TNewList<T> list = Part(0, this->Count());
    list->Sort(sortFunc);
    return list;
}

template <typename T>
void TInterfacedList<T>::Sort(const TListSortFunc<T>& sortFunc) {
    ListSupport::RequireCallback(sortFunc != nullptr, u"sortFunc");
    std::vector<T> items = FInternalList;  // the comparison may change the list
    const std::vector<std::uint32_t> order = ListSupport::SortedPositions(
        items.size(), [&](std::uint32_t a, std::uint32_t b) { return sortFunc(items[a], items[b]) < 0; });
    std::vector<T> sorted;
    sorted.reserve(items.size());
    for (const std::uint32_t position : order) sorted.push_back(std::move(items[position]));
    FInternalList.swap(sorted);
}

}  // namespace Varnholt
