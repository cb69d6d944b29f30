#pragma once

// What every grid row carries besides its cells: the code's full name as loaded
// from the store and its node index. Rows made in the dialog carry ("", -1) until
// they are written back.
#include <QString>

struct SysCodeRowData
{
    QString strFullName;
    int nNodeIndex = -1;
};
