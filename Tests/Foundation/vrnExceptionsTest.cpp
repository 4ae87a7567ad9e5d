#include "VarnholtLib/Foundation/vrnExceptions.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace Varnholt {
namespace {

class EDescendant : public EExArgumentException {
public:
    using EExArgumentException::EExArgumentException;
};

static_assert(std::is_nothrow_copy_constructible_v<EDescendant>);
// One argument class does not catch the other, though both are argument failures of the platform.
static_assert(!std::is_base_of_v<EExArgumentException, EExArgumentNilException>);
static_assert(std::is_base_of_v<EArgumentNilException, EExArgumentNilException>);
static_assert(std::is_base_of_v<EArgumentException, EExArgumentException>);

TEST(vrnExceptions, MessagesAndFields) {
    const EExException plain(u"TGrid.Load", u"No rows");
    EXPECT_EQ(plain.GetMessage() + u"|" + plain.GetTypeAndMethod() + u"|" + plain.GetInfo(),
              u"No rows|TGrid.Load|No rows");
    const EExArgumentNilException nil(u"TGrid.Load", u"Source");
    EXPECT_EQ(nil.GetMessage() + u"|" + nil.GetTypeAndMethod() + u"|" + nil.GetArgName(),
              u"Source|TGrid.Load|Source");
    const EExObjectNotInitializedException object(u"TGrid.Load", u"Reader", u"Call Open");
    EXPECT_EQ(object.GetMessage() + u"|" + object.GetTypeAndMethod() + u"|" + object.GetItemName() + u"|" +
                  object.GetInfo(),
              u"Item not initialized: Reader|TGrid.Load|Reader|Call Open");
}

TEST(vrnExceptions, DescendantsKeepTheFields) {
    try {
        throw EDescendant(u"TGrid.Load", u"Width", u"Width must be >= 1");
    } catch (const EExArgumentException& failure) {
        EXPECT_STREQ(failure.what(), "Width");
        EXPECT_EQ(failure.GetTypeAndMethod() + u"|" + failure.GetArgName() + u"|" + failure.GetInfo(),
                  u"TGrid.Load|Width|Width must be >= 1");
    }
}

}  // namespace
}  // namespace Varnholt
