#include "WinMessage.h"
#include "WinMessageBox.h"

#include <QWidget>
#include <gtest/gtest.h>

namespace {

class Receiver : public QWidget
{
public:
    QList<UINT> received;

protected:
    bool event(QEvent* e) override
    {
        if (e->type() == WinMessageEvent::eventType()) {
            auto* m = static_cast<WinMessageEvent*>(e);
            received.append(m->message());
            m->setResult(LRESULT(m->wParam() + 1));
            return true;
        }
        return QWidget::event(e);
    }
};

TEST(WindowMessage, FindsTopLevelWindowByExactTitleAndDelivers)
{
    InstallQtMessageBox();
    Receiver window;
    window.setWindowTitle(QStringLiteral("显示控制"));
    window.show();

    EXPECT_EQ(FindWindow(nullptr, QStringLiteral("显示控制 ")), nullptr);
    HWND found = FindWindow(nullptr, QStringLiteral("显示控制"));
    ASSERT_EQ(found, &window);
    EXPECT_EQ(SendMessage(found, 7034, 41, 0), 42);
    EXPECT_EQ(window.received, QList<UINT>({ 7034u }));
}

TEST(WindowMessage, NothingIsSentWithoutAWindow)
{
    InstallQtMessageBox();
    EXPECT_EQ(FindWindow(nullptr, QStringLiteral("无此窗口")), nullptr);
    EXPECT_EQ(SendMessage(nullptr, 7034, 0, 0), 0);
}

} // namespace
