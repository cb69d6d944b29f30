#pragma once

// What a batch modification writes: the values the batch dialog collected, and
// from them the rows to change and the cells of each row.
#include "WinTypes.h"

#include <QList>
#include <QString>

#include <array>

// The five values, in the order of the dialog's check boxes.
enum BatchField : int {
    kBatchColor = 0,
    kBatchPipeInfo = 1,
    kBatchHorMode = 2,
    kBatchVerMode = 3,
    kBatchRemark = 4,
    kBatchFieldCount = 5,
};

struct BatchModifyValues
{
    COLORREF color = 0;
    QString strPipeInfo; // the full name path
    QString strHorMode;
    QString strVerMode;
    QString strRemark;
    std::array<bool, kBatchFieldCount> apply {}; // the ticked boxes
};

struct BatchCellText
{
    BatchField field;
    QString text;
};

// The changes every target row gets.
struct BatchRowChange
{
    // Always stored as the row's pipeline information, ticked or not, so the first
    // selected row's path reaches every other selected row.
    QString strRowInfo;
    bool bSetColor = false;
    COLORREF color = 0;
    QList<BatchCellText> texts; // in field order
};

// The rows to change, given whether each shown row is selected (index = row):
// the selected ones from the last row up to the first.
QList<int> BatchTargetRows(const QList<bool>& selectedRows);

// The cells the ticked values write; the pipeline information's cell shows the
// last part of its path.
BatchRowChange BatchRowChangeFor(const BatchModifyValues& values);
