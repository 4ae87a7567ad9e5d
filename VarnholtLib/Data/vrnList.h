#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <iterator>
#include <limits>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Variant.h"

/// The library's list: ordered items behind counted interfaces, with the usual operations and a small query
/// vocabulary.
///
///     const std::shared_ptr<IList<String>> stations = TInterfacedList<String>::CreateFromArray({u"Graz"});
///     stations->Add(u"Wien");
///     stations->Add(u"Linz");
///     const auto found = stations->Where([](const String& name) { return name.ends_with(u'z'); });
///     for (const String& name : *found) Show(name);   // Graz, Linz
///
/// Positions count from 0. A position outside the list raises EListError "List index out of bounds (INDEX)"
/// and changes nothing. An empty callback raises EArgumentNilException with the parameter's name.
///
/// Items are handed out by value. So a callback may do to the list what it likes: every walk asks for the
/// count and for the next item at each step, and an item that is deleted meanwhile lives on until the
/// callback has returned. A callback that adds prolongs the walk; one that deletes at or before its position
/// makes the walk pass over an item. Query operations run at once and give new, independent lists.
///
/// Equality of items is ==: exact for texts, identity for shared pointers.
///
/// Leans on Platform/Runtime alone. The lists of Variant and of String are compiled into the library; those
/// of other types are compiled where they are used.
///
/// Threads: none inside; a list and its enumerators serve one thread at a time. References to a list are
/// counted atomically.
namespace Varnholt {

/// Answers whether an item matches.
template <typename T>
using TListMatchFunc = std::function<bool(const T&)>;

/// Does something with an item.
template <typename T>
using TListEachProcedure = std::function<void(const T&)>;

/// Compares two items: below 0, 0 or above 0 as the first stands before, beside or behind the second.
template <typename T>
using TListSortFunc = std::function<std::int32_t(const T&, const T&)>;

template <typename T>
class IList;

/// A walk over a list. It reads the list as it is at each step, and must not outlive it.
template <typename T>
class VARNHOLT_EXPORT IListEnumerator {
public:
    virtual ~IListEnumerator() = default;
    IListEnumerator(const IListEnumerator&) = delete;
    IListEnumerator& operator=(const IListEnumerator&) = delete;

    /// The item that the walk stands at. EListError before the first MoveNext (index -1) and behind the end.
    [[nodiscard]] virtual T GetCurrent() const = 0;
    /// Goes back to before the first item.
    virtual void Reset() = 0;
    /// Goes one on. False behind the end of the list as it is now.
    virtual bool MoveNext() = 0;

protected:
    IListEnumerator() = default;
};

/// What can be asked of a list. An interface that extends this one or IList derives from it virtually, so
/// that a class can join it with TInterfacedList.
template <typename T>
class VARNHOLT_EXPORT IReadOnlyList {
public:
    class TIterator;

    virtual ~IReadOnlyList() = default;
    IReadOnlyList(const IReadOnlyList&) = delete;
    IReadOnlyList& operator=(const IReadOnlyList&) = delete;

