#include "VarnholtLib/Foundation/vrnSemicolonValueReader.h"

#include <gmock/gmock.h>

#include <vector>

#include "Tests/Foundation/Raised.h"

namespace Varnholt {
namespace {

using testing::ElementsAre;
using testing::Pair;

std::map<String, String> PairsOf(const TSemicolonValueReader& reader) {
    return {reader.begin(), reader.end()};
}

TEST(vrnSemicolonValueReader, ParsesPairs) {
    const TSemicolonValueReader reader(u"Server=db1; Port =80;Options=a=b;;Flag;=none;");
    EXPECT_THAT(PairsOf(reader), ElementsAre(Pair(u"", u"none"), Pair(u" Port ", u"80"), Pair(u"Flag", u""),
                                             Pair(u"Options", u"a=b"), Pair(u"Server", u"db1")));
    EXPECT_EQ(TSemicolonValueReader(u"").GetCount(), 0);
}

TEST(vrnSemicolonValueReader, LooksUpExactly) {
    const TSemicolonValueReader reader(u"a=1;b=2");
    EXPECT_EQ(reader[u"b"], u"2");
    String value = u"old";
    EXPECT_TRUE(reader.TryGetValue(u"a", value) && value == u"1");
    EXPECT_TRUE(!reader.TryGetValue(u"A", value) && value.empty());
    EXPECT_EQ(Raised<EListError>([&] { (void)reader[u"A"]; }), u"Key not found: A");
    EXPECT_TRUE(reader.ContainsKeys({u"a", u"b"}) && reader.ContainsKeys({}));
    EXPECT_FALSE(reader.ContainsKeys({u"a", u"c"}));
    EXPECT_TRUE(reader.ContainsKeys(std::vector<String>{u"b"}));
    EXPECT_FALSE(reader.ContainsKeys(std::vector<String>{u"b", u"B"}));
}

TEST(vrnSemicolonValueReader, RefusesASecondKeyAndKeepsWhatItHas) {
    TSemicolonValueReader reader(u"a=1");
    EXPECT_EQ(Raised<EListError>([&] { reader.Parse(u"b=2;a=3"); }), u"Duplicate key: a");
    EXPECT_EQ(Raised<EListError>([&] { reader.Parse(u"b=2;b"); }), u"Duplicate key: b");
    EXPECT_EQ(Raised<EListError>([&] { reader.Add(u"a", u"3"); }), u"Duplicate key: a");
    EXPECT_THAT(PairsOf(reader), ElementsAre(Pair(u"a", u"1")));
    reader.Parse(u"b=2;c=3");
    reader.AddOrSetValue(u"a", u"4");
    reader.Remove(u"b");
    reader.Remove(u"x");
    EXPECT_THAT(PairsOf(reader), ElementsAre(Pair(u"a", u"4"), Pair(u"c", u"3")));
}

}  // namespace
}  // namespace Varnholt
