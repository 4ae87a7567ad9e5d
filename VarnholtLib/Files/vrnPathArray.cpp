#include "VarnholtLib/Files/vrnPathArray.h"

#include <algorithm>

namespace Varnholt {

TPathArray::TPathArray(StringView path) {
    if (path.empty()) return;
    if (IsPathSeperator(path.back())) path.remove_suffix(1);
    for (std::size_t start = 0;;) {
        const auto next =
            std::find_if(path.begin() + static_cast<std::ptrdiff_t>(start), path.end(), IsPathSeperator);
        const auto end = static_cast<std::size_t>(next - path.begin());
        Add(path.substr(start, end - start));
        if (end == path.size()) return;
        start = end + 1;
    }
}

String TPathArray::Build(std::int32_t first, std::int32_t last) const {
    String path;
    for (std::int64_t i = first; i <= last; ++i) path.append((*this)[static_cast<std::int32_t>(i)]) += u'\\';
    return path;
}

}  // namespace Varnholt
