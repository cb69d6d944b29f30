// Undo and redo in the dialog: Ctrl+Z takes back the last change to the grid since
// the dialog opened or last saved, Ctrl+Y (or Ctrl+Shift+Z) makes it again. Back
// at the state that was opened or saved, the dialog is no longer modified.
#include "SysCodeDlg.h"

#include <QLineEdit>
#include <QShortcut>

void SysCodeDlg::ConnectUndoKeys()
{
    // Text fields (a cell's editor, the find field, the scale) keep their own undo:
    // they take these keys before the dialog's shortcuts see them.
    const auto bind = [this](QKeySequence keys, bool undo) {
        auto* shortcut = new QShortcut(keys, this);
        connect(shortcut, &QShortcut::activated, this, [this, undo] { ReplayUndo(undo); });
    };
    bind(QKeySequence(Qt::CTRL | Qt::Key_Z), true);
    bind(QKeySequence(Qt::CTRL | Qt::Key_Y), false);
    bind(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), false);
}

bool SysCodeDlg::ReplayUndo(bool undo)
{
    if (m_nUndoDepth > 0 || m_bDragging || !(undo ? m_tree.CanUndo() : m_tree.CanRedo()))
        return false;
    HTREEITEM shown = undo ? m_tree.Undo() : m_tree.Redo();
    m_bEditEnded = false;
    if (m_pCurRow && m_tree.GetItemLevel(m_pCurRow) <= 0)
        m_pCurRow = nullptr;
    // Rows that came back are matched against the find text like every other row.
    m_findBar->Reapply();
    // The row the change touched is opened to and made current, unless the find
    // text hides it.
    if (shown && m_tree.EnsureVisible(shown) && m_tree.GetRowFromItem(shown) >= 0)
        m_tree.SelectItem(shown);
    return true;
}
