// The two ways the user opens the dialog from the host: the command "bhgl" and a
// double click on the attribute bar's code. Both hand the chosen code back to the
// bar when the dialog closes.
#include "ModuleEntry.h"

#include "CISysCode.h"
#include "CProj.h"
#include "IFaceBarCtrl.h"
#include "ModuleResourceGuard.h"
#include "SysCodeDlg.h"

#include <memory>

namespace {
// The bar names levels with "&", the dialog with "\".
QString barCodeToFullName(QString code)
{
    return code.replace(QLatin1Char('&'), QLatin1Char('\\'));
}

// The selected code for the bar, or the specialty's first code when none is.
QString codeForBar(const QString& selected, const QString& spec)
{
    QString code = selected;
    code.replace(QLatin1Char('\\'), QLatin1Char('&'));
    if (code.isEmpty()) {
        CSysCodeData root;
        if (CISysCode::GetSpecCodeInfos(root, spec) && root.GetChildCount() > 0)
            code = root.GetChild(0)->GetFullName();
    }
    return code;
}

struct CommandDlgScope
{
    explicit CommandDlgScope(SysCodeDlg* dlg) { g_pCommandDlg = dlg; }
    ~CommandDlgScope() { g_pCommandDlg = nullptr; }
};
} // namespace

void OnBhglCommand()
{
    const ModuleResourceGuard resources;
    const auto dlg = std::make_unique<SysCodeDlg>(nullptr);
    const CommandDlgScope scope(dlg.get());
    dlg->m_bAllowImportExport = true;
    const QString code = IFaceBarCtrl::CurSysCode();
    const QString spec = CProj().GetCurrentSpec();
    dlg->m_strSelCode = barCodeToFullName(code);
    dlg->DoModal();
    IFaceBarCtrl::SetTreeItem(codeForBar(dlg->m_strSelCode, spec));
}

void OnFaceBarSysCodeDblClk()
{
    const ModuleResourceGuard resources;
    SysCodeDlg dlg(nullptr);
    const QString code = IFaceBarCtrl::CurSysCode();
    const QString spec = CProj().GetCurrentSpec();
    dlg.m_strSpec = spec;
    dlg.m_strSelCode = barCodeToFullName(code);
    dlg.DoModal();
    IFaceBarCtrl::SetTreeItem(codeForBar(dlg.m_strSelCode, spec));
}
