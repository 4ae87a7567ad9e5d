#include "VarnholtLib/vrnPackage.h"

#include <dlfcn.h>
#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <stdexcept>
#include <string>

namespace {

std::string steps;

std::shared_ptr<void> OpenProbe() {
    void* const library = dlopen(VARNHOLT_LOAD_PROBE, RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) throw std::runtime_error(dlerror());
    return {library, dlclose};
}

}  // namespace

extern "C" VARNHOLT_EXPORT void RecordLoadStep(const char* step) noexcept {
    steps += step;
}

namespace Varnholt::Test {
namespace {

constexpr const char *kStart = "+a+B+D+d", *kStop = "-d-D-B-a";

TEST(vrnPackage, LoaderAndExplicitPairsWorkOnce) {
    auto library = OpenProbe(), again = OpenProbe();
    again.reset();
    EXPECT_EQ(std::exchange(steps, {}), kStart);
    const auto initialize = reinterpret_cast<void (*)()>(dlsym(library.get(), "ProbeInitialize"));
    const auto finalize = reinterpret_cast<void (*)()>(dlsym(library.get(), "ProbeFinalize"));
    for (const auto step : {initialize, initialize, finalize, finalize}) step();
    EXPECT_EQ(steps, "");
    finalize();  // answers the loader's own call
    EXPECT_EQ(std::exchange(steps, {}), kStop);
    finalize();
    initialize();  // the count goes from 1 to 0: no work in either direction
    EXPECT_EQ(steps, "");
    initialize();
    library.reset();
    EXPECT_EQ(steps, std::string(kStart) + kStop);
}

TEST(vrnPackage, TableListsEveryModuleOnceInOrder) {
    const TPackageInfoTable table = GetPackageInfoTable();
    std::set<StringView> names;
    for (const TPackageInfoRow& row : table.Rows) names.insert(row.Name);
    EXPECT_TRUE(table.Count == 81 && table.Rows.size() == 81 && names.size() == 81);
    // clang-format off
    for (const auto& [name, place] : {std::pair<StringView, std::size_t>{u"vrnXml", 0}, {u"vrnTrendline", 19},
             {u"vrnGrid", 41}, {u"vrnLog", 58}, {u"vrnString", 64}, {u"vrnWaitCursor", 80}})
        EXPECT_EQ(table.Rows[place].Name, name);
    // clang-format on
}

TEST(vrnPackage, EachModuleCountsItsUses) {
    const std::span<const TPackageInfoRow> rows = GetPackageInfoTable().Rows;
    Initialize();
    rows[6].Initialize();
    for (const TPackageInfoRow& row : rows)
        EXPECT_EQ(row.GetUseCount(), &row == &rows[6] ? -3 : -2) << ToUtf8(row.Name);
    rows[6].Finalize();
    Finalize();
    for (const TPackageInfoRow& row : rows) EXPECT_EQ(row.GetUseCount(), -1) << ToUtf8(row.Name);
}

}  // namespace
}  // namespace Varnholt::Test
