#pragma once

#include "Platform/Runtime/Exceptions.h"

/// The failures of the expression evaluator (vrnCalc.h).
namespace Varnholt {

enum TCalcError : int {
    ceSyntax,
    ceOperator,
    ceKeyword,
    ceBracket,
    ceParam,
    ceFunction,
    ceDivideByZero,
};

/// Raised while an expression is parsed or calculated. The message follows from the code:
///
///     ceSyntax        "Syntax error"
///     ceOperator      "Operator not supported", or with a text `Operator "TEXT" not supported`
///     ceKeyword       "Keyword is not recognised", or with a text `Keyword "TEXT" is not recognised`
///     ceBracket       "A bracket set has not been closed"
///     ceParam         "There is a problem with one (or more) function parameters"
///     ceFunction      "A specified function is not supported or registered"
///     ceDivideByZero  "Attempt to divide by zero"
///     any other       "Unknown error"
class VARNHOLT_EXPORT ECalcException : public Exception {
public:
    static constexpr StringView CSyntaxError = u"Syntax error";
    static constexpr StringView CBracketNotClosed = u"A bracket set has not been closed";
    static constexpr StringView CParam = u"There is a problem with one (or more) function parameters";
    static constexpr StringView CFunction = u"A specified function is not supported or registered";
    static constexpr StringView CDivideByZero = u"Attempt to divide by zero";
    static constexpr StringView CUnknown = u"Unknown error";

    explicit ECalcException(TCalcError code);
    /// The text appears in the messages of ceOperator and ceKeyword; the other codes ignore it.
    ECalcException(TCalcError code, StringView text);
};

}  // namespace Varnholt
