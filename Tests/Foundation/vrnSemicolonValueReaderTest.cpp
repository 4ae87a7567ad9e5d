#include "VarnholtLib/Foundation/vrnSemicolonValueReader.h"

#include <gtest/gtest.h>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {
namespace {

using TPairs = std::map<String, String>;

TPairs PairsOf(const TSemicolonValueReader& reader) {
    return {reader.begin(), reader.end()};
}

TEST(vrnSemicolonValueReader, ParsesAndLooksUpExactly) {
    const TSemicolonValueReader reader(u"b=db1; Port =80;a=x=y;;Flag;=none;");
    EXPECT_EQ(PairsOf(reader),
              (TPairs{{u"", u"none"}, {u" Port ", u"80"}, {u"Flag", u""}, {u"a", u"x=y"}, {u"b", u"db1"}}));
    EXPECT_EQ(PairsOf(TSemicolonValueReader(u"")), TPairs());
    String value = u"old";
    EXPECT_TRUE(reader.TryGetValue(u"a", value) && value == u"x=y" && reader[u"b"] == u"db1");
    EXPECT_TRUE(!reader.TryGetValue(u"A", value) && value.empty());
    EXPECT_EQ(Raised<EListError>([&] { static_cast<void>(reader[u"A"]); }), u"Key not found: A");
    EXPECT_TRUE(reader.ContainsKeys({u"a", u"b"}) && reader.ContainsKeys({}));
    EXPECT_TRUE(!reader.ContainsKeys({u"a", u"c"}) && !reader.ContainsKeys(std::vector<String>{u"b", u"B"}));
}

TEST(vrnSemicolonValueReader, RefusesASecondKeyAndKeepsWhatItHas) {
    TSemicolonValueReader reader(u"a=1");
    ExpectRaised<EListError>({{[&] { reader.Parse(u"b=2;a=3"); }, u"Duplicate key: a"},
                              {[&] { reader.Parse(u"b=2;b"); }, u"Duplicate key: b"},
                              {[&] { reader.Add(u"a", u"3"); }, u"Duplicate key: a"}});
    EXPECT_EQ(PairsOf(reader), (TPairs{{u"a", u"1"}}));
    reader.Parse(u"b=2;c=3");
    reader.AddOrSetValue(u"a", u"4");
    for (const StringView key : {u"b", u"x"}) reader.Remove(key);
    EXPECT_EQ(PairsOf(reader), (TPairs{{u"a", u"4"}, {u"c", u"3"}}));
}

}  // namespace
}  // namespace Varnholt::Test
