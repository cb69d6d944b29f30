// "导出" and "导入": the specialty's codes written to a ".scn" file, and such a file
// merged into them; also the reload that RefreshSyscode asks for.
#include "SysCodeDlg.h"

#include "CISysCode.h"
#include "CProj.h"
#include "CQvKsVersion.h"
#include "IQvKsAppProfile.h"
#include "ModuleStrings.h"
#include "QvKsProfile.h"
#include "QvKsXmlVertion.h"
#include "SysCodeMerge.h"
#include "WinFileDialog.h"
#include "WinMessageBox.h"

#include <QDir>

namespace {
const QString kScnFilter = QStringLiteral("*.scn|*.scn|");
const QString kScnExt = QStringLiteral("scn");
constexpr DWORD kScnDialogFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT;

// The exchange folder "系统编号" beside the settings file, made when missing.
QString ExchangeFolder()
{
    const QString folder = QvKsProfile::GetAppProfile()->GetPath() + QStringLiteral("/系统编号");
    QDir().mkdir(folder);
    return folder;
}

void ShowNotice(const QString& text)
{
    MessageBoxExW(GetActiveWindow(), text + g_strNotice, g_strCaption, kMbNotice);
}
} // namespace

bool SysCodeDlg::PreSaveForExchange(CSysCodeData& root)
{
    if (!m_bModified) {
        BuildChildRecords(root, m_tree.GetRootItem());
        return true;
    }
    if (!StoreInOneTransaction([&] {
            BuildChildRecords(root, m_tree.GetRootItem());
            return CISysCode::SetSpecCodeInfos(root, m_strSpec);
        })) {
        return false;
    }
    StoreRowIndexes(root, m_tree.GetRootItem());
    SetSavedFlags();
    return true;
}

void SysCodeDlg::OnExport()
{
    CSysCodeData root;
    if (!PreSaveForExchange(root))
        return;
    const QString name = CProj().GetPrjName() + QLatin1Char('-') + m_strSpec;
    CFileDialog dialog(FALSE, kScnExt, name, kScnDialogFlags, kScnFilter, this);
    dialog.m_strTitle = QStringLiteral("系统编号导出");
    dialog.m_strInitialDir = ExchangeFolder();
    if (dialog.DoModal() != IDOK)
        return;
    const QString path = dialog.GetPathName();
    root.ExportData(path, QString());
    QvKsXmlVertion::SetXmlVersion(CQvKsVersion::Current().ToString(), path);
    ShowNotice(QStringLiteral("导出完成"));
}

void SysCodeDlg::OnImport()
{
    CFileDialog dialog(TRUE, kScnExt, QString(), kScnDialogFlags, kScnFilter, this);
    dialog.m_strTitle = QStringLiteral("系统编号导入");
    dialog.m_strInitialDir = ExchangeFolder();
    if (dialog.DoModal() != IDOK)
        return;
    if (!ReloadFromSysCodeFile(dialog.GetPathName()))
        return;
    ShowNotice(QStringLiteral("导入完成"));
    m_bLineTypesChanged = true;
}

bool SysCodeDlg::ReloadFromSysCodeFile(const QString& filePath)
{
    CSysCodeData root;
    if (!PreSaveForExchange(root))
        return false;
    QString text;
    CQvKsVersion fileVersion;
    if (QvKsXmlVertion::GetXmlVersion(text, filePath) && CQvKsVersion::FromString(text, fileVersion)) {
        const CQvKsVersion current = CQvKsVersion::Current();
        if (fileVersion > current) {
            MessageBoxExW(GetActiveWindow(), QStringLiteral("不支持导入高版本的系统编号") + g_strExclaim,
                g_strCaption, kMbWarning);
            return false;
        }
        if (fileVersion < current)
            CISysCode::UpdataSysData(filePath);
    }
    CSysCodeData imported;
    imported.ImportData(filePath);
    MergeSysCodeTree(m_nMaxIndex, &root, &imported, true);
    FillRowsFromRoot(root);
    m_bModified = true;
    return true;
}

// The grid shows `root`'s codes in the current specialty's columns.
void SysCodeDlg::FillRowsFromRoot(const CSysCodeData& root)
{
    const bool withPipeColumns = IsElectrical();
    m_tree.SetRedraw(false);
    m_tree.DeleteAllItems();
    if (root.GetChildCount() > 0) {
        InsertNodeRows(root, TVI_ROOT, withPipeColumns);
        m_tree.Expand(m_tree.GetRootItem(), TVE_EXPAND);
    }
    m_tree.SetRedraw(true);
}
