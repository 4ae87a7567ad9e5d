#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <typeinfo>

#include "VarnholtLib/Data/vrnGrid.h"

namespace Varnholt {

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();
constexpr std::int32_t kHighest = std::numeric_limits<std::int32_t>::max();

/// The message of the exception of just that class which `call` raises; another one fails the test.
template <typename TException = EGridException>
std::string MessageOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const TException& failure) {
        return typeid(failure) == typeid(TException) ? failure.what() : "an exception of a derived class";
    }
    return "nothing raised";
}

template <typename TArray = TFloatArray>
TArray ArrayOf(std::initializer_list<std::remove_cvref_t<decltype(TArray(1).GetBuffer()[0])>> values,
               std::int32_t base = 1) {
    TArray array(static_cast<std::int32_t>(values.size()));
    std::ranges::copy(values, array.GetBuffer().begin());
    array.SetBase(base);
    return array;
}

}  // namespace Varnholt
