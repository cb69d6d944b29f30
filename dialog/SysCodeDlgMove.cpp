// Moving rows: a row dragged onto another becomes that row's next sibling with all
// its codes below it; Ctrl at the drop copies it instead. The limits are those of a
// paste: three levels, and no two codes of one name at a level.
#include "SysCodeDlg.h"

#include "CQVCheckSysNameLegal.h"
#include "ModuleStrings.h"
#include "SysCodeUndoGroup.h"
#include "WinMessageBox.h"

#include <QLabel>

namespace {
HTREEITEM LastRow(const CTreeListCtrl& tree)
{
    const int count = tree.GetItemCount();
    return count > 0 ? tree.GetItemFromRow(count - 1) : nullptr;
}
} // namespace

void SysCodeDlg::OnGridBeginDrag(const NMITEMACTIVATE& info)
{
    m_bDragging = true;
    m_hDropTarget = nullptr;
    const QPixmap image = m_tree.CreateDragImage(info.hItem);
    if (image.isNull())
        return;
    m_dragImage = std::make_unique<QLabel>();
    m_dragImage->setWindowFlags(
        Qt::ToolTip | Qt::FramelessWindowHint | Qt::WindowTransparentForInput | Qt::WindowDoesNotAcceptFocus);
    m_dragImage->setAttribute(Qt::WA_ShowWithoutActivating);
    m_dragImage->setPixmap(image);
    m_dragImage->setWindowOpacity(0.7);
    m_dragImage->move(QPoint(info.ptScreenX, info.ptScreenY) + QPoint(8, 8));
    m_dragImage->show();
}

bool SysCodeDlg::IsOverGrid(const QPoint& screenPos) const
{
    const QWidget* viewport = m_tree.viewport();
    return viewport->rect().contains(viewport->mapFromGlobal(screenPos));
}

// The drop highlight follows the row under the pointer; beside the grid there is none.
void SysCodeDlg::OnDragMove(const QPoint& screenPos)
{
    if (!m_bDragging)
        return;
    if (m_dragImage)
        m_dragImage->move(screenPos + QPoint(8, 8));
    if (!IsOverGrid(screenPos)) {
        if (m_tree.GetDropHilightItem())
            m_tree.SelectDropTarget(nullptr);
        m_hDropTarget = nullptr;
        return;
    }
    HTREEITEM row = m_tree.HitTest(m_tree.viewport()->mapFromGlobal(screenPos));
    if (!row)
        return;
    m_hDropTarget = row;
    if (row != m_tree.GetDropHilightItem())
        m_tree.SelectDropTarget(row);
}

void SysCodeDlg::OnDrop(const QPoint& screenPos, Qt::KeyboardModifiers modifiers)
{
    if (!m_bDragging)
        return;
    m_dragImage.reset();
    // Released beside the grid: the drag ends and nothing changes.
    if (!IsOverGrid(screenPos)) {
        m_tree.SelectDropTarget(nullptr);
        EndDrag();
        return;
    }
    OnDragMove(screenPos);
    const SysCodeUndoGroup undoGroup(*this);
    HTREEITEM target = m_tree.GetDropHilightItem();
    m_tree.SelectDropTarget(nullptr);
    if (!target) {
        EndDrag();
        return;
    }
    if (m_tree.GetSelectedCount() >= 2) {
        AfxMessageBox(QStringLiteral("一次不能移动超过一行系统编号") + g_strExclaim);
        EndDrag();
        return;
    }
    HTREEITEM source = m_tree.GetCaretItem();
    const bool copy = modifiers & Qt::ControlModifier;
    if (source == target) {
        // Only the last row can be copied onto itself: there is no other row to drop on.
        if (copy && source == LastRow(m_tree))
            CopySubtreeAfter(source, source);
    } else if (source) {
        DropRow(source, target, copy);
    }
    EndDrag();
}

void SysCodeDlg::DropRow(HTREEITEM source, HTREEITEM target, bool bCopy)
{
    if (!CQVCheckSysNameLegal::CheckSysCodeLevel(GetSubtreeDepth(source) + m_tree.GetItemLevel(target) - 1))
        return;
    HTREEITEM parent = m_tree.GetParentItem(target);
    if (bCopy) {
        CopySubtreeAfter(source, target);
        return;
    }
    const QString name = m_tree.GetItemText(source, 0);
    for (HTREEITEM c = m_tree.GetChildItem(parent); c; c = m_tree.GetNextSiblingItem(c)) {
        if (c != source && m_tree.GetItemText(c, 0).toLower() == name.toLower()) {
            const QString parentPath = GetRowFullName(parent);
            const QString fullName = parentPath.isEmpty() ? name : parentPath + QLatin1Char('\\') + name;
            MessageBoxExW(GetActiveWindow(),
                QStringLiteral(" %1系统编号在该级中已存在").arg(fullName) + g_strExclaim, g_strCaption,
                kMbWarning);
            return;
        }
    }
    if (m_tree.MoveItem(source, parent, target))
        m_tree.SelectItem(source);
}

// A copy of `source` with every row below it as `target`'s next sibling, under a
// name no sibling has. The copies are new codes: no stored index, their own
// pipeline information.
HTREEITEM SysCodeDlg::CopySubtreeAfter(HTREEITEM source, HTREEITEM target)
{
    HTREEITEM parent = m_tree.GetParentItem(target);
    const QString name = MakeUniqueChildName(m_tree.GetItemText(source, 0), parent);
    HTREEITEM copy = nullptr;
    if (source == target) {
        // A row copied after itself: copied in front, then moved behind it.
        HTREEITEM previous = m_tree.GetPrevSiblingItem(source);
        copy = m_tree.CopyItem(source, parent, previous ? previous : TVI_FIRST);
        if (copy && !m_tree.MoveItem(copy, parent, source))
            return nullptr;
    } else {
        copy = m_tree.CopyItem(source, parent, target);
    }
    if (!copy)
        return nullptr;
    m_tree.SetItemText(copy, name, 0);
    const auto mark = [this](auto&& self, HTREEITEM from, HTREEITEM to) -> void {
        m_tree.SetItemData(to, 0);
        for (HTREEITEM f = m_tree.GetChildItem(from), t = m_tree.GetChildItem(to); f && t;
             f = m_tree.GetNextSiblingItem(f), t = m_tree.GetNextSiblingItem(t))
            self(self, f, t);
    };
    mark(mark, source, copy);
    m_tree.SelectItem(copy);
    return copy;
}

void SysCodeDlg::EndDrag()
{
    m_dragImage.reset();
    m_bDragging = false;
    m_hDropTarget = nullptr;
}