    [[nodiscard]] virtual bool GetIsEmpty() const = 0;
    /// Number of items; of those that match.
    [[nodiscard]] virtual std::int32_t Count() const = 0;
    [[nodiscard]] virtual std::int32_t Count(const TListMatchFunc<T>& func) const = 0;
    /// The item at a position. EListError.
    [[nodiscard]] virtual T GetItem(std::int32_t index) const = 0;
    /// A new walk, which stands before the first item.
    [[nodiscard]] virtual std::shared_ptr<IListEnumerator<T>> GetEnumerator() const = 0;
    /// First position of an equal item, -1 if there is none.
    [[nodiscard]] virtual std::int32_t IndexOf(const T& item) const = 0;
    [[nodiscard]] virtual bool Contains(const T& item) const = 0;
    /// Copies of all items, in order.
    [[nodiscard]] virtual std::vector<T> ToArray() const = 0;
    /// Calls `eachFunc` for each item, in order.
    virtual void Each(const TListEachProcedure<T>& eachFunc) const = 0;
    /// First position of an item that matches, -1 if there is none.
    [[nodiscard]] virtual std::int32_t IndexOfMatch(const TListMatchFunc<T>& matchFunc) const = 0;
    /// The items that match, in order.
    [[nodiscard]] virtual std::shared_ptr<IList<T>> Where(const TListMatchFunc<T>& matchFunc) const = 0;
    /// Whether all items match; stops at the first that does not. True for an empty list.
    [[nodiscard]] virtual bool All(const TListMatchFunc<T>& matchFunc) const = 0;
    /// Whether some item matches; stops at the first that does. False for an empty list.
    [[nodiscard]] virtual bool Any(const TListMatchFunc<T>& matchFunc) const = 0;
    /// The first and the last item. EInvalidOperation "The list is empty".
    [[nodiscard]] virtual T First() const = 0;
    [[nodiscard]] virtual T Last() const = 0;
    /// The first item, or the first that matches; `defaultValue` if there is none.
    [[nodiscard]] virtual T FirstOrDefault(const T& defaultValue) const = 0;
    [[nodiscard]] virtual T FirstOrDefault(const TListMatchFunc<T>& matchFunc,
                                           const T& defaultValue) const = 0;
    /// The items at positions 0 to num - 1; none for a num of 0 or below. A num above the count raises the
    /// EListError of GetItem.
    [[nodiscard]] virtual std::shared_ptr<IList<T>> Take(std::int32_t num) const = 0;
    /// The items from position num to the end; none for a num at or above the count. A negative num raises
    /// the EListError of GetItem.
    [[nodiscard]] virtual std::shared_ptr<IList<T>> Skip(std::int32_t num) const = 0;
    /// All items, sorted as IList::Sort does.
    [[nodiscard]] virtual std::shared_ptr<IList<T>> OrderBy(const TListSortFunc<T>& sortFunc) const = 0;

    /// GetItem.
    [[nodiscard]] T operator[](std::int32_t index) const { return GetItem(index); }

    /// For range-for: a walk that asks for the count at each step, as an enumerator does.
    [[nodiscard]] TIterator begin() const { return TIterator(*this); }
    [[nodiscard]] std::default_sentinel_t end() const noexcept { return {}; }

protected:
    IReadOnlyList() = default;
};

/// The position of a range-for. Must not outlive the list.
template <typename T>
class IReadOnlyList<T>::TIterator {
public:
    using value_type = T;
    using difference_type = std::ptrdiff_t;

    explicit TIterator(const IReadOnlyList& list) noexcept : FList(&list) {}

    [[nodiscard]] T operator*() const { return FList->GetItem(FIndex); }
    TIterator& operator++() noexcept {
        ++FIndex;
        return *this;
    }
    void operator++(int) noexcept { ++FIndex; }
    [[nodiscard]] bool operator==(std::default_sentinel_t) const { return FIndex >= FList->Count(); }

private:
    const IReadOnlyList* FList;
    std::int32_t FIndex = 0;
};

/// A list that can be changed.
template <typename T>
class VARNHOLT_EXPORT IList : public virtual IReadOnlyList<T> {
public:
    /// Appends; returns the position. EListError "List capacity out of bounds" beyond 2147483647 items.
    virtual std::int32_t Add(T item) = 0;
    /// Add for each item that `items` holds at the start of the call, in order; `items` may be this list.
    virtual void AddRange(const IReadOnlyList<T>& items) = 0;
    /// Add for each item, in order. The span must not lie in memory that Add changes.
    virtual void AddArray(std::span<const T> items) = 0;
    /// Removes the first equal item; returns the position it had, -1 if there is none.
    virtual std::int32_t Remove(const T& item) = 0;
    /// Inserts before the first item.
    virtual void Prepend(T item) = 0;
    /// Inserts before a position; the count as position appends. EListError.
    virtual void Insert(std::int32_t index, T item) = 0;
    /// Removes the item at a position. EListError.
    virtual void Delete(std::int32_t index) = 0;
    /// Replaces the item at a position. EListError.
    virtual void SetItem(std::int32_t index, T item) = 0;
    virtual void Clear() = 0;
    /// Sorts the items. Do not count on the order of equal ones. Any comparison will do: one that contradicts
    /// itself gives some order of the same items, and when one raises, the list stays as it was. What
    /// `sortFunc` changes in the list itself is lost.
    virtual void Sort(const TListSortFunc<T>& sortFunc) = 0;
};

/// The walk over any list.
template <typename T>
class VARNHOLT_EXPORT TInterfacedListEnumerator : public IListEnumerator<T> {
public:
    /// The list must outlive the enumerator.
    explicit TInterfacedListEnumerator(const IReadOnlyList<T>& list) noexcept : FList(&list) {}

