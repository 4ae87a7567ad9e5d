#pragma once

/// Points, rectangles, colours and fonts in one header.
///
/// For applications. Code of the library includes the headers that it uses.
#include "Platform/Drawing/Colors.h"
#include "Platform/Drawing/Font.h"
#include "Platform/Drawing/Geometry.h"
