#pragma once

// The management dialog as the dialog tests open it: initialised on a specialty and
// shown, its first paint done; and its grid.
#include "CTreeListCtrl.h"
#include "CtrlId.h"
#include "Resource.h"
#include "SysCodeDlg.h"

#include <QCoreApplication>

#include <memory>

inline std::unique_ptr<SysCodeDlg> OpenShownDialog(
    const QString& spec, const QString& selCode = QString(), bool importExport = false)
{
    auto dlg = std::make_unique<SysCodeDlg>();
    dlg->m_strSpec = spec;
    dlg->m_strSelCode = selCode;
    dlg->m_bAllowImportExport = importExport;
    dlg->OnInitDialog();
    dlg->show();
    QCoreApplication::processEvents();
    return dlg;
}

inline CTreeListCtrl& GridOf(SysCodeDlg& dlg)
{
    return *qobject_cast<CTreeListCtrl*>(GetDlgItem(&dlg, IDC_TREE_SYSCODE));
}
