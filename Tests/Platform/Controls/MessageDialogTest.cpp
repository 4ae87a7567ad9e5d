#include "Platform/Controls/MessageDialog.h"

#include <gmock/gmock.h>

#include "Tests/Support/MessageBoxes.h"

namespace Varnholt::Test {

TEST(MessageDialog, TheServiceShowsTheBoxWithoutOneStandardErrorTakesTheText) {
    {
        TRecordedBoxes boxes;
        boxes.Answers = {mrNo};
        Platform().Screen->SetActiveFormHandle(5);
        EXPECT_EQ(MessageDlg(u"Go on?", mtConfirmation, {mbNo, mbYes}, 42), mrNo);
        EXPECT_EQ(MessageDlg(u"", mtError, {}, 0), mrOk);
        Platform().Screen->SetActiveFormHandle(0);
        const TMessageBox& box = boxes.Boxes.front();
        EXPECT_TRUE(box.Text == u"Go on?" && box.Title == u"Confirm" && box.Icon == miQuestion);
        EXPECT_TRUE(box.HelpContext == 42 && box.Owner == 5);
        EXPECT_THAT(box.Buttons, testing::ElementsAre(mrYes, mrNo));
    }
    testing::internal::CaptureStderr();
    EXPECT_EQ(MessageDlg(u"H\u00F6he 100%s\r\nend", mtWarning, {mbRetry, mbIgnore}, 7), mrRetry);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "H\xC3\xB6he 100%s\r\nend\n");
}

}  // namespace Varnholt::Test
