#include "VarnholtLib/Numerics/vrnMissingValues.h"

#include <algorithm>

#include "Platform/Runtime/Numbers.h"
#include "Platform/Runtime/Text.h"
#include "VarnholtLib/Foundation/vrnString.h"

namespace Varnholt {
namespace {

bool ReadNumber(StringView text, double& value) {
    static const TFormatSettings settings = TFormatSettings::Invariant();
    return TryStrToFloat(text, value, settings);
}

}  // namespace

TMissingValues::TMissingValues(StringView codes) {
    for (const String& code : SplitString(codes, u',', true)) {
        double number = 0;
        if (ReadNumber(code, number)) {
            FNumbers.push_back(static_cast<float>(number));
        } else {
            FTexts.push_back(code);
        }
    }
}

TCellKind TMissingValues::Read(StringView cell, double& value) const {
    double number = 0;
    if (ReadNumber(cell, number)) {
        const auto isCode = [&](float code) { return code == static_cast<float>(number); };
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
