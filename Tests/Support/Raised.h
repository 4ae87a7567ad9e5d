#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <typeinfo>

#include "Platform/Runtime/Exceptions.h"

namespace Varnholt {

/// The message of the exception that the call raises, if it is of the very class asked for, else what
/// happened instead.
template <typename TException>
String Raised(const std::function<void()>& call) {
    try {
        call();
    } catch (const Exception& failure) {
        if (typeid(failure) == typeid(TException)) return failure.GetMessage();
        return u"(another class) " + failure.GetMessage();
    }
    return u"(nothing raised)";
}

/// What is done, and the message that this raises.
using TRaisingCalls = std::initializer_list<std::pair<std::function<void()>, String>>;

template <typename TException>
void ExpectRaised(const TRaisingCalls& calls) {
    for (const auto& [call, message] : calls) EXPECT_EQ(Raised<TException>(call), message);
}

}  // namespace Varnholt
