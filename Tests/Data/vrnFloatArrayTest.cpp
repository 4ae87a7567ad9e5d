#include "VarnholtLib/Data/vrnFloatArray.h"

#include "Platform/Runtime/Files.h"
#include "Platform/Runtime/Format.h"
#include "Tests/Data/GridTestSupport.h"
#include "Tests/Support/FormatSettingsScope.h"
#include "Tests/Support/TemporaryFolder.h"

namespace Varnholt::Test {

using testing::ElementsAre;

TEST(FloatArray, ChecksEachIndexAgainstTheBase) {
    const std::pair<std::int32_t, std::int32_t> cases[] = {// clang-format off
        {1, 0}, {1, 6}, {1, kLowest}, {1, kHighest}, {-2, -3}, {-2, 3}, {kHighest - 4, kHighest - 5},
        {kHighest - 4, kLowest}, {kLowest + 1, kLowest}, {kLowest + 1, kHighest}};
    // clang-format on
    for (const auto& [base, index] : cases) {
        TFloatArray array = ArrayOf({1, 2, 3, 4, 5}, base);
        array.WriteFloat(array.GetLast(), 6);
        EXPECT_TRUE(array.GetFloat(base) == 1 && array.GetFloat(base + 4) == 6) << base;
        const String text = Format(u"Index out of bounds in TFloatArray.%%s\rIndex = %d", {index});
        ExpectRaised<EGridException>(
            {{[&, i = index] { static_cast<void>(array[i]); }, Format(text, {u"GetFloat"})},
             {[&, i = index] { array.WriteFloat(i, 9); }, Format(text, {u"WriteFloat"})}});
        EXPECT_THAT(array.GetBuffer(), ElementsAre(1, 2, 3, 4, 6)) << ToUtf8(text);
    }
}

TEST(FloatArray, RefusalsChangeNothing) {
    const String range = u"Index range of TFloatArray exceeds 32 bits\rBase = ";
    const String noIndex = u"Index out of bounds in TFloatArray.GetFloat\rIndex = ";
    const StringView source = u"Size error in source buffer";
    const String end = u"Size error is destination buffer\r\n2/";
    const std::vector<float> values = {10, 20, 30, 40};
    TFloatArray a = ArrayOf({1, 2, 3});
    ExpectRaised<EGridException>(
        {{[&] { TFloatArray(0); }, u"Can't create a float array with a dimension less than 1"},
         {[&] { a.SetBase(kHighest - 1); }, range + u"2147483646"},
         {[&] { a.SetBase(kLowest); }, range + u"-2147483648"},
         {[&] { a.SetSize(2, kHighest, false); }, range + u"2"},
         {[&] { a.SetSize(1, -1, false); }, u"Can't resize a TFloatArray to a negative count"},
         {[&] { static_cast<void>(a.GetRange(2, -5)); },
          u"Can't get a negative number of values from a TFloatArray"},
         {[&] { static_cast<void>(a.GetRange(0, 2)); }, noIndex + u"0"},
         {[&] { static_cast<void>(a.GetValues(3, kHighest)); }, noIndex + u"4"}});
    ExpectRaised<Exception>({{[&] { a.CopyFrom(values, 4, 3, 0); }, u"(nothing raised)"},
                             {[&] { a.CopyFrom(values, 2, 0, 3); }, source},
                             {[&] { a.CopyFrom(values, -1, 0, 2); }, source},
                             {[&] { a.CopyFrom(values, 0, 0, -1); }, source},
                             {[&] { a.CopyFrom(values, kHighest, 0, kHighest); }, source},
                             {[&] { a.CopyFrom(values, 0, 0, 4); }, end + u"3"},
                             {[&] { a.CopyFrom(values, 0, -1, 2); }, end + u"0"},
                             {[&] { a.CopyFrom(values, 0, kHighest, 3); }, end + u"2147483649"}});
    EXPECT_EQ(a.GetBase(), 1);
    EXPECT_THAT(a.GetBuffer(), ElementsAre(1, 2, 3));
}

TEST(FloatArray, ResizesAndCopiesByPosition) {
    TFloatArray array = ArrayOf({1, 2, 3}, 5), other = array;
    other.SetSize(0, 5, true);
    EXPECT_THAT(other.GetRange(0, other.GetLast()), ElementsAre(1, 2, 3, 0, 0));
    other.SetSize(1, 2, false);
    EXPECT_THAT(other.GetBuffer(), ElementsAre(0, 0));
    array.Copy(other);
    EXPECT_THAT(other.GetBuffer(), ElementsAre(1, 2));
    std::vector<float> values = {7, 8, 9, 10};
    array.CopyFrom(values, 2, 1, 2);
    array.CopyToArray(values);
    EXPECT_THAT(values, ElementsAre(1, 9, 10, 0));
    array.ToArray()[1] = 9;
    EXPECT_THAT(array.GetRange(6, 7), ElementsAre(9, 10));
}

TEST(FloatArray, ExtremesSumSortsAndClean) {
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
    const auto kept = ArrayOf({-999, 3, -1000, NAN, -999.5F, -998.9F}).Clean(-1000, -999);
    EXPECT_THAT(kept.value().GetRange(2, 4), ElementsAre(3, testing::IsNan(), -998.9F));
    EXPECT_FALSE(ArrayOf({-999, -999}).Clean(-1000, -999).has_value());
}

TEST(FloatArray, FilterRemovesWhatTheCallbackNames) {
    TFloatArray array = ArrayOf({1, 2, 3, 4}, 0);
    float sum = 0;
    const auto passesThree = [](float value, void* param) {
        return (*static_cast<float*>(param) += value) == 3;
    };
    array.Filter(passesThree, &sum);  // in order: 1, 3, 6, 10
    EXPECT_THAT(array.GetRange(0, 2), ElementsAre(1, 3, 4));
    EXPECT_EQ(Raised<EArgumentNilException>([&] { array.Filter(nullptr, nullptr); }), u"filterFunc");
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
    const TFloatArray array = ArrayOf({1.5F, 0.126F}, 0);
    EXPECT_EQ(array.ToString(), u"1.500,0.126");
    array.SaveToCSVFile(path);
    EXPECT_EQ(ReadWholeFile(path), "Index,Value\r\n0,1.50\r\n1,0.13\r\n");
    const TFormatSettingsScope comma(u',');
    array.SaveToFile(path);
    EXPECT_EQ(ReadWholeFile(path), "0 1,50\r\n1 0,13\r\n");
    EXPECT_THROW(array.SaveToFile(path + u"\\x"), Exception) << "no folder";
}

}  // namespace Varnholt::Test
