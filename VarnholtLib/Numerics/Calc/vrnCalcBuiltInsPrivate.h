#pragma once

#include <span>

#include "VarnholtLib/Numerics/Calc/vrnCalcItems.h"

namespace Varnholt {

/// The functions that every evaluator knows, in their order. They are the same objects for all evaluators.
std::span<const TFunction> BuiltInFunctions();

/// The built-in function of that name, or none.
const TFunction* FindBuiltIn(StringView name);

/// Sorts the values, then returns the middle one, or the mean of the two middle ones. The span is not empty.
Extended MedianOf(std::span<float> values);

}  // namespace Varnholt
