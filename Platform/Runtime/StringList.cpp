#include "Platform/Runtime/StringList.h"

#include <algorithm>
#include <limits>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt {
namespace {

constexpr StringView kLineEnd = u"\r\n";
constexpr std::size_t kMaxCount = std::numeric_limits<std::int32_t>::max();

std::vector<String> SplitLines(StringView text) {
    std::vector<String> lines;
    while (!text.empty()) {
        const auto end = std::ranges::find_if(text, IsLineEnd);
        const std::size_t length = static_cast<std::size_t>(end - text.begin());
        lines.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
        text.remove_prefix(text.starts_with(kLineEnd) ? 2 : text.empty() ? 0 : 1);
    }
    if (lines.size() > kMaxCount) throw EListError(u"Too many lines for a list");
    return lines;
}

}  // namespace

void TStringList::CheckRoom() const {
    if (FLines.size() >= kMaxCount) throw EListError(u"Too many lines for a list");
}

std::int32_t TStringList::Add(StringView line) {
    CheckRoom();
    FLines.emplace_back(line);
    return GetCount() - 1;
}

void TStringList::Insert(std::int32_t index, StringView line) {
    CheckRoom();
    const std::size_t position = ListIndex(index, FLines.size() + 1);
    FLines.emplace(FLines.begin() + static_cast<std::ptrdiff_t>(position), line);
}

void TStringList::Delete(std::int32_t index) {
    FLines.erase(FLines.begin() + static_cast<std::ptrdiff_t>(ListIndex(index, FLines.size())));
}

const String& TStringList::operator[](std::int32_t index) const {
    return FLines[ListIndex(index, FLines.size())];
}

String& TStringList::operator[](std::int32_t index) {
    return FLines[ListIndex(index, FLines.size())];
}

std::int32_t TStringList::IndexOf(StringView text) const {
    const auto found = std::ranges::find_if(
        FLines, [&](StringView line) { return FCaseSensitive ? line == text : SameText(line, text); });
    return found == FLines.end() ? -1 : static_cast<std::int32_t>(found - FLines.begin());
}

void TStringList::Sort() {
    std::ranges::stable_sort(FLines, [this](StringView a, StringView b) {
        return FCaseSensitive ? a < b : CompareText(a, b) < 0;
    });
}

String TStringList::GetText() const {
    std::size_t length = 0;
    for (const String& line : FLines) length += line.size() + kLineEnd.size();
    String text;
    text.reserve(length);
    for (const String& line : FLines) text.append(line).append(kLineEnd);
    return text;
}

void TStringList::SetText(StringView text) {
    FLines = SplitLines(text);
}

void TStringList::LoadFromFile(StringView path, const TEncoding& encoding) {
    const std::string bytes = ReadWholeFile(path);
    const TEncoding* detected = TEncoding::DetectByPreamble(bytes);
    const TEncoding& used = detected != nullptr ? *detected : encoding;
    const std::size_t skipped = detected != nullptr ? detected->GetPreamble().size() : 0;
    SetText(used.GetString(std::string_view(bytes).substr(skipped)));
}

void TStringList::SaveToFile(StringView path, const TEncoding& encoding) const {
    WriteFileInOneGo(path, std::string(encoding.GetPreamble()) + encoding.GetBytes(GetText()));
}

}  // namespace Varnholt
