#include "VarnholtLib/Foundation/vrnExceptions.h"

#include <gtest/gtest.h>

namespace Varnholt::Test {
namespace {

struct EDescendant : EExArgumentException {
    using EExArgumentException::EExArgumentException;
};
static_assert(std::is_nothrow_copy_constructible_v<EDescendant>);
// One argument class does not catch the other, though both are argument failures of the platform.
static_assert(!std::is_base_of_v<EExArgumentException, EExArgumentNilException> &&
              std::is_base_of_v<EArgumentNilException, EExArgumentNilException> &&
              std::is_base_of_v<EArgumentException, EExArgumentException>);

TEST(vrnExceptions, MessagesAndFields) {
    const EExObjectNotInitializedException none(u"T.Load", u"Reader", u"Call Open");
    EXPECT_EQ(none.GetMessage(), u"Item not initialized: Reader");
    EXPECT_EQ(none.GetTypeAndMethod() + none.GetItemName() + none.GetInfo(), u"T.LoadReaderCall Open");
    const EDescendant all(u"T.Load", u"Width", u"Too small");
    EXPECT_EQ(all.GetMessage(), u"Width");
    EXPECT_EQ(all.GetTypeAndMethod() + all.GetArgName() + all.GetInfo(), u"T.LoadWidthToo small");
    EXPECT_EQ(EExException(u"T.Load", u"No rows").GetMessage(), u"No rows");
    EXPECT_EQ(EExArgumentNilException(u"T.Load", u"Source").GetMessage(), u"Source");
}

}  // namespace
}  // namespace Varnholt::Test
