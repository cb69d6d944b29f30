#include "QvKsCADColorTool.h"

#include "QvKsCADColorDlg.h"

#include <QApplication>

namespace {
QvKsCADColorTool::Handler& installedHandler()
{
    static QvKsCADColorTool::Handler handler;
    return handler;
}
} // namespace

bool QvKsCADColorTool::InvokeCADColorDlg(COLORREF current, COLORREF& chosen)
{
    if (installedHandler()) {
        COLORREF picked = current;
        if (!installedHandler()(current, picked))
            return false;
        chosen = picked;
        return true;
    }
    QvKsCADColorDlg dlg(current, QApplication::activeWindow());
    if (dlg.exec() != QDialog::Accepted)
        return false;
    chosen = dlg.ChosenColor();
    return true;
}

QvKsCADColorTool::Handler QvKsCADColorTool::SetColorDialogHandler(Handler handler)
{
    Handler previous = std::move(installedHandler());
    installedHandler() = std::move(handler);
    return previous;
}
