#include "ShowAttDefMainDlg.h"

#include "QvKsAttDefMainDlg.h"
#include "WinMessageBox.h"

int ShowAttDefMainDlg(bool /*bModal*/, const QString& namePath, HWND* owner, bool bSpecOnly)
{
    HWND parent = owner && *owner ? *owner : GetActiveWindow();
    QvKsAttDefMainDlg dialog(
        bSpecOnly ? namePath.section(u'\\', 0, 0) : QString(), qobject_cast<QWidget*>(parent));
    dialog.Reload(namePath);
    dialog.exec();
    return dialog.Changed() ? IDOK : IDCANCEL;
}
