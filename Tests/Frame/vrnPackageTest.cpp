#include "VarnholtLib/vrnPackage.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <stdexcept>
#include <string>

namespace {

std::string gSteps;

std::string TakeSteps() {
    return std::exchange(gSteps, {});
}

std::shared_ptr<void> OpenLibrary(const char* path) {
    void* const library = dlopen(path, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) throw std::runtime_error(dlerror());
    return {library, dlclose};
}

}  // namespace

extern "C" VARNHOLT_EXPORT void RecordLoadStep(const char* step) noexcept {
    gSteps += step;
}

namespace Varnholt::Test {
namespace {

constexpr const char *kStart = "+a+B+D+d", *kStop = "-d-D-B-a";

TEST(vrnPackage, LoaderStartsOnceAndStopsAtTheLastUnload) {
    for (int round = 0; round < 2; ++round) {
        auto first = OpenLibrary(VARNHOLT_LOAD_PROBE);
        EXPECT_EQ(TakeSteps(), kStart);
        auto second = OpenLibrary(VARNHOLT_LOAD_PROBE);
        first.reset();
        EXPECT_EQ(TakeSteps(), "");
        second.reset();
        EXPECT_EQ(TakeSteps(), kStop);
    }
}

TEST(vrnPackage, ExplicitPairsDoNoSecondWork) {
    auto library = OpenLibrary(VARNHOLT_LOAD_PROBE);
    const auto initialize = reinterpret_cast<void (*)()>(dlsym(library.get(), "ProbeInitialize"));
    const auto finalize = reinterpret_cast<void (*)()>(dlsym(library.get(), "ProbeFinalize"));
    TakeSteps();
    for (const auto step : {initialize, initialize, finalize, finalize}) step();
    EXPECT_EQ(TakeSteps(), "");
    finalize();  // answers the loader's own call
    EXPECT_EQ(TakeSteps(), kStop);
    finalize();
    initialize();  // the count goes from 1 to 0: no work in either direction
    EXPECT_EQ(TakeSteps(), "");
    initialize();
    library.reset();
    EXPECT_EQ(TakeSteps(), std::string(kStart) + kStop);
}

TEST(vrnPackage, TableListsEveryModuleOnceInOrder) {
    const TPackageInfoTable table = GetPackageInfoTable();
    std::set<StringView> names;
    for (const TPackageInfoRow& row : table.Rows) names.insert(row.Name);
    EXPECT_TRUE(table.Count == 81 && table.Rows.size() == 81 && names.size() == 81);
    // clang-format off
    for (const auto& [name, place] : {std::pair<StringView, std::size_t>{u"vrnXml", 0}, {u"vrnMath", 6},
             {u"vrnSystemRandomBytes", 14}, {u"vrnTrendline", 19}, {u"vrnGrid", 41}, {u"vrnLog", 58},
             {u"vrnExceptions", 62}, {u"vrnString", 64}, {u"vrnCurveFit", 76}, {u"vrnWaitCursor", 80}})
        EXPECT_EQ(table.Rows[place].Name, name);
    // clang-format on
}

TEST(vrnPackage, EachModuleCountsItsUses) {
    const std::span<const TPackageInfoRow> rows = GetPackageInfoTable().Rows;
    const auto expectCounts = [&](int count) {
        for (const TPackageInfoRow& row : rows) EXPECT_EQ(row.GetUseCount(), count) << ToUtf8(row.Name);
    };
    expectCounts(-1);
    Initialize();
    expectCounts(-2);
    rows[6].Initialize();
    EXPECT_TRUE(rows[6].GetUseCount() == -3 && rows[5].GetUseCount() == -2);
    rows[6].Finalize();
    Finalize();
    expectCounts(-1);
}

}  // namespace
}  // namespace Varnholt::Test
