// "导出" and "导入": the specialty's codes written to a ".scn" file, and such a file
// merged into them; also the reload that RefreshSyscode asks for.
#include "SysCodeDlg.h"

#include "CISysCode.h"
#include "CImportPreviewDlg.h"
#include "CProj.h"
#include "CQvKsVersion.h"
#include "IQvKsAppProfile.h"
#include "ModuleStrings.h"
#include "QvKsProfile.h"
#include "QvKsXmlVertion.h"
#include "SysCodeImportPreview.h"
#include "SysCodeMerge.h"
#include "WinFileDialog.h"
#include "WinMessageBox.h"

#include <QDir>
#include <QFileInfo>

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

// The file is read and shown as a preview before anything changes: cancelling it
// leaves the grid and the store as they were.
void SysCodeDlg::OnImport()
{
    CFileDialog dialog(TRUE, kScnExt, QString(), kScnDialogFlags, kScnFilter, this);
    dialog.m_strTitle = QStringLiteral("系统编号导入");
    dialog.m_strInitialDir = ExchangeFolder();
    if (dialog.DoModal() != IDOK)
        return;
    const QString path = dialog.GetPathName();
    CSysCodeData imported;
    if (!ReadSysCodeFile(path, imported) || !ConfirmImport(imported, path))
        return;
    CSysCodeData root;
    if (!PreSaveForExchange(root))
        return;
    MergeImported(root, imported);
    ShowNotice(QStringLiteral("导入完成"));
    m_bLineTypesChanged = true;
}

bool SysCodeDlg::ReloadFromSysCodeFile(const QString& filePath)
{
    CSysCodeData root;
    if (!PreSaveForExchange(root))
        return false;
    CSysCodeData imported;
    if (!ReadSysCodeFile(filePath, imported))
        return false;
    MergeImported(root, imported);
    return true;
}

// A file of a newer version is refused; an older one is brought up to date first.
bool SysCodeDlg::ReadSysCodeFile(const QString& filePath, CSysCodeData& imported)
{
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
    imported.ImportData(filePath);
    return true;
}

bool SysCodeDlg::ConfirmImport(const CSysCodeData& imported, const QString& filePath)
{
    // Turning rows into records numbers the unsaved ones; the preview must not.
    const int maxIndex = m_nMaxIndex;
    CSysCodeData current;
    BuildChildRecords(current, m_tree.GetRootItem());
    m_nMaxIndex = maxIndex;
    CImportPreviewDlg preview(PreviewSysCodeImport(current, imported), QFileInfo(filePath).fileName(), this);
    return preview.DoModal() == IDOK;
}

void SysCodeDlg::MergeImported(CSysCodeData& root, const CSysCodeData& imported)
{
    MergeSysCodeTree(m_nMaxIndex, &root, &imported, true);
    FillRowsFromRoot(root);
    m_bModified = true;
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
