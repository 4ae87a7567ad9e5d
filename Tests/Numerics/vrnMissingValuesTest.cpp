#include "VarnholtLib/Numerics/vrnMissingValues.h"

#include <gtest/gtest.h>

#include "Tests/Support/FormatSettingsScope.h"

namespace Varnholt::Test {
namespace {

TEST(MissingValues, OneRuleForAllCells) {
    const TFormatSettingsScope comma(u',');  // must not matter
    const TMissingValues usual, more(u"-9999,  m ,-99.9,,9.96921e36");
    const std::tuple<StringView, TCellKind, TCellKind> cases[] = {
        // clang-format off
        {u" \t", ckMissing, ckMissing}, {u" NA ", ckMissing, ckMissing}, {u"nan", ckMissing, ckMissing},
        {u"N/A", ckText, ckText}, {u"-999", ckMissing, ckMissing}, {u"-1e3", ckMissing, ckMissing},
        {u"-998.99999999", ckMissing, ckMissing}, {u"-1000.00001", ckMissing, ckMissing},  // in 32 bits
        {u"-998.9999", ckNumber, ckNumber}, {u"-1000.0001", ckNumber, ckNumber},
        {u"-9999.0", ckNumber, ckMissing}, {u"-99.90", ckNumber, ckMissing},
        {u"9.969209968386869E36", ckNumber, ckMissing}, {u" M", ckText, ckMissing}, {u"3,5", ckText, ckText},
        {u"$1F", ckText, ckText}, {u"1e400", ckText, ckText}, {u" 5 ", ckNumber, ckNumber}};
    // clang-format on
    for (const auto& [cell, inUsual, inMore] : cases) {
        double value = 7;
        EXPECT_EQ(usual.Read(cell, value), inUsual) << ToUtf8(cell);
        EXPECT_EQ(value == 7, inUsual != ckNumber) << ToUtf8(cell);
        EXPECT_EQ(more.Read(cell, value), inMore) << ToUtf8(cell);
    }
    double value = 0;
    EXPECT_EQ(usual.Read(u"16777217", value), ckNumber);
    EXPECT_EQ(value, 16777217) << "the value was rounded to 32 bits";
}

}  // namespace
}  // namespace Varnholt::Test
