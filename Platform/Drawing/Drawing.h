#pragma once

/// Points, rectangles, colours, fonts, canvases, bitmaps and pictures in one header.
///
/// For applications. Code of the library includes the headers that it uses.
#include "Platform/Drawing/Bitmap.h"
#include "Platform/Drawing/Canvas.h"
#include "Platform/Drawing/CanvasRecorder.h"
#include "Platform/Drawing/Colors.h"
#include "Platform/Drawing/Font.h"
#include "Platform/Drawing/GPGraphics.h"
#include "Platform/Drawing/GPGraphicsPath.h"
#include "Platform/Drawing/Geometry.h"
#include "Platform/Drawing/Picture.h"
