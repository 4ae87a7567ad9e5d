#include "VarnholtLib/Services/vrnWindows.h"

#include <algorithm>

#include "Platform/System/Platform.h"

namespace Varnholt {

bool IsWindowsAdmin() {
    static constexpr StringView kGroups[] = {u"sudo", u"wheel", u"admin"};
    if (Platform().Process->GetIsSuperUser()) return true;
    return std::ranges::any_of(Platform().Process->GetGroups(), [](const String& group) {
        return std::ranges::find(kGroups, group) != std::end(kGroups);
    });
}

}  // namespace Varnholt
