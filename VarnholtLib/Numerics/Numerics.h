#pragma once

/// The numerics in one header: expression evaluator, statistics, distributions, fits, climate physics.
///
/// For applications. Code of the library includes the headers that it uses.
#include "VarnholtLib/Numerics/Calc/vrnCalc.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcError.h"
#include "VarnholtLib/Numerics/Calc/vrnCalcItems.h"
#include "VarnholtLib/Numerics/vrnClimatePhysics.h"
#include "VarnholtLib/Numerics/vrnComplex.h"
#include "VarnholtLib/Numerics/vrnCoordinates.h"
#include "VarnholtLib/Numerics/vrnCurveFit.h"
#include "VarnholtLib/Numerics/vrnDescriptive.h"
#include "VarnholtLib/Numerics/vrnDistributions.h"
#include "VarnholtLib/Numerics/vrnGammaFunctions.h"
#include "VarnholtLib/Numerics/vrnHypothesisTests.h"
#include "VarnholtLib/Numerics/vrnMath.h"
#include "VarnholtLib/Numerics/vrnMissingValues.h"
#include "VarnholtLib/Numerics/vrnMonthlyData.h"
#include "VarnholtLib/Numerics/vrnRegression.h"
#include "VarnholtLib/Numerics/vrnSmallMath.h"
#include "VarnholtLib/Numerics/vrnStatistics.h"
#include "VarnholtLib/Numerics/vrnTrendline.h"
