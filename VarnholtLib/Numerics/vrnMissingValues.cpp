#include "VarnholtLib/Numerics/vrnMissingValues.h"

#include <algorithm>
#include <cmath>

#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Foundation/vrnString.h"

namespace Varnholt {
namespace {

bool ReadNumber(StringView text, double& value) {
    static const TFormatSettings settings = TFormatSettings::Invariant();
    return TryStrToFloat(text, value, settings);
}

/// A whole code stands for itself. Others, such as -99.9, may have been written from 32-bit floats.
bool IsSameCode(double code, double number) {
    constexpr double kLargestWhole = 9007199254740992;  // 2^53
    const bool isWhole = std::fabs(code) <= kLargestWhole && code == std::trunc(code);
    return code == number || (!isWhole && static_cast<float>(code) == static_cast<float>(number));
}

}  // namespace

TMissingValues::TMissingValues(StringView codes) {
    for (const String& code : SplitString(codes, u',', true)) {
        double number = 0;
        if (ReadNumber(code, number)) {
            FNumbers.push_back(number);
        } else {
            FTexts.push_back(code);
        }
    }
}

TCellKind TMissingValues::Read(StringView cell, double& value) const {
    double number = 0;
    if (ReadNumber(cell, number)) {
        const auto isCode = [&](double code) { return IsSameCode(code, number); };
        if (IsMissing(number) || std::ranges::any_of(FNumbers, isCode)) return ckMissing;
        value = number;
        return ckNumber;
    }
    const StringView text = TrimView(cell);
    const auto isText = [&](StringView code) { return SameText(code, text); };
    const bool isMissing =
        text.empty() || isText(u"NA") || isText(u"NaN") || std::ranges::any_of(FTexts, isText);
    return isMissing ? ckMissing : ckText;
}

}  // namespace Varnholt
