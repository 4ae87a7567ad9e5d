#include "VarnholtLib/Files/vrnPathElements.h"

#include <algorithm>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Platform/Runtime/Indexes.h"
#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Foundation/vrnString.h"

namespace Varnholt {
namespace {

/// The result of a search that raises; empty after a failure.
template <typename TSearch>
bool Try(String& resultPath, TSearch search) {
    try {
        resultPath = search();
        return true;
    } catch (const Exception&) {
        resultPath.clear();
        return false;
    }
}

}  // namespace

EFileNotFound::EFileNotFound(StringView fileName)
    : Exception(Format(u"The file \"%s\" could not be found", {fileName})) {}

TPathElements::TPathElements(StringView path, bool stripFileElement)
    : FStrings(SplitString(path, u'\\', true)) {
    if (stripFileElement && FileExists(path)) FStrings.pop_back();
}

const String& TPathElements::GetElement(std::int32_t index) const {
    return FStrings[ListIndex(index, FStrings.size())];
}

void TPathElements::SetElement(std::int32_t index, StringView element) {
    FStrings[ListIndex(index, FStrings.size())] = element;
}

std::int32_t TPathElements::IndexFromStart(StringView element) const {
    for (std::int32_t i = 0; i < GetCount(); ++i)
        if (SameText(GetElement(i), element)) return i;
    return -1;
}

std::int32_t TPathElements::IndexFromEnd(StringView element) const {
    std::int32_t i = GetCount() - 1;
    while (i >= 0 && !SameText(GetElement(i), element)) --i;
    return i;
}

String TPathElements::ToStringUpToIndex(std::int32_t upToIndex) const {
    String path;
    for (std::int32_t i = 0; i <= upToIndex; ++i) {
        if (i > 0) path += u'\\';
        path += GetElement(i);
    }
    return path;
}

bool TPathElements::PathContainsFile(std::int32_t index, StringView fileName) const {
    String unused;
    return PathContainsFile(index, fileName, false, unused);
}

bool TPathElements::PathContainsFile(std::int32_t index, StringView fileName, bool incFileName,
                                     String& resultPath) const {
    const String folder = ToStringUpToIndex(index);
    const String path = folder + u'\\' + String(fileName);  // before the result, which may hold the name
    resultPath.clear();
    if (index < 0 || !DirectoryExists(folder + u'\\') || !FileExists(path)) return false;
    resultPath = incFileName ? path : folder;
    return true;
}

String TPathElements::PathContainingFileFromEnd(StringView fileName, bool incFileName) const {
    String path;
    for (std::int32_t i = GetCount() - 1; i >= 0; --i)
        if (PathContainsFile(i, fileName, incFileName, path)) return path;
    throw EFileNotFound(fileName);
}

String TPathElements::PathContainingFileFromStart(StringView fileName, bool incFileName) const {
    String path;
    for (std::int32_t i = 0; i < GetCount(); ++i)
        if (PathContainsFile(i, fileName, incFileName, path)) return path;
    throw EFileNotFound(fileName);
}

String TPathElements::PathContainingFileFromEnd(StringView path, StringView fileName, bool incFileName) {
    return TPathElements(path, true).PathContainingFileFromEnd(fileName, incFileName);
}

String TPathElements::PathContainingFileFromStart(StringView path, StringView fileName, bool incFileName) {
    return TPathElements(path, true).PathContainingFileFromStart(fileName, incFileName);
}

bool TPathElements::TryPathContainingFileFromEnd(StringView fileName, bool incFileName,
                                                 String& resultPath) const {
    return Try(resultPath, [&] { return PathContainingFileFromEnd(fileName, incFileName); });
}

bool TPathElements::TryPathContainingFileFromStart(StringView fileName, bool incFileName,
                                                   String& resultPath) const {
    return Try(resultPath, [&] { return PathContainingFileFromStart(fileName, incFileName); });
}

}  // namespace Varnholt
