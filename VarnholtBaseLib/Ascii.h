#pragma once

#include "Platform/Runtime/Types.h"

/// Characters in messages and files.
namespace Varnholt {

/// The carriage return, which separates the two lines of a grid's message.
inline constexpr Char ASCII_CR = u'\r';

}  // namespace Varnholt
