#include "VarnholtLib/Foundation/vrnPathText.h"

#include <gtest/gtest.h>

#include <vector>

namespace Varnholt::Test {
namespace {

String Ensured(StringView path) {
    String text(path);
    return EnsurePathString(text) ? text : u"refused " + text;
}

String WithoutInvalid(StringView path) {
    String text(path);
    RemoveInvalidPathChars(text, false);
    return RemoveInvalidPathChars(path) + u" or " + text;
}

TEST(vrnPathText, NamesBelowFolders) {
    const std::tuple<StringView, StringView, StringView> cases[] = {{u"C:\\a", u"b\\c", u"C:\\a\\b\\c"},
                                                                    {u"C:\\a\\", u"b", u"C:\\a\\b"},
                                                                    {u"a/", u"b", u"a/b"},
                                                                    {u"/a\\x", u"b\\c", u"/a\\x/b/c"},
                                                                    {u"/", u"b", u"/b"},
                                                                    {u"", u"b\\c", u"b\\c"}};
    for (const auto& [folder, name, path] : cases) EXPECT_EQ(PathBelow(folder, name), path) << ToUtf8(path);
}

TEST(vrnPathText, TakesPathsApartAndPutsThemRight) {
    using TResults = std::vector<std::pair<StringView, StringView>>;
    const std::pair<String (*)(StringView), TResults> cases[] = {
        // clang-format off
        {AddTrailingSlashIfRequired, {{u"C:\\a", u"C:\\a\\"}, {u"C:\\a\\", u"C:\\a\\"}, {u"", u"\\"}}},
        {StripFileName, {{u"C:\\a.b\\c.tar.gz", u"c.tar"}, {u"C:\\a.b\\c", u"c"}, {u".x", u""},
                         {u"C:\\a\\", u""}, {u"C:x.txt", u"x"}}},
        {ExtractFinalPathElement, {{u"C:\\a\\bc\\", u"bc"}, {u"C:\\a\\bc", u"bc"}, {u"C:\\a\\b", u"b"},
                                   {u"a\\\\", u""}, {u"\\", u""}, {u"", u""}, {u"x", u"x"}}},
        {TStringTools::GetDirectoryElement, {{u"\\", u""}, {u"C:\\Data\\", u"Data"}}},
        {ParentPath, {{u"C:\\a\\b\\", u"C:\\a\\"}, {u"C:\\a\\b", u"C:\\a\\"}, {u"C:\\", u""}, {u"\\", u""},
                      {u"", u""}}},
        {Ensured, {{u"C:", u"C:\\"}, {u"c:\\a", u"c:\\a\\"}, {u"c:\\a\\", u"c:\\a\\"}, {u"\\\\", u"\\\\"},
                   {u"\\\\s", u"\\\\s\\"}, {u"", u"refused "}, {u"x", u"refused x"}, {u"ab", u"refused ab"},
                   {u"1:", u"refused 1:"}, {u"\\a", u"refused \\a"}, {u":\\", u"refused :\\"}}},
        {WithoutInvalid, {{u"C:\\a?\\b:*?\"<>|/c", u"C:\\a?\\b________c or C:\\a?\\b_______/c"},
                          {u"Rain: 20", u"Rain_ 20 or Rain_ 20"}, {u"a*\\", u"a*\\ or a*\\"},
                          {u"a/b*c", u"a_b_c or a/b_c"}}},
        {[](StringView path) { return AddFilenamePostfix(path, u"_1"); },
         {{u"C:\\a\\b.csv", u"C:\\a\\b_1.csv"}, {u"C:\\a.b\\c", u"C:\\a_1.b\\c"}, {u"abc", u"abc_1"},
          {u"", u""}}}};
    // clang-format on
    for (const auto& [operation, results] : cases) {
        for (const auto& [path, expected] : results) EXPECT_EQ(operation(path), expected) << ToUtf8(path);
    }
}

TEST(vrnPathText, FileExtIs) {
    const std::tuple<bool, StringView, StringView> cases[] = {
        // clang-format off
        {true, u"csv", u"C:\\a.CSV"}, {true, u".csv", u"a.b.csv"}, {true, u"", u"C:\\a.b\\c"},
        {true, u".", u"a."}, {false, u"csv", u"a"}, {false, u"csv", u"acsv"}, {false, u"", u"a.csv"},
        {false, u"b.csv", u"a.b.csv"}, {false, u"csv", u"a.csv\\b"}, {false, u"", u"a."}};
    // clang-format on
    for (const auto& [is, extension, name] : cases) EXPECT_EQ(FileExtIs(extension, name), is) << ToUtf8(name);
}

}  // namespace
}  // namespace Varnholt::Test
