#include "QvProInterface.h"

#include "QvKsProgressWnd.h"

#include <QPointer>

namespace {

QPointer<QvKsProgressWnd>& Window()
{
    static QPointer<QvKsProgressWnd> window;
    return window;
}

} // namespace

void QvProInterface::ShowProgressDialog(bool bShow, const QString& text, HWND owner)
{
    QPointer<QvKsProgressWnd>& window = Window();
    if (!bShow) {
        delete window.data();
        return;
    }
    if (!window) {
        auto* ownerWidget = qobject_cast<QWidget*>(owner);
        window = new QvKsProgressWnd(ownerWidget ? ownerWidget->window() : nullptr);
        window->setAttribute(Qt::WA_DeleteOnClose, false);
    }
    window->SetRange(0, 0);
    window->SetText(text);
    window->Open();
}

void QvProInterface::SetProgressRange(int lower, int upper)
{
    if (QvKsProgressWnd* window = Window())
        window->SetRange(lower, upper);
}

void QvProInterface::SetProgressPos(int pos)
{
    if (QvKsProgressWnd* window = Window())
        window->SetPos(pos);
}

void QvProInterface::StepProgress(int step)
{
    if (QvKsProgressWnd* window = Window())
        window->Step(step);
}

void QvProInterface::SetProgressText(const QString& text)
{
    if (QvKsProgressWnd* window = Window())
        window->SetText(text);
}

bool QvProInterface::IsProgressDialogShown()
{
    const QvKsProgressWnd* window = Window();
    return window && window->isVisible();
}

QWidget* QvProInterface::ProgressWindow()
{
    return Window().data();
}
