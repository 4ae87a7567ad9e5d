#include "VarnholtLib/Data/vrnFloatArray.h"

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/FormatSettings.h"
#include "Tests/Data/GridTestSupport.h"
#include "Tests/Support/FormatSettingsScope.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {

using testing::ElementsAre;

TEST(FloatArray, ChecksEveryIndexAgainstTheBase) {
    const std::pair<std::int32_t, std::vector<std::int32_t>> cases[] = {
        // clang-format off
        {1, {0, 6, -1, kLowest, kHighest}}, {0, {-1, 5}}, {-2, {-3, 3}},
        {kHighest - 4, {kHighest - 5, kLowest}}, {kLowest + 1, {kLowest, kHighest}}};
    // clang-format on
    for (const auto& [base, outside] : cases) {
        TFloatArray array(5);
        array.SetBase(base);
        array.WriteFloat(base, 1);
        array.WriteFloat(array.GetLast(), 5);
        EXPECT_EQ(array.GetFloat(base + 4), 5) << base;
        for (const std::int32_t index : outside) {
            const String where = u"\rIndex = " + IntToStr(index),
                         front = u"Index out of bounds in TFloatArray.";
            ExpectRaised<EGridException>(
                {{[&] { (void)array[index]; }, front + u"GetFloat" + where},
                 {[&] { array.WriteFloat(index, 9); }, front + u"WriteFloat" + where}});
        }
        EXPECT_THAT(array.GetBuffer(), ElementsAre(1, 0, 0, 0, 5)) << base;
    }
}

TEST(FloatArray, RefusesAndStaysAsItWas) {
    const std::string range = "Index range of TFloatArray exceeds 32 bits\rBase = ";
    const std::string noIndex = "Index out of bounds in TFloatArray.GetFloat\rIndex = ";
    const std::pair<std::function<void(TFloatArray&)>, std::string> cases[] = {
        // clang-format off
        {[](auto&) { TFloatArray(0); }, "Can't create a float array with a dimension less than 1"},
        {[](auto& a) { a.SetBase(kHighest - 1); }, range + "2147483646"},
        {[](auto& a) { a.SetBase(kLowest); }, range + "-2147483648"},
        {[](auto& a) { a.SetSize(2, kHighest, false); }, range + "2"},
        {[](auto& a) { a.SetSize(1, -1, false); }, "Can't resize a TFloatArray to a negative count"},
        {[](auto& a) { (void)a.GetRange(2, -5); },
         "Can't get a negative number of values from a TFloatArray"},
        {[](auto& a) { (void)a.GetRange(0, 2); }, noIndex + "0"},
        {[](auto& a) { (void)a.GetValues(3, kHighest); }, noIndex + "4"}};
    // clang-format on
    TFloatArray array = ArrayOf({1, 2, 3});
    for (const auto& [call, message] : cases) {
        EXPECT_EQ(MessageOf([&, &call = call] { call(array); }), message);
        EXPECT_EQ(array.GetBase(), 1) << message;
        EXPECT_THAT(array.GetBuffer(), ElementsAre(1, 2, 3)) << message;
    }
}

TEST(FloatArray, ResizesAndCopiesByPosition) {
    TFloatArray array = ArrayOf({1, 2, 3}, 5), other = array;
    other.SetSize(0, 5, true);
    EXPECT_THAT(other.GetBuffer(), ElementsAre(1, 2, 3, 0, 0));
    EXPECT_EQ(other.GetLast(), 4);
    other.SetSize(1, 2, false);
    EXPECT_THAT(other.GetBuffer(), ElementsAre(0, 0));
    array.Copy(other);
    EXPECT_THAT(other.GetBuffer(), ElementsAre(1, 2));
    std::vector<float> values(5, 7.0F);
    array.CopyToArray(values);
    EXPECT_THAT(values, ElementsAre(1, 2, 3, 0, 0));
    array.ToArray()[1] = 9;
    EXPECT_THAT(array.GetRange(6, 7), ElementsAre(2, 3));
}

