#pragma once

#include <initializer_list>
#include <span>

#include "Platform/Runtime/Format.h"

/// Debug output that is switched off: the calls may stay in the code and cost next to nothing.
///
///     DebugWrite(u"Reading the stations");
///     DebugWrite(u"Station %d: %s", {index, name});
///
/// Threads: may be called on any thread.
namespace Varnholt {

/// Accepts the text and does nothing.
VARNHOLT_EXPORT void DebugWrite(StringView text);

/// Accept a format and its values, and do nothing. The format is not read, so nothing is raised if the
/// values do not fit it.
VARNHOLT_EXPORT void DebugWrite(StringView format, std::span<const TFormatArg> values);
VARNHOLT_EXPORT void DebugWrite(StringView format, std::initializer_list<TFormatArg> values);

}  // namespace Varnholt
