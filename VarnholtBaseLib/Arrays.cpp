#include "VarnholtBaseLib/Arrays.h"

#include <cmath>
#include <functional>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Format.h"

namespace Varnholt {
namespace {

template <typename TBetter>
float Extreme(std::span<const float> values, TBetter better) noexcept {
    float best = std::numeric_limits<float>::quiet_NaN();
    for (const float value : values) {
        if (better(value, best) || std::isnan(best)) best = value;
    }
    return best;
}

}  // namespace

void RaiseArrayIndex(std::int64_t index) {
    throw ERangeError(Format(u"Array index out of bounds (%d)", {index}));
}

void RaiseArrayLength(std::int64_t length) {
    throw ERangeError(Format(u"Array length out of range (%d)", {length}));
}

float MinOf(std::span<const float> values) noexcept {
    return Extreme(values, std::less<>());
}

float MaxOf(std::span<const float> values) noexcept {
    return Extreme(values, std::greater<>());
}

TSingleArray ToSingleArray(const TVariantArray& values) {
    std::vector<float> singles;
    singles.reserve(values.size());
    for (const Variant& value : values) singles.push_back(static_cast<float>(value.ToDouble()));
    return TSingleArray(std::move(singles));
}

}  // namespace Varnholt
