#include "VarnholtLib/Numerics/Calc/vrnCalc.h"

#include "Platform/Runtime/Indexes.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcCleanupPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcParserPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcProgramPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcRegistrationsPrivate.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcTreePrivate.h"

namespace Varnholt {

TCalc::TCalc() : TCalc(nullptr) {}

TCalc::TCalc(TCalc* parent)
    : TCalcObj(parent, TCalcKind::Calc), FTree(std::make_unique<TCalcTree>(*this).release()) {}

TCalc::TCalc(StringView expression) : TCalc(nullptr, expression) {}

TCalc::TCalc(TCalc* parent, StringView expression) : TCalc(parent) {
    Set_Exp(expression);
}

TCalc::TCalc(TCalcOwnerKey, TCalc& owner, TCalcText text) noexcept
    : TCalcObj(&owner, TCalcKind::Calc), FIsInner(true), FExp(std::move(text)), FTree(owner.FTree) {}

TCalc::~TCalc() {
    FreeItems(FItems);
    if (FIsInner && FRegistered) FTree->CountInnerScope(-1);
    const std::unique_ptr<TCalcTree> owned(FIsInner ? nullptr : FTree);
}

TCalc* TCalc::NextToEmpty() noexcept {
    return FItems.empty() ? nullptr : this;
}

// Empties the evaluators inside the last item before it deletes that item, and returns from each by its owner.
// So it needs neither recursion nor memory.
void TCalc::FreeItems(TItemList& items) noexcept {
    TItemList* list = &items;
    const TCalc* emptied = nullptr;
    for (std::size_t depth = 0;;) {
        if (list->empty()) {
            if (depth == 0) return;
            TCalc* const owner = emptied->GetCalc();
            list = --depth == 0 ? &items : &owner->FItems;
            emptied = owner;
        } else if (TCalc* const inner = list->back()->NextToEmpty()) {
            list = &inner->FItems;
            emptied = inner;
            ++depth;
        } else {
            list->pop_back();
        }
    }
}

// --- Text ---

void TCalc::Set_Exp(StringView expression) {
    ParseText(String(expression));
}

void TCalc::Parse() {
    ParseText(Get_Exp());
}

void TCalc::ParseText(String text) {
    CalcCleanup::Expression(text);
    TCalcText cleaned = TCalcText::Of(std::move(text));
    if (auto room = FTree->MakeRoomToRetire()) {
        room->Items.swap(FItems);
        room->Program = std::move(FProgram);
        FTree->Retire(std::move(room));
    }
    FreeItems(FItems);
    FProgram.reset();
    FExp = std::move(cleaned);
    FTree->CountParse();
    FPure = true;
    // The evaluators above may become impure by this parse; whether they stay pure is not worth finding out.
    for (TCalc* calc = this; calc->FIsInner; calc = calc->GetCalc()) calc->GetCalc()->FPure = false;
    if (FExp.Length == 0) throw ECalcException(ceSyntax);
    TCalcParser(*this).Run();
    PreparePrograms();
}

template <typename TPass>
void TCalc::CleanText(TPass pass) {
    String text = Get_Exp();
    pass(text);
    FExp = TCalcText::Of(std::move(text));
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

// --- Items and calculation ---

TCalcObj& TCalc::GetItems(int index) const {
    return *FItems[ListIndex(index, FItems.size())];
}

Extended TCalc::Calculate() {
    const TCalcProgram* const program = FProgram.get();
    if (program == nullptr || !program->IsReady()) return CalculateAnew();
    if (program->IsQuiet()) return program->Execute();  // no call that could nest
    return FTree->Run([program] { return program->Execute(); });
}

// For a program that has to be made first, or that needs more than Execute.
Extended TCalc::CalculateAnew() {
    if (!FProgram || FProgram->IsStale()) PreparePrograms();
    return FTree->Run([this] { return FProgram->Run(); });
}

// Also prepares the parameters that callbacks will calculate, so that a later Calculate finds all done.
void TCalc::PreparePrograms() {
    std::vector<TCalc*> pending{this};
    while (!pending.empty()) {
        TCalc& calc = *pending.back();
        pending.pop_back();
        if (calc.FProgram && !calc.FProgram->IsStale()) continue;
        auto program = std::make_unique<TCalcProgram>(calc, calc.FPure, pending);
        if (auto room = calc.FProgram ? FTree->MakeRoomToRetire() : nullptr) {
            room->Program = std::move(calc.FProgram);
            FTree->Retire(std::move(room));
        }
        calc.FProgram = std::move(program);
    }
}

}  // namespace Varnholt
