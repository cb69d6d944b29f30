#pragma once

// The grid's columns: ten logical columns, of which the three pipeline columns
// (2, 3, 4) are shown only for the electrical specialties. Editors, the batch
// dialog, copying and the row filler speak in logical indices; the grid itself in
// visible positions.
#include "SysCodeColumn.h"
#include "WinTypes.h"

#include <QList>
#include <QString>
#include <QStringList>

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
