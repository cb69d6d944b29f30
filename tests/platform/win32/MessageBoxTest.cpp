#include "MessageBoxRecorder.h"
#include "WinMessageBox.h"

#include <gtest/gtest.h>

namespace {

TEST(MessageBox, DefaultAnswerFollowsTheStyle)
{
    EXPECT_EQ(DefaultMessageBoxAnswer(0x12030), IDOK);
    EXPECT_EQ(DefaultMessageBoxAnswer(0x12034), IDYES);
    EXPECT_EQ(DefaultMessageBoxAnswer(0x12134), IDNO);
    EXPECT_EQ(DefaultMessageBoxAnswer(MB_OKCANCEL | MB_DEFBUTTON2), IDCANCEL);
}

TEST(MessageBox, RecorderSeesTextStyleAndAnswers)
{
    MessageBoxRecorder recorder;
    recorder.queueAnswer(IDNO);
    EXPECT_EQ(MessageBoxExW(nullptr, QStringLiteral("保存?"), QStringLiteral("Quorvatek"), 0x12034), IDNO);
    EXPECT_EQ(MessageBoxExW(nullptr, QStringLiteral("好!"), QStringLiteral("Quorvatek"), 0x12030), IDOK);
    ASSERT_EQ(recorder.boxes().size(), 2);
    EXPECT_EQ(recorder.boxes()[0].type, 0x12034u);
    EXPECT_EQ(recorder.boxes()[1].caption, QStringLiteral("Quorvatek"));
    EXPECT_EQ(recorder.texts(), QStringList({ QStringLiteral("保存?"), QStringLiteral("好!") }));
}

TEST(MessageBox, NestedRecordersRestoreTheOuterOne)
{
    MessageBoxRecorder outer;
    {
        MessageBoxRecorder inner;
        MessageBoxExW(nullptr, QStringLiteral("inner"), QString(), MB_OK);
        EXPECT_EQ(inner.boxes().size(), 1);
    }
    MessageBoxExW(nullptr, QStringLiteral("outer"), QString(), MB_OK);
    EXPECT_EQ(outer.texts(), QStringList({ QStringLiteral("outer") }));
}

} // namespace
