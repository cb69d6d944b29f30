// The pipeline-information cell: its button opens the pipeline-information picker.
#include "SysCodeDlg.h"

#include "CChangeNameDlg.h"
#include "CTreeListEditBtn.h"
#include "PipeInfoPath.h"
#include "Resource.h"
#include "SysCodeColumns.h"
#include "SysCodeUndoGroup.h"

#include <QLineEdit>
#include <QToolButton>

void SysCodeDlg::ConnectPipeInfoCell()
{
    connect(&m_tree, &CTreeListCtrl::editorButtonClicked, this, [this](int buttonId) {
        if (buttonId != IDC_BTN_PIPEINFO_CELL)
            return;
        CTreeListEditorBase* editor = m_tree.GetActiveEditor();
        OnPipeInfoCellButton(editor ? editor->GetItem() : m_tree.GetCaretItem());
    });
}

void SysCodeDlg::OnPipeInfoCellButton(HTREEITEM row)
{
    if (!row)
        return;
    const auto found = m_mapRowInfo.find(row);
    QString path = found == m_mapRowInfo.end() ? QString() : found->second;
    CTreeListEditBtn* cell = m_tree.GetEditBtnCtrl();
    // The button stays blocked while the picker runs, so a second press cannot
    // open another picker over it.
    if (cell)
        cell->GetButton()->setEnabled(false);
    if (RunChangeNameDlg(path, PipeInfoPickerMode(m_strSpec)) == 1) {
        const SysCodeUndoGroup undoGroup(*this);
        SetRowInfo(row, path);
        const QString shown = PipeInfoDisplayName(path);
        const int column = SysCodeVisibleColumn(kColPipeInfo, IsElectrical());
        if (column >= 0)
            m_tree.SetItemText(row, shown, column);
        if (cell && m_tree.GetActiveEditor() == cell && cell->GetItem() == row)
            cell->SetWindowText(shown);
        m_bModified = true;
    }
    if (cell) {
        cell->GetButton()->setEnabled(true);
        if (cell->isVisible())
            cell->GetButton()->setFocus();
    }
}
