#include <string>

#include "Fuzz/FuzzInput.h"
#include "VarnholtBaseLib/CsvReader.h"

/// CSV rows with each separator that occurs and in chunks of several sizes: the chunks do not show, and what
/// CsvField writes is read back.
namespace Varnholt::Fuzz {
namespace {

struct TTable {
    std::vector<std::vector<String>> Rows;
    std::vector<std::int64_t> Lines;
    String Failure;
};

TTable ReadTable(StringView text, Char separator, std::size_t chunkSize) {
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
        for (std::vector<String> row; reader.ReadRow(row);) {
            table.Rows.push_back(row);
            table.Lines.push_back(reader.GetLineNumber());
        }
    });
    return table;
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
    const String text = TextOf(input);
    for (const Char separator : {u',', u';', u'\t', u'|', u' ', u'a', u'\u3000'}) {
        if (separator != u',' && text.find(separator) == String::npos) continue;
        const TTable whole = ReadTable(text, separator, text.size() + 1);
        for (std::size_t i = 0; i < whole.Lines.size(); ++i) {
            Require(whole.Lines[i] > (i == 0 ? 0 : whole.Lines[i - 1]), "line numbers rise");
            Require(!whole.Rows[i].empty(), "a row has a field");
        }
        for (const std::size_t chunkSize : {1U, 3U, 64U}) {
            const TTable pieces = ReadTable(text, separator, chunkSize);
            RequireSame(pieces.Failure, whole.Failure, "chunks do not change the failure");
            Require(pieces.Rows == whole.Rows, "chunks do not change the rows");
            Require(pieces.Lines == whole.Lines, "chunks do not change the line numbers");
        }
        const TTable again = ReadTable(WriteTable(whole, separator), separator, text.size() + 1);
        Require(again.Failure.empty() && again.Rows == whole.Rows, "what is written is read back");
    }
}

}  // namespace Varnholt::Fuzz
