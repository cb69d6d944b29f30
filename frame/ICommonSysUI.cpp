#include "ICommonSysUI.h"

#include "ModuleEntry.h"
#include "ModuleResourceGuard.h"
#include "SysCodeDlg.h"

int ICommonSysUI::SysCodeMng(QString spec, const QString& code)
{
    const ModuleResourceGuard resources;
    SysCodeDlg dlg(nullptr);
    dlg.m_strSelCode = code;
    dlg.m_strSpec = spec;
    return dlg.DoModal() == IDOK ? 1 : 0;
}

bool RefreshSyscode(const QString& path)
{
    if (!g_pCommandDlg)
        return false;
    return g_pCommandDlg->ReloadFromSysCodeFile(path);
}
