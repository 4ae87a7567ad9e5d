#include "Desktop/Station/ExpressionField.h"

#include "Desktop/Station/RowExpression.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt::Station {
namespace {

constexpr TColor kErrorColor = 0x2020C0;

}  // namespace

TExpressionField::TExpressionField()
    : Edit(Add<TEdit>(u"edExpression")), Words(Add<TComboBox>(u"cbWords")), Error(Add<TLabel>(u"lbError")) {
    SetBounds(0, 0, 400, 46);
    Edit.SetBounds(0, 0, 240, 25);
    Edit.SetAnchors({akLeft, akTop, akRight});
    Words.SetBounds(248, 0, 152, 25);
    Words.SetAnchors({akTop, akRight});
    Words.SetHint(u"Columns and functions: the chosen one goes into the expression");
    Error.SetBounds(2, 28, 396, 17);
    Error.SetAnchors({akLeft, akTop, akRight});
    Error.SetFont({.Color = kErrorColor});
    Edit.SetOnChange([this](TObject*) { Check(); });
    Words.SetOnChange([this](TObject*) { InsertWord(); });
}

TExpressionField::~TExpressionField() = default;

void TExpressionField::SetTable(const TStationTable* table) {
    FTable = table;
    Words.GetItems().SetLines(table == nullptr ? std::vector<String>() : Vocabulary(*table));
    Words.SetText(u"Insert");
    Check();
}

std::optional<String> TExpressionField::GetValid() const {
    return Error.GetCaption().empty() ? std::optional(String(TrimView(Edit.GetText()))) : std::nullopt;
}

void TExpressionField::Check() {
    String error;
    try {
        if (FTable != nullptr && !TrimView(Edit.GetText()).empty())
            static_cast<void>(TRowExpression(*FTable, Edit.GetText()));
    } catch (const Exception& failure) {
        error = failure.GetMessage();
    }
    Error.SetCaption(error);
    const TNotifyEvent onChecked = FOnChecked;
    onChecked(this);
}

/// Between the brackets of a function is the place of its first parameter.
void TExpressionField::InsertWord() {
    const std::int32_t index = Words.GetItemIndex();
    if (index < 0) return;
    const String word = Words.GetItems()[index];
    Words.SetText(u"Insert");
    if (!Edit.TypeByUser(word)) return;
    if (const std::size_t bracket = word.find(u'('); bracket != String::npos)
        Edit.Select(Edit.GetSelStart() - static_cast<std::int32_t>(word.size() - bracket - 1), 0);
}

}  // namespace Varnholt::Station
