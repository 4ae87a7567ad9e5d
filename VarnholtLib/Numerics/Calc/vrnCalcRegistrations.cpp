#include "VarnholtLib/Numerics/Calc/vrnCalcRegistrationsPrivate.h"

#include <unordered_set>

#include "Platform/Runtime/Indexes.h"

#include "VarnholtLib/Numerics/Calc/vrnCalcBuiltInsPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcTreePrivate.h"

namespace Varnholt {

// --- Registering and finding ---

// If allocation fails nothing is registered.
template <typename TAdd>
void TCalc::Register(TAdd add) {
    if (FRegistered) {
        add(*FRegistered);
    } else {
        auto registered = std::make_unique<TCalcRegistrations>();
        add(*registered);
        FRegistered = std::move(registered);
        if (FIsInner) FTree->CountInnerScope(1);
    }
    FTree->CountRegistration();
}

void TCalc::RegisterFunction(StringView name, int minParams, int maxParams, TFunctionEvent event) {
    auto function = std::make_unique<const TFunction>(name, minParams, maxParams, std::move(event));
    const StringView key = function->GetName();
    Register([&](TCalcRegistrations& list) { list.Functions.Add(std::move(function), key); });
}

void TCalc::RegisterKeyword(StringView name, void* param, TKeywordEvent event) {
    AddKeyword(std::make_unique<TKeyword>(*this, name, param, std::move(event)));
}

void TCalc::AddKeyword(std::unique_ptr<TKeyword> keyword) {
    const StringView key = keyword->GetKeyword();
    Register([&](TCalcRegistrations& list) { list.Keywords.Add(std::move(keyword), key); });
}

void TCalc::RegisterKeyword(StringView name, TKeywordEvent event) {
    RegisterKeyword(name, nullptr, std::move(event));
}

namespace {

template <typename T>
Extended ReadVariable(TCalc&, const String&, void* param) {
    return Extended{*static_cast<const T*>(param)};
}

}  // namespace

// The pointer of a variable is that of a keyword's callback, which only reads.
template <typename T>
void TCalc::RegisterReader(StringView name, const T* variable) {
    if (variable == nullptr) throw EArgumentNilException(u"A variable needs an address: " + String(name));
    auto keyword = std::make_unique<TKeyword>(*this, name, const_cast<T*>(variable), ReadVariable<T>);
    keyword->FIsVariable = std::is_same_v<T, double>;
    AddKeyword(std::move(keyword));
}

void TCalc::RegisterVariable(StringView name, const double* variable) {
    RegisterReader(name, variable);
}

void TCalc::RegisterVariable(StringView name, const float* variable) {
    RegisterReader(name, variable);
}

void TCalc::RegisterVariable(StringView name, const Extended* variable) {
    RegisterReader(name, variable);
}

// Usually nothing is registered between a nested evaluator and its top.
const TCalc* TCalc::NextInChain() const noexcept {
    return FIsInner && !FTree->HasInnerScopes() ? &FTree->GetTop() : GetCalc();
}

const TFunction* TCalc::FindFunction(StringView name) const {
    if (const TFunction* builtIn = FindBuiltIn(name)) return builtIn;
    for (const TCalc* calc = this; calc != nullptr; calc = calc->NextInChain()) {
        if (!calc->FRegistered) continue;
        if (const TFunction* function = calc->FRegistered->Functions.Find(name)) return function;
    }
    return nullptr;
}

TKeyword* TCalc::FindKeyword(StringView name) const {
    for (const TCalc* calc = this; calc != nullptr; calc = calc->NextInChain()) {
        if (!calc->FRegistered) continue;
        if (TKeyword* keyword = calc->FRegistered->Keywords.Find(name)) return keyword;
    }
    return nullptr;
}

int TCalc::Get_FunctionCount() const noexcept {
    const int own = FRegistered ? FRegistered->Functions.GetCount() : 0;
    return static_cast<int>(BuiltInFunctions().size()) + own;
}

const TFunction& TCalc::Get_Function(int index) const {
    const std::span<const TFunction> builtIns = BuiltInFunctions();
    const std::size_t position = ListIndex(index, static_cast<std::size_t>(Get_FunctionCount()));
    if (position < builtIns.size()) return builtIns[position];
    return FRegistered->Functions[position - builtIns.size()];
}

int TCalc::Get_KeywordCount() const noexcept {
    return FRegistered ? FRegistered->Keywords.GetCount() : 0;
}

TKeyword& TCalc::Get_Keyword(int index) const {
    const std::size_t position = ListIndex(index, static_cast<std::size_t>(Get_KeywordCount()));
    return FRegistered->Keywords[position];
}

TCalcScopes::TCalcScopes(const TCalc& calc) : FCalc(calc), FHasInner(calc.GetTree().HasInnerScopes()) {
    if (!FHasInner) return;
    for (const TCalc* outer = calc.NextInChain(); outer != nullptr; outer = outer->NextInChain()) {
        if (outer->FRegistered) FScopes.push_back(outer->FRegistered.get());
    }
    std::ranges::reverse(FScopes);
}

std::size_t TCalcScopes::Enter(const TCalc& calc) {
    const std::size_t entered = FScopes.size();
    if (FHasInner && calc.FRegistered) FScopes.push_back(calc.FRegistered.get());
    return entered;
}

TKeyword* TCalcScopes::FindKeyword(StringView name) const {
    if (!FHasInner) return FCalc.FindKeyword(name);
    for (auto scope = FScopes.rbegin(); scope != FScopes.rend(); ++scope) {
        if (TKeyword* keyword = (*scope)->Keywords.Find(name)) return keyword;
    }
    return nullptr;
}

// --- Keywords in use ---

namespace {

/// Lists the keywords that the items of evaluators name.
class TKeywordWalk {
public:
    TKeywordWalk(std::vector<TKeyword*>& list, bool includeWithoutParam, bool allowDuplicates)
        : FList(list), FIncludeWithoutParam(includeWithoutParam), FAllowDuplicates(allowDuplicates) {
        if (!allowDuplicates) FListed.insert(list.begin(), list.end());
    }

