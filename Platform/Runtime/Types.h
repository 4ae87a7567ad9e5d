#pragma once

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "Platform/Runtime/Export.h"

/// The text and number types of all modules.
///
/// Text is UTF-16: a String is a sequence of 16-bit code units, and positions in it count code units.
/// A character outside the basic plane takes two units, a high surrogate and then a low one.
///
///     String title = u"Niederschlag";
///     std::cout << ToUtf8(title);
///
/// Threads: the functions keep no state.
namespace Varnholt {

using Char = char16_t;
using String = std::u16string;
using StringView = std::u16string_view;

/// The 80-bit float of the evaluator: a mantissa of 64 bits.
using Extended = long double;
static_assert(std::numeric_limits<Extended>::digits >= 64, "Extended needs a mantissa of 64 bits or more");

/// The text in UTF-8. An unpaired surrogate becomes U+FFFD.
[[nodiscard]] VARNHOLT_EXPORT std::string ToUtf8(StringView text);

/// The UTF-16 text of UTF-8 bytes. A byte sequence that is not well-formed becomes U+FFFD.
[[nodiscard]] VARNHOLT_EXPORT String FromUtf8(std::string_view bytes);

}  // namespace Varnholt
