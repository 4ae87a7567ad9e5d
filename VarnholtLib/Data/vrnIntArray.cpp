#include "VarnholtLib/Data/vrnIntArray.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Varnholt {

TIntArray::TIntArray(std::int32_t nItems) : TBasedArray(nItems) {}

TIntArray::TIntArray(std::vector<std::int32_t>&& buffer, std::int32_t base) noexcept
    : TBasedArray(std::move(buffer), base) {}

void TIntArray::Sort(TIntArray& sortTo) const {
    Copy(sortTo);
    std::ranges::sort(sortTo.FBuffer);  // equal integers are alike, so any sort gives the same result
}

TIntArray TIntArray::Clean(std::int32_t min, std::int32_t max) const {
    std::int32_t base = 1;
    std::vector<std::int32_t> kept = ValuesOutside(min, max, base);
    if (FBuffer.size() <= std::numeric_limits<std::uint16_t>::max()) base = static_cast<std::uint16_t>(base);
    return TIntArray(std::move(kept), base);
}

}  // namespace Varnholt
