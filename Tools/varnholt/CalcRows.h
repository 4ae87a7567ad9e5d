#pragma once

#include <memory>
#include <vector>

#include "Tools/varnholt/CsvFile.h"
#include "VarnholtLib/Numerics/vrnMath.h"
#include "VarnholtLib/Numerics/vrnMissingValues.h"

/// An expression over the rows of a CSV file: columns as keywords, missing values, and where the values go.
namespace Varnholt::Tool {

/// Receives the rows with their values. This one passes them over.
class TRowSink {
public:
    TRowSink() = default;
    virtual ~TRowSink() = default;
    TRowSink(const TRowSink&) = delete;
    TRowSink& operator=(const TRowSink&) = delete;

    virtual void TakeHeader(const TRow&) {}
    virtual void TakeRow(const TRow&, Extended) {}
    /// All rows have come.
    virtual void Finish() {}
};

/// One value a line on standard output.
class TPrintedRowSink final : public TRowSink {
public:
    void TakeRow(const TRow& row, Extended value) override;
};

/// The columns of the source and a last one `value`. The file appears, or is replaced, when all rows have
/// come. A row with more cells than the header has raises EConvertError with its number.
class TCsvRowSink final : public TRowSink {
public:
    explicit TCsvRowSink(StringView path) : FFile(path) {}

    void TakeHeader(const TRow& header) override;
    void TakeRow(const TRow& row, Extended value) override;
    void Finish() override { FFile.Finish(); }

private:
    void Write(const TRow& row, StringView last);

    TCsvOutput FFile;
    std::size_t FColumnCount = 0;
    std::int64_t FRowNumber = 0;
};

/// The keywords that the expression uses, each once, in the order of the text. Raises ceKeyword with the name
/// of one that is not registered.
[[nodiscard]] std::vector<TKeyword*> KeywordsOf(const TCalc& calc);

struct TRowSummary {
    std::int64_t Rows = 0;
    std::int64_t Calculated = 0;
    std::int64_t DivisionsByZero = 0;
    std::int64_t NotNumbers = 0;  // calculated rows whose value is a NaN; then the figures are NaNs, too
    double Sum = 0;
    double Min = kMissing;  // of the calculated rows; without any the code for no result
    double Max = kMissing;

    void Add(double value);
    [[nodiscard]] double Mean() const;
};

/// Reads a file row by row and calculates an expression with the row's cells as keywords.
class TRowCalculator {
public:
    /// Opens the file and registers its columns on the evaluator, which must outlive the calculator. Raises
    /// what TCsvInput does, also for an empty file.
    TRowCalculator(TCalc& calc, StringView path);
    ~TRowCalculator();

    /// Calculates every row with the evaluator's expression, which has been set by now.
    TRowSummary Run(TRowSink& sink);

private:
    struct TColumn {
        std::size_t Index;
        double Value = 0;
    };

    [[nodiscard]] std::vector<TColumn*> UsedColumns() const;
    [[nodiscard]] Extended Calculate(const std::vector<TColumn*>& used, TRowSummary& summary);

    TCalc& FCalc;
    TCsvInput FFile;
    TRow FRow;
    std::vector<std::unique_ptr<TColumn>> FColumns;  // one each, at an address that keywords hold
};

}  // namespace Varnholt::Tool
