#pragma once

#include "Platform/Runtime/Types.h"

/// Characters that messages and files are put together with.
namespace Varnholt {

/// The carriage return, which stands between the two lines of a grid's message.
inline constexpr Char ASCII_CR = u'\r';

}  // namespace Varnholt
