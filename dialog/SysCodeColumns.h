#pragma once

// The grid's columns: ten logical columns, of which the three pipeline columns
// (2, 3, 4) are shown only for the electrical specialties. Editors, the batch
// dialog, copying and the row filler speak in logical indices; the grid itself in
// visible positions.
#include "WinTypes.h"

#include <QList>
#include <QString>
#include <QStringList>

class CSysCodeData;

enum SysCodeColumn : int {
    kColName = 0,
    kColColor = 1,
    kColPipeInfo = 2,
    kColHorLaying = 3,
    kColVerLaying = 4,
    kColLineStyle = 5,
    kColLineString = 6,
    kColLineWidth = 7,
    kColAlpha = 8,
    kColRemark = 9,
    kSysCodeColumnCount = 10,
};

struct SysCodeColumnInfo
{
    int logical;
    QString title;
    int width; // pixels
    int format; // LVCFMT_*
};

// The grid's background and that of every cell but the colour cell.
constexpr COLORREF kSysCodeGridBkColor = RGB(214, 214, 214);

// The columns shown for a specialty, in visible order.
QList<SysCodeColumnInfo> SysCodeColumnSet(bool withPipeColumns);
// The visible position of a logical column; -1 when the layout hides it.
int SysCodeVisibleColumn(int logical, bool withPipeColumns);
// The last part of a pipeline-information path: what its cell shows.
QString PipeInfoDisplayText(const QString& pipeInfoPath);
// The text of every logical column for a code (the colour cell's text is empty:
// the cell shows the colour itself).
QStringList SysCodeCellTexts(const CSysCodeData& node, bool withPipeColumns);
