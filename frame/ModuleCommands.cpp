// The two ways the user opens the dialog from the host: the command "bhgl" and a
// double click on the attribute bar's code. Both hand the chosen code back to the
// bar when the dialog closes.
#include "ModuleEntry.h"

#include "CProj.h"
#include "IFaceBarCtrl.h"
#include "ModuleResourceGuard.h"
#include "SysCodeDlg.h"
#include "SysCodePath.h"

#include <memory>

namespace {
// The bar names levels with "&", the dialog with "\".
QString barCodeToFullName(const QString& code)
{
    return BackslashSysCodePath(code);
}

// The selected code for the bar. With none selected, the path of the bare specialty
// names no code, so the dialog's index-path look-up falls back to the specialty's
// first top-level code.
QString codeForBar(SysCodeDlg& dlg, const QString& spec)
{
    QString code = AmpersandSysCodePath(dlg.m_strSelCode);
    if (code.isEmpty()) {
        QString path = SpecSysCodePath(spec, QString());
        dlg.m_bSelCodeReplaced = false;
        dlg.GetSysCodeIndexPath(path);
        if (dlg.m_bSelCodeReplaced)
            code = path.mid(spec.size() + 1);
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
    IFaceBarCtrl::SetTreeItem(codeForBar(*dlg, spec));
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
    IFaceBarCtrl::SetTreeItem(codeForBar(dlg, spec));
}
