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
    if (mode == TLEND_COMMIT) {
        if (m_codeCheck && CheckCode() == 0)
            return false;
        if (m_validator && !m_validator(text()))
            return false;
    }
    return Finish(onRow, 0);
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
