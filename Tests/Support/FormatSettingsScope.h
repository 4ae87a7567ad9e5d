#pragma once

#include "Platform/Runtime/FormatSettings.h"

namespace Varnholt::Test {

/// Restores the process's format settings when it is destroyed:
///
///     const TFormatSettingsScope comma(u',');
///     EXPECT_EQ(FloatToStr(0.5), u"0,5");
class TFormatSettingsScope {
public:
    TFormatSettingsScope() = default;
    explicit TFormatSettingsScope(Char decimalSeparator) {
        FormatSettings().DecimalSeparator = decimalSeparator;
    }
    ~TFormatSettingsScope() { FormatSettings() = FFormer; }
    TFormatSettingsScope(const TFormatSettingsScope&) = delete;
    TFormatSettingsScope& operator=(const TFormatSettingsScope&) = delete;

private:
    const TFormatSettings FFormer = FormatSettings();
};

}  // namespace Varnholt::Test
