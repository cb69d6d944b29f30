#include "CTreeListEdit.h"

#include <QKeyEvent>

namespace {
bool isCodeCharacter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9');
}
} // namespace

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
    bool ok = trimmed.size() <= 3;
    for (QChar c : trimmed)
        ok = ok && isCodeCharacter(c);
    if (!ok) {
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
    const bool passed = mode != TLEND_COMMIT || !m_codeCheck || CheckCode() == 1;
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
