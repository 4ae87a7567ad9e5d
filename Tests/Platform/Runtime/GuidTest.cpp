#include "Platform/Runtime/Guid.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <set>

#include "Tests/Support/Raised.h"

namespace Varnholt::Test {

constexpr TGuid kGuid = TGuid::FromText(u"{01234567-89ab-CDEF-fedc-ba9876543210}");
static_assert(kGuid.Bytes[0] == 0x01 && kGuid.Bytes[7] == 0xEF && kGuid.Bytes[15] == 0x10);

TEST(Guid, TextsAcceptedAndRejected) {
    EXPECT_EQ(GuidToString(kGuid), u"{01234567-89AB-CDEF-FEDC-BA9876543210}");
    EXPECT_EQ(StringToGuid(u"01234567-89AB-CDEF-FEDC-BA9876543210"), kGuid);
    for (StringView text :
         {u"", u"{01234567-89AB-CDEF-FEDC-BA9876543210", u"0123456-789AB-CDEF-FEDC-BA9876543210",
          u"{01234567-89AB-CDEF-FEDC-BA987654321G}", u"{0123456789ABC-DEF-FEDC-BA9876543210--}"})
        EXPECT_EQ(Raised<EConvertError>([&] { static_cast<void>(StringToGuid(text)); }),
                  u"'" + String(text) + u"' is not a valid GUID");
}

TEST(Guid, NewOnesAreRandomVersion4AndDiffer) {
    std::set<TGuid> seen;
    for (int i = 0; i < 1000; ++i) {
        const String text = GuidToString(CreateGuid());
        EXPECT_TRUE(text[15] == u'4' && text[20] >= u'8' && text[20] <= u'B') << ToUtf8(text);
        EXPECT_TRUE(seen.insert(StringToGuid(text)).second) << ToUtf8(text);
    }
}

TEST(Guid, ProcessesHaveTheirOwn) {
    static_cast<void>(CreateGuid());  // more random bytes may be at hand than it took
    std::array<int, 2> ends;
    ASSERT_EQ(pipe(ends.data()), 0);
    const pid_t child = fork();
    const TGuid guid = CreateGuid();
    if (child == 0) _exit(write(ends[1], &guid, sizeof guid) == sizeof guid ? 0 : 1);
    TGuid other;
    EXPECT_EQ(read(ends[0], &other, sizeof other), static_cast<ssize_t>(sizeof other));
    EXPECT_NE(guid, other);
    EXPECT_EQ(waitpid(child, nullptr, 0), child);
    close(ends[0]);
    close(ends[1]);
}

}  // namespace Varnholt::Test
