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

std::string WrittenBy(StringView text, TMsgDlgButtons buttons) {
    testing::internal::CaptureStderr();
    EXPECT_EQ(MessageDlg(text, mtWarning, buttons, 7), mbOK);
    return testing::internal::GetCapturedStderr();
}

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
    EXPECT_EQ(WrittenBy(u"H\u00F6he 10\u2030", {mbOK}), "H\xC3\xB6he 10\xE2\x80\xB0\n");
    EXPECT_EQ(WrittenBy(u"100%s %n\r\nend", {mbYes, mbNo}), "100%s %n\r\nend\n");
}

}  // namespace
}  // namespace Varnholt::Test
