#include "VarnholtLib/Foundation/vrnExceptions.h"

#include <gmock/gmock.h>

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
    const EExException plain(u"T.Load", u"No rows");
    const EExArgumentNilException nil(u"T.Load", u"Source");
    const EExObjectNotInitializedException none(u"T.Load", u"Reader", u"Call Open");
    const EDescendant all(u"T.Load", u"Width", u"Too small");
    const String texts[][4] = {
        {plain.GetMessage(), plain.GetTypeAndMethod(), plain.GetInfo()},
        {nil.GetMessage(), nil.GetTypeAndMethod(), nil.GetArgName()},
        {none.GetMessage(), none.GetTypeAndMethod(), none.GetItemName(), none.GetInfo()},
        {all.GetMessage(), all.GetTypeAndMethod(), all.GetArgName(), all.GetInfo()}};
    EXPECT_THAT(texts,
                testing::ElementsAre(
                    testing::ElementsAre(u"No rows", u"T.Load", u"No rows", u""),
                    testing::ElementsAre(u"Source", u"T.Load", u"Source", u""),
                    testing::ElementsAre(u"Item not initialized: Reader", u"T.Load", u"Reader", u"Call Open"),
                    testing::ElementsAre(u"Width", u"T.Load", u"Width", u"Too small")));
}

}  // namespace
}  // namespace Varnholt::Test
