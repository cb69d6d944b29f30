#include "QvKsCADColorTool.h"

#include "QvKsCADColorDlg.h"

#include <QApplication>

bool QvKsCADColorTool::InvokeCADColorDlg(COLORREF current, COLORREF& chosen)
{
    QvKsCADColorDlg dlg(current, QApplication::activeWindow());
    if (dlg.exec() != QDialog::Accepted)
        return false;
    chosen = dlg.ChosenColor();
    return true;
}