TEST(FloatArray, CopyFromChecksBothEnds) {
    const std::string source = "Size error in source buffer", end = "Size error is destination buffer\r\n2/";
    const std::tuple<std::int32_t, std::int32_t, std::int32_t, std::string> cases[] = {
        // clang-format off
        {4, 3, 0, "(nothing raised)"}, {2, 0, 3, source}, {5, 0, 0, source}, {-1, 0, 2, source},
        {0, 0, -1, source}, {kHighest, 0, kHighest, source}, {0, 0, 4, end + "3"}, {0, -1, 2, end + "0"},
        {0, kHighest, 3, end + "2147483649"}};
    // clang-format on
    const std::vector<float> values = {10, 20, 30, 40};
    TFloatArray array = ArrayOf({1, 2, 3}, 10);
    for (const auto& [s, d, n, message] : cases) {
        const auto copy = [&, s = s, d = d, n = n] { array.CopyFrom(values, s, d, n); };
        EXPECT_EQ(MessageOf<Exception>(copy), message) << s << ", " << d << ", " << n;
        EXPECT_THAT(array.GetBuffer(), ElementsAre(1, 2, 3)) << message;
    }
    array.CopyFrom(values, 2, 1, 2);
    EXPECT_THAT(array.GetBuffer(), ElementsAre(1, 30, 40));
}

TEST(FloatArray, MinMaxSumSortsAndClean) {
    const std::tuple<TFloatArray, float, float> cases[] = {
        {ArrayOf({3}), 3, 3}, {ArrayOf({2, -1, 5, 4}), -1, 5}, {ArrayOf({1, 9, NAN, 4, 6}), 4, 9}};
    for (const auto& [array, min, max] : cases) {
        float low = 0, high = 0;
        array.GetMinAndMax(low, high);
        EXPECT_TRUE(low == min && high == max) << ToUtf8(array.ToString());
    }
    EXPECT_EQ(ArrayOf({16'777'216, 1, 1}).Sum(), 16'777'216.0F) << "rounded at every addition";
    TFloatArray array = ArrayOf({3, 1, 2}, 0);
    EXPECT_THAT(array.IndexSort().GetRange(1, 3), ElementsAre(2, 3, 1));
    array.Reverse();
    EXPECT_THAT(array.GetRange(0, 2), ElementsAre(3, 2, 1));
    array.Sort();
    EXPECT_THAT(array.GetRange(0, 2), ElementsAre(1, 2, 3));
    const auto kept = ArrayOf({-999, 3, -1000, 4, -999.5F}).Clean(-1000, -999);
    EXPECT_THAT(kept.value().GetRange(2, 3), ElementsAre(3, 4));
    EXPECT_FALSE(ArrayOf({-999, -999}).Clean(-1000, -999).has_value());
    EXPECT_EQ(ArrayOf({-999, NAN, -998.9F, -1000.1F}).Clean(-1000, -999)->GetCount(), 3);
}

TEST(FloatArray, FilterRemovesWhatTheCallbackNames) {
    TFloatArray array = ArrayOf({1, 2, 3, 4}, 0);
    std::vector<float> seen;
    const auto removeMiddle = [](float value, void* param) {
        static_cast<std::vector<float>*>(param)->push_back(value);
        return value == 2 || value == 3;
    };
    array.Filter(removeMiddle, &seen);
    EXPECT_THAT(seen, ElementsAre(1, 2, 3, 4));
    EXPECT_THAT(array.GetRange(0, 1), ElementsAre(1, 4));
    EXPECT_EQ(MessageOf<EArgumentNilException>([&] { array.Filter(nullptr, nullptr); }), "filterFunc");
    array.Filter([&](float, void*) { return array.SetSize(3, 1, true), true; }, nullptr);
    EXPECT_TRUE(array.GetCount() == 0 && array.GetLast() == 2);
    array.Sort();
    EXPECT_TRUE(array.IndexSort().GetCount() == 0 && array.ToString().empty() && !array.Clean(0, 0));
    float none = 0;
    ExpectRaised<EGridException>(
        {{[&] { array.GetMinAndMax(none, none); }, u"An empty TFloatArray has no minimum and no maximum"},
         {[&] { array.SetSize(1, 4, true); }, u"Can't resize and copy an uninitialised TFloatArray"}});
}

TEST(FloatArray, TextsFollowTheDecimalSeparator) {
    const TTemporaryFolder folder;
    const String path = folder.GetPath(u"values.txt");
    const TFloatArray array = ArrayOf({1.5F, -999, 0.126F}, 0);
    EXPECT_EQ(array.ToString(), u"1.500,-999.000,0.126");
    array.SaveToCSVFile(path);
    EXPECT_EQ(ReadWholeFile(path), "Index,Value\r\n0,1.50\r\n1,-999.00\r\n2,0.13\r\n");
    const TFormatSettingsScope comma(u',');
    EXPECT_EQ(array.ToString(), u"1,500,-999,000,0,126");
    array.SaveToFile(path);
    EXPECT_EQ(ReadWholeFile(path), "0 1,50\r\n1 -999,00\r\n2 0,13\r\n");
    EXPECT_THROW(array.SaveToFile(path + u"\\x"), Exception) << "no folder";
}

}  // namespace Varnholt::Test
