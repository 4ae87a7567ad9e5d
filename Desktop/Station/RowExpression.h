#pragma once

#include <optional>
#include <vector>

#include "VarnholtLib/Numerics/vrnMath.h"

/// An expression over the rows of a table, with the columns as keywords.
///
/// Beside the functions of the evaluator there are comparisons and what goes with them, which give 1 or 0: `@lt(a,b)`, `@le`,
/// `@gt`, `@ge`, `@eq`, `@ne`; `@and(a,b,...)`, `@or(a,b,...)`, `@not(a)`; and `@if(condition,a,b)`.
namespace Varnholt::Station {

class TStationTable;

class TRowExpression {
public:
    /// Raises what TCalc::Set_Exp raises, and what At raises for the first row.
    TRowExpression(const TStationTable& table, StringView text);
    TRowExpression(const TRowExpression&) = delete;
    TRowExpression& operator=(const TRowExpression&) = delete;

    /// The value in a row of the file; none where a value that it uses is missing, where it divides by 0, and where it is
    /// no finite number. Raises ECalcException with the name for a keyword that is no column of numbers or dates.
    [[nodiscard]] std::optional<double> At(std::int32_t fileRow);

private:
    void RegisterColumns();
    void RegisterFunctions();

    const TStationTable& FTable;
    TCalc FCalc;
    std::int32_t FRow = 0;
    bool FIsMissing = false;
};

/// All keywords and functions, as they are written, for a list to choose from: `$temp_max`, `@gt(,)`.
[[nodiscard]] std::vector<String> Vocabulary(const TStationTable& table);

/// Whether an expression can hold the name of a column.
[[nodiscard]] bool IsKeyword(StringView columnName) noexcept;

}  // namespace Varnholt::Station
