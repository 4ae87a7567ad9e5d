#include "VarnholtLib/Files/vrnIO.h"

#include "Platform/Runtime/Paths.h"
#include "Platform/Runtime/Text.h"
#include "Platform/System/Shell.h"
#include "VarnholtLib/Foundation/vrnPathText.h"

namespace Varnholt {
namespace {

StringView WithoutBackslash(StringView path) {
    if (path.ends_with(u'\\')) path.remove_suffix(1);
    return path;
}

}  // namespace

bool TFileUtils::Execute(StringView operation, StringView fileName, StringView parameters, StringView) {
    return ShellExecute(operation, fileName, parameters);
}

bool TFileUtils::Execute(StringView fileName, StringView parameters, StringView unused) {
    return Execute(u"open", fileName, parameters, unused);
}

bool TFileUtils::Execute(StringView operation, StringView fileName) {
    return Execute(operation, fileName, u"", u"");
}

bool TFileUtils::Execute(StringView fileName) {
    return Execute(u"open", fileName);
}

bool TFileUtils::ExecuteAdmin(StringView fileName, StringView parameters, StringView unused) {
    return Execute(u"runas", fileName, parameters, unused);
}

std::shared_ptr<IVersionNumber> TFileUtils::GetVersion(StringView fileName) {
    return TVersionNumberFactory::GetInstance(Varnholt::GetVersion(fileName));
}

String TPathUtils::GetFinalDirectoryName(StringView path) {
    if (path.size() < 3) return {};
    const StringView folder = WithoutBackslash(path);
    return String(folder.substr(folder.rfind(u'\\') + 1));
}

String TPathUtils::GetFullFileNameWithoutExt(StringView path) {
    const String name = ExtractFileName(path);
    const std::size_t dot = name.rfind(u'.');
    return ExtractFilePath(path) + name.substr(0, dot);
}

bool TPathUtils::IsEqual(StringView path1, StringView path2) {
    return SameText(WithoutBackslash(path1), WithoutBackslash(path2));
}

}  // namespace Varnholt
