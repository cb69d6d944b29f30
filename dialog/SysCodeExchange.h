#pragma once

// The files of "导出" and "导入": system-code files (".scn", stamped with the
// version) and spreadsheets (CSV both ways, a workbook for export only), the file
// dialogs over the exchange folder "系统编号", and the preview shown before a file
// goes in. Every refusal and failure has been shown to the user when a call says
// false.
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class CSysCodeData;
class QWidget;

class SysCodeExchange
{
public:
    using GridRecords = std::function<void(CSysCodeData&)>;

    // `owner` parents the file dialogs and the preview; `spec` is the specialty in the
    // grid; `gridRecords` gives the grid's codes as records, asked for only when a
    // sheet or the preview is compared with them.
    SysCodeExchange(QWidget* owner, const QString& spec, GridRecords gridRecords);

    // The chosen file; nothing when the dialog was cancelled.
    std::optional<QString> ChooseExportFile() const;
    std::optional<QString> ChooseImportFile() const;

    // A file that was not written whole is reported; the file there before is kept.
    bool Write(const CSysCodeData& root, const QString& filePath) const;
    // A system-code file or a sheet (by its suffix) read whole and previewed: true
    // when the user goes on with the import.
    bool ReadForImport(const QString& filePath, CSysCodeData& imported) const;
    // A file of a newer version is refused; an older one is brought up to date in
    // place first; one written for another specialty goes in only when the user says so.
    bool ReadSysCodeFile(const QString& filePath, CSysCodeData& imported) const;

    static bool IsSpreadsheet(const QString& filePath);
    // "导出完成" and the like, as a notice.
    static void ShowNotice(const QString& text);

private:
    bool WriteSpreadsheet(const CSysCodeData& root, const QString& filePath) const;
    bool ReadSpreadsheet(const QString& filePath, CSysCodeData& imported, QStringList& refused) const;
    bool ConfirmImport(
        const CSysCodeData& imported, const QString& filePath, const QStringList& refused) const;

    QWidget* m_owner;
    QString m_spec;
    GridRecords m_gridRecords;
};
