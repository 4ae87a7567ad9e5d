#pragma once

#include <memory>
#include <vector>

#include "Tools/varnholt/CsvFile.h"
#include "VarnholtLib/Numerics/vrnMath.h"
#include "VarnholtLib/Numerics/vrnMissingValues.h"

/// An expression over the rows of a CSV file: columns as keywords, missing values, and the output of the values.
namespace Varnholt::Tool {

/// The number as the command prints and writes it, whatever format settings the process has.
[[nodiscard]] String ValueText(Extended value);

/// Receives the rows with their values. This one ignores them.
class TRowSink {
public:
    TRowSink() = default;
    virtual ~TRowSink() = default;
    TRowSink(const TRowSink&) = delete;
    TRowSink& operator=(const TRowSink&) = delete;

    virtual void TakeRow(const TRow&, Extended) {}
    /// Called after the last row.
    virtual void Finish() {}
};

/// Prints one value a line on standard output.
class TPrintedRowSink final : public TRowSink {
public:
    void TakeRow(const TRow& row, Extended value) override;
};

/// Writes the columns of the input and a last one with the values, to a TCsvOutput. Short rows are filled up
/// with empty cells.
class TCsvRowSink final : public TRowSink {
public:
    TCsvRowSink(StringView path, const TCsvInput& input, StringView name);

    void TakeRow(const TRow& row, Extended value) override;
    void Finish() override { FFile.Finish(); }

private:
    void Write(const TRow& row, StringView last);

    TCsvOutput FFile;
    std::size_t FColumnCount;
};

/// The keywords that the expression uses, each once, in the order of the text. Raises ceKeyword with the name
/// of one that is not registered.
[[nodiscard]] std::vector<TKeyword*> KeywordsOf(const TCalc& calc);

/// Counts and figures of all rows.
struct TRowSummary {
    std::int64_t Rows = 0;
    std::int64_t Calculated = 0;
    std::int64_t DivisionsByZero = 0;
    std::int64_t NotNumbers = 0;     // calculated rows whose value is a NaN, as are the figures then
    std::int64_t ReadAsMissing = 0;  // calculated rows whose value is infinite or a missing code
    double Sum = 0;
    double Min = kMissing;  // of the calculated rows; kMissing without any
    double Max = kMissing;

    void Add(double value);
    [[nodiscard]] double Mean() const;
};

/// A keyword for a column whose name an expression cannot hold.
struct TColumnAlias {
    String Name;
    String Column;
};

/// Reads a file row by row and calculates an expression with the row's cells as keywords.
class TRowCalculator {
public:
    /// Registers the aliases and the file's columns on the evaluator. Evaluator and file must outlive the
    /// calculator. A keyword that is registered already hides a column of that name. Raises what
    /// TCsvInput::ColumnIndex does for an alias.
    TRowCalculator(TCalc& calc, TCsvInput& file, const TMissingValues& missing,
                   const std::vector<TColumnAlias>& aliases);
    ~TRowCalculator();

    /// Calculates every row with the evaluator's expression, which must be set by now. A row with more cells
    /// than the header raises EConvertError.
    TRowSummary Run(TRowSink& sink);

    /// The cells of the columns used that are texts.
    [[nodiscard]] const TTextCells& GetTextCells() const noexcept { return FTextCells; }

private:
    struct TColumn {
        std::size_t Index;
        double Value = 0;
    };

    void Register(StringView name, TColumn& column);
    [[nodiscard]] std::vector<TColumn*> UsedColumns() const;
    [[nodiscard]] bool ReadCell(TColumn& column);
    [[nodiscard]] Extended Calculate(const std::vector<TColumn*>& used, TRowSummary& summary);

    TCalc& FCalc;
    TCsvInput& FFile;
    const TMissingValues& FMissing;
    TRow FRow;
    std::vector<std::unique_ptr<TColumn>> FColumns;  // one each, at an address that keywords hold
    TTextCells FTextCells;
};

}  // namespace Varnholt::Tool
