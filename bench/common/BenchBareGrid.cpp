#include "BenchBareGrid.h"

#include "CSysCodeData.h"
#include "CTreeListCtrl.h"
#include "PipeInfoPath.h"
#include "SysCodeColumns.h"
#include "SysCodeDefaults.h"

namespace {
// The texts the dialog shows for a code, made as plainly as a bare grid would.
QStringList CellTexts(const CSysCodeData& node)
{
    QStringList texts;
    texts.reserve(kSysCodeColumnCount);
    texts << node.GetNodeName() << QString() << PipeInfoDisplayName(node.GetAddedMsg())
          << node.GetHorLayingMode() << node.GetVerLayingMode() << node.GetLineStyle() << node.GetLineString()
          << QString::asprintf("%g", EffectiveSysLineWidth(node.GetLineWidth(), true))
          << QString::asprintf("%d", node.GetAlpha()) << node.GetDescribe();
    return texts;
}
} // namespace

void InsertBareColumns(CTreeListCtrl& grid)
{
    for (const SysCodeColumnInfo& c : SysCodeColumnSet(true))
        grid.InsertColumn(c.logical, c.title, c.format, c.width);
}

void FillBareGrid(CTreeListCtrl& grid, const CSysCodeData& node, HTREEITEM parent)
{
    for (const CSysCodeData* child : node.GetChildren()) {
        const QStringList texts = CellTexts(*child);
        HTREEITEM row = grid.InsertItem(texts.at(0), parent);
        for (int c = 0; c < kSysCodeColumnCount; ++c) {
            if (c > 0)
                grid.SetItemText(row, texts.at(c), c);
            grid.SetItemBackColor(row, c == kColColor ? child->GetMfcColor() : kSysCodeGridBkColor, c);
        }
        grid.SetItemColor(row, child->GetMfcColor(), kColColor);
        FillBareGrid(grid, *child, row);
    }
}
