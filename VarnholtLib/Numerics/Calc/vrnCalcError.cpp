#include "VarnholtLib/Numerics/Calc/vrnCalcError.h"

namespace Varnholt {
namespace {

String MessageOf(TCalcError code) {
    switch (code) {
        case ceSyntax:
            return String(ECalcException::CSyntaxError);
        case ceOperator:
            return u"Operator not supported";
        case ceKeyword:
            return u"Keyword is not recognised";
        case ceBracket:
            return String(ECalcException::CBracketNotClosed);
        case ceParam:
            return String(ECalcException::CParam);
        case ceFunction:
            return String(ECalcException::CFunction);
        case ceDivideByZero:
            return String(ECalcException::CDivideByZero);
    }
    return String(ECalcException::CUnknown);
}

String MessageOf(TCalcError code, StringView text) {
    if (code == ceOperator) return u"Operator \"" + String(text) + u"\" not supported";
    if (code == ceKeyword) return u"Keyword \"" + String(text) + u"\" is not recognised";
    return MessageOf(code);
}

}  // namespace

ECalcException::ECalcException(TCalcError code) : Exception(MessageOf(code)) {}

ECalcException::ECalcException(TCalcError code, StringView text) : Exception(MessageOf(code, text)) {}

}  // namespace Varnholt
