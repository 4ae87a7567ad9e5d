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

#include "Platform/Runtime/Types.h"

/// The interfaces of the library's list, and its class, with the contract of each operation. Include
/// vrnList.h, which describes the list as a whole and brings the bodies of the class.
///
/// Threads: as for the lists.
namespace Varnholt {

/// Returns whether an item matches.
template <typename T>
using TListMatchFunc = std::function<bool(const T&)>;

/// Takes an item.
template <typename T>
using TListEachProcedure = std::function<void(const T&)>;

/// Compares two items: below 0, 0 or above 0 if the first belongs before, beside or after the second.
template <typename T>
using TListSortFunc = std::function<std::int32_t(const T&, const T&)>;

template <typename T>
class IList;

/// A reference to a list that was made for the caller. It is a shared_ptr, with one difference: a reference
/// that is about to be destroyed cannot be dereferenced, because the list may be destroyed with it. So `for
/// (const T& item : *list->Where(isWet))`, which would run over a destroyed list, does not compile. Loop over
/// the reference itself, which keeps the list alive for the whole loop:
///
///     for (const String& name : list->Where(isWet)) Show(name);
template <typename T, typename TList = IList<T>>
class TNewList : public std::shared_ptr<TList> {
public:
    using std::shared_ptr<TList>::shared_ptr;
    TNewList(std::shared_ptr<TList> list) noexcept : std::shared_ptr<TList>(std::move(list)) {}

    [[nodiscard]] TList& operator*() const& noexcept { return *this->get(); }
    void operator*() const&& = delete;

    [[nodiscard]] auto begin() const { return this->get()->begin(); }
    [[nodiscard]] std::default_sentinel_t end() const noexcept { return {}; }
};

/// A walk over a list. It reads the list as it is at each step, and must not outlive it.
template <typename T>
class VARNHOLT_EXPORT IListEnumerator {
public:
    virtual ~IListEnumerator() = default;
    IListEnumerator(const IListEnumerator&) = delete;
    IListEnumerator& operator=(const IListEnumerator&) = delete;

    /// The current item. EListError before the first MoveNext (index -1) and after the end.
    [[nodiscard]] virtual T GetCurrent() const = 0;
    /// Returns to the position before the first item.
    virtual void Reset() = 0;
    /// Advances by one. False after the end of the list as it is now.
    virtual bool MoveNext() = 0;

protected:
    IListEnumerator() = default;
};

/// A list that can be read. An interface that extends this one or IList derives from it virtually, so that a
/// class can derive from both that interface and TInterfacedList.
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
    /// A new walk, positioned before the first item.
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
    [[nodiscard]] virtual TNewList<T> Where(const TListMatchFunc<T>& matchFunc) const = 0;
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
    [[nodiscard]] virtual TNewList<T> Take(std::int32_t num) const = 0;
    /// The items from position num to the end; none for a num at or above the count. A negative num raises
    /// the EListError of GetItem.
    [[nodiscard]] virtual TNewList<T> Skip(std::int32_t num) const = 0;
    /// All items, sorted as IList::Sort does.
    [[nodiscard]] virtual TNewList<T> OrderBy(const TListSortFunc<T>& sortFunc) const = 0;

    /// GetItem.
    [[nodiscard]] T operator[](std::int32_t index) const { return GetItem(index); }

    /// For range-for: a walk that reads the count at each step, as an enumerator does. See TNewList for loops
    /// over the list that a query returns.
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
    /// Add for each item, in order. The span must not refer to memory that Add changes.
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
    /// Sorts the items with about n log2(n) comparisons. The order of equal ones is unspecified. A comparison
    /// that contradicts itself gives some order of the same items; if one raises, the list is unchanged.
    /// Changes that `sortFunc` makes to the list itself are lost.
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

/// The list. Create one with std::make_shared or CreateFromArray, or derive a class from it and override
/// operations: AddRange and AddArray append through Add, Each walks through GetEnumerator, Contains calls
/// IndexOf, GetIsEmpty calls Count, and the queries with a callback, Take, Skip and OrderBy read through
/// Count and GetItem. The others, such as Sort, work on the items directly. New lists are always of this
/// class.
template <typename T>
class VARNHOLT_EXPORT TInterfacedList : public virtual IList<T> {
public:
    static_assert(std::copyable<T> && std::equality_comparable<T>, "items are copied and compared");

    TInterfacedList() = default;

    /// A new list of copies of the items.
    [[nodiscard]] static TNewList<T, TInterfacedList> CreateFromArray(std::span<const T> items);
    [[nodiscard]] static TNewList<T, TInterfacedList> CreateFromArray(std::initializer_list<T> items);

    std::int32_t Add(T item) override;
    void AddRange(const IReadOnlyList<T>& items) override;
    void AddArray(std::span<const T> items) override;
    void Prepend(T item) override;
    void Insert(std::int32_t index, T item) override;
    void Delete(std::int32_t index) override;
    std::int32_t Remove(const T& item) override;
    [[nodiscard]] std::int32_t Count() const override;
    [[nodiscard]] std::int32_t Count(const TListMatchFunc<T>& func) const override;
    [[nodiscard]] T GetItem(std::int32_t index) const override;
    [[nodiscard]] std::int32_t IndexOf(const T& item) const override;
    [[nodiscard]] bool Contains(const T& item) const override;
    void Clear() override;
    [[nodiscard]] bool GetIsEmpty() const override;
    [[nodiscard]] std::shared_ptr<IListEnumerator<T>> GetEnumerator() const override;
    void Each(const TListEachProcedure<T>& eachFunc) const override;
    [[nodiscard]] std::int32_t IndexOfMatch(const TListMatchFunc<T>& matchFunc) const override;
    [[nodiscard]] TNewList<T> Where(const TListMatchFunc<T>& matchFunc) const override;
    void Sort(const TListSortFunc<T>& sortFunc) override;
    [[nodiscard]] bool All(const TListMatchFunc<T>& matchFunc) const override;
    [[nodiscard]] bool Any(const TListMatchFunc<T>& matchFunc) const override;
    [[nodiscard]] T FirstOrDefault(const T& defaultValue) const override;
    [[nodiscard]] T FirstOrDefault(const TListMatchFunc<T>& matchFunc, const T& defaultValue) const override;
    [[nodiscard]] std::vector<T> ToArray() const override;
    [[nodiscard]] TNewList<T> Take(std::int32_t num) const override;
    [[nodiscard]] TNewList<T> Skip(std::int32_t num) const override;
    [[nodiscard]] TNewList<T> OrderBy(const TListSortFunc<T>& sortFunc) const override;
    void SetItem(std::int32_t index, T item) final;
    [[nodiscard]] T First() const final;
    [[nodiscard]] T Last() const final;

private:
    void InsertAt(std::size_t position, T item);
    void DeleteAt(std::size_t position);
    [[nodiscard]] TNewList<T> Part(std::int32_t begin, std::int32_t end) const;
    template <typename TFound>
    void Walk(const TListMatchFunc<T>& matchFunc, StringView name, bool wanted, TFound found) const;

    std::vector<T> FInternalList;
};

}  // namespace Varnholt
