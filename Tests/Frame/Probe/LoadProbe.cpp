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

}  // namespace

}  // namespace Varnholt::Test

template class Varnholt::TLoadTable<Varnholt::Test::kModules>;

extern "C" VARNHOLT_EXPORT void ProbeInitialize() {
    Varnholt::TLoadTable<Varnholt::Test::kModules>::Initialize();
}

extern "C" VARNHOLT_EXPORT void ProbeFinalize() {
    Varnholt::TLoadTable<Varnholt::Test::kModules>::Finalize();
}
