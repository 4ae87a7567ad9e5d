#pragma once

#include <algorithm>
#include <memory>
#include <unordered_map>
#include <vector>

#include "VarnholtLib/Numerics/Calc/vrnCalc.h"

namespace Varnholt {

/// Named objects in the order of their registration; the first one of a name is the one that is found.
template <typename T>
class TNameList {
public:
    /// The name is that of the item. If allocation fails the list is unchanged.
    void Add(std::unique_ptr<T> item, StringView name) {
        if (FItems.size() == FItems.capacity()) FItems.reserve(std::max(kFirstRoom, 2 * FItems.size()));
        FFirstOfName.try_emplace(name, item.get());
        FItems.push_back(std::move(item));
    }
    [[nodiscard]] T* Find(StringView name) const {
        const auto found = FFirstOfName.find(name);
        return found == FFirstOfName.end() ? nullptr : found->second;
    }
    [[nodiscard]] int GetCount() const noexcept { return static_cast<int>(FItems.size()); }
    [[nodiscard]] T& operator[](std::size_t index) const { return *FItems[index]; }

private:
    static constexpr std::size_t kFirstRoom = 4;

    std::vector<std::unique_ptr<T>> FItems;
    std::unordered_map<StringView, T*> FFirstOfName;
};

/// What has been registered on one evaluator.
struct TCalcRegistrations {
    TNameList<const TFunction> Functions;
    TNameList<TKeyword> Keywords;  // freed first
};

/// The evaluators with registrations of their own around the place that a walk over items has reached. Each
/// look-up visits only these, however deep the place is.
class TCalcScopes {
public:
    /// For a walk that begins at the evaluator, before it enters it.
    explicit TCalcScopes(const TCalc& calc);

    /// Goes into an evaluator below; the result is what Leave needs.
    std::size_t Enter(const TCalc& calc);
    [[nodiscard]] std::size_t GetDepth() const noexcept { return FScopes.size(); }
    void Leave(std::size_t entered) { FScopes.resize(entered); }
    /// As TCalc::FindKeyword, from the place reached.
    [[nodiscard]] TKeyword* FindKeyword(StringView name) const;

private:
    const TCalc& FCalc;
    bool FHasInner;                                  // else no list is needed
    std::vector<const TCalcRegistrations*> FScopes;  // the nearest one last
};

}  // namespace Varnholt
