#include "CTreeListEditorBase.h"

#include "CTreeListCtrl.h"
#include "CtrlId.h"

#include <QWidget>

int CTreeListEditorBase::GetDlgCtrlID()
{
    return ::GetDlgCtrlID(widget());
}

void CTreeListEditorBase::SetDlgCtrlID(int id)
{
    ::SetDlgCtrlID(widget(), id);
}

void CTreeListEditorBase::BeginEdit(
    HTREEITEM item, int column, const QString& text, const QStringList&, const QRect& rect)
{
    m_item = item;
    m_column = column;
    m_startText = text;
    m_finished = false;
    m_editing = true;
    SetWindowText(text);
    widget()->setGeometry(rect);
    widget()->show();
    widget()->raise();
    widget()->setFocus(Qt::OtherFocusReason);
}

bool CTreeListEditorBase::Finish(bool onRow, UINT state)
{
    if (!m_editing)
        return false;
    m_editing = false;
    m_finished = true;
    m_grid->OnEditorEnded(this, onRow, state);
    return true;
}
