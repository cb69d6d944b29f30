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
    QString path = GetRowInfo(row);
    CTreeListEditBtn* cell = m_tree.GetEditBtnCtrl();
    // The button stays blocked while the picker runs, so a second press cannot
    // open another picker over it.
    if (cell)
        cell->GetButton()->setEnabled(false);
    if (RunChangeNameDlg(path, PipeInfoPickerMode(m_strSpec)) == 1) {
        const SysCodeUndoGroup undoGroup(*this);
        const int column = SysCodeVisibleColumn(kColPipeInfo, IsElectrical());
        if (column >= 0)
            m_tree.SetItemValue(row, path, column);
        const QString shown = PipeInfoDisplayName(path);
        if (cell && m_tree.GetActiveEditor() == cell && cell->GetItem() == row)
            cell->SetWindowText(shown);
    }
    if (cell) {
        cell->GetButton()->setEnabled(true);
        if (cell->isVisible())
            cell->GetButton()->setFocus();
    }
}
