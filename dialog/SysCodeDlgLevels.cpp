// "+" and "-": the whole tree opened or closed one level at a time; and the grid
// reloaded after a save.
#include "SysCodeDlg.h"

#include "IFaceBarCtrl.h"
#include "Resource.h"
#include "WinMessage.h"

#include <QApplication>

#include <algorithm>

// The deepest level among the rows shown; 0 for an empty grid.
int SysCodeDlg::GetVisibleDepth() const
{
    int depth = 0;
    const int rows = m_tree.GetItemCount();
    for (int r = 0; r < rows; ++r)
        depth = std::max(depth, m_tree.GetItemLevel(m_tree.GetItemFromRow(r)));
    return depth;
}

// Rows above `level` open, rows at or below it closed; the root stays open.
void SysCodeDlg::SetTreeLevel(HTREEITEM item, int level)
{
    for (HTREEITEM c = m_tree.GetChildItem(item); c; c = m_tree.GetNextSiblingItem(c)) {
        const bool open = m_tree.GetItemLevel(c) < level;
        if (m_tree.ItemHasChildren(c) && m_tree.IsItemExpanded(c) != open)
            m_tree.Expand(c, open ? TVE_EXPAND : TVE_COLLAPSE);
        SetTreeLevel(c, level);
    }
}

void SysCodeDlg::SetTreeLevel(int level)
{
    SetTreeLevel(m_tree.GetRootItem(), level);
}

void SysCodeDlg::OnExpandLevel()
{
    setUpdatesEnabled(false);
    m_tree.SetRedraw(false);
    SetTreeLevel(GetVisibleDepth() + 1);
    m_tree.SetRedraw(true);
    setUpdatesEnabled(true);
    update();
}

void SysCodeDlg::OnCollapseLevel()
{
    setUpdatesEnabled(false);
    m_tree.SetRedraw(false);
    HTREEITEM focused = m_tree.GetCaretItem();
    const int focusedLevel = focused ? m_tree.GetItemLevel(focused) : 0;
    const int depth = GetVisibleDepth();
    SetTreeLevel(depth - 1);
    if (focused && focusedLevel == depth) {
        HTREEITEM parent = m_tree.GetParentItem(focused);
        if (parent && parent != m_tree.GetRootItem())
            m_tree.SelectItem(parent);
    }
    m_tree.SetRedraw(true);
    setUpdatesEnabled(true);
    update();
}

void SysCodeDlg::RefreshAfterSave(const QString& spec)
{
    // Rows the store cannot give back stay as they were shown.
    RefreshAfterSave([&] { FillSysCodeTree(spec); });
}

void SysCodeDlg::RefreshAfterSave(const std::function<void()>& refill)
{
    QApplication::setOverrideCursor(Qt::WaitCursor);
    // The focused code stays focused through the reload: closing with OK reports it.
    HTREEITEM focused = m_tree.GetCaretItem();
    const QString focusedName = focused ? GetRowFullName(focused) : QString();
    refill();
    if (HTREEITEM row = FindRowByFullName(focusedName))
        m_tree.SelectItem(row);
    QApplication::restoreOverrideCursor();
    IFaceBarCtrl::ReFreshSysCodeBar();
    if (HWND window = FindWindow(nullptr, QStringLiteral("显示控制")))
        SendMessage(window, WM_SYSCODE_RELOAD, 0, 0);
}
