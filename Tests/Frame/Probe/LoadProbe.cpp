// A shared object with a load table of its own, whose steps tell the program that loads it. See
// vrnPackageTest.cpp.
#include "VarnholtLib/LoadTablePrivate.h"

/// Defined by the program.
extern "C" VARNHOLT_EXPORT void RecordLoadStep(const char* step) noexcept;

namespace Varnholt {
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

template class TLoadTable<kModules>;

}  // namespace Varnholt

extern "C" VARNHOLT_EXPORT void ProbeInitialize() {
    Varnholt::TLoadTable<Varnholt::kModules>::Initialize();
}

extern "C" VARNHOLT_EXPORT void ProbeFinalize() {
    Varnholt::TLoadTable<Varnholt::kModules>::Finalize();
}
