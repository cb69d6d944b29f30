// "批量修改": the values of the batch dialog written into every selected row.
#include "SysCodeDlg.h"

#include "BatchModifyPlan.h"
#include "CBatchModifyDlg.h"
#include "SysCodeColumns.h"
#include "SysCodeUndoGroup.h"
#include "WinMessageBox.h"

namespace {
int FieldColumn(BatchField field)
{
    switch (field) {
    case kBatchColor:
        return kColColor;
    case kBatchPipeInfo:
        return kColPipeInfo;
    case kBatchHorMode:
        return kColHorLaying;
    case kBatchVerMode:
        return kColVerLaying;
    case kBatchRemark:
        return kColRemark;
    case kBatchFieldCount:
        break;
    }
    return -1;
}
} // namespace

QString SysCodeDlg::GetCellText(HTREEITEM row, int logicalColumn) const
{
    const int column = SysCodeVisibleColumn(logicalColumn, IsElectrical());
    return column < 0 ? QString() : m_tree.GetItemText(row, column);
}

void SysCodeDlg::OnBatchModify()
{
    CBatchModifyDlg dialog(this);
    HTREEITEM first = m_tree.GetSelectedItem();
    if (!first) {
        AfxMessageBox(QStringLiteral("请选择至少一项系统编号进行批量修改"));
        return;
    }
    const bool withPipeColumns = IsElectrical();
    dialog.SetHorModes(m_tree.GetEditOptions(first, SysCodeVisibleColumn(kColHorLaying, withPipeColumns)));
    dialog.SetVerModes(m_tree.GetEditOptions(first, SysCodeVisibleColumn(kColVerLaying, withPipeColumns)));
    dialog.m_strSpec = m_strSpec;
    dialog.m_color = m_tree.GetItemColor(first, SysCodeVisibleColumn(kColColor, withPipeColumns));
    dialog.m_strPipeInfo = GetRowInfo(first);
    dialog.m_strHorMode = GetCellText(first, kColHorLaying);
    dialog.m_strVerMode = GetCellText(first, kColVerLaying);
    dialog.m_strRemark = GetCellText(first, kColRemark);
    const int result = dialog.DoModal();
    if (result == -1)
        AfxMessageBox(QStringLiteral("Dialog box could not be created!"));
    if (result != IDOK)
        return;
    ApplyBatchModify(dialog.GetValues());
}

// Rows under a collapsed parent are not rows of the grid now and keep their values.
void SysCodeDlg::ApplyBatchModify(const BatchModifyValues& values)
{
    const SysCodeUndoGroup undoGroup(*this);
    const bool withPipeColumns = IsElectrical();
    QList<bool> selected;
    const int rowCount = m_tree.GetItemCount();
    for (int row = 0; row < rowCount; ++row)
        selected.append(
            (m_tree.GetItemState(m_tree.GetItemFromRow(row), LVIS_SELECTED) & LVIS_SELECTED) != 0);
    const BatchRowChange change = BatchRowChangeFor(values);
    const int colorColumn = SysCodeVisibleColumn(kColColor, withPipeColumns);
    const int pipeColumn = SysCodeVisibleColumn(kColPipeInfo, withPipeColumns);
    for (int rowIndex : BatchTargetRows(selected)) {
        HTREEITEM row = m_tree.GetItemFromRow(rowIndex);
        // Every target row takes the first row's path; its cell shows the path's
        // last part only when the pipeline information was ticked.
        if (pipeColumn >= 0 && values.apply[kBatchPipeInfo])
            m_tree.SetItemValue(row, change.strRowInfo, pipeColumn);
        else if (pipeColumn >= 0)
            m_tree.SetItemValueKeepText(row, change.strRowInfo, pipeColumn);
        if (change.bSetColor && colorColumn >= 0) {
            m_tree.SetItemColor(row, change.color, colorColumn);
            m_tree.SetItemBackColor(row, change.color, colorColumn);
        }
        for (const BatchCellText& cell : change.texts) {
            if (cell.field == kBatchPipeInfo)
                continue;
            const int column = SysCodeVisibleColumn(FieldColumn(cell.field), withPipeColumns);
            if (column >= 0)
                m_tree.SetItemText(row, cell.text, column);
        }
        m_tree.RedrawItems(row, row);
    }
}
