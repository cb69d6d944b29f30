#pragma once

// A specialty's codes as an .xlsx workbook: one sheet named after the specialty, the
// spreadsheet's titles in the first row and one row per code below, numbers (ACI,
// width, transparency) as numbers.
#include "QvKsWriteStatus.h"
#include "WinTypes.h"

#include <QString>

#include <functional>

class CSysCodeData;

// The workbook is made aside and written over `filePath` in one step
// (QvKsAtomicFile, kept to `confineTo`): a failure leaves what was there as it was,
// and the status says why.
QvKsWriteStatus WriteSysCodeXlsx(const CSysCodeData& root, const QString& sheetName,
    const std::function<int(COLORREF)>& aciOf, const QString& filePath, const QString& confineTo = QString());
