#include "VarnholtLib/UI/vrnCommonDialogFilters.h"

#include "Platform/Runtime/Indexes.h"
#include "VarnholtLib/Foundation/vrnPathText.h"

namespace Varnholt {

String TFilterItem::FormatFileName(StringView fileName) const {
    const bool hasExtension = !FileExtIs(u"", fileName);
    return hasExtension ? String(fileName) : String(fileName) + DefaultExt;
}

void TCommonDialogFilters::Add(std::int32_t filterCode, StringView filterName, StringView filterExtensions,
                               StringView defaultExt) {
    FFilters.push_back({filterCode, String(filterName), String(filterExtensions), String(defaultExt)});
}

String TCommonDialogFilters::GetFilterString() const {
    String result;
    for (const TFilterItem& item : FFilters) {
        if (&item != &FFilters.front()) result += u'|';
        result += item.Name + u'|' + item.Extensions;
    }
    return result;
}

const TFilterItem& TCommonDialogFilters::GetFilter(std::int32_t filterIndex) const {
    return FFilters[ListIndex(std::int64_t{filterIndex} - 1, FFilters.size())];
}

std::int32_t TCommonDialogFilters::GetFilterCode(std::int32_t filterIndex) const {
    return GetFilter(filterIndex).Code;
}

}  // namespace Varnholt
