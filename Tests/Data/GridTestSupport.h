#pragma once

#include <algorithm>
#include <initializer_list>
#include <string>
#include <type_traits>
#include <typeinfo>
#include <utility>

#include "VarnholtLib/Data/vrnGrid.h"

namespace Varnholt {

/// The message of the exception of just that class which `call` raises; another one fails the test.
template <typename TException = EGridException, typename TCall>
std::string MessageOf(TCall call) {
    try {
        call();
    } catch (const TException& failure) {
        return typeid(failure) == typeid(TException) ? failure.what() : "an exception of a derived class";
    }
    return "nothing raised";
}

template <typename TArray>
using TCellOf = std::remove_cvref_t<decltype(std::declval<TArray>().GetBuffer()[0])>;

template <typename TArray = TFloatArray>
TArray ArrayOf(std::initializer_list<TCellOf<TArray>> values, std::int32_t base = 1) {
    TArray array(static_cast<std::int32_t>(values.size()));
    std::ranges::copy(values, array.GetBuffer().begin());
    array.SetBase(base);
    return array;
}

}  // namespace Varnholt
