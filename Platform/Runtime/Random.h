#pragma once

#include <cstdint>
#include <span>

#include "Platform/Runtime/Export.h"

/// The process's generator of random numbers, for sampling and simulation, but not for secrets.
///
///     Randomize();                                   // another sequence in each run
///     const double share = Random();                 // 0 <= share < 1
///     const std::int32_t face = RandomRange(1, 7);   // 1 to 6
///
/// It is a Mersenne Twister (Matsumoto and Nishimura 1998, 64 bits). Until it is seeded its sequence is the
/// same in every run; callers must not depend on the numbers themselves.
///
/// Threads: the generator has no lock; use it from one thread at a time. FillWithSystemRandom may be called on any.
namespace Varnholt {

/// Seeds the generator from the clock.
VARNHOLT_EXPORT void Randomize();

/// Seeds the generator with a number, so that a run can be repeated within one version of the library.
VARNHOLT_EXPORT void SetRandomSeed(std::uint64_t seed);

/// A uniform number, at least 0 and below 1.
[[nodiscard]] VARNHOLT_EXPORT double Random();

/// A uniform integer, at least `from` and below `to`. If both are equal it is that number; if `to` is the
/// smaller one they are exchanged.
[[nodiscard]] VARNHOLT_EXPORT std::int32_t RandomRange(std::int32_t from, std::int32_t to);

/// Fills the bytes from the random source of the operating system, which is fit for keys. Raises Exception
/// `The system returns no random bytes: %s` with the reason.
VARNHOLT_EXPORT void FillWithSystemRandom(std::span<std::uint8_t> bytes);

}  // namespace Varnholt
