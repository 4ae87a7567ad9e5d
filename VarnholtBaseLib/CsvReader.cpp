#include "VarnholtBaseLib/CsvReader.h"

#include <algorithm>
#include <span>
#include <utility>

#include "Platform/Runtime/Encoding.h"
#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Text.h"
#include "Platform/Runtime/TextStreams.h"

namespace Varnholt {
namespace {

constexpr std::size_t kBufferSize = 32768;
constexpr std::size_t kFieldCost = 16;  // what an empty field takes, in code units
constexpr Char kQuote = u'"';
constexpr Char kByteOrderMark = u'\xFEFF';

}  // namespace

TCSVRowReader::TCSVRowReader(TStreamReader& text, Char separator)
    : TCSVRowReader([&text](std::span<Char> chunk) { return text.Read(chunk); }, separator) {}

TCSVRowReader::TCSVRowReader(TSource source, Char separator)
    : FSource(std::move(source)), FSeparator(separator), FBuffer(kBufferSize) {
    if (separator == kQuote || IsLineEnd(separator)) {
        throw EArgumentException(u"A quote or line end cannot separate columns");
    }
}

void TCSVRowReader::SetMaxRowLength(std::int64_t length) {
    if (length < 1) throw EArgumentException(u"The longest row needs a length");
    FMaxRowLength = static_cast<std::size_t>(length);
}

void TCSVRowReader::CountLength(std::size_t length) {
    FRowLength += length;
    if (FRowLength > FMaxRowLength) [[unlikely]]
        RaiseTooLong();
}

void TCSVRowReader::RaiseTooLong() {
    FSource = [](std::span<Char>) { return std::size_t{0}; };
    FPosition = FFilled = 0;
    throw EConvertError(
        Format(u"The row in line %d is longer than %d characters", {FRowLine, FMaxRowLength}));
}

/// Reads the next characters, once all those in the buffer are used.
bool TCSVRowReader::Refill() {
    FPosition = 0;
    FFilled = 0;  // stays so if the source raises
    FFilled = std::min(FSource(FBuffer), FBuffer.size());
    const bool atStart = std::exchange(FAtStart, false);
    if (!atStart || FFilled == 0 || FBuffer[0] != kByteOrderMark) return FFilled > 0;
    FPosition = 1;
    return HasMore();
}

/// Appends the text before the next stop character, which is not taken. False at the end of the text.
template <typename TStop>
bool TCSVRowReader::AppendUntil(TStop isStop, String& field) {
    while (HasMore()) {
        const Char* from = FBuffer.data() + FPosition;
        const Char* end = FBuffer.data() + FFilled;
        const Char* stop = std::find_if(from, end, isStop);
        const auto length = static_cast<std::size_t>(stop - from);
        CountLength(length);
        field.append(from, length);
        FPosition += length;
        if (stop != end) return true;
    }
    return false;
}

/// Takes the line end at the current position and returns it.
StringView TCSVRowReader::TakeLineEnd() {
    ++FLine;
    if (FBuffer[FPosition++] == u'\n') return u"\n";
    if (!NextIs(u'\n')) return u"\r";
    ++FPosition;
    return u"\r\n";
}

/// False if only line ends are left.
bool TCSVRowReader::SkipEmptyLines() {
    while (HasMore()) {
        if (!IsLineEnd(FBuffer[FPosition])) return true;
        TakeLineEnd();
    }
    return false;
}

/// Reads from after an opening quote to after the closing one.
void TCSVRowReader::ReadQuoted(String& field) {
    const std::int64_t openedIn = FLine;
    while (AppendUntil([](Char c) { return c == kQuote || IsLineEnd(c); }, field)) {
        if (FBuffer[FPosition] != kQuote) {
            const StringView lineEnd = TakeLineEnd();
            CountLength(lineEnd.size());
            field += lineEnd;
            continue;
        }
        ++FPosition;
        if (!NextIs(kQuote)) return;
        CountLength(1);
        field += kQuote;
        ++FPosition;
    }
    throw EConvertError(Format(u"The quote opened in line %d is never closed", {openedIn}));
}

/// Reads a field and the separator or line end after it. True after a separator, which a further field
/// follows.
bool TCSVRowReader::ReadField(String& field) {
    if (NextIs(kQuote)) {
        ++FPosition;
        ReadQuoted(field);
    }
    const Char separator = FSeparator;
    if (!AppendUntil([separator](Char c) { return c == separator || IsLineEnd(c); }, field)) return false;
    if (FBuffer[FPosition] != separator) {
        FRowEnd = TakeLineEnd();
        return false;
    }
    ++FPosition;
    return true;
}

bool TCSVRowReader::ReadRow(std::vector<String>& row) {
    std::size_t count = 0;
    if (SkipEmptyLines()) {
        FRowLine = FLine;
        FRowLength = 0;
        FRowEnd = {};
        bool more = true;
        while (more) {
            if (count == row.size()) row.emplace_back();
            row[count].clear();
            CountLength(kFieldCost);
            more = ReadField(row[count]);
            ++count;
        }
    }
    row.resize(count);
    return count > 0;
}

TCSVReader TCSVReader::FromFile(StringView path, Char separator) {
    TStreamReader text(path, TEncoding::Utf8(), true);
    TCSVRowReader reader(text, separator);
    TCSVReader table;
    std::vector<String> row;
    try {
        while (reader.ReadRow(row)) table.FRows.emplace_back(std::span<const String>(row));
    } catch (const EConvertError& error) {
        throw EConvertError(Format(u"%s: %s", {path, error.GetMessage()}));
    }
    return table;
}

void TCSVReader::GetColumnIndexes(const TStringArray& names, TIntegerArray& indexes) const {
    const TStringArray header = FRows.empty() ? TStringArray() : FRows.front();
    std::vector<std::int32_t> found;
    for (const String& name : names) {
        const String* column = std::find(header.begin(), header.end(), name);
        if (column == header.end()) throw EArgumentException(Format(u"Column \"%s\" not found", {name}));
        found.push_back(static_cast<std::int32_t>(column - header.begin()));
    }
    indexes = TIntegerArray(std::move(found));
}

void AppendCsvField(String& line, StringView text, Char separator) {
    const bool isPlain = std::ranges::none_of(
        text, [=](Char c) { return c == separator || c == kQuote || c == u'\r' || c == u'\n'; });
    if (isPlain) {
        line += text;
        return;
    }
    line += kQuote;
    for (const Char c : text) line.append(c == kQuote ? 2 : 1, c);
    line += kQuote;
}

String CsvField(StringView text, Char separator) {
    String field;
    AppendCsvField(field, text, separator);
    return field;
}

}  // namespace Varnholt
