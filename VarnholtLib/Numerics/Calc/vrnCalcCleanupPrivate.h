#pragma once

#include "Platform/Runtime/Types.h"

/// The cleaning of an expression's text, pass by pass; the Cleanup operations of TCalc say what each one
/// does. Every pass takes time in proportion to the text.
///
/// Cleaning leaves a cleaned text as it is, and likewise the trimmed text of each group and parameter inside
/// it, for no pass looks beyond a bracket. The parser therefore cleans an expression once and cuts the inner
/// ones from it.
namespace Varnholt::CalcCleanup {

void ClumpedSpaces(String& text);
void SpacesAfterOpeningBrackets(String& text);
void SpacesBeforeClosingBrackets(String& text);
void MakeSureOneSpaceAround(String& text, StringView characters);
void SpacesAroundOperators(String& text);
void RemoveSpaceAfterNegativeModifier(String& text);
/// Position from 1.
bool IsLastItemADigit(StringView text, std::size_t position);
/// All passes.
void Expression(String& text);

}  // namespace Varnholt::CalcCleanup
