#pragma once

#include <string>

#include "Platform/Drawing/Geometry.h"
#include "Platform/Runtime/Types.h"

/// Options that name a picture. Both raise CLI::ValidationError (wrong usage).
namespace Varnholt::Tool {

/// Raises unless the name ends in .svg, .png or .pdf.
void CheckPicture(const std::string& option, StringView fileName);

/// The size of a picture as WIDTHxHEIGHT, from 100 to 10000 pixels.
[[nodiscard]] TSize ReadPictureSize(const std::string& option, const std::string& text);

}  // namespace Varnholt::Tool
