#include "VarnholtLib/Numerics/Calc/vrnCalc.h"

#include <algorithm>
#include <unordered_map>

#include "VarnholtLib/Numerics/Calc/vrnCalcBuiltInsPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcCleanupPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcParserPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcProgramPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcRunScopePrivate.h"

namespace Varnholt {
namespace {

/// Named objects in the order of their registration; the first one of a name is the one that is found.
template <typename T>
class TNameList {
public:
    void Add(std::unique_ptr<T> item, StringView name) {
        FItems.push_back(std::move(item));
        FFirstOfName.try_emplace(name, FItems.back().get());
    }
    [[nodiscard]] T* Find(StringView name) const {
        const auto found = FFirstOfName.find(name);
        return found == FFirstOfName.end() ? nullptr : found->second;
    }
    [[nodiscard]] int GetCount() const noexcept { return static_cast<int>(FItems.size()); }
    [[nodiscard]] T& operator[](int index) const {
        if (index < 0 || index >= GetCount()) throw EListError::IndexOutOfBounds(index);
        return *FItems[static_cast<std::size_t>(index)];
    }

private:
    std::vector<std::unique_ptr<T>> FItems;
    std::unordered_map<StringView, T*> FFirstOfName;  // the names are those of the items
};

}  // namespace

struct TCalc::TRegistrations {
    TNameList<const TFunction> Functions;
    TNameList<TKeyword> Keywords;  // freed first
};

TCalc::TCalc() : TCalc(nullptr) {}

TCalc::TCalc(TCalc* parent) : TCalcObj(parent, TCalcKind::Calc), FTop(this) {}

TCalc::TCalc(StringView expression) : TCalc(nullptr, expression) {}

TCalc::TCalc(TCalc* parent, StringView expression) : TCalc(parent) {
    Set_Exp(expression);
}

TCalc::TCalc(TOwnerKey, TCalc& owner, TCalcText text) noexcept
    : TCalcObj(&owner, TCalcKind::Calc), FExp(std::move(text)), FTop(owner.FTop) {
    FOwnedByItem = true;
}

TCalc::~TCalc() {
    TRunScope::FreeItems(FItems);
}

void TCalc::SurrenderItems(TItemList& heirs) {
    std::ranges::move(FItems, std::back_inserter(heirs));
    FItems.clear();
}

void TCalc::ReleaseItems() {
    if (FTop->FRunDepth == 0) {
        TRunScope::FreeItems(FItems);
        FProgram.reset();
        return;
    }
    if (!FTop->FRetired) FTop->FRetired = std::make_unique<TRetired>();
    SurrenderItems(FTop->FRetired->Items);
    FTop->FRetired->Programs.push_back(std::move(FProgram));
}

// Text.

void TCalc::SetText(String text) {
    const std::size_t length = text.size();
    FExp = {std::make_shared<const String>(std::move(text)), 0, length};
}

void TCalc::Set_Exp(StringView expression) {
    ParseText(String(expression));
}

void TCalc::Parse() {
    ParseText(Get_Exp());
}

void TCalc::ParseText(String text) {
    CalcCleanup::Expression(text);
    ReleaseItems();
    SetText(std::move(text));
    ++FTop->FChanges;
    FPure = true;
    // The evaluators above may become impure by this parse; whether they stay pure is not worth finding out.
    for (TCalc* calc = this; calc->FOwnedByItem; calc = calc->FCalc) calc->FCalc->FPure = false;
    if (FExp.Length == 0) throw ECalcException(ceSyntax);
    TCalcParser(*this).Run();
    PreparePrograms();
}

template <typename TPass>
void TCalc::CleanText(TPass pass) {
    String text = Get_Exp();
    pass(text);
    SetText(std::move(text));
}

void TCalc::CleanupClumpedSpaces() {
    CleanText(CalcCleanup::ClumpedSpaces);
}

void TCalc::CleanupSpacesAroundBrackets() {
    CleanupSpacesAfterOpeningBrackets();
    CleanupSpacesBeforeClosingBrackets();
}

void TCalc::CleanupSpacesAfterOpeningBrackets() {
    CleanText(CalcCleanup::SpacesAfterOpeningBrackets);
}

void TCalc::CleanupSpacesBeforeClosingBrackets() {
    CleanText(CalcCleanup::SpacesBeforeClosingBrackets);
}

void TCalc::CleanupMakeSureOneSpaceAroundChars() {
    CleanText(CalcCleanup::SpacesAroundOperators);
    CleanupRemoveSpaceAfterNegativeModifier();
}

void TCalc::CleanupMakeSureOneSpaceAround(Char character) {
    CleanText([character](String& text) { CalcCleanup::MakeSureOneSpaceAround(text, {&character, 1}); });
}

void TCalc::CleanupRemoveSpaceAfterNegativeModifier() {
    CleanText(CalcCleanup::RemoveSpaceAfterNegativeModifier);
}

bool TCalc::CleanupIsLastItemADigit(int position) const {
    return position > 0 && CalcCleanup::IsLastItemADigit(FExp.View(), static_cast<std::size_t>(position));
}

void TCalc::CleanupExp() {
    CleanText(CalcCleanup::Expression);
}

// Items and calculation.

TCalcObj& TCalc::GetItems(int index) const {
    if (index < 0 || index >= Get_Count()) throw EListError::IndexOutOfBounds(index);
    return *FItems[static_cast<std::size_t>(index)];
}

Extended TCalc::Calculate() {
    Extended slots[TCalcProgram::kStackSlots];
    if (!FProgram || !FProgram->IsReady(FTop->FChanges)) return CalculateAnew(slots);
    TRunScope scope(*this);
    return scope.Leave(FProgram->Execute(slots));
}

// The way of a program that is not ready: it may have to be made or bound first.
Extended TCalc::CalculateAnew(Extended* slots) {
    if (!FProgram || !FProgram->IsBound(FTop->Stamp())) RefreshProgram();
    TRunScope scope(*this);
    return scope.Leave(FProgram->Run(slots));
}

// Makes a program of the items as they are, or binds the keywords of the present one to the registrations as
// they are.
void TCalc::RefreshProgram() {
    if (FProgram && FProgram->GetParses() == ParsesInTree()) {
        FProgram->BindKeywords();
    } else {
        PreparePrograms();
    }
}

// Also prepares the parameters that callbacks will calculate, so that a later Calculate finds all done.
void TCalc::PreparePrograms() {
    std::vector<TCalc*> pending{this};
    while (!pending.empty()) {
        TCalc& calc = *pending.back();
        pending.pop_back();
        if (calc.FProgram && calc.FProgram->GetParses() == ParsesInTree()) continue;
        auto program = std::make_unique<TCalcProgram>(calc, pending);
        if (calc.FProgram && FTop->FRunDepth > 0) {
            if (!FTop->FRetired) FTop->FRetired = std::make_unique<TRetired>();
            FTop->FRetired->Programs.push_back(std::move(calc.FProgram));
        }
        calc.FProgram = std::move(program);
    }
}

// Registrations.

TCalc::TRegistrations& TCalc::OwnRegistrations() {
    if (!FRegistered) FRegistered = std::make_unique<TRegistrations>();
    return *FRegistered;
}

void TCalc::CountRegistration() {
    ++FTop->FChanges;
    ++FTop->FRegistrations;
    if (FTop != this) ++FTop->FInnerRegistrations;
}

// Counts only grow, so equal sums mean that none of them changed.
std::uint64_t TCalc::RegistrationsAbove() const noexcept {
    std::uint64_t count = 0;
    for (const TCalc* parent = FCalc; parent != nullptr; parent = parent->FTop->FCalc) {
        count += parent->FTop->FRegistrations;
    }
    return count;
}

// Where the search for a name goes on: usually nothing is registered between a nested evaluator and its top.
const TCalc* TCalc::NextInChain() const noexcept {
    return FTop != this && FTop->FInnerRegistrations == 0 ? FTop : FCalc;
}

void TCalc::RegisterFunction(StringView name, int minParams, int maxParams, TFunctionEvent event) {
    auto function = std::make_unique<const TFunction>(name, minParams, maxParams, std::move(event));
    const StringView key = function->GetName();
    OwnRegistrations().Functions.Add(std::move(function), key);
    CountRegistration();
}

void TCalc::RegisterKeyword(StringView name, void* param, TKeywordEvent event) {
    auto keyword = std::make_unique<TKeyword>(*this, name, param, std::move(event));
    const StringView key = keyword->GetKeyword();
    OwnRegistrations().Keywords.Add(std::move(keyword), key);
    CountRegistration();
}

void TCalc::RegisterKeyword(StringView name, TKeywordEvent event) {
    RegisterKeyword(name, nullptr, std::move(event));
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
    if (index < 0 || index >= Get_FunctionCount()) throw EListError::IndexOutOfBounds(index);
    const auto position = static_cast<std::size_t>(index);
    if (position < builtIns.size()) return builtIns[position];
    return FRegistered->Functions[static_cast<int>(position - builtIns.size())];
}

int TCalc::Get_KeywordCount() const noexcept {
    return FRegistered ? FRegistered->Keywords.GetCount() : 0;
}

TKeyword& TCalc::Get_Keyword(int index) const {
    if (index < 0 || index >= Get_KeywordCount()) throw EListError::IndexOutOfBounds(index);
    return FRegistered->Keywords[index];
}

// Keywords in use.

void TCalc::GetKeywordsUsed(std::vector<TKeyword*>& list, bool includeWithoutParam, bool allowDuplicates,
                            bool walkParent) const {
    WalkKeywords(list, includeWithoutParam, allowDuplicates);
    if (!walkParent) return;
    for (const TCalc* parent = FCalc; parent != nullptr; parent = parent->FCalc) {
        parent->WalkKeywords(list, includeWithoutParam, allowDuplicates);
    }
}

void TCalc::WalkKeywords(std::vector<TKeyword*>& list, bool includeWithoutParam, bool allowDuplicates) const {
    // A list of items that is under way; the evaluators of its groups and parameters are walked before it
    // goes on.
    struct TPlace {
        const TCalc* Calc;
        std::size_t Item;
    };
    std::vector<TPlace> places{{this, 0}};
    while (!places.empty()) {
        TPlace& place = places.back();
        if (place.Item >= place.Calc->FItems.size()) {
            places.pop_back();
            continue;
        }
        const TCalcObj& item = *place.Calc->FItems[place.Item++];
        if (item.GetKind() == TCalcKind::KeywordNum) {
            TKeyword* keyword = static_cast<const TKeywordNum&>(item).GetKeywordObject();
            if (keyword == nullptr) throw ECalcException(ceKeyword);
            const bool unwanted = !includeWithoutParam && keyword->GetParam() == nullptr;
            const bool listed = !allowDuplicates && std::ranges::find(list, keyword) != list.end();
            if (unwanted || listed) {
                places.pop_back();
            } else {
                list.push_back(keyword);
            }
        } else if (item.GetKind() == TCalcKind::FunctionNum) {
            const TCalcList& params = static_cast<const TFunctionNum&>(item).GetParams();
            for (auto param = params.rbegin(); param != params.rend(); ++param) places.push_back({*param, 0});
        } else if (item.GetKind() == TCalcKind::Brackets) {
            places.push_back({&static_cast<const TBrackets&>(item).GetNewCalc(), 0});
        }
    }
}

}  // namespace Varnholt
