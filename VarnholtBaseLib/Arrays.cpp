#include "VarnholtBaseLib/Arrays.h"

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"
#include "VarnholtBaseLib/Extremes.h"

namespace Varnholt {

void RaiseArrayIndex(std::int64_t index) {
    throw ERangeError(Format(u"Array index out of bounds (%d)", {index}));
}

void RaiseArrayLength(std::int64_t length) {
    throw ERangeError(Format(u"Array length out of range (%d)", {length}));
}

float MinOf(std::span<const float> values) noexcept {
    float best = std::numeric_limits<float>::quiet_NaN();
    for (const float value : values) TakeMin(best, value);
    return best;
}

float MaxOf(std::span<const float> values) noexcept {
    float best = std::numeric_limits<float>::quiet_NaN();
    for (const float value : values) TakeMax(best, value);
    return best;
}

TSingleArray ToSingleArray(const TVariantArray& values) {
    std::vector<float> singles;
    singles.reserve(values.size());
    for (const Variant& value : values) singles.push_back(static_cast<float>(value.ToDouble()));
    return TSingleArray(std::move(singles));
}

}  // namespace Varnholt
