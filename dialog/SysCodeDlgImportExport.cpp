// "导出" and "导入": the specialty's codes written to a ".scn" file, and such a file
// merged into them; also the reload that RefreshSyscode asks for.
#include "SysCodeDlg.h"

#include "CISysCode.h"
#include "CImportPreviewDlg.h"
#include "CProj.h"
#include "CQvKsVersion.h"
#include "ExchangeFileName.h"
#include "IQvKsAppProfile.h"
#include "ModuleStrings.h"
#include "QvKsAciPalette.h"
#include "QvKsAtomicFile.h"
#include "QvKsDataMng.h"
#include "QvKsProfile.h"
#include "QvKsXmlVertion.h"
#include "ReadableFile.h"
#include "SysCodeCsv.h"
#include "SysCodeFileReader.h"
#include "SysCodeImportPreview.h"
#include "SysCodeMerge.h"
#include "SysCodeUndoGroup.h"
#include "SysCodeXlsx.h"
#include "WinFileDialog.h"
#include "WinMessageBox.h"

#include <QDir>
#include <QFileInfo>

namespace {
// The dialogs offer system-code files first, then spreadsheets: CSV both ways, a
// workbook only for export. A name typed with ".csv" or ".xlsx" works in any filter.
const QString kScnFilter = QStringLiteral("*.scn|*.scn|");
const QString kCsvFilter = QStringLiteral("CSV (UTF-8)|*.csv|");
const QString kXlsxFilter = QStringLiteral("Excel 工作簿 (*.xlsx)|*.xlsx|");
const QString kScnExt = QStringLiteral("scn");
constexpr DWORD kScnDialogFlags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT;
// A sheet of every code of a large specialty is a few MB; more is not one of ours.
constexpr qint64 kMaxSheetBytes = 64ll << 20;

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

// Why the data service did not write `path`: the write's own status when it got
// as far as writing, else what the service said.
QvKsWriteStatus DataServiceWriteFailure(const QString& path)
{
    const QvKsWriteStatus status = QvKsAtomicFile::LastStatus();
    if (!status && status.GetPath() == path)
        return status;
    return QvKsWriteStatus::Failure(QvKsWriteStatus::Kind::Failed, path, QvKsDataMng::LastError());
}
} // namespace

bool SysCodeDlg::PreSaveForExchange(CSysCodeData& root)
{
    if (!IsModified()) {
        BuildChildRecords(root, m_tree.GetRootItem());
        return true;
    }
    if (!StoreGridCodes(m_strSpec, QString(), root, false))
        return false;
    StoreRowIndexes(root, m_tree.GetRootItem());
    SetSavedFlags();
    return true;
}

void SysCodeDlg::OnExport()
{
    CSysCodeData root;
    if (!PreSaveForExchange(root))
        return;
    // The names come from the shared project: cleaned, they cannot lead the file
    // out of the exchange folder.
    const QString name = DefaultExchangeFileName(CProj().GetPrjName(), m_strSpec);
    CFileDialog dialog(FALSE, kScnExt, name, kScnDialogFlags, kScnFilter + kCsvFilter + kXlsxFilter, this);
    dialog.m_strTitle = QStringLiteral("系统编号导出");
    dialog.m_strInitialDir = ExchangeFolder();
    if (dialog.DoModal() != IDOK)
        return;
    const QString path = dialog.GetPathName();
    // A file that was not written whole is reported in place of the notice; the file
    // that was there is kept as it was.
    if (IsSpreadsheet(path)) {
        if (!WriteSpreadsheet(root, path))
            return;
    } else if (!root.ExportData(path, QString())
        || !QvKsXmlVertion::SetXmlVersion(CQvKsVersion::Current().ToString(), path)) {
        ShowWriteFailure(DataServiceWriteFailure(path));
        return;
    }
    ShowNotice(QStringLiteral("导出完成"));
}

// The file is read and shown as a preview before anything changes: cancelling it
// leaves the grid and the store as they were.
void SysCodeDlg::OnImport()
{
    CFileDialog dialog(TRUE, kScnExt, QString(), kScnDialogFlags, kScnFilter + kCsvFilter, this);
    dialog.m_strTitle = QStringLiteral("系统编号导入");
    dialog.m_strInitialDir = ExchangeFolder();
    if (dialog.DoModal() != IDOK)
        return;
    const QString path = dialog.GetPathName();
    CSysCodeData imported;
    QStringList refused;
    const bool read
        = IsSpreadsheet(path) ? ReadSpreadsheet(path, imported, refused) : ReadSysCodeFile(path, imported);
    if (!read || !ConfirmImport(imported, path, refused))
        return;
    CSysCodeData root;
    if (!PreSaveForExchange(root))
        return;
    MergeImported(root, imported);
    ShowNotice(QStringLiteral("导入完成"));
    m_bLineTypesChanged = true;
}

// The file is read whole before the grid is stored: a file that is refused changes
// nothing.
bool SysCodeDlg::ReloadFromSysCodeFile(const QString& filePath)
{
    CSysCodeData imported;
    if (!ReadSysCodeFile(filePath, imported))
        return false;
    CSysCodeData root;
    if (!PreSaveForExchange(root))
        return false;
    MergeImported(root, imported);
    return true;
}

