#pragma once

#include "Desktop/Station/StationTable.h"
#include "Platform/Controls/Edits.h"
#include "Platform/Controls/Labels.h"
#include "Platform/Controls/Lists.h"

namespace Varnholt::Station {

/// A field for an expression over a table, with a list of its keywords and functions, and what is wrong with the
/// expression below it while it is typed.
class TExpressionField final : public TPanel {
public:
    TExpressionField();
    ~TExpressionField() override;

    /// The table, or null; it must live until another one is set.
    void SetTable(const TStationTable* table);
    /// The text if it is an expression over the table, or empty; none if it is wrong.
    [[nodiscard]] std::optional<String> GetValid() const;
    /// Raised after each change of the text.
    void SetOnChecked(TNotifyEvent onChecked) { FOnChecked = std::move(onChecked); }

    TEdit& Edit;
    TComboBox& Words;
    TLabel& Error;

private:
    void Check();
    void InsertWord();

    const TStationTable* FTable = nullptr;
    TNotifyEvent FOnChecked;
};

}  // namespace Varnholt::Station
