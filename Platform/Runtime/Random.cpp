#include "Platform/Runtime/Random.h"

#include <algorithm>
#include <chrono>
#include <random>

namespace Varnholt {
namespace {

std::mt19937_64& Generator() {
    static std::mt19937_64 generator;
    return generator;
}

}  // namespace

void Randomize() {
    SetRandomSeed(static_cast<std::uint64_t>(std::chrono::system_clock::now().time_since_epoch().count()));
}

void SetRandomSeed(std::uint64_t seed) {
    Generator().seed(seed);
}

double Random() {
    return static_cast<double>(Generator()() >> 11) * 0x1p-53;
}

std::int32_t RandomRange(std::int32_t from, std::int32_t to) {
    if (from == to) return from;
    const auto [low, high] = std::minmax(from, to);
    return std::uniform_int_distribution<std::int32_t>(low, high - 1)(Generator());
}

}  // namespace Varnholt
