// The grid's undo and redo: recording changes into the history while a group is
// open, and replaying them.
#include "CTreeListCtrl.h"

#include "CTreeListChanges.h"
#include "CTreeListEditorBase.h"
#include "CTreeListHistory.h"

namespace {
// Past this many rows a whole repaint is cheaper than one notice per row.
constexpr std::size_t kRowsRepaintedOneByOne = 64;
} // namespace

void CTreeListCtrl::BeginUndoGroup()
{
    m_history->BeginGroup();
}

void CTreeListCtrl::EndUndoGroup()
{
    m_history->EndGroup();
}

bool CTreeListCtrl::IsUndoRecording() const
{
    return m_history->IsRecording();
}

void CTreeListCtrl::RecordUndo(std::function<void()> undo, std::function<void()> redo)
{
    if (m_history->IsRecording())
        m_history->Record(std::make_unique<CTreeListOwnerChange>(std::move(undo), std::move(redo)));
}

bool CTreeListCtrl::CanUndo() const
{
    return m_history->CanUndo();
}

bool CTreeListCtrl::CanRedo() const
{
    return m_history->CanRedo();
}

HTREEITEM CTreeListCtrl::Undo()
{
    return replay(true);
}

HTREEITEM CTreeListCtrl::Redo()
{
    return replay(false);
}

void CTreeListCtrl::ClearUndo()
{
    m_history->Clear(true);
}

bool CTreeListCtrl::IsUndoClean() const
{
    return m_history->IsClean();
}

// A command that only wrote cells repaints the rows it wrote. One that put, took or
// moved rows is replayed with painting held; the rows are laid out and painted once.
HTREEITEM CTreeListCtrl::replay(bool undo)
{
    if (!(undo ? m_history->CanUndo() : m_history->CanRedo()))
        return nullptr;
    if (m_active)
        m_active->EndEdit(false, TLEND_CANCEL);
    if (!m_history->NextChangesRows(undo)) {
        // Only cells: the rows they are on are repainted, a few or all at once.
        HTREEITEM shown = undo ? m_history->Undo() : m_history->Redo();
        const std::vector<HTREEITEM>& rows = m_history->ReplayedRows();
        if (rows.size() > kRowsRepaintedOneByOne) {
            viewport()->update();
        } else {
            for (HTREEITEM row : rows)
                m_model->cellChanged(row, -1);
        }
        return shown;
    }
    SetRedraw(false);
    HTREEITEM shown = nullptr;
    {
        const HeldAutoScroll held(*this);
        shown = undo ? m_history->Undo() : m_history->Redo();
    }
    const CTreeListItemTree& tree = m_model->tree();
    if (m_dropTarget && !tree.isItem(m_dropTarget))
        m_dropTarget = nullptr;
    if (m_pressItem && !tree.isItem(m_pressItem))
        m_pressItem = nullptr;
    // Rows put back come with their open state, which the view learns row by row.
    if (m_history->ReplayedAllRows()) {
        syncExpandedSubtree(GetRootItem());
    } else {
        for (HTREEITEM row : m_history->ReplayedRows()) {
            syncExpandedSubtree(row);
            syncExpanded(row->parent());
        }
    }
    SetRedraw(true);
    executeDelayedItemsLayout();
    return shown;
}

void CTreeListCtrl::recordInserted(HTREEITEM item)
{
    if (!m_history->IsRecording())
        return;
    if (!m_history->IsBorn(item->parent()))
        m_history->Record(std::make_unique<CTreeListPlaceChange>(
            m_model->tree(), CTreeListPlaceChange::Inserted, item, item->parent(), item->indexInParent()));
    m_history->MarkBorn(item);
}

// The cell as it is before a change that is to be recorded; nothing otherwise.
std::optional<CTreeListCell> CTreeListCtrl::cellBeforeChange(HTREEITEM item, int column) const
{
    if (!m_history->IsRecording() || m_history->IsBorn(item))
        return std::nullopt;
    return item->cell(column);
}

void CTreeListCtrl::recordCellChange(HTREEITEM item, int column, std::optional<CTreeListCell> before)
{
    if (!before && !m_history->IsRecording() && !m_history->IsReplaying())
        m_history->LoseCleanPoint();
    if (before && !(item->cell(column) == *before))
        m_history->Record(
            std::make_unique<CTreeListCellChange>(item, column, std::move(*before), item->cell(column)));
}

void CTreeListCtrl::forgetHistoryOutsideGroup()
{
    if (!m_history->IsRecording() && !m_history->IsReplaying())
        m_history->Clear(false);
}
