#include "CTreeListChanges.h"

#include "CTreeListModel.h"

// Cells are written without a notice per cell: the grid repaints once when the
// whole operation has been undone or redone.
CTreeListCellChange::CTreeListCellChange(
    HTREEITEM item, int column, CTreeListCell before, CTreeListCell after)
    : m_item(item)
    , m_column(column)
    , m_before(std::move(before))
    , m_after(std::move(after))
{ }

void CTreeListCellChange::Undo(CTreeListModel& model)
{
    model.tree().setCell(m_item, m_column, m_before);
}

void CTreeListCellChange::Redo(CTreeListModel& model)
{
    model.tree().setCell(m_item, m_column, m_after);
}

CTreeListDataChange::CTreeListDataChange(HTREEITEM item, quintptr before, quintptr after)
    : m_item(item)
    , m_before(before)
    , m_after(after)
{ }

void CTreeListDataChange::Undo(CTreeListModel& model)
{
    model.tree().setData(m_item, m_before);
}

void CTreeListDataChange::Redo(CTreeListModel& model)
{
    model.tree().setData(m_item, m_after);
}

CTreeListPlaceChange::CTreeListPlaceChange(
    CTreeListItemTree& tree, Kind kind, HTREEITEM item, HTREEITEM parent, int position)
    : m_tree(tree)
    , m_kind(kind)
    , m_item(item)
    , m_parent(parent)
    , m_position(position)
    , m_held(kind == Removed)
{ }

CTreeListPlaceChange::~CTreeListPlaceChange()
{
    if (m_held)
        m_tree.destroyDetached(m_item);
}

void CTreeListPlaceChange::Undo(CTreeListModel& model)
{
    if (m_kind == Inserted)
        TakeOut(model);
    else
        PutBack(model);
}

void CTreeListPlaceChange::Redo(CTreeListModel& model)
{
    if (m_kind == Inserted)
        PutBack(model);
    else
        TakeOut(model);
}

void CTreeListPlaceChange::PutBack(CTreeListModel& model)
{
    model.attachItem(m_item, m_parent, m_position);
    m_held = false;
}

void CTreeListPlaceChange::TakeOut(CTreeListModel& model)
{
    model.detachItem(m_item);
    m_held = true;
}

CTreeListRemoveAllChange::CTreeListRemoveAllChange(CTreeListItemTree& tree, std::vector<HTREEITEM> items)
    : m_tree(tree)
    , m_items(std::move(items))
{ }

CTreeListRemoveAllChange::~CTreeListRemoveAllChange()
{
    if (!m_held)
        return;
    for (HTREEITEM item : m_items)
        m_tree.destroyDetached(item);
}

void CTreeListRemoveAllChange::Undo(CTreeListModel& model)
{
    model.attachAllItems(m_items);
    m_held = false;
}

void CTreeListRemoveAllChange::Redo(CTreeListModel& model)
{
    m_items = model.detachAllItems();
    m_held = true;
}

CTreeListMoveChange::CTreeListMoveChange(HTREEITEM item, Place from, Place to)
    : m_item(item)
    , m_from(from)
    , m_to(to)
{ }

void CTreeListMoveChange::Undo(CTreeListModel& model)
{
    model.moveItemTo(m_item, m_from.parent, m_from.position);
}

void CTreeListMoveChange::Redo(CTreeListModel& model)
{
    model.moveItemTo(m_item, m_to.parent, m_to.position);
}

CTreeListOwnerChange::CTreeListOwnerChange(std::function<void()> undo, std::function<void()> redo)
    : m_undo(std::move(undo))
    , m_redo(std::move(redo))
{ }

void CTreeListOwnerChange::Undo(CTreeListModel&)
{
    m_undo();
}

void CTreeListOwnerChange::Redo(CTreeListModel&)
{
    m_redo();
}
