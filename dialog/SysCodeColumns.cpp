#include "SysCodeColumns.h"

#include "TreeListTypes.h"

namespace {
struct ColumnWidths
{
    int all; // with the pipeline columns
    int seven; // without them; 0 = hidden
};

// Titles and widths in logical order.
const QStringList& columnTitles()
{
    static const QStringList titles = { QStringLiteral("系统编号"), QStringLiteral("颜色"),
        QStringLiteral("管线信息"), QStringLiteral("水平敷设方式"), QStringLiteral("垂直敷设方式"),
        QStringLiteral("线型样式"), QStringLiteral("线型字符"), QStringLiteral("线宽(mm)"),
        QStringLiteral("透明度"), QStringLiteral("备注") };
    return titles;
}

constexpr ColumnWidths kWidths[kSysCodeColumnCount] = {
    { 100, 100 },
    { 75, 115 },
    { 200, 0 },
    { 80, 0 },
    { 80, 0 },
    { 100, 120 },
    { 60, 60 },
    { 100, 120 },
    { 60, 60 },
    { 100, 120 },
};

bool isPipeColumn(int logical)
{
    return logical == kColPipeInfo || logical == kColHorLaying || logical == kColVerLaying;
}

} // namespace

QList<SysCodeColumnInfo> SysCodeColumnSet(bool withPipeColumns)
{
    QList<SysCodeColumnInfo> columns;
    for (int logical = 0; logical < kSysCodeColumnCount; ++logical) {
        if (!withPipeColumns && isPipeColumn(logical))
            continue;
        const int width = withPipeColumns ? kWidths[logical].all : kWidths[logical].seven;
        columns.append({ logical, columnTitles().at(logical), width,
            logical == kColName ? LVCFMT_LEFT : LVCFMT_CENTER });
    }
    return columns;
}

int SysCodeVisibleColumn(int logical, bool withPipeColumns)
{
    if (logical < 0 || logical >= kSysCodeColumnCount)
        return -1;
    if (withPipeColumns)
        return logical;
    if (isPipeColumn(logical))
        return -1;
    return logical < kColPipeInfo ? logical : logical - 3;
}
