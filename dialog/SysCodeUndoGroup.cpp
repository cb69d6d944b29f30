#include "SysCodeUndoGroup.h"

#include "SysCodeDlg.h"

SysCodeUndoGroup::SysCodeUndoGroup(SysCodeDlg& dialog)
    : m_dialog(dialog)
    , m_outermost(dialog.m_nUndoDepth++ == 0)
{
    dialog.m_tree.BeginUndoGroup();
    if (m_outermost)
        m_renamesBefore = dialog.m_renames;
}

// The renames are a short list: the step keeps it as it was and as it became.
SysCodeUndoGroup::~SysCodeUndoGroup()
{
    --m_dialog.m_nUndoDepth;
    if (m_outermost && m_dialog.m_renames != m_renamesBefore) {
        SysCodeDlg* dialog = &m_dialog;
        m_dialog.m_tree.RecordUndo([dialog, before = m_renamesBefore] { dialog->m_renames = before; },
            [dialog, after = m_dialog.m_renames] { dialog->m_renames = after; });
    }
    m_dialog.m_tree.EndUndoGroup();
}
