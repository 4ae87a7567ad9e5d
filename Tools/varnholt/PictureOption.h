#pragma once

#include <string>

#include "Platform/Drawing/Geometry.h"
#include "Platform/Runtime/Types.h"

/// Options that name a picture. Both raise CLI::ValidationError for wrong usage.
namespace Varnholt::Tool {

/// Raises unless the name ends in .svg, .png or .pdf, and Exception if the picture would replace the command's input.
void CheckPicture(const std::string& option, StringView fileName, StringView input);

/// The size of a picture as WIDTHxHEIGHT, from 100 to 10000 pixels.
[[nodiscard]] TSize ReadPictureSize(const std::string& option, const std::string& text);

}  // namespace Varnholt::Tool