    [[nodiscard]] T GetCurrent() const override { return FList->GetItem(FIndex); }
    void Reset() override { FIndex = -1; }
    bool MoveNext() override {
        if (FIndex < std::numeric_limits<std::int32_t>::max()) ++FIndex;
        return FIndex < FList->Count();
    }

private:
    const IReadOnlyList<T>* FList;
    std::int32_t FIndex = -1;
};

namespace ListSupport {

/// Raises EArgumentNilException with the parameter's name for a callback that is not set.
VARNHOLT_EXPORT void RequireCallback(bool isSet, StringView name);
/// Raises EListError "List index out of bounds (INDEX)".
[[noreturn]] VARNHOLT_EXPORT void RaiseIndex(std::int32_t index);
/// Raises EListError for a list that holds all the items that it can.
VARNHOLT_EXPORT void RequireRoom(std::size_t count);
/// The positions 0 to count - 1 in the order that `isLess` lays down. Any `isLess` will do.
[[nodiscard]] VARNHOLT_EXPORT std::vector<std::uint32_t> SortedPositions(
    std::size_t count, const std::function<bool(std::uint32_t, std::uint32_t)>& isLess);

}  // namespace ListSupport

/// The list. Make one with std::make_shared or CreateFromArray, or derive a class from it and replace what it
/// does: AddRange and AddArray append through Add, Each walks through GetEnumerator, Contains asks IndexOf, and
/// the queries with a callback, Take, Skip and OrderBy read through Count and GetItem. The rest, Sort with it,
/// works on the items directly. New lists are always plain ones.
template <typename T>
class VARNHOLT_EXPORT TInterfacedList : public virtual IList<T> {
public:
    static_assert(std::copyable<T> && std::equality_comparable<T>, "items are copied and compared");

    TInterfacedList() = default;

    /// A new list of copies of the items.
    [[nodiscard]] static std::shared_ptr<TInterfacedList> CreateFromArray(std::span<const T> items) {
        auto list = std::make_shared<TInterfacedList>();
        list->AddArray(items);
        return list;
    }
    [[nodiscard]] static std::shared_ptr<TInterfacedList> CreateFromArray(std::initializer_list<T> items) {
        return CreateFromArray(std::span<const T>(items.begin(), items.size()));
    }

