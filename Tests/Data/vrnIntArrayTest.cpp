#include "VarnholtLib/Data/vrnIntArray.h"

#include "Tests/Data/GridTestSupport.h"

namespace Varnholt::Test {

using testing::ElementsAre;

TEST(IntArray, MayBeEmptyAndSortsTheDestination) {
    TIntArray none(-1), shorter(2), longer = ArrayOf<TIntArray>({0, 0, 0, 0, -2});
    EXPECT_TRUE(none.GetCount() == 0 && none.GetLast() == 0 && none.Clean(0, 0).GetCount() == 0);
    ExpectRaised<EGridException>(
        {{[&] { static_cast<void>(none.GetInt(1)); }, u"Index out of bounds in TIntArray.GetInt\rIndex = 1"},
         {[&] { none.WriteInt(0, 0); }, u"Index out of bounds in TIntArray.WriteInt\rIndex = 0"},
         {[&] { none.SetSize(1, 3, true); }, u"Can't resize and copy an uninitialised TIntArray"}});
    const auto array = ArrayOf<TIntArray>({3, -1, 2, -5}, 4);
    auto itself = array;
    for (TIntArray* target : {&shorter, &longer}) array.Sort(*target);
    itself.Sort(itself);
    EXPECT_THAT(shorter.GetBuffer(), ElementsAre(-1, 3));
    EXPECT_THAT(longer.GetBuffer(), ElementsAre(-5, -2, -1, 2, 3));
    EXPECT_THAT(itself.GetBuffer(), ElementsAre(-5, -1, 2, 3));
}

TEST(IntArray, CleanTakesTheBaseFromTheFirstKeptValue) {
    for (const auto& [base, resultBase] :
         {std::pair{1, 2}, {-1, 0}, {65'534, 65'535}, {65'535, 0}, {-3, 65'534}}) {
        const auto kept = ArrayOf<TIntArray>({-999, 8, -1000, 9}, base).Clean(-1000, -999);
        EXPECT_EQ(kept.GetBase(), resultBase) << base;
        EXPECT_THAT(kept.GetBuffer(), ElementsAre(8, 9)) << base;
    }
    TIntArray longer(70'000);
    longer.WriteInt(66'000, 1);
    EXPECT_EQ(longer.Clean(0, 0).GetBase(), 66'000);
}

}  // namespace Varnholt::Test
