#include "QvProInterface.h"

#include <QDir>
#include <QEvent>
#include <QLabel>
#include <QProgressBar>
#include <gtest/gtest.h>

namespace {

const QString kScanText = QStringLiteral("检查非当前层是否引用该系统编号...");

class PaintCounter : public QObject
{
public:
    int paints = 0;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            ++paints;
        return false;
    }
};

class ProgressWnd : public ::testing::Test
{
protected:
    void TearDown() override { QvProInterface::ShowProgressDialog(false); }

    static QLabel* Text()
    {
        return QvProInterface::ProgressWindow()->findChild<QLabel*>(QStringLiteral("progressText"));
    }
    static QProgressBar* Bar()
    {
        return QvProInterface::ProgressWindow()->findChild<QProgressBar*>(QStringLiteral("progressBar"));
    }
};

TEST_F(ProgressWnd, OpensModelessWithTheTextAndABusyBar)
{
    QvProInterface::ShowProgressDialog(true, kScanText, nullptr);
    QWidget* window = QvProInterface::ProgressWindow();
    ASSERT_NE(window, nullptr);
    EXPECT_TRUE(QvProInterface::IsProgressDialogShown());
    EXPECT_TRUE(window->isWindow());
    EXPECT_FALSE(window->isModal());
    EXPECT_EQ(Text()->text(), kScanText);
    EXPECT_EQ(Bar()->maximum(), 0); // busy: no step counting
    EXPECT_FALSE(window->windowFlags() & Qt::WindowCloseButtonHint);

    // The user cannot close it; only the work that opened it does.
    window->close();
    EXPECT_TRUE(window->isVisible());
}

TEST_F(ProgressWnd, CountsStepsWithinTheRange)
{
    QvProInterface::ShowProgressDialog(true, kScanText);
    QvProInterface::SetProgressRange(0, 3);
    QvProInterface::StepProgress();
    QvProInterface::StepProgress();
    EXPECT_EQ(Bar()->value(), 2);
    QvProInterface::StepProgress(5);
    EXPECT_EQ(Bar()->value(), 3);
    QvProInterface::SetProgressPos(-4);
    EXPECT_EQ(Bar()->value(), 0);

    // Opening again re-labels the same window and starts a new busy bar.
    QWidget* first = QvProInterface::ProgressWindow();
    QvProInterface::ShowProgressDialog(true, QStringLiteral("二"));
    EXPECT_EQ(QvProInterface::ProgressWindow(), first);
    EXPECT_EQ(Text()->text(), QStringLiteral("二"));
    EXPECT_EQ(Bar()->maximum(), 0);
}

TEST_F(ProgressWnd, RepaintsWhileTheWorkHoldsTheThread)
{
    QvProInterface::ShowProgressDialog(true, kScanText);
    PaintCounter counter;
    Text()->installEventFilter(&counter);
    // No return to the event loop between these calls, as in a scan of floors.
    for (int floor = 1; floor <= 3; ++floor) {
        const int before = counter.paints;
        QvProInterface::SetProgressText(QStringLiteral("%1 (%2)").arg(kScanText).arg(floor));
        EXPECT_GT(counter.paints, before) << floor;
    }
    Text()->removeEventFilter(&counter);
}

TEST_F(ProgressWnd, ClosingDestroysItAndLaterCallsAreHarmless)
{
    QvProInterface::ShowProgressDialog(true, kScanText);
    QvProInterface::ShowProgressDialog(false);
    EXPECT_EQ(QvProInterface::ProgressWindow(), nullptr);
    EXPECT_FALSE(QvProInterface::IsProgressDialogShown());
    QvProInterface::ShowProgressDialog(false);
    QvProInterface::StepProgress();
    EXPECT_EQ(QvProInterface::ProgressWindow(), nullptr);
}

TEST_F(ProgressWnd, StaysAboveItsOwnerAndGoesWithIt)
{
    auto* owner = new QWidget;
    owner->resize(600, 400);
    owner->show();
    QvProInterface::ShowProgressDialog(true, kScanText, owner);
    EXPECT_EQ(QvProInterface::ProgressWindow()->parentWidget(), owner);
    const QString dir = qEnvironmentVariable("QV_TEST_ARTIFACTS", QDir::tempPath());
    QDir().mkpath(dir);
    EXPECT_TRUE(QvProInterface::ProgressWindow()->grab().save(dir + QStringLiteral("/progress_window.png")));
    delete owner;
    EXPECT_EQ(QvProInterface::ProgressWindow(), nullptr);
}

} // namespace
