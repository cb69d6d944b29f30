#include "CTreeListEdit.h"

#include <QKeyEvent>

CTreeListEdit::CTreeListEdit(CTreeListCtrl* grid, QWidget* parent)
    : QLineEdit(parent)
    , CTreeListEditorBase(grid)
{
    setFrame(true);
    hide();
}

int CTreeListEdit::CheckCode()
{
    const QString trimmed = text().trimmed();
    if (m_check && !m_check(trimmed)) {
        setText(GetStartText());
        return 0;
    }
    setText(trimmed);
    SetStartText(trimmed);
    return 1;
}

bool CTreeListEdit::EndEdit(bool onRow, int mode)
{
    if (!IsEditing())
        return false;
    if (mode == TLEND_CANCEL)
        setText(GetStartText());
    // A refused code has its start text back; the edit still ends with its one
    // notice, and the owner decides from the notice's fields what the cell keeps.
    const bool passed = mode != TLEND_COMMIT || !m_check || CheckCode() == 1;
    return Finish(onRow, 0) && passed;
}

void CTreeListEdit::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        EndEdit(true, TLEND_COMMIT);
        return;
    }
    if (event->key() == Qt::Key_Escape) {
        EndEdit(true, TLEND_CANCEL);
        return;
    }
    QLineEdit::keyPressEvent(event);
}
