#include "Platform/Controls/MessageDialog.h"

#include <gtest/gtest.h>

namespace Varnholt::Test {
namespace {

struct TAnswering final : IMessageDialogService {
    explicit TAnswering(TMsgDlgBtn answer) : Answer(answer) {}
    TMsgDlgBtn Show(StringView text, TMsgDlgType dialogType, TMsgDlgButtons buttons,
                    std::int32_t helpContext) override {
        EXPECT_EQ(text, u"Go on?");
        EXPECT_EQ(dialogType, mtConfirmation);
        EXPECT_TRUE(buttons.Contains(mbYes) && buttons.Contains(mbNo) && !buttons.Contains(mbOK));
        EXPECT_EQ(helpContext, 42);
        return Answer;
    }
    TMsgDlgBtn Answer;
};

TEST(MessageDialog, AServiceAnswersUntilItsScopeEndsThenStandardErrorTakesTheText) {
    const auto ask = [] { return MessageDlg(u"Go on?", mtConfirmation, {mbYes, mbNo}, 42); };
    TAnswering yes(mbYes), no(mbNo);
    {
        const TMessageDialogServiceScope outer(yes);
        {
            const TMessageDialogServiceScope inner(no);
            EXPECT_EQ(ask(), mbNo);
        }
        EXPECT_EQ(ask(), mbYes);
    }
    testing::internal::CaptureStderr();
    EXPECT_EQ(MessageDlg(u"H\u00F6he 100%s\r\nend", mtWarning, {mbYes, mbNo}, 7), mbOK);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "H\xC3\xB6he 100%s\r\nend\n");
}

}  // namespace
}  // namespace Varnholt::Test
