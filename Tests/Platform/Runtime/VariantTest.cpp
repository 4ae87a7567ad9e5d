#include "Platform/Runtime/Variant.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>
#include <vector>

#include "Platform/Runtime/FormatSettings.h"
#include "Tests/Support/FormatSettingsScope.h"
#include "Tests/Support/Raised.h"

namespace Varnholt::Test {

void PrintTo(const Variant& value, std::ostream* out) {
    *out << "type " << value.GetType() << " '" << ToUtf8(value.ToText()) << "'";
}

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

// What is no value must not slip in as a Boolean or a number.
static_assert(!std::is_constructible_v<Variant, void*> && !std::is_constructible_v<Variant, const char*>);
static_assert(!std::is_constructible_v<Variant, std::nullptr_t> && !std::is_constructible_v<Variant, Char>);
static_assert(!std::is_constructible_v<Variant, std::uint64_t> && !std::is_constructible_v<Variant, char>);

bool Same(const Variant& a, const Variant& b) {  // type and value
    const bool nan = a.GetType() == varDouble && std::isnan(a.ToDouble());
    return a.GetType() == b.GetType() && (nan ? std::isnan(b.ToDouble()) : a == b);
}

TEST(VariantTest, ConvertsAnyValueToEachKind) {
    // clang-format off
    const struct { Variant value; double number; std::int64_t whole; StringView text; bool flag; } cases[] = {
        {Variant(), 0, 0, u"", false}, {std::int16_t{-32768}, -32768, -32768, u"-32768", true},
        {0.1F, 0.100000001490116119384765625, 0, u"0.100000001490116", true},
        {-3.5, -3.5, -4, u"-3.5", true}, {Extended{0.25}, 0.25, 0, u"0.25", true},
        {TCurrency{123400}, 12.34, 12, u"12.34", true}, {TCurrency{-5}, -0.0005, 0, u"-0.0005", true},
        {TCurrency{INT64_MIN}, -922337203685477.5808, -922337203685478, u"-922337203685477.5808", true},
        {true, -1, -1, u"True", true}, {false, 0, 0, u"False", false},
        {std::int8_t{-128}, -128, -128, u"-128", true}, {std::uint8_t{255}, 255, 255, u"255", true},
        {std::uint32_t{4294967295}, 4294967295.0, 4294967295, u"4294967295", true},
        {INT64_MAX, 9223372036854775808.0, INT64_MAX, u"9223372036854775807", true},
        {u" 12 ", 12, 12, u" 12 ", true}, {u"$1F", 31, 31, u"$1F", true}, {u"2.5", 2.5, 2, u"2.5", true},
        {u"0", 0, 0, u"0", false},
        {u"9223372036854775807", 9223372036854775808.0, INT64_MAX, u"9223372036854775807", true},
    };
    // clang-format on
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::PrintToString(c.value));
        EXPECT_EQ(c.value.ToDouble(), c.number);
        EXPECT_TRUE(c.value.ToInt64() == c.whole && c.value.ToText() == c.text &&
                    c.value.ToBoolean() == c.flag);
    }
    EXPECT_TRUE(Variant(u" tRUE ").ToBoolean() && Variant(kNaN).ToBoolean());
}

TEST(VariantTest, ConvertsToTheTypeOfACode) {
    // clang-format off
    const struct { Variant value; TVarType type; Variant result; } cases[] = {
        {Variant(), varEmpty, Variant()}, {u"12.5", varInteger, 12}, {Variant(), varInteger, 0},
        {-32768.5, varSmallint, std::int16_t{-32768}}, {127.25, varShortInt, std::int8_t{127}},
        {true, varSmallint, std::int16_t{-1}}, {u"255", varByte, std::uint8_t{255}},
        {65535, varWord, std::uint16_t{65535}}, {4294967295.0, varLongWord, std::uint32_t{4294967295}},
        {-9223372036854775808.0, varInt64, INT64_MIN}, {0.1, varSingle, 0.1F},
        {std::int64_t{(1LL << 62) + (1LL << 38) + 1}, varSingle, 0x1.000002p62F},
        {1e300, varSingle, std::numeric_limits<float>::infinity()}, {kNaN, varDouble, kNaN},
        {0.00025, varCurrency, TCurrency{3}},                // the double is above the tie
        {std::ldexp(1.0, -5), varCurrency, TCurrency{312}},  // 312.5 ten-thousandths
        {u"922337203685477.5807", varCurrency, TCurrency{INT64_MAX}}, {u"False", varBoolean, false},
        {0.5, varBoolean, true}, {1.5, varString, u"1.5"}, {Variant(), varString, u""},
    };
    const struct { Variant value; TVarType type; const Char* message; } refused[] = {
        {u"abc", varInteger, u"Cannot convert String 'abc' to Integer"},
        {u"", varDouble, u"Cannot convert String '' to Double"},
        {u"yes", varBoolean, u"Cannot convert String 'yes' to Boolean"},
        {u"1e", varCurrency, u"Cannot convert String '1e' to Currency"},
        {2147483647.5, varInteger, u"Double '2147483647.5' is out of range for Integer"},
        {kNaN, varInteger, u"Double 'NAN' is out of range for Integer"},
        {9223372036854775808.0, varInt64, u"Double '9.22337203685478E18' is out of range for Int64"},
        {u"9223372036854775808", varInt64, u"String '9223372036854775808' is out of range for Int64"},
        {-1, varLongWord, u"Integer '-1' is out of range for LongWord"},
        {true, varByte, u"Boolean 'True' is out of range for Byte"},
        {127.5, varShortInt, u"Double '127.5' is out of range for ShortInt"},
        {std::int64_t{922337203685478}, varCurrency, u"Int64 '922337203685478' is out of range for Currency"},
        {0, varEmpty, u"Cannot convert Integer '0' to Empty"}, {0, 7, u"Invalid variant type (7)"},
    };
    // clang-format on
    for (const auto& c : cases) {
        const Variant result = c.value.ConvertTo(c.type);
        EXPECT_TRUE(Same(result, c.result)) << testing::PrintToString(c.value) << " to " << c.type << " gave "
                                            << testing::PrintToString(result);
    }
    for (const auto& c : refused)
        EXPECT_EQ(Raised<EVariantError>([&c] { static_cast<void>(c.value.ConvertTo(c.type)); }), c.message);
    EXPECT_THROW(static_cast<void>(Variant(2147483648.0).ToInt32()), EVariantError);
}

