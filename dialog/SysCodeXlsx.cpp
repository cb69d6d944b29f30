#include "SysCodeXlsx.h"

#include "SysCodeCsv.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
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

bool WriteSysCodeXlsx(const CSysCodeData& root, const QString& sheetName,
    const std::function<int(COLORREF)>& aciOf, const QString& filePath, QString& error)
{
    // The library writes a file of its own; it is moved over the target only when
    // whole, so a failed export never leaves half a workbook where a good one was.
    QTemporaryDir scratch;
    const QString draft = scratch.filePath(QStringLiteral("codes.xlsx"));
    lxw_workbook* book = workbook_new(QFile::encodeName(draft).constData());
    if (!scratch.isValid() || !book) {
        error = QStringLiteral("无法创建工作簿");
        return false;
    }
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
    if (const lxw_error status = workbook_close(book); status != LXW_NO_ERROR) {
        error = QStringLiteral("无法写入工作簿：%1").arg(QString::fromUtf8(lxw_strerror(status)));
        return false;
    }
    QFile written(draft);
    QSaveFile target(filePath);
    if (!written.open(QIODevice::ReadOnly) || !target.open(QIODevice::WriteOnly)
        || target.write(written.readAll()) < 0 || !target.commit()) {
        error = QStringLiteral("无法写入文件 %1：%2")
                    .arg(QDir::toNativeSeparators(filePath), target.errorString());
        return false;
    }
    return true;
}
