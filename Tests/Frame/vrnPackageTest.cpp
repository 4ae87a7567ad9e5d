#include "VarnholtLib/vrnPackage.h"

#include <dlfcn.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <set>
#include <string>

namespace {

std::string& Steps() {
    static std::string steps;
    return steps;
}

std::string TakeSteps() {
    return std::exchange(Steps(), {});
}

struct TCloseLibrary {
    void operator()(void* handle) const { dlclose(handle); }
};
using TLibrary = std::unique_ptr<void, TCloseLibrary>;

TLibrary OpenLibrary(const char* path) {
    TLibrary library(dlopen(path, RTLD_NOW | RTLD_LOCAL));
    if (library == nullptr) ADD_FAILURE() << dlerror();
    return library;
}

}  // namespace

extern "C" __attribute__((visibility("default"))) void RecordLoadStep(const char* step) noexcept;

void RecordLoadStep(const char* step) noexcept {
    Steps() += step;
}

namespace Varnholt {
namespace {

constexpr const char* kStart = "+a+B+D+d";
constexpr const char* kStop = "-d-D-B-a";

TEST(vrnPackage, LoaderStartsOnceAndStopsAtTheLastUnload) {
    for (int round = 0; round < 2; ++round) {
        TLibrary first = OpenLibrary(VARNHOLT_LOAD_PROBE);
        EXPECT_EQ(TakeSteps(), kStart);
        TLibrary second = OpenLibrary(VARNHOLT_LOAD_PROBE);
        first.reset();
        EXPECT_EQ(TakeSteps(), "");
        second.reset();
        EXPECT_EQ(TakeSteps(), kStop);
    }
}

TEST(vrnPackage, ExplicitPairsDoNoSecondWork) {
    TLibrary library = OpenLibrary(VARNHOLT_LOAD_PROBE);
    ASSERT_NE(library, nullptr);
    const auto initialize = reinterpret_cast<void (*)()>(dlsym(library.get(), "ProbeInitialize"));
    const auto finalize = reinterpret_cast<void (*)()>(dlsym(library.get(), "ProbeFinalize"));
    TakeSteps();
    initialize();
    initialize();
    finalize();
    finalize();
    EXPECT_EQ(TakeSteps(), "");
    finalize();  // answers the loader's own call
    EXPECT_EQ(TakeSteps(), kStop);
    finalize();
    initialize();  // the count goes from 1 to 0: no work in either direction
    EXPECT_EQ(TakeSteps(), "");
    initialize();
    EXPECT_EQ(TakeSteps(), kStart);
    library.reset();
    EXPECT_EQ(TakeSteps(), kStop);
}

TEST(vrnPackage, TableListsEveryModuleOnceInOrder) {
    const TPackageInfoTable table = GetPackageInfoTable();
    EXPECT_EQ(table.Count, 81);
    ASSERT_EQ(table.Rows.size(), 81U);
    std::set<StringView> names;
    for (const TPackageInfoRow& row : table.Rows) names.insert(row.Name);
    EXPECT_EQ(names.size(), 81U);
    const auto positionOf = [&](StringView name) {
        return std::ranges::find(table.Rows, name, &TPackageInfoRow::Name) - table.Rows.begin();
    };
    const std::pair<StringView, int> places[] = {
        {u"vrnXml", 0},       {u"vrnMath", 6},       {u"vrnSystemRandomBytes", 14}, {u"vrnTrendline", 19},
        {u"vrnGrid", 41},     {u"vrnLog", 58},       {u"vrnExceptions", 62},        {u"vrnString", 64},
        {u"vrnCurveFit", 76}, {u"vrnWaitCursor", 80}};
    for (const auto& [name, place] : places) EXPECT_EQ(positionOf(name), place) << ToUtf8(name);
}

TEST(vrnPackage, EachModuleCountsItsUses) {
    const std::span<const TPackageInfoRow> rows = GetPackageInfoTable().Rows;
    const auto expectCounts = [&](int count) {
        for (const TPackageInfoRow& row : rows) EXPECT_EQ(row.GetUseCount(), count) << ToUtf8(row.Name);
    };
    expectCounts(-1);
    const TLibrary again = OpenLibrary(VARNHOLT_LIBRARY);
    expectCounts(-1);
    Initialize();
    expectCounts(-2);
    rows[6].Initialize();
    EXPECT_EQ(rows[6].GetUseCount(), -3);
    EXPECT_EQ(rows[5].GetUseCount(), -2);
    rows[6].Finalize();
    Finalize();
    expectCounts(-1);
}

}  // namespace
}  // namespace Varnholt
