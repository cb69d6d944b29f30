#pragma once

// A specialty's codes as an .xlsx workbook: one sheet named after the specialty, the
// spreadsheet's titles in the first row and one row per code below, numbers (ACI,
// width, transparency) as numbers.
#include "WinTypes.h"

#include <QString>

#include <functional>

class CSysCodeData;

// False, with `error` said, when the file cannot be written.
bool WriteSysCodeXlsx(const CSysCodeData& root, const QString& sheetName,
    const std::function<int(COLORREF)>& aciOf, const QString& filePath, QString& error);
