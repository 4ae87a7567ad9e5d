// A shared object with a load table of its own, whose steps tell the program that loads it. See
// vrnPackageTest.cpp.
#include "VarnholtLib/LoadTablePrivate.h"

/// Defined by the program.
extern "C" VARNHOLT_EXPORT void RecordLoadStep(const char* step) noexcept;

namespace Varnholt::Test {
namespace {

constexpr TModuleWork kOnlyModule = {.Initialize = []() noexcept { RecordLoadStep("+a"); },
                                     .Finalize = []() noexcept { RecordLoadStep("-a"); }};
constexpr TModuleWork kOnlyClass = {.ConstructClass = []() noexcept { RecordLoadStep("+B"); },
                                    .DestructClass = []() noexcept { RecordLoadStep("-B"); }};
constexpr TModuleWork kBoth = {.ConstructClass = []() noexcept { RecordLoadStep("+D"); },
                               .Initialize = []() noexcept { RecordLoadStep("+d"); },
                               .Finalize = []() noexcept { RecordLoadStep("-d"); },
                               .DestructClass = []() noexcept { RecordLoadStep("-D"); }};

constexpr std::array kModules = {TModule{u"a", kOnlyModule}, TModule{u"b", kOnlyClass}, TModule{u"c", {}},
                                 TModule{u"d", kBoth}};

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
