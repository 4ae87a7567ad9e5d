// A shared object with a load table of its own, whose steps report to the program that loads it. See
// vrnPackageTest.cpp.
#include "VarnholtLib/LoadTablePrivate.h"

/// Defined by the program.
extern "C" VARNHOLT_EXPORT void RecordLoadStep(const char* step) noexcept;

namespace Varnholt::Test {
namespace {

template <char kSign, char kName>
void Step() noexcept {
    constexpr char kText[] = {kSign, kName, '\0'};
    RecordLoadStep(kText);
}

constexpr std::array kModules = {
    TModule{u"a", {.Initialize = &Step<'+', 'a'>, .Finalize = &Step<'-', 'a'>}},
    TModule{u"b", {.ConstructClass = &Step<'+', 'B'>, .DestructClass = &Step<'-', 'B'>}},
    TModule{u"c", {}},
    TModule{u"d", {&Step<'+', 'D'>, &Step<'+', 'd'>, &Step<'-', 'd'>, &Step<'-', 'D'>}},
};

using TTable = TLoadTable<kModules>;

[[gnu::constructor(101)]] void Load() noexcept {
    TTable::Initialize();
}
[[gnu::destructor(101)]] void Unload() noexcept {
    TTable::Finalize();
}

}  // namespace

extern "C" VARNHOLT_EXPORT void ProbeInitialize() {
    TTable::Initialize();
}
extern "C" VARNHOLT_EXPORT void ProbeFinalize() {
    TTable::Finalize();
}

}  // namespace Varnholt::Test
