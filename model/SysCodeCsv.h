#pragma once

// A specialty's codes as a spreadsheet: CSV in UTF-8 with a byte-order mark, one row
// per code, the level path in the first column and every attribute in its own.
// Hand-made sheets are read with care: columns are found by their titles, a missing
// column keeps what the specialty already has, and a row that cannot be taken is
// reported with its line and the reason while every other row still is.
#include "WinTypes.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class CSysCodeData;

// The column titles, in the order the export writes them.
QStringList SysCodeCsvColumns();

// The cells of the codes below `root`, one row per code, parents before children,
// in the columns' order. `aciOf` gives the indexed CAD colour of a colour, 0 when
// none is exactly it (the cell is then empty).
QList<QStringList> SysCodeSheetRows(const CSysCodeData& root, const std::function<int(COLORREF)>& aciOf);
// The titles and those rows as CSV.
QByteArray WriteSysCodeCsv(const CSysCodeData& root, const std::function<int(COLORREF)>& aciOf);

struct SysCodeCsvRefusal
{
    int line = 0; // where the row starts in the file, the title row being line 1
    QString reason;
};

// Reads a sheet into `imported` (an empty root) as codes to merge into `existing`
// (the specialty's root). `colourOfAci` turns an ACI cell into a colour for rows
// whose colour cell is empty. False, with `error` said, when the sheet has no title
// row naming the "系统编号" column; refused rows otherwise land in `refused`.
bool ReadSysCodeCsv(const QByteArray& data, const CSysCodeData& existing,
    const std::function<COLORREF(int)>& colourOfAci, CSysCodeData& imported,
    QList<SysCodeCsvRefusal>& refused, QString& error);

// The records of a CSV text (RFC 4180: quotes, doubled quotes, line breaks inside
// quotes; CRLF or LF), each with the line it starts on. A leading byte-order mark
// is skipped.
struct CsvRecord
{
    int line = 0;
    QStringList fields;
};
QList<CsvRecord> ParseCsv(const QByteArray& data);
