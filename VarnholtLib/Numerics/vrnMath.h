#pragma once

/// The mathematics module: one header for all of its files.
#include "VarnholtLib/Numerics/Calc/vrnCalc.h"
#include "VarnholtLib/Numerics/vrnCoordinates.h"
#include "VarnholtLib/Numerics/vrnSmallMath.h"
