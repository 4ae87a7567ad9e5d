#pragma once

/// The mathematics module: one header for all of its files.
#include "VarnholtLib/Numerics/vrnCalc.h"
