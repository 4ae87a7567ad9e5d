#include "VarnholtLib/Foundation/vrnPathText.h"

#include <gtest/gtest.h>

#include <vector>

namespace Varnholt {
namespace {

struct TPathCase {
    StringView Path;
    StringView Expected;
};

void ExpectAll(String (*operation)(StringView), const std::vector<TPathCase>& cases) {
    for (const auto& [path, expected] : cases) EXPECT_EQ(operation(path), expected) << ToUtf8(path);
}

TEST(vrnPathText, TakesPathsApart) {
    ExpectAll(AddTrailingSlashIfRequired, {{u"C:\\a", u"C:\\a\\"}, {u"C:\\a\\", u"C:\\a\\"}, {u"", u"\\"}});
    ExpectAll(StripFileName,
              {{u"C:\\a.b\\c.tar.gz", u"c.tar"}, {u"C:\\a.b\\c", u"c"}, {u".x", u""}, {u"C:\\a\\", u""}});
    ExpectAll(ExtractFinalPathElement, {{u"C:\\a\\bc\\", u"bc"},
                                        {u"C:\\a\\bc", u"bc"},
                                        {u"C:\\a\\b", u"b"},
                                        {u"a\\\\", u""},
                                        {u"\\", u""},
                                        {u"", u""},
                                        {u"x", u"x"}});
    ExpectAll(TStringTools::GetDirectoryElement, {{u"\\", u""}, {u"C:\\Data\\", u"Data"}});
    ExpectAll(
        ParentPath,
        {{u"C:\\a\\b\\", u"C:\\a\\"}, {u"C:\\a\\b", u"C:\\a\\"}, {u"C:\\", u""}, {u"\\", u""}, {u"", u""}});
}

TEST(vrnPathText, EnsurePathString) {
    const std::vector<TPathCase> accepted = {{u"C:", u"C:\\"},
                                             {u"c:\\a", u"c:\\a\\"},
                                             {u"c:\\a\\", u"c:\\a\\"},
                                             {u"\\\\", u"\\\\"},
                                             {u"\\\\s", u"\\\\s\\"}};
    for (const auto& [path, expected] : accepted) {
        String text(path);
        EXPECT_TRUE(EnsurePathString(text)) << ToUtf8(path);
        EXPECT_EQ(text, expected);
    }
    for (const StringView path : {u"", u"x", u"ab", u"1:", u"\\a", u":\\"}) {
        String text(path);
        EXPECT_FALSE(EnsurePathString(text)) << ToUtf8(path);
        EXPECT_EQ(text, path);
    }
}

TEST(vrnPathText, RemoveInvalidPathChars) {
    ExpectAll([](StringView path) { return RemoveInvalidPathChars(path); },
              {{u"C:\\a?\\b:*?\"<>|/c.txt", u"C:\\a?\\b________c.txt"},
               {u"Rain: 2020", u"Rain_ 2020"},
               {u"a*\\", u"a*\\"}});
    String path = u"a/b*c";
    RemoveInvalidPathChars(path, false);
    EXPECT_EQ(path, u"a/b_c");
}

TEST(vrnPathText, AddFilenamePostfix) {
    EXPECT_EQ(AddFilenamePostfix(u"C:\\a\\b.csv", u"_1"), u"C:\\a\\b_1.csv");
    EXPECT_EQ(AddFilenamePostfix(u"C:\\a.b\\c", u"_1"), u"C:\\a_1.b\\c");
    EXPECT_EQ(AddFilenamePostfix(u"abc", u"_1"), u"abc_1");
    EXPECT_EQ(AddFilenamePostfix(u"", u"_1"), u"");
}

TEST(vrnPathText, FileExtIs) {
    const std::vector<TPathCase> accepted = {
        {u"csv", u"C:\\a.CSV"}, {u".csv", u"a.b.csv"}, {u"", u"C:\\a.b\\c"}, {u".", u"a."}};
    const std::vector<TPathCase> rejected = {{u"csv", u"a"},         {u"csv", u"acsv"},     {u"", u"a.csv"},
                                             {u"b.csv", u"a.b.csv"}, {u"csv", u"a.csv\\b"}, {u"", u"a."}};
    for (const auto& [extension, name] : accepted) EXPECT_TRUE(FileExtIs(extension, name)) << ToUtf8(name);
    for (const auto& [extension, name] : rejected) EXPECT_FALSE(FileExtIs(extension, name)) << ToUtf8(name);
}

}  // namespace
}  // namespace Varnholt
