#include "SysCodeExchange.h"

#include "CISysCode.h"
#include "CImportPreviewDlg.h"
#include "CProj.h"
#include "CQvKsVersion.h"
#include "CSysCodeData.h"
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
#include "SysCodeXlsx.h"
#include "WinFileDialog.h"
#include "WinMessageBox.h"
#include "WriteFailureText.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>

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

bool IsWorkbook(const QString& filePath)
{
    return QFileInfo(filePath).suffix().compare(QLatin1String("xlsx"), Qt::CaseInsensitive) == 0;
}

void ShowWarning(const QString& text)
{
    MessageBoxExW(GetActiveWindow(), text + g_strExclaim, g_strCaption, kMbWarning);
}

// The warning for a file that was not written, in place of a success notice.
void ShowWriteFailure(const QvKsWriteStatus& status)
{
    ShowWarning(WriteFailureText(status));
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

std::optional<QString> ChooseFile(CFileDialog& dialog, const QString& title)
{
    dialog.m_strTitle = title;
    dialog.m_strInitialDir = ExchangeFolder();
    if (dialog.DoModal() != IDOK)
        return std::nullopt;
    return dialog.GetPathName();
}
} // namespace

SysCodeExchange::SysCodeExchange(QWidget* owner, const QString& spec, GridRecords gridRecords)
    : m_owner(owner)
    , m_spec(spec)
    , m_gridRecords(std::move(gridRecords))
{ }

std::optional<QString> SysCodeExchange::ChooseExportFile() const
{
    // The names come from the shared project: cleaned, they cannot lead the file
    // out of the exchange folder.
    const QString name = DefaultExchangeFileName(CProj().GetPrjName(), m_spec);
    CFileDialog dialog(FALSE, kScnExt, name, kScnDialogFlags, kScnFilter + kCsvFilter + kXlsxFilter, m_owner);
    return ChooseFile(dialog, QStringLiteral("系统编号导出"));
}

std::optional<QString> SysCodeExchange::ChooseImportFile() const
{
    CFileDialog dialog(TRUE, kScnExt, QString(), kScnDialogFlags, kScnFilter + kCsvFilter, m_owner);
    return ChooseFile(dialog, QStringLiteral("系统编号导入"));
}

bool SysCodeExchange::Write(const CSysCodeData& root, const QString& filePath) const
{
    if (IsSpreadsheet(filePath))
        return WriteSpreadsheet(root, filePath);
    if (!root.ExportData(filePath, QString())
        || !QvKsXmlVertion::SetXmlVersion(CQvKsVersion::Current().ToString(), filePath)) {
        ShowWriteFailure(DataServiceWriteFailure(filePath));
        return false;
    }
    return true;
}

bool SysCodeExchange::ReadForImport(const QString& filePath, CSysCodeData& imported) const
{
    QStringList refused;
    const bool read = IsSpreadsheet(filePath) ? ReadSpreadsheet(filePath, imported, refused)
                                              : ReadSysCodeFile(filePath, imported);
    return read && ConfirmImport(imported, filePath, refused);
}

bool SysCodeExchange::ReadSysCodeFile(const QString& filePath, CSysCodeData& imported) const
{
    const SysCodeFileResult read = LoadSysCodeFile(filePath, imported);
    if (read.status == SysCodeFileStatus::Newer) {
        ShowWarning(QStringLiteral("不支持导入高版本的系统编号"));
        return false;
    }
    // An older file is brought up to date in place; when that cannot be written, the
    // user's file stays as it was and nothing is imported.
    if (read.status == SysCodeFileStatus::NotUpdated) {
        ShowWriteFailure(DataServiceWriteFailure(filePath));
        return false;
    }
    if (read.status != SysCodeFileStatus::Read) {
        ShowWarning(
            QStringLiteral("无法导入系统编号文件 %1：\n%2").arg(QFileInfo(filePath).fileName(), read.reason));
        return false;
    }
    if (IsForAnotherSpec(read, m_spec)
        && MessageBoxExW(GetActiveWindow(),
               QStringLiteral("文件 %1 中是“%2”专业的系统编号，是否导入到“%3”")
                       .arg(QFileInfo(filePath).fileName(), read.spec, m_spec)
                   + g_strQuestion,
               g_strCaption, kMbQuestionDefaultNo)
            != IDYES)
        return false;
    return true;
}

bool SysCodeExchange::ConfirmImport(
    const CSysCodeData& imported, const QString& filePath, const QStringList& refused) const
{
    CSysCodeData current;
    m_gridRecords(current);
    SysCodeImportPreview preview = PreviewSysCodeImport(current, imported);
    preview.refused = refused;
    CImportPreviewDlg dialog(preview, QFileInfo(filePath).fileName(), m_owner);
    return dialog.DoModal() == IDOK;
}

bool SysCodeExchange::IsSpreadsheet(const QString& filePath)
{
    const QString suffix = QFileInfo(filePath).suffix();
    return suffix.compare(QLatin1String("csv"), Qt::CaseInsensitive) == 0
        || suffix.compare(QLatin1String("xlsx"), Qt::CaseInsensitive) == 0;
}

void SysCodeExchange::ShowNotice(const QString& text)
{
    MessageBoxExW(GetActiveWindow(), text + g_strNotice, g_strCaption, kMbNotice);
}

// ".xlsx" writes a workbook, ".csv" a sheet of text.
bool SysCodeExchange::WriteSpreadsheet(const CSysCodeData& root, const QString& filePath) const
{
    const QString project = QvKsDataMng::ProjectFolder();
    const QvKsWriteStatus status = IsWorkbook(filePath)
        ? WriteSysCodeXlsx(root, m_spec, &QvKsAciPalette::IndexOf, filePath, project)
        : QvKsAtomicFile::Write(filePath, WriteSysCodeCsv(root, &QvKsAciPalette::IndexOf), project);
    if (!status)
        ShowWriteFailure(status);
    return status.IsOk();
}

// A sheet's rows, compared with the grid's codes so that missing columns keep what
// the grid has; the rows that cannot be taken come back in `refused`.
bool SysCodeExchange::ReadSpreadsheet(
    const QString& filePath, CSysCodeData& imported, QStringList& refused) const
{
    QFile file;
    QString error;
    if (IsWorkbook(filePath)) {
        error = QStringLiteral("工作簿（.xlsx）请另存为 CSV（UTF-8）后再导入");
    } else if (!ReadableFile::Open(file, filePath, &error)) {
        error = QStringLiteral("无法读取文件 %1：%2").arg(QDir::toNativeSeparators(filePath), error);
    } else if (file.size() > kMaxSheetBytes) {
        error = QStringLiteral("文件 %1 超过 %2 MB，不是系统编号表格")
                    .arg(QDir::toNativeSeparators(filePath))
                    .arg(kMaxSheetBytes >> 20);
    } else {
        CSysCodeData current;
        m_gridRecords(current);
        QList<SysCodeCsvRefusal> rows;
        if (ReadSysCodeCsv(file.readAll(), current, &QvKsAciPalette::ColorOf, imported, rows, error)) {
            for (const SysCodeCsvRefusal& row : rows)
                refused << QStringLiteral("第 %1 行：%2").arg(row.line).arg(row.reason);
            return true;
        }
    }
    ShowWarning(error);
    return false;
}