// A file of a newer version is refused; an older one is brought up to date first. A
// file that cannot be read is refused with the reason and the line; one written for
// another specialty goes in only when the user says so.
bool SysCodeDlg::ReadSysCodeFile(const QString& filePath, CSysCodeData& imported)
{
    const SysCodeFileResult read = LoadSysCodeFile(filePath, imported);
    if (read.status == SysCodeFileStatus::Newer) {
        MessageBoxExW(GetActiveWindow(), QStringLiteral("不支持导入高版本的系统编号") + g_strExclaim,
            g_strCaption, kMbWarning);
        return false;
    }
    // An older file is brought up to date in place; when that cannot be written, the
    // user's file stays as it was and nothing is imported.
    if (read.status == SysCodeFileStatus::NotUpdated) {
        ShowWriteFailure(DataServiceWriteFailure(filePath));
        return false;
    }
    if (read.status != SysCodeFileStatus::Read) {
        MessageBoxExW(GetActiveWindow(),
            QStringLiteral("无法导入系统编号文件 %1：\n%2").arg(QFileInfo(filePath).fileName(), read.reason)
                + g_strExclaim,
            g_strCaption, kMbWarning);
        return false;
    }
    if (IsForAnotherSpec(read, m_strSpec)
        && MessageBoxExW(GetActiveWindow(),
               QStringLiteral("文件 %1 中是“%2”专业的系统编号，是否导入到“%3”")
                       .arg(QFileInfo(filePath).fileName(), read.spec, m_strSpec)
                   + g_strQuestion,
               g_strCaption, kMbQuestionDefaultNo)
            != IDYES)
        return false;
    return true;
}

// The grid's codes as records, for comparing with what a file brings.
void SysCodeDlg::BuildGridRecords(CSysCodeData& root)
{
    // Turning rows into records numbers the unsaved ones; a look must not.
    const int maxIndex = m_nMaxIndex;
    BuildChildRecords(root, m_tree.GetRootItem());
    m_nMaxIndex = maxIndex;
}

bool SysCodeDlg::ConfirmImport(
    const CSysCodeData& imported, const QString& filePath, const QStringList& refused)
{
    CSysCodeData current;
    BuildGridRecords(current);
    SysCodeImportPreview preview = PreviewSysCodeImport(current, imported);
    preview.refused = refused;
    CImportPreviewDlg dialog(preview, QFileInfo(filePath).fileName(), this);
    return dialog.DoModal() == IDOK;
}

bool SysCodeDlg::IsSpreadsheet(const QString& filePath)
{
    const QString suffix = QFileInfo(filePath).suffix();
    return suffix.compare(QLatin1String("csv"), Qt::CaseInsensitive) == 0
        || suffix.compare(QLatin1String("xlsx"), Qt::CaseInsensitive) == 0;
}

// ".xlsx" writes a workbook, ".csv" a sheet of text.
bool SysCodeDlg::WriteSpreadsheet(const CSysCodeData& root, const QString& filePath)
{
    const QString project = QvKsDataMng::ProjectFolder();
    const QvKsWriteStatus status
        = QFileInfo(filePath).suffix().compare(QLatin1String("xlsx"), Qt::CaseInsensitive) == 0
        ? WriteSysCodeXlsx(root, m_strSpec, &QvKsAciPalette::IndexOf, filePath, project)
        : QvKsAtomicFile::Write(filePath, WriteSysCodeCsv(root, &QvKsAciPalette::IndexOf), project);
    if (!status)
        ShowWriteFailure(status);
    return status.IsOk();
}

// A sheet's rows, compared with the grid's codes so that missing columns keep what
// the grid has; the rows that cannot be taken come back in `refused`.
bool SysCodeDlg::ReadSpreadsheet(const QString& filePath, CSysCodeData& imported, QStringList& refused)
{
    QFile file;
    QString error;
    if (QFileInfo(filePath).suffix().compare(QLatin1String("xlsx"), Qt::CaseInsensitive) == 0) {
        error = QStringLiteral("工作簿（.xlsx）请另存为 CSV（UTF-8）后再导入");
    } else if (!ReadableFile::Open(file, filePath, &error)) {
        error = QStringLiteral("无法读取文件 %1：%2").arg(QDir::toNativeSeparators(filePath), error);
    } else if (file.size() > kMaxSheetBytes) {
        error = QStringLiteral("文件 %1 超过 %2 MB，不是系统编号表格")
                    .arg(QDir::toNativeSeparators(filePath))
                    .arg(kMaxSheetBytes >> 20);
    } else {
        CSysCodeData current;
        BuildGridRecords(current);
        QList<SysCodeCsvRefusal> rows;
        if (ReadSysCodeCsv(file.readAll(), current, &QvKsAciPalette::ColorOf, imported, rows, error)) {
            for (const SysCodeCsvRefusal& row : rows)
                refused << QStringLiteral("第 %1 行：%2").arg(row.line).arg(row.reason);
            return true;
        }
    }
    MessageBoxExW(GetActiveWindow(), error + g_strExclaim, g_strCaption, kMbWarning);
    return false;
}

void SysCodeDlg::MergeImported(CSysCodeData& root, const CSysCodeData& imported)
{
    MergeSysCodeTree(m_nMaxIndex, &root, &imported, true);
    const SysCodeUndoGroup undoGroup(*this);
    FillRowsFromRoot(root);
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
    // A refill of its own (after a save) starts the history afresh; a merge
    // being recorded is one step of it.
    if (!m_tree.IsUndoRecording())
        SetCleanPoint();
}
