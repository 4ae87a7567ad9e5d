#include "VarnholtLib/Files/vrnZipUtils.h"

#include <algorithm>

namespace Varnholt {

std::int32_t ZipFileIndexOf(const TZipFile& zipFile, StringView fileName) {
    String name(fileName);
    std::ranges::replace(name, u'/', u'\\');
    const std::int32_t index = zipFile.IndexOf(name);
    if (index != -1) return index;
    std::ranges::replace(name, u'\\', u'/');
    return zipFile.IndexOf(name);
}

}  // namespace Varnholt
