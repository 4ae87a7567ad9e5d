#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <typeinfo>

#include "Platform/Runtime/Exceptions.h"

namespace Varnholt::Test {

/// The message of the exception that the call raises, if it is of exactly the class asked for, else what
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

/// A call and the message that it raises. Remembers its own line, which a failure is reported at.
struct TRaisingCall {
    template <typename TCall>
    TRaisingCall(TCall call, StringView message, const char* file = __builtin_FILE(),
                 int line = __builtin_LINE())
        : Call(std::move(call)), Message(message), File(file), Line(line) {}

    std::function<void()> Call;
    String Message;
    const char* File;
    int Line;
};

/// Checks that each call raises exactly the class asked for, with its message:
///
///     ExpectRaised<EListError>({{[&] { list.Get(9); }, u"List index out of bounds (9)"},
///                               {[&] { list.Get(-1); }, u"List index out of bounds (-1)"}});
template <typename TException>
void ExpectRaised(std::initializer_list<TRaisingCall> calls) {
    for (const TRaisingCall& row : calls) {
        const String message = Raised<TException>(row.Call);
        if (message == row.Message) continue;
        ADD_FAILURE_AT(row.File, row.Line)
            << "raised:   " << ToUtf8(message) << "\nexpected: " << ToUtf8(row.Message);
    }
}

}  // namespace Varnholt::Test
