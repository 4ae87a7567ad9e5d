#include "VarnholtLib/Files/vrnTextFileParser.h"

#include <algorithm>
#include <utility>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/TextStreams.h"
#include "VarnholtLib/Foundation/vrnString.h"
#include "VarnholtLib/Services/vrnLog.h"

namespace Varnholt {

TTextFileParser::TTextFileParser(StringView filename, Char parseChar, const TEncoding& encoding)
    : FParseChar(parseChar) {
    if (const auto log = EnabledDefaultLog())
        log->Method(u"TTextFileParser.Create", {String(filename), String(1, parseChar)});
    TStreamReader reader(filename, encoding);
    // No encoding has more characters than bytes. The size of a device is not known, and a sparse file has less than it says.
    constexpr std::int64_t kMost = std::int64_t{1} << 28;
    FText.reserve(static_cast<std::size_t>(std::clamp<std::int64_t>(reader.GetStream().GetSize(), 0, kMost)));
    for (String line; reader.ReadLine(line);) {
        FText += line;
        FLineEnds.push_back(FText.size());
    }
    MoveToLine(0);
}

StringView TTextFileParser::GetLine(std::int32_t index) const {
    const std::size_t position = ListIndex(index, FLineEnds.size());
    const std::size_t start = position == 0 ? 0 : FLineEnds[position - 1];
    return StringView(FText).substr(start, FLineEnds[position] - start);
}

std::vector<String> TTextFileParser::GetItemArray(std::int32_t index) const {
    return SplitStringEx(GetLine(index), FParseChar, u'"', true);
}

const std::vector<String>& TTextFileParser::GetFields() const {
    if (FSplitLine != FEnumLine) {
        FFields = GetItemArray(FEnumLine);
        FSplitLine = FEnumLine;
    }
    return FFields;
}

bool TTextFileParser::GetEndOfLine() const {
    return FEnumItem >= GetFields().size();
}

String TTextFileParser::GetNextItem() {
    if (GetEndOfLine()) throw EParserError(u"Item does not contain expected number of entries");
    return std::move(FFields[FEnumItem++]);
}

std::int32_t TTextFileParser::Next() {
    MoveToLine(FEnumLine + 1);
    return static_cast<std::int32_t>(GetFields().size());
}

void TTextFileParser::GotoRecord(std::int32_t reccordNo) {
    if (const auto log = EnabledDefaultLog())
        log->MethodVerbose(u"TTextFileParser.GotoRecord", {IntToStr(reccordNo)});
    MoveToLine(reccordNo);
}

void TTextFileParser::MoveToLine(std::int32_t line) {
    if (IsIndex(line, FLineEnds.size())) {
        FEnumLine = line;
        FEnumItem = 0;
        FSplitLine = -1;  // fields that were returned are empty
    } else if (line != 0) {
        throw EParserError(u"An item doesn't exist at this position");
    }
}

}  // namespace Varnholt
