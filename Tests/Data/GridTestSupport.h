#pragma once

#include <gmock/gmock.h>

#include <limits>

#include "Tests/Support/Raised.h"
#include "VarnholtLib/Data/vrnGrid.h"

namespace Varnholt::Test {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

/// An array of the class with these values.
template <typename TArray = TFloatArray>
TArray ArrayOf(
    std::initializer_list<std::remove_cvref_t<decltype(std::declval<TArray&>().GetBuffer()[0])>> values,
    std::int32_t base = 1) {
    TArray array(static_cast<std::int32_t>(values.size()));
    std::ranges::copy(values, array.GetBuffer().begin());
    array.SetBase(base);
    return array;
}

}  // namespace Varnholt::Test
