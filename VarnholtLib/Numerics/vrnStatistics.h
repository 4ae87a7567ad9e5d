#pragma once

/// Statistics of climate series: descriptive statistics, hypothesis tests, and the distributions behind them.
///
///     TFloatArray rain = ...;                                // -999 where a month is missing
///     const float mean = Mean2(rain);                        // of the known months
///     const float fit = PPCC2(rain);                         // near 1: normally distributed
///     FT_test(mean1, sd1, mean2, sd2, 30, 30, t, probT, f, probF);
///
/// This header includes the whole family: vrnDescriptive.h, vrnHypothesisTests.h, vrnDistributions.h and
/// vrnGammaFunctions.h.
///
/// Threads: the functions keep no state, except that RandN and bsample draw from the process's generator.
#include "VarnholtLib/Numerics/vrnDescriptive.h"
#include "VarnholtLib/Numerics/vrnDistributions.h"
#include "VarnholtLib/Numerics/vrnGammaFunctions.h"
#include "VarnholtLib/Numerics/vrnHypothesisTests.h"