    void Run(const TCalc& calc) {
        TCalcScopes scopes(calc);
        FPlaces.push_back({&calc});
        while (!FPlaces.empty()) {
            TPlace& place = FPlaces.back();
            const TCalc& current = *place.Calc;
            if (place.Item == 0) place.Entered = scopes.Enter(current);
            if (place.Item < current.Get_Count() && Visit(current.GetItems(place.Item++), scopes)) continue;
            scopes.Leave(FPlaces.back().Entered);
            FPlaces.pop_back();
        }
    }

private:
    /// A list of items under way; the evaluators of its groups and parameters are walked before it continues.
    struct TPlace {
        const TCalc* Calc;
        int Item = 0;
        std::size_t Entered = 0;
    };

    // Returns false at a keyword that is left out.
    bool Visit(const TCalcObj& item, const TCalcScopes& scopes) {
        if (item.GetKind() == TCalcKind::FunctionNum) {
            const TCalcList& params = static_cast<const TFunctionNum&>(item).GetParams();
            for (auto param = params.rbegin(); param != params.rend(); ++param) FPlaces.push_back({*param});
        } else if (item.GetKind() == TCalcKind::Brackets) {
            FPlaces.push_back({&static_cast<const TBrackets&>(item).GetNewCalc()});
        } else if (item.GetKind() == TCalcKind::KeywordNum) {
            return Add(scopes.FindKeyword(static_cast<const TKeywordNum&>(item).GetKeyword()));
        }
        return true;
    }

    bool Add(TKeyword* keyword) {
        if (keyword == nullptr) throw ECalcException(ceKeyword);
        if (!FIncludeWithoutParam && keyword->GetParam() == nullptr) return false;
        if (!FAllowDuplicates && !FListed.insert(keyword).second) return false;
        FList.push_back(keyword);
        return true;
    }

    std::vector<TKeyword*>& FList;
    bool FIncludeWithoutParam;
    bool FAllowDuplicates;
    std::unordered_set<const TKeyword*> FListed;
    std::vector<TPlace> FPlaces;
};

}  // namespace

void TCalc::GetKeywordsUsed(std::vector<TKeyword*>& list, bool includeWithoutParam, bool allowDuplicates,
                            bool walkParent) const {
    TKeywordWalk walk(list, includeWithoutParam, allowDuplicates);
    walk.Run(*this);
    if (!walkParent) return;
    for (const TCalc* parent = GetCalc(); parent != nullptr; parent = parent->GetCalc()) walk.Run(*parent);
}

}  // namespace Varnholt
