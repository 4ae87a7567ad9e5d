#pragma once

#include "Platform/Runtime/Types.h"

/// The separators for reading and writing numbers.
///
///     FormatSettings().DecimalSeparator = u',';        // for the whole process
///     StrToFloat(text, TFormatSettings::Invariant());  // for a file whose format is fixed
///
/// The conversions of Numbers.h and Format.h follow these settings and never the C locale itself.
///
/// Threads: the process-wide settings have no lock. Set or refresh them while no other thread converts
/// numbers, ideally before threads start.
namespace Varnholt {

struct VARNHOLT_EXPORT TFormatSettings {
    Char DecimalSeparator = u'.';
    Char ThousandSeparator = u',';

    /// A point for decimals and a comma for thousands, whatever the process's locale.
    [[nodiscard]] static TFormatSettings Invariant();

    bool operator==(const TFormatSettings&) const = default;
};

/// The settings of the process, taken from the C locale (LC_NUMERIC) when the library is loaded: those of
/// "C", unless the program called setlocale before. The fields may be set.
[[nodiscard]] VARNHOLT_EXPORT TFormatSettings& FormatSettings();

/// Takes the process's settings from the current C locale. A separator that the locale lacks, or that is not
/// one character of the basic plane, becomes a point for decimals and a comma for thousands (a point if the
/// decimal separator is a comma).
VARNHOLT_EXPORT void RefreshFormatSettings();

}  // namespace Varnholt
