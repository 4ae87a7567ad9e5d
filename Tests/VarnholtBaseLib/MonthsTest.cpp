#include "VarnholtBaseLib/Months.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>

#include "Platform/Runtime/Numbers.h"
#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

static_assert(sizeof(TMonth) == 1 && sizeof(TDateType) == 4);
static_assert(offsetof(TDateType, Day) == 0 && offsetof(TDateType, Month) == 1 &&
              offsetof(TDateType, Year) == 2);

TEST(MonthsTest, TablesFollowTheCalendarOfACommonYear) {
    using namespace std::chrono;
    const sys_days newYear = 2023y / January / 1;
    for (const TMonth month : kMonths) {
        const year_month there = 2023y / std::chrono::month(month);
        EXPECT_EQ(MonthLength[month], static_cast<int>(unsigned{(there / last).day()})) << int{month};
        EXPECT_EQ(MonthAccLength[month], (sys_days(there / 1) - newYear).count()) << int{month};
    }
}

TEST(MonthsTest, RefusesNumbersThatAreNoMonth) {
    TMonthSet set;
    for (const std::int64_t number : {std::int64_t{0}, std::int64_t{13}, std::int64_t{257}, INT64_MIN}) {
        const String message = u"Month out of range (" + IntToStr(number) + u")";
        ExpectRaised<ERangeError>({{[&] { static_cast<void>(ToMonth(number)); }, message},
                                   {[&] { static_cast<void>(MonthLength[number]); }, message},
                                   {[&] { set[number] = true; }, message}});
    }
    EXPECT_EQ(set, TMonthSet());
    set[moJanuary] = set[moFebruary] = set[moDecember] = true;
    EXPECT_EQ(set, MonthSetOf({moDecember, moJanuary, moFebruary}));
}

}  // namespace
}  // namespace Varnholt::Test
