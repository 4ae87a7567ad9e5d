#include "VarnholtLib/Files/vrnUACHelper.h"

#include <algorithm>

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Random.h"
#include "Platform/Runtime/Streams.h"
#include "Platform/System/Platform.h"
#include "VarnholtLib/Files/vrnIO.h"
#include "VarnholtLib/Foundation/vrnPathText.h"

namespace Varnholt {
namespace {

/// Whether the call raises nothing.
template <typename TCall>
bool Succeeds(TCall call) {
    try {
        call();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

}  // namespace

void TUACHelper::InitToken(TUACHelperToken& token, StringView path, bool createDir) {
    Randomize();
    token = {RandomRange(0, 1'073'741'823), String(path), {}, createDir};
}

TCheckForResult TUACHelper::CheckForCreate(TUACHelperToken& token) {
    if (!DirectoryExists(token.Path)) {
        if (!token.AllowDirCreate) return cfcFolderDoesNotExist;
        if (!Succeeds([&] { ForceDirectories(token.Path); })) return cfcFolderCouldNotBeCreated;
    }
    const String probe = PathBelow(token.Path, u"TestFile" + IntToStr(token.ID));
    if (!Succeeds([&] { TFileStream(probe, fmCreate).Close(); })) return cfcFileCreateFailed;
    token.Filename = probe;
    return cfcOK;
}

TCheckForResult TUACHelper::CheckForWrite(TUACHelperToken& token) {
    if (token.Filename.empty() || !FileExists(token.Filename)) {
        const TCheckForResult created = CheckForCreate(token);
        if (created != cfcOK) return created;
    }
    return Succeeds([&] { TFileStream(token.Filename, fmOpenWrite).Close(); }) ? cfcOK : cfcCouldNotGetWrite;
}

void TUACHelper::FreeToken(TUACHelperToken& token) {
    if (!token.Filename.empty()) static_cast<void>(Succeeds([&] { DeleteFile(token.Filename); }));
    token.Filename.clear();
}

bool TUACHelper::LaunchAsAdmin(StringView fileName, StringView params) {
    String arguments(params);
    if (!arguments.empty()) arguments += u' ';
    return TFileUtils::ExecuteAdmin(fileName, arguments.append(UACRelaunchString), u"");
}

bool TUACHelper::LaunchAsAdmin(StringView fileName, std::span<const String> params) {
    String arguments;
    for (const String& parameter : params) {
        if (!arguments.empty()) arguments += u' ';
        arguments += u'"' + parameter + u'"';
    }
    return LaunchAsAdmin(fileName, arguments);
}

bool TUACHelper::StartedFromRelaunch() {
    const std::vector<String> arguments = Platform().Process->GetCommandLine();
    return !arguments.empty() &&
           std::find(arguments.begin() + 1, arguments.end(), UACRelaunchString) != arguments.end();
}

}  // namespace Varnholt
