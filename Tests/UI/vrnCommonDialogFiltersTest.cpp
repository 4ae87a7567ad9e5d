#include "VarnholtLib/UI/vrnCommonDialogFilters.h"

#include <gtest/gtest.h>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {

TEST(vrnCommonDialogFilters, BuildsTheFilterOfADialog) {
    TCommonDialogFilters filters;
    EXPECT_EQ(filters.GetFilterString(), u"");
    filters.Add(7, u"Text", u"*.csv;*.txt", u".csv");
    filters.Add(-3, u"All files", u"*.*");
    EXPECT_EQ(filters.GetFilterString(), u"Text|*.csv;*.txt|All files|*.*");
    EXPECT_EQ(filters.GetFilterCode(1), 7);
    EXPECT_EQ(filters.GetFilter(2).Code, -3);
    ExpectRaised<EListError>(
        {{[&] { static_cast<void>(filters.GetFilterCode(0)); }, u"List index out of bounds (-1)"},
         {[&] { static_cast<void>(filters.GetFilter(INT32_MIN)); },
          u"List index out of bounds (-2147483649)"},
         {[&] { static_cast<void>(filters.GetFilter(3)); }, u"List index out of bounds (2)"}});
    EXPECT_EQ(filters.GetFilter(1).FormatFileName(u"C:\\a.b\\rain"), u"C:\\a.b\\rain.csv");
    EXPECT_EQ(filters.GetFilter(1).FormatFileName(u"rain.dat"), u"rain.dat");
    EXPECT_EQ(filters.GetFilter(2).FormatFileName(u"rain"), u"rain");
}

}  // namespace Varnholt::Test