// Each group holds equal values, and comes before the next one.
TEST(VariantTest, OrdersAnyTwoValuesExactly) {
    // clang-format off
    const std::vector<std::vector<Variant>> groups = {
        {Variant()}, {-kInfinity}, {-9223372036854775808.0, INT64_MIN}, {INT64_MIN + 1},
        {-922337203685477.625}, {TCurrency{INT64_MIN}}, {-1, true, -1.0F, TCurrency{-10000}, std::int8_t{-1}},
        {0, false, -0.0, std::uint8_t{0}, TCurrency{0}}, {TCurrency{1000}}, {0.1}, {0.1F},
        {std::uint16_t{65535}, 65535.0}, {std::int64_t{9007199254740992}, 9007199254740992.0},
        {std::int64_t{9007199254740993}}, {9007199254740994.0}, {INT64_MAX}, {9223372036854775808.0},
        {kInfinity}, {u"", String()}, {u"10"}, {u"9"}, {u"B"}, {u"a"}, {u"aa"}, {u"\xE4"}, {u"\xFFFD"},
    };
    // clang-format on
    for (std::size_t i = 0; i < groups.size(); ++i)
        for (std::size_t j = 0; j < groups.size(); ++j)
            for (const Variant& a : groups[i])
                for (const Variant& b : groups[j])
                    EXPECT_TRUE((a <=> b) == std::partial_ordering(i <=> j) && (a == b) == (i == j))
                        << testing::PrintToString(a) << " and " << testing::PrintToString(b);
    for (const Variant& other :
         {Variant(), Variant(1.0), Variant(kNaN), Variant(TCurrency{1}), Variant(u"NAN")})
        EXPECT_TRUE((kNaN <=> other) == std::partial_ordering::unordered && kNaN != other &&
                    (other <=> kNaN) == std::partial_ordering::unordered)
            << testing::PrintToString(other);
}

TEST(VariantTest, AddsByTheTypesOfTheOperandsAndDividesAsRealNumbers) {
    // clang-format off
    const struct { Variant a, b, sum; } cases[] = {
        {u"ab", u"cd", u"abcd"}, {u"1", u"2", u"12"}, {u"1", 2, 3}, {u"1.5", Variant(), 1.5},
        {Variant(), Variant(), 0}, {true, 3, 2}, {std::int8_t{127}, std::uint8_t{255}, 382},
        {2147483647, 1, std::int64_t{2147483648}}, {std::int64_t{-2147483649}, 1, -2147483647 - 1},
        {INT64_MAX, 1, 9223372036854775808.0}, {INT64_MIN, INT64_MIN, -18446744073709551616.0},
        {1, 0.5F, 1.5}, {0.1, 0.2, 0.1 + 0.2}, {TCurrency{1}, 2, TCurrency{20001}},
        {TCurrency{1}, 0.5, 0.5001}, {TCurrency{INT64_MAX}, TCurrency{1}, 922337203685477.5808},
        {TCurrency{-10000}, std::int64_t{922337203685478}, TCurrency{9223372036854770000}},
        {TCurrency{1}, INT64_MAX, 9223372036854775808.0},
    };
    // clang-format on
    for (const auto& c : cases) {
        const Variant sum = c.a + c.b;
        EXPECT_TRUE(Same(sum, c.sum)) << testing::PrintToString(c.a) << " + " << testing::PrintToString(c.b)
                                      << " gave " << testing::PrintToString(sum);
    }
    Variant total = 1;
    EXPECT_THROW(total += u"x", EVariantError);
    EXPECT_EQ(total += total, 2);
    EXPECT_TRUE(Same(Variant(7) / 2, 3.5) && Same(Variant(u"1") / Variant(), kInfinity) &&
                Same(Variant() / 0, kNaN));
    EXPECT_THROW(static_cast<void>((Variant(1) / u"x")), EVariantError);
}

TEST(VariantTest, FollowsTheDecimalSeparatorInUse) {
    const TFormatSettingsScope comma(u',');
    EXPECT_EQ(Variant(u"12,5").ToDouble(), 12.5);
    EXPECT_EQ(Variant(1.5).ToText() + Variant(TCurrency{-10500}).ToText(), u"1,5-1,05");
}

TEST(VariantTest, KeepsTextsApart) {
    Variant a = u"a text that is longer than a short one";
    const Variant b = a;
    const Variant moved = std::move(a);
    EXPECT_EQ(a += u"!", u"!");  // a moved-from text is the empty text
    EXPECT_TRUE(b == moved && b.GetTextView().data() == moved.GetTextView().data());  // shared, not copied
}

}  // namespace
}  // namespace Varnholt::Test
