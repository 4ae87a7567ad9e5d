#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Types.h"

/// What the fuzz targets share. A target defines RunInput and states its properties with Require; a property
/// that does not hold ends the run, and the fuzzer saves the input.
namespace Varnholt::Fuzz {

using TInput = std::span<const std::uint8_t>;

/// Runs one input. An exception that leaves it counts as a finding.
void RunInput(TInput input);

/// Reports the property that is violated, with the values that show it, and aborts.
[[noreturn]] void Fail(const char* property, StringView found = {}, StringView expected = {});

inline void Require(bool holds, const char* property) {
    if (!holds) Fail(property);
}

inline void RequireSame(StringView found, StringView expected, const char* property) {
    if (found != expected) Fail(property, found, expected);
}

/// The same bits in the 10 bytes of the value, or two NaNs.
[[nodiscard]] bool SameValue(Extended a, Extended b);

/// The text of UTF-8 bytes. After the bytes FF FE the input is code units, lone surrogates among them.
[[nodiscard]] String TextOf(TInput input);

/// The message of the library's exception that a call raises, or an empty text.
template <typename TCall>
String FailureOf(TCall call) {
    try {
        call();
    } catch (const Exception& failure) {
        return failure.GetMessage();
    }
    return {};
}

/// Takes an input apart into choices; zeros after its end.
class TChoices {
public:
    explicit TChoices(TInput input) : FInput(input) {}

    [[nodiscard]] bool AtEnd() const { return FInput.empty(); }
    [[nodiscard]] int Below(int bound) { return Byte() % bound; }
    /// A number from -2 on, which includes wrong indexes on both sides of a small container.
    [[nodiscard]] std::int32_t Index(std::int32_t count) { return Byte() % (count + 4) - 2; }
    [[nodiscard]] TInput Rest() const { return FInput; }
    [[nodiscard]] String Text() { return TextOf(Take(static_cast<std::size_t>(Below(9)))); }

private:
    TInput Take(std::size_t count) {
        const TInput taken = FInput.first(std::min(count, FInput.size()));
        FInput = FInput.subspan(taken.size());
        return taken;
    }
    int Byte() {
        const TInput one = Take(1);
        return one.empty() ? 0 : one[0];
    }

    TInput FInput;
};

}  // namespace Varnholt::Fuzz
