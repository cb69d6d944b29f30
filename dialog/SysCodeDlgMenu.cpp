// The grid's right-click menus and the clearing of pipeline information (203). The
// menu entries' commands come back through OnCommand, as the menu's WM_COMMAND would.
#include "SysCodeDlg.h"

#include "Resource.h"
#include "SysCodeColumns.h"
#include "SysCodeUndoGroup.h"

#include <QAction>
#include <QMenu>

namespace {
QAction* addEntry(QMenu& menu, int commandId, const QString& text)
{
    QAction* action = menu.addAction(text);
    action->setData(commandId);
    action->setObjectName(QString::number(commandId));
    return action;
}
} // namespace

void SysCodeDlg::OnGridRightClick(const NMITEMACTIVATE& info)
{
    m_pCurRow = nullptr;
    const QPoint cursor(info.ptScreenX, info.ptScreenY);
    if (info.iItem == -1 || !info.hItem) {
        QMenu menu(this);
        addEntry(menu, ID_MENU_INSERT, QStringLiteral("增加新节点"));
        RunMenu(menu, cursor);
        return;
    }
    m_pCurRow = info.hItem;
    ShowNodeMenu(cursor);
}

void SysCodeDlg::ShowNodeMenu(const QPoint& cursor)
{
    QMenu menu(this);
    QAction* sibling = addEntry(menu, ID_MENU_ADD_SIBLING, QStringLiteral("增加平级节点"));
    QAction* child = addEntry(menu, ID_MENU_ADD_CHILD, QStringLiteral("增加子级节点"));
    addEntry(menu, ID_MENU_DELETE, QStringLiteral("删除当前节点"));
    QAction* copy = addEntry(menu, ID_MENU_COPY, QStringLiteral("复制当前节点"));
    QAction* paste = addEntry(menu, ID_MENU_PASTE, QStringLiteral("粘贴当前节点"));
    // Delete works on every selected row; the others need exactly one.
    if (m_tree.GetSelectedCount() > 1) {
        for (QAction* single : { sibling, child, copy, paste })
            single->setEnabled(false);
    }
    if (m_clipboard.GetChildCount() == 0 || m_nLevelBase <= 0)
        paste->setEnabled(false);
    RunMenu(menu, cursor);
}

void SysCodeDlg::RunMenu(QMenu& menu, const QPoint& cursor)
{
    QAction* chosen = menu.exec(cursor);
    if (chosen && chosen->isEnabled())
        OnCommand(chosen->data().toInt());
}

// From the last row up, so the visit order never depends on what a change shows.
void SysCodeDlg::OnClearPipeInfo()
{
    const int column = SysCodeVisibleColumn(kColPipeInfo, IsElectrical());
    if (column < 0)
        return;
    const SysCodeUndoGroup undoGroup(*this);
    for (int r = m_tree.GetItemCount() - 1; r >= 0; --r) {
        HTREEITEM row = m_tree.GetItemFromRow(r);
        if (!row || !(m_tree.GetItemState(row, LVIS_SELECTED) & LVIS_SELECTED)
            || m_tree.GetItemText(row, column).isEmpty())
            continue;
        m_tree.SetItemValue(row, QString(), column);
        m_tree.RedrawItems(row, row);
    }
}
