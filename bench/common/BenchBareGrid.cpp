#include "BenchBareGrid.h"

#include "CSysCodeData.h"
#include "CTreeListCtrl.h"
#include "SysCodeColumns.h"

void InsertBareColumns(CTreeListCtrl& grid)
{
    for (const SysCodeColumnInfo& c : SysCodeColumnSet(true))
        grid.InsertColumn(c.logical, c.title, c.format, c.width);
}

void FillBareGrid(CTreeListCtrl& grid, const CSysCodeData& node, HTREEITEM parent)
{
    for (const CSysCodeData* child : node.GetChildren()) {
        const QStringList texts = SysCodeCellTexts(*child, true);
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
