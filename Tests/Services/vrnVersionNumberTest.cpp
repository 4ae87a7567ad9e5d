#include "VarnholtLib/Services/vrnVersionNumber.h"

#include <gtest/gtest.h>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {

TEST(VersionNumberTest, TextsAreReadAndPrinted) {
    const std::pair<StringView, StringView> cases[] = {{u"1.2.3.4", u"1.2.3.4"},
                                                       {u" 1. 2. 3. 4 ", u"1.2.3.4"},
                                                       {u"2147483647.-1.0.65536", u"2147483647.-1.0.65536"}};
    for (const auto& [text, printed] : cases)
        EXPECT_EQ(TVersionNumberFactory::GetInstance(text)->ToString(), printed) << ToUtf8(text);
    for (const StringView text : {u"", u"1.2.3", u"1.2.3.4.5", u"1..3.4", u"1.2.3.x", u"1.2.3.2147483648"}) {
        try {
            static_cast<void>(TVersionNumberFactory::GetInstance(text));
            ADD_FAILURE() << ToUtf8(text);
        } catch (const EInvalidVersionNumberString& error) {
            EXPECT_EQ(error.GetMessage(), u"Invalid version string \"" + String(text) + u"\"");
            EXPECT_EQ(error.GetVersionString(), text);
        }
    }
}

TEST(VersionNumberTest, TheFirstPartThatDiffersDecides) {
    const StringView ascending[] = {u"1.9.9.9", u"1.10.0.0", u"1.10.0.1", u"1.10.1.0", u"2.0.0.0"};
    for (const StringView& a : ascending) {
        for (const StringView& b : ascending) {
            const auto version = TVersionNumberFactory::GetInstance(a);
            EXPECT_EQ(version->CompareTo(*TVersionNumberFactory::GetInstance(b)), &a < &b   ? -1
                                                                                  : &a > &b ? 1
                                                                                            : 0)
                << ToUtf8(a) << " " << ToUtf8(b);
        }
    }
}

TEST(VersionNumberTest, FileWithoutVersionHasNone) {
    for (const StringView file : {u"/dev/zero", u"/", u"/no/such/file", u"Q:\\x.exe"}) {
        EXPECT_EQ(GetVersion(file), u"") << ToUtf8(file);
        EXPECT_EQ(TVersionNumberFactory::GetInstanceWithFileVersion(file), nullptr) << ToUtf8(file);
    }
}

}  // namespace Varnholt::Test