    std::int32_t Add(T item) override;
    void AddRange(const IReadOnlyList<T>& items) override;
    void AddArray(std::span<const T> items) override;
    void Prepend(T item) override;
    void Insert(std::int32_t index, T item) override;
    void Delete(std::int32_t index) override;
    std::int32_t Remove(const T& item) override;
    [[nodiscard]] std::int32_t Count() const override {
        return static_cast<std::int32_t>(FInternalList.size());
    }
    [[nodiscard]] std::int32_t Count(const TListMatchFunc<T>& func) const override;
    [[nodiscard]] T GetItem(std::int32_t index) const override {
        return FInternalList[CheckedPosition(index)];
    }
    [[nodiscard]] std::int32_t IndexOf(const T& item) const override;
    [[nodiscard]] bool Contains(const T& item) const override { return IndexOf(item) >= 0; }
    void Clear() override;
    [[nodiscard]] bool GetIsEmpty() const override { return FInternalList.empty(); }
    [[nodiscard]] std::shared_ptr<IListEnumerator<T>> GetEnumerator() const override {
        return std::make_shared<TInterfacedListEnumerator<T>>(*this);
    }
    void Each(const TListEachProcedure<T>& eachFunc) const override;
    [[nodiscard]] std::int32_t IndexOfMatch(const TListMatchFunc<T>& matchFunc) const override;
    [[nodiscard]] std::shared_ptr<IList<T>> Where(const TListMatchFunc<T>& matchFunc) const override;
    void Sort(const TListSortFunc<T>& sortFunc) override;
    [[nodiscard]] bool All(const TListMatchFunc<T>& matchFunc) const override;
    [[nodiscard]] bool Any(const TListMatchFunc<T>& matchFunc) const override;
    [[nodiscard]] T FirstOrDefault(const T& defaultValue) const override;
    [[nodiscard]] T FirstOrDefault(const TListMatchFunc<T>& matchFunc, const T& defaultValue) const override;
    [[nodiscard]] std::vector<T> ToArray() const override { return FInternalList; }
    [[nodiscard]] std::shared_ptr<IList<T>> Take(std::int32_t num) const override { return Part(0, num); }
    [[nodiscard]] std::shared_ptr<IList<T>> Skip(std::int32_t num) const override {
        return Part(num, this->Count());
    }
    [[nodiscard]] std::shared_ptr<IList<T>> OrderBy(const TListSortFunc<T>& sortFunc) const override;
    void SetItem(std::int32_t index, T item) final;
    [[nodiscard]] T First() const final;
    [[nodiscard]] T Last() const final;

private:
    [[nodiscard]] std::size_t CheckedPosition(std::int32_t index) const {
        const auto position = static_cast<std::size_t>(index);  // a negative index becomes a huge position
        if (position >= FInternalList.size()) ListSupport::RaiseIndex(index);
        return position;
    }
    void InsertAt(std::size_t position, T item);
    void DeleteAt(std::size_t position);
    [[nodiscard]] std::shared_ptr<IList<T>> Part(std::int32_t begin, std::int32_t end) const;
    template <typename TFound>
    void Walk(const TListMatchFunc<T>& matchFunc, StringView name, bool wanted, TFound found) const;

    std::vector<T> FInternalList;
};

// ---- the operations ----

template <typename T>
std::int32_t TInterfacedList<T>::Add(T item) {
    InsertAt(FInternalList.size(), std::move(item));
    return TInterfacedList::Count() - 1;
}

template <typename T>
void TInterfacedList<T>::AddRange(const IReadOnlyList<T>& items) {
    const std::int32_t count = items.Count();  // as it is now: a list is added to itself once
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
    if (index != TInterfacedList::Count()) (void)CheckedPosition(index);
    InsertAt(static_cast<std::size_t>(index), std::move(item));
}

template <typename T>
void TInterfacedList<T>::InsertAt(std::size_t position, T item) {
    ListSupport::RequireRoom(FInternalList.size());
    FInternalList.insert(FInternalList.begin() + static_cast<std::ptrdiff_t>(position), std::move(item));
}

template <typename T>
void TInterfacedList<T>::Delete(std::int32_t index) {
    DeleteAt(CheckedPosition(index));
}

template <typename T>
void TInterfacedList<T>::DeleteAt(std::size_t position) {
    // The item goes when the list is whole again: its destructor may call back.
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
    const std::size_t position = CheckedPosition(index);
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

/// Calls `found(index, item)` for each item for which `matchFunc` answers `wanted`, until it returns false.
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
std::shared_ptr<IList<T>> TInterfacedList<T>::Where(const TListMatchFunc<T>& matchFunc) const {
    auto list = std::make_shared<TInterfacedList>();
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
std::shared_ptr<IList<T>> TInterfacedList<T>::Part(std::int32_t begin, std::int32_t end) const {
    auto list = std::make_shared<TInterfacedList>();
    for (std::int32_t i = begin; i < end; ++i) list->Add(this->GetItem(i));
    return list;
}

template <typename T>
std::shared_ptr<IList<T>> TInterfacedList<T>::OrderBy(const TListSortFunc<T>& sortFunc) const {
    auto list = Part(0, this->Count());
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

extern template class TInterfacedListEnumerator<Variant>;
extern template class TInterfacedListEnumerator<String>;
extern template class TInterfacedList<Variant>;
extern template class TInterfacedList<String>;

}  // namespace Varnholt
