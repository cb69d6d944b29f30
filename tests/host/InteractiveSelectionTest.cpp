// zcedSSGet with nothing queued: the user boxes entities in the drawing view.
#include "HostFixture.h"

#include <QLineEdit>
#include <QTest>
#include <QTimer>

namespace {
// Acts once the view waits for a selection.
void WhenSelecting(DrawingView* view, std::function<void()> act)
{
    auto* timer = new QTimer;
    QObject::connect(timer, &QTimer::timeout, [view, timer, act] {
        if (!view->IsSelecting())
            return;
        timer->stop();
        timer->deleteLater();
        act();
    });
    timer->start(10);
}

void Drag(DrawingView* view, QPoint from, QPoint to)
{
    QTest::mousePress(view, Qt::LeftButton, {}, from);
    QTest::mouseMove(view, to);
    QTest::mouseRelease(view, Qt::LeftButton, {}, to);
}
} // namespace

TEST_F(HostFixture, DraggedWindowThenEnterSelectsWhatTheBoxHolds)
{
    DrawingView* view = window->View();
    const QPoint a(view->width() / 4, view->height() / 4);
    const QPoint b(view->width() * 3 / 4, view->height() * 3 / 4);
    const size_t expected = view->SelectBox(view->ToWorld(a), view->ToWorld(b)).size();
    ASSERT_GT(expected, 0u);
    WhenSelecting(view, [&] {
        Drag(view, a, b);
        QTest::keyClick(view, Qt::Key_Return);
    });
    window->RunCommandText(QStringLiteral("qvhtest "));
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhtest] selected %1").arg(expected)))
        << History().toStdString();
}

TEST_F(HostFixture, CrossingBoxesAddUpAndRightClickFinishes)
{
    DrawingView* view = window->View();
    const QPoint a(view->width() * 3 / 4, view->height() / 2 - 20);
    const QPoint b(view->width() / 4, view->height() / 2 + 20);
    const size_t crossing = view->SelectBox(view->ToWorld(a), view->ToWorld(b)).size();
    const size_t window_ = view->SelectBox(view->ToWorld(b), view->ToWorld(a)).size();
    ASSERT_GT(crossing, window_);
    WhenSelecting(view, [&] {
        Drag(view, a, b);
        Drag(view, a, b); // the same entities again are not counted twice
        QTest::mouseClick(view, Qt::RightButton, {}, a);
    });
    window->RunCommandText(QStringLiteral("qvhtest "));
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhtest] selected %1").arg(crossing)))
        << History().toStdString();
}

TEST_F(HostFixture, EscapeCancelsTheSelection)
{
    DrawingView* view = window->View();
    WhenSelecting(view, [&] {
        Drag(view, QPoint(10, 10), QPoint(view->width() - 10, view->height() - 10));
        QTest::keyClick(view, Qt::Key_Escape);
    });
    window->RunCommandText(QStringLiteral("qvhtest "));
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhtest] cancelled")));
    EXPECT_FALSE(view->IsSelecting());
}

TEST_F(HostFixture, TypedCommandsRunAndAreRecalledWithUpAndRepeatedWithEnter)
{
    QLineEdit* input = window->CommandLine()->Input();
    QTest::keyClicks(input, "qvhtest");
    WhenSelecting(window->View(), [&] { QTest::keyClick(window->View(), Qt::Key_Escape); });
    QTest::keyClick(input, Qt::Key_Return);
    EXPECT_EQ(History().count(QStringLiteral("[qvhtest] cancelled")), 1);
    QTest::keyClick(input, Qt::Key_Up);
    EXPECT_EQ(input->text(), QStringLiteral("qvhtest"));
    input->clear();
    WhenSelecting(window->View(), [&] { QTest::keyClick(window->View(), Qt::Key_Escape); });
    QTest::keyClick(input, Qt::Key_Return);
    EXPECT_EQ(History().count(QStringLiteral("[qvhtest] cancelled")), 2);
}
