#pragma once

#include <cstdint>

#include "Platform/Runtime/Export.h"

/// The process's one generator of random numbers, for sampling and simulation; not for secrets.
///
///     Randomize();                                   // another sequence in each run
///     const double share = Random();                 // 0 <= share < 1
///     const std::int32_t face = RandomRange(1, 7);   // 1 to 6
///
/// Behind it is a Mersenne Twister (Matsumoto and Nishimura 1998, 64 bits). Until it is seeded it gives the
/// same sequence in every run; no caller may depend on what that sequence is.
///
/// Threads: the generator takes no lock; one thread at a time draws or seeds.
namespace Varnholt {

/// Seeds the generator from the clock.
VARNHOLT_EXPORT void Randomize();

/// Seeds the generator with a number, so that a run can be repeated within one version of the library.
VARNHOLT_EXPORT void SetRandomSeed(std::uint64_t seed);

/// A uniform number, at least 0 and below 1.
[[nodiscard]] VARNHOLT_EXPORT double Random();

/// A uniform integer, at least `from` and below `to`. With both equal it is that number; the wrong way round
/// they count as exchanged.
[[nodiscard]] VARNHOLT_EXPORT std::int32_t RandomRange(std::int32_t from, std::int32_t to);

}  // namespace Varnholt
