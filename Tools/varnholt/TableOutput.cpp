#include "Tools/varnholt/TableOutput.h"

#include <algorithm>

#include "Tools/varnholt/Output.h"

namespace Varnholt::Tool {
namespace {

constexpr std::int32_t kHeaderRow = 0;

StringView TypeName(TVarType type) {
    return type == varInteger ? u"integer" : type == varDouble ? u"float" : u"text";
}

/// The number of characters; a surrogate pair is one.
std::size_t WidthOf(StringView text) {
    const auto isLowSurrogate = [](Char c) { return c >= 0xDC00 && c <= 0xDFFF; };
    return text.size() - static_cast<std::size_t>(std::ranges::count_if(text, isLowSurrogate));
}

/// Prints the cells of a view in columns of equal width.
class TAlignedTable {
public:
    TAlignedTable(const TTableView& view, const std::vector<TVarType>& types) : FView(view), FTypes(types) {
        for (std::size_t i = 0; i < types.size(); ++i) FWidths.push_back(WidthOfColumn(i));
    }

    void Print() const {
        PrintRow(kHeaderRow);
        String line;
        for (std::size_t i = 0; i < FTypes.size(); ++i) AddText(line, i, TypeName(FTypes[i]));
        PrintTrimmed(line);
        for (const std::int32_t row : FView.Rows) PrintRow(row);
    }

private:
    [[nodiscard]] String TextOf(std::size_t i, std::int32_t row) const {
        return OnOneLine(FView.File.Grid->GetCell(FView.Columns[i], row));
    }

    [[nodiscard]] std::size_t WidthOfColumn(std::size_t i) const {
        std::size_t width = std::max(TypeName(FTypes[i]).size(), WidthOf(TextOf(i, kHeaderRow)));
        for (const std::int32_t row : FView.Rows) width = std::max(width, WidthOf(TextOf(i, row)));
        return width;
    }

    void AddText(String& line, std::size_t i, StringView text) const {
        constexpr StringView kGap = u"  ";
        const std::size_t blanks = FWidths[i] - WidthOf(text);
        const bool isRight = FTypes[i] != varString;
        if (i > 0) line += kGap;
        if (isRight) line.append(blanks, u' ');
        line += text;
        if (!isRight) line.append(blanks, u' ');
    }

    void PrintRow(std::int32_t row) const {
        String line;
        for (std::size_t i = 0; i < FTypes.size(); ++i) AddText(line, i, TextOf(i, row));
        PrintTrimmed(line);
    }

    static void PrintTrimmed(String& line) {
        line.erase(line.find_last_not_of(u' ') + 1);
        PrintLine(line);
    }

    const TTableView& FView;
    const std::vector<TVarType>& FTypes;
    std::vector<std::size_t> FWidths;
};

}  // namespace

void PrintTable(const TTableView& view, const std::vector<TVarType>& types) {
    TAlignedTable(view, types).Print();
    FlushOutput();
}

void WriteTable(StringView path, const TTableView& view) {
    TCsvOutput file(path, view.File.Format);
    const auto writeRow = [&](std::int32_t row) {
        for (const std::int32_t column : view.Columns) file.AddField(view.File.Grid->GetCell(column, row));
        file.EndRow();
    };
    writeRow(kHeaderRow);
    for (const std::int32_t row : view.Rows) writeRow(row);
    file.Finish();
}

}  // namespace Varnholt::Tool
