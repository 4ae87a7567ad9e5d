#pragma once

#include <typeinfo>

#include "Platform/Runtime/Exceptions.h"

namespace Varnholt {

/// The message of the exception that the call raises, if it is of the very class asked for, else what
/// happened instead.
template <typename TException, typename TCall>
String Raised(TCall&& call) {
    try {
        call();
    } catch (const Exception& failure) {
        if (typeid(failure) == typeid(TException)) return failure.GetMessage();
        return u"(another class) " + failure.GetMessage();
    }
    return u"(nothing raised)";
}

}  // namespace Varnholt
