#include "Tools/varnholt/TableOutput.h"

#include <algorithm>

#include "Tools/varnholt/CsvFile.h"
#include "Tools/varnholt/Output.h"

namespace Varnholt::Tool {
namespace {

StringView TypeName(TVarType type) {
    return type == varInteger ? u"integer" : type == varDouble ? u"float" : u"text";
}

const Variant& ValueOf(const TTableDataRow& row, std::int32_t column) {
    return row.GetValues()[static_cast<std::size_t>(column)];
}

/// The number of characters; a surrogate pair is one.
std::size_t WidthOf(StringView text) {
    const auto isLowSurrogate = [](Char c) { return c >= 0xDC00 && c <= 0xDFFF; };
    return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, isLowSurrogate));
}

/// Texts in columns, printed once the width of each column is known.
class TAlignedText {
public:
    TAlignedText(std::size_t columnCount, std::size_t rowCount)
        : FTexts(static_cast<std::int32_t>(columnCount), static_cast<std::int32_t>(rowCount), 0, 0),
          FColumns(columnCount) {}

    void AlignRight(std::size_t col) { FColumns[col].IsRight = true; }
    void Set(std::size_t col, std::size_t row, StringView text) {
        const String line = OnOneLine(text);
        FColumns[col].Width = std::max(FColumns[col].Width, WidthOf(line));
        FTexts.SetCell(static_cast<std::int32_t>(col), static_cast<std::int32_t>(row), line);
    }
    void Print() const {
        for (std::int32_t row = 0; row < FTexts.GetRowCount(); ++row) PrintLine(Line(row));
    }

private:
    struct TColumn {
        std::size_t Width = 0;
        bool IsRight = false;
    };

    [[nodiscard]] String Line(std::int32_t row) const {
        constexpr StringView kGap = u"  ";
        String line;
        for (std::size_t col = 0; col < FColumns.size(); ++col) {
            const StringView text = FTexts.GetCell(static_cast<std::int32_t>(col), row);
            const std::size_t blanks = FColumns[col].Width - WidthOf(text);
            if (col > 0) line += kGap;
            if (FColumns[col].IsRight) line.append(blanks, u' ');
            line += text;
            if (!FColumns[col].IsRight) line.append(blanks, u' ');
        }
        line.erase(line.find_last_not_of(u' ') + 1);
        return line;
    }

    TStringGrid FTexts;
    std::vector<TColumn> FColumns;
};

}  // namespace

void PrintTable(const TColumnNames& names, const TTableData& table, const TTableView& view) {
    constexpr std::size_t kHeadLines = 2;
    TAlignedText text(view.Columns.size(), view.Rows.size() + kHeadLines);
    for (std::size_t col = 0; col < view.Columns.size(); ++col) {
        const TVarType type = table.GetColType(view.Columns[col]);
        if (type != varString) text.AlignRight(col);
        text.Set(col, 0, names[view.Columns[col]]);
        text.Set(col, 1, TypeName(type));
    }
    std::size_t line = kHeadLines;
    for (const TTableDataRow* row : view.Rows) {
        for (std::size_t col = 0; col < view.Columns.size(); ++col) {
            text.Set(col, line, ValueOf(*row, view.Columns[col]).ToText());
        }
        ++line;
    }
    text.Print();
    FlushOutput();
}

void WriteTable(StringView path, const TColumnNames& names, const TTableView& view) {
    TCsvOutput file(path);
    for (const std::int32_t column : view.Columns) file.AddField(names[column]);
    file.EndRow();
    for (const TTableDataRow* row : view.Rows) {
        for (const std::int32_t column : view.Columns) file.AddField(ValueOf(*row, column).ToText());
        file.EndRow();
    }
    file.Finish();
}

}  // namespace Varnholt::Tool
