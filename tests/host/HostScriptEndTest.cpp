// How a script ends when a dialog will not: a failed script answers No to what it
// did not answer itself, a question that keeps coming back fails the script, and a
// dialog that ignores every cancel is closed without it. None of them hangs.
#include "HostFixture.h"

#include "ScriptAnswers.h"

#include <QElapsedTimer>

namespace {

class ScriptEnd : public HostFixture
{
protected:
    // How often the history reports `text` answered `answer`.
    int Answered(const QString& text, const QString& answer) const
    {
        return int(History().count(QStringLiteral("%1 -> %2").arg(text, answer)));
    }
};

// The dialog's cancel asks to save; the save keeps failing. The script's own
// cancel takes the default Yes; once the script has failed (no line left), the
// question is answered No and the dialog closes.
TEST_F(ScriptEnd, AFailedScriptSaysNoToTheQuestionAndTheDialogCloses)
{
    QElapsedTimer clock;
    clock.start();
    const std::string failures = Run(QStringLiteral("command qvhstubborn\n"
                                                    "cancel\n"
                                                    "expect-box 系统编号未能保存\n"));
    EXPECT_NE(failures.find("waited with no line left to run"), std::string::npos) << failures;
    EXPECT_EQ(Answered(QStringLiteral("是否保存设置修改?"), QStringLiteral("Yes")), 1)
        << History().toStdString();
    EXPECT_EQ(Answered(QStringLiteral("是否保存设置修改?"), QStringLiteral("No")), 1);
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhstubborn] result 0")));
    EXPECT_LT(clock.elapsed(), 10000);
}

// A statement that asks the same question again and again with nothing queued
// fails the script after a few times; the answers turn to No and the loop ends.
TEST_F(ScriptEnd, AQuestionThatKeepsComingBackFailsTheScript)
{
    const std::string failures = Run(QStringLiteral("command qvhstubborn\n"
                                                    "click 1001\n"
                                                    "answer no\n"
                                                    "cancel\n"));
    EXPECT_NE(failures.find("line 2: the message box \"再试一次?\" came 6 times"), std::string::npos)
        << failures;
    EXPECT_EQ(Answered(QStringLiteral("再试一次?"), QStringLiteral("Yes")), ScriptAnswers::kMaxRepeatedBoxes);
    EXPECT_EQ(Answered(QStringLiteral("再试一次?"), QStringLiteral("No")), 1);
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhstubborn] asked 6 times")));
    // Failed: the rest of the script does not run, and the dialog is cancelled
    // with a No to its question.
    EXPECT_EQ(Answered(QStringLiteral("是否保存设置修改?"), QStringLiteral("Yes")), 0);
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhstubborn] result 0")));
}

// Answers the script gave are its own: a Yes queued for each question is taken,
// however often it comes.
TEST_F(ScriptEnd, QueuedAnswersAreNotRepeats)
{
    QString script = QStringLiteral("command qvhstubborn\n");
    for (int i = 0; i < 8; ++i)
        script += QStringLiteral("answer yes\n");
    script += QStringLiteral("answer no\nclick 1001\nanswer no\ncancel\n");
    EXPECT_EQ(Run(script), "");
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhstubborn] asked 9 times")));
}

TEST_F(ScriptEnd, ADialogThatIgnoresEveryCancelIsClosedWithoutIt)
{
    QElapsedTimer clock;
    clock.start();
    const std::string failures = Run(QStringLiteral("command qvhstubborn\n"
                                                    "click 1002\n"
                                                    "cancel\n"));
    EXPECT_NE(failures.find("stayed open through 10 cancels; closed without it"), std::string::npos)
        << failures;
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhstubborn] result 0")));
    EXPECT_LT(clock.elapsed(), 10000);
}

} // namespace
