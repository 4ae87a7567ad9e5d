#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "VarnholtLib/Numerics/vrnMath.h"

/// A second evaluator, written as plainly as possible: it cleans character by character, copies texts, and
/// reduces lists of values as the rules of vrnCalc.h tell. Slow, recursive, and independent of the library's
/// parser and programs. Keywords are answered by a callback that the caller gives.
namespace Varnholt::Test {

class TReferenceCalc {
public:
    using TKeywordValue = std::function<Extended(StringView name)>;

    TReferenceCalc(String expression, TKeywordValue keywords);

    [[nodiscard]] static String Clean(String text);
    [[nodiscard]] Extended Calculate() const;

private:
    struct TItem;

    void Parse();
    std::size_t ParseCall(std::size_t at);
    std::size_t ParseGroup(std::size_t at);
    void ParseParams(TItem& call, String text);
    std::size_t StepBehind(std::size_t close) const;
    [[nodiscard]] Extended Number(const TItem& item) const;
    [[nodiscard]] Extended CallFunction(const TItem& item) const;

    String FExp;
    TKeywordValue FKeywords;
    std::vector<TItem> FItems;
};

struct TReferenceCalc::TItem {
    enum { Num, Keyword, Group, Function, Operator } Kind;
    String Text;
    Extended Value = 0;
    std::vector<std::shared_ptr<TReferenceCalc>> Inner;
};

}  // namespace Varnholt::Test
