#pragma once

/// Statistics of climate series: description, hypothesis tests, and the distributions that they rest on.
///
///     TFloatArray rain = ...;                                // -999 where a month is missing
///     const float mean = Mean2(rain);                        // of the months that are there
///     const float fit = PPCC2(rain);                         // near 1: normally distributed
///     FT_test(mean1, sd1, mean2, sd2, 30, 30, t, probT, f, probF);
///
/// This header brings in the whole family: vrnDescriptive.h, vrnHypothesisTests.h, vrnDistributions.h and
/// vrnGammaFunctions.h.
///
/// Threads: the functions keep no state, but RandN and bsample, which draw from the process's generator.
#include "VarnholtLib/Numerics/vrnDescriptive.h"
#include "VarnholtLib/Numerics/vrnDistributions.h"
#include "VarnholtLib/Numerics/vrnGammaFunctions.h"
#include "VarnholtLib/Numerics/vrnHypothesisTests.h"
