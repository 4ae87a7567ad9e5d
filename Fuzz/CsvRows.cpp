#include <algorithm>
#include <string>

#include "Fuzz/FuzzInput.h"
#include "VarnholtBaseLib/CsvReader.h"

/// CSV rows, cut at the separator that occurs first: the chunks in which the text arrives do not show, a bound on
/// the length of a row is kept, and what CsvField writes is read back.
namespace Varnholt::Fuzz {
namespace {

struct TTable {
    std::vector<std::vector<String>> Rows;
    std::vector<std::int64_t> Lines;
    String Failure;
};

TTable ReadTable(StringView text, Char separator, std::size_t chunkSize,
                 std::int64_t maxRowLength = TCSVRowReader::kDefaultMaxRowLength) {
    TTable table;
    table.Failure = FailureOf([&] {
        TCSVRowReader reader(
            [&](std::span<Char> chunk) {
                const std::size_t count = std::min({chunk.size(), chunkSize, text.size()});
                std::copy_n(text.begin(), count, chunk.begin());
                text.remove_prefix(count);
                return count;
            },
            separator);
        reader.SetMaxRowLength(maxRowLength);
        for (std::vector<String> row; reader.ReadRow(row);) {
            table.Rows.push_back(row);
            table.Lines.push_back(reader.GetLineNumber());
        }
    });
    return table;
}

/// A bound on the length of a row leaves the rows before the first one that is longer.
void RequireBound(StringView text, Char separator, const TTable& whole) {
    constexpr std::size_t kMaxLength = 100, kLengthOfField = 16;
    const auto fits = [](const std::vector<String>& row) {
        std::size_t length = row.size() * kLengthOfField;
        for (const String& field : row) length += field.size();
        return length <= kMaxLength;
    };
    const auto tooLong = std::ranges::find_if_not(whole.Rows, fits);
    const TTable bounded = ReadTable(text, separator, text.size() + 1, kMaxLength);
    Require(std::equal(bounded.Rows.begin(), bounded.Rows.end(), whole.Rows.begin(), tooLong),
            "the rows before the first one that is too long");
    Require(bounded.Failure.empty() == (whole.Failure.empty() && tooLong == whole.Rows.end()),
            "a row that is too long, and no other, is refused");
}

String WriteTable(const TTable& table, Char separator) {
    String text = u"\uFEFF";  // without it a mark in the first field would be taken for that of the text
    for (const std::vector<String>& row : table.Rows) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i > 0) text += separator;
            text += CsvField(row[i], separator);
        }
        text += row.size() == 1 && row[0].empty() ? u"\"\"\r\n" : u"\r\n";
    }
    return text;
}

}  // namespace

void RunInput(TInput input) {
    constexpr StringView kSeparators = u",;\t| x\u3000";
    const String text = TextOf(input);
    const std::size_t first = text.find_first_of(kSeparators);
    const Char separator = first == String::npos ? u',' : text[first];
    const TTable whole = ReadTable(text, separator, text.size() + 1);
    for (std::size_t i = 0; i < whole.Lines.size(); ++i) {
        Require(whole.Lines[i] > (i == 0 ? 0 : whole.Lines[i - 1]), "line numbers rise");
        Require(!whole.Rows[i].empty(), "a row has a field");
    }
    for (const std::size_t chunkSize : {1U, 5U}) {
        const TTable pieces = ReadTable(text, separator, chunkSize);
        RequireSame(pieces.Failure, whole.Failure, "chunks do not change the failure");
        Require(pieces.Rows == whole.Rows, "chunks do not change the rows");
        Require(pieces.Lines == whole.Lines, "chunks do not change the line numbers");
    }
    RequireBound(text, separator, whole);
    const TTable again = ReadTable(WriteTable(whole, separator), separator, text.size() + 1);
    Require(again.Failure.empty() && again.Rows == whole.Rows, "what is written is read back");
}

}  // namespace Varnholt::Fuzz
