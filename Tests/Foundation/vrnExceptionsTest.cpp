#include "VarnholtLib/Foundation/vrnExceptions.h"

#include <gtest/gtest.h>

namespace Varnholt {
namespace {

struct EDescendant : EExArgumentException {
    using EExArgumentException::EExArgumentException;
};
static_assert(std::is_nothrow_copy_constructible_v<EDescendant>);
// One argument class does not catch the other, though both are argument failures of the platform.
static_assert(!std::is_base_of_v<EExArgumentException, EExArgumentNilException>);
static_assert(std::is_base_of_v<EArgumentNilException, EExArgumentNilException>);
static_assert(std::is_base_of_v<EArgumentException, EExArgumentException>);

TEST(vrnExceptions, MessagesAndFields) {
    const EExException plain(u"T.Load", u"No rows");
    EXPECT_EQ(plain.GetMessage() + u"|" + plain.GetTypeAndMethod() + u"|" + plain.GetInfo(),
              u"No rows|T.Load|No rows");
    const EExArgumentNilException nil(u"T.Load", u"Source");
    EXPECT_EQ(nil.GetMessage() + u"|" + nil.GetTypeAndMethod() + u"|" + nil.GetArgName(),
              u"Source|T.Load|Source");
    const EExObjectNotInitializedException none(u"T.Load", u"Reader", u"Call Open");
    EXPECT_EQ(none.GetMessage() + u"|" + none.GetTypeAndMethod() + u"|" + none.GetItemName() + none.GetInfo(),
              u"Item not initialized: Reader|T.Load|ReaderCall Open");
    try {
        throw EDescendant(u"T.Load", u"Width", u"Too small");
    } catch (const EExArgumentException& all) {
        EXPECT_EQ(all.GetMessage() + u"|" + all.GetTypeAndMethod() + u"|" + all.GetArgName() + all.GetInfo(),
                  u"Width|T.Load|WidthToo small");
    }
}

}  // namespace
}  // namespace Varnholt
