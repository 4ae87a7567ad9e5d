#include "VarnholtLib/Foundation/vrnPathText.h"

#include <algorithm>

#include "Platform/Runtime/Characters.h"
#include "Platform/Runtime/Text.h"

namespace Varnholt {
namespace {

constexpr Char kSeparator = u'\\';

bool HasTrailingSlash(StringView text) {
    return text.ends_with(kSeparator);
}

StringView WithoutTrailingSlash(StringView path) {
    if (HasTrailingSlash(path)) path.remove_suffix(1);
    return path;
}

/// Position from 0 after the last separator. No separator gives npos, and npos + 1 is 0.
std::size_t LastElementStart(StringView path) {
    return path.rfind(kSeparator) + 1;
}

/// Position from 0 at which the file-name part begins: after the last separator, else after a drive.
std::size_t FileNameStart(StringView path) {
    const bool hasDrive = path.size() > 1 && path[1] == u':' && IsUnicodeLetter(path[0]);
    return std::max<std::size_t>(LastElementStart(path), hasDrive ? 2 : 0);
}

/// Position from 0 of the extension in a file name; its length if it has none.
std::size_t ExtensionStart(StringView name) {
    return std::min(name.rfind(u'.'), name.size());
}

}  // namespace

String AddTrailingSlashIfRequired(StringView text) {
    String result(text);
    if (!HasTrailingSlash(text)) result += kSeparator;
    return result;
}

bool EnsurePathString(String& text) {
    if (text.size() < 2) return false;
    const bool isShare = text.starts_with(u"\\\\");
    const bool isDrive = IsUnicodeLetter(text[0]) && text[1] == u':';
    if (!isShare && !isDrive) return false;
    if (!HasTrailingSlash(text)) text += kSeparator;
    return true;
}

String PathBelow(StringView folder, StringView name) {
    String path(folder), rest(name);
    const bool isNative = path.starts_with(u'/');
    const Char separator = isNative ? u'/' : u'\\';
    const bool isEnded = path.ends_with(u'/') || (!isNative && path.ends_with(u'\\'));
    if (!path.empty() && !isEnded) path += separator;
    if (isNative) std::ranges::replace(rest, u'\\', u'/');
    return path + rest;
}

void RemoveInvalidPathChars(String& path, bool includeSeparators) {
    const StringView invalid = includeSeparators ? u":*?\"<>|/" : u":*?\"<>|";
    for (std::size_t at = FileNameStart(path); at < path.size(); ++at) {
        if (invalid.find(path[at]) != StringView::npos) path[at] = u'_';
    }
}

String RemoveInvalidPathChars(StringView path) {
    String result(path);
    RemoveInvalidPathChars(result, true);
    return result;
}

String StripFileName(StringView path) {
    const StringView name = path.substr(FileNameStart(path));
    return String(name.substr(0, ExtensionStart(name)));
}

String ExtractFinalPathElement(StringView path) {
    const StringView trimmed = WithoutTrailingSlash(path);
    return String(trimmed.substr(LastElementStart(trimmed)));
}

String AddFilenamePostfix(StringView path, StringView postfix) {
    String result(path);
    if (!result.empty()) result.insert(ExtensionStart(path), postfix);
    return result;
}

String ParentPath(StringView path) {
    const StringView trimmed = WithoutTrailingSlash(path);
    return String(trimmed.substr(0, LastElementStart(trimmed)));
}

bool FileExtIs(StringView extension, StringView fileName) {
    const StringView name = fileName.substr(FileNameStart(fileName));
    StringView actual = name.substr(ExtensionStart(name));
    if (!extension.empty() && !extension.starts_with(u'.') && !actual.empty()) actual.remove_prefix(1);
    return SameText(extension, actual);
}

String TStringTools::GetDirectoryElement(StringView path) {
    return ExtractFinalPathElement(path);
}

}  // namespace Varnholt
