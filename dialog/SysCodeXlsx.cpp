#include "SysCodeXlsx.h"

#include "QvKsAtomicFile.h"
#include "SysCodeCsv.h"

#include <QFile>
#include <QTemporaryDir>

#include <xlsxwriter.h>

namespace {
// Columns whose cells are numbers in the workbook: ACI, width, transparency.
bool IsNumberColumn(int column)
{
    return column == 2 || column == 8 || column == 9;
}

// A sheet name may not hold []:*?/\ nor pass 31 characters.
QString SheetName(QString name)
{
    for (const QChar c : QStringLiteral("[]:*?/\\"))
        name.replace(c, QLatin1Char('_'));
    return name.isEmpty() ? QStringLiteral("系统编号") : name.left(31);
}
} // namespace

QvKsWriteStatus WriteSysCodeXlsx(const CSysCodeData& root, const QString& sheetName,
    const std::function<int(COLORREF)>& aciOf, const QString& filePath, const QString& confineTo)
{
    // Nothing is made where the workbook could not go.
    if (QvKsWriteStatus target = QvKsAtomicFile::CheckTarget(filePath, confineTo); !target)
        return target;
    // The library writes a file of its own; its bytes go over the target only when
    // whole, so a failed export never leaves half a workbook where a good one was.
    QTemporaryDir scratch;
    const QString draft = scratch.filePath(QStringLiteral("codes.xlsx"));
    lxw_workbook* book = scratch.isValid() ? workbook_new(QFile::encodeName(draft).constData()) : nullptr;
    if (!book)
        return QvKsWriteStatus::Failure(
            QvKsWriteStatus::Kind::Failed, filePath, QStringLiteral("the workbook cannot be made"));
    lxw_worksheet* sheet = workbook_add_worksheet(book, SheetName(sheetName).toUtf8().constData());
    const QStringList titles = SysCodeCsvColumns();
    for (int c = 0; c < titles.size(); ++c)
        worksheet_write_string(sheet, 0, lxw_col_t(c), titles[c].toUtf8().constData(), nullptr);
    lxw_row_t row = 1;
    for (const QStringList& cells : SysCodeSheetRows(root, aciOf)) {
        for (int c = 0; c < cells.size(); ++c) {
            if (cells[c].isEmpty())
                continue;
            if (IsNumberColumn(c))
                worksheet_write_number(sheet, row, lxw_col_t(c), cells[c].toDouble(), nullptr);
            else
                worksheet_write_string(sheet, row, lxw_col_t(c), cells[c].toUtf8().constData(), nullptr);
        }
        ++row;
    }
    worksheet_set_column(sheet, 0, 0, 28, nullptr);
    if (const lxw_error status = workbook_close(book); status != LXW_NO_ERROR)
        return QvKsWriteStatus::Failure(
            QvKsWriteStatus::Kind::Failed, filePath, QString::fromUtf8(lxw_strerror(status)));
    QFile written(draft);
    if (!written.open(QIODevice::ReadOnly))
        return QvKsWriteStatus::Failure(QvKsWriteStatus::Kind::Failed, filePath, written.errorString());
    const QByteArray bytes = written.readAll();
    if (written.error() != QFileDevice::NoError || bytes.size() != written.size())
        return QvKsWriteStatus::Failure(QvKsWriteStatus::Kind::Failed, filePath, written.errorString());
    return QvKsAtomicFile::Write(filePath, bytes, confineTo);
}
