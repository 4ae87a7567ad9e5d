#include "Platform/Runtime/Random.h"

#include <sys/random.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <random>

#include "Platform/Runtime/Exceptions.h"
#include "Platform/Runtime/Streams.h"

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

void FillWithSystemRandom(std::span<std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = getrandom(bytes.data(), bytes.size(), 0);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) throw Exception(u"The system returns no random bytes: " + SystemReason(errno));
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

}  // namespace Varnholt
