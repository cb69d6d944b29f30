#pragma once

// The steps the grid records while a change is being recorded: cells and item data
// written, items inserted, removed and moved, and the owner's own steps. Removed
// items are kept alive as they were, so an undone removal puts back the very items
// (the same handles) that went; a step that holds such items destroys them with it.
#include "CTreeListChange.h"
#include "CTreeListItem.h"

#include <functional>
#include <vector>

class CTreeListItemTree;

class CTreeListCellChange : public CTreeListChange
{
public:
    CTreeListCellChange(HTREEITEM item, int column, CTreeListCell before, CTreeListCell after);
    void Undo(CTreeListModel& model) override;
    void Redo(CTreeListModel& model) override;
    HTREEITEM Item() const override { return m_item; }

private:
    HTREEITEM m_item;
    int m_column;
    CTreeListCell m_before;
    CTreeListCell m_after;
};

class CTreeListDataChange : public CTreeListChange
{
public:
    CTreeListDataChange(HTREEITEM item, quintptr before, quintptr after);
    void Undo(CTreeListModel& model) override;
    void Redo(CTreeListModel& model) override;
    HTREEITEM Item() const override { return m_item; }

private:
    HTREEITEM m_item;
    quintptr m_before;
    quintptr m_after;
};

// An item put into the tree (inserted or copied, with its subtree) or taken out of
// it. While the item is out of the tree the step holds it.
class CTreeListPlaceChange : public CTreeListChange
{
public:
    enum Kind { Inserted, Removed };
    CTreeListPlaceChange(CTreeListItemTree& tree, Kind kind, HTREEITEM item, HTREEITEM parent, int position);
    ~CTreeListPlaceChange() override;
    void Undo(CTreeListModel& model) override;
    void Redo(CTreeListModel& model) override;
    // Out of the tree, the row that held it is shown.
    HTREEITEM Item() const override { return m_held ? m_parent : m_item; }
    bool ChangesRows() const override { return true; }

private:
    void PutBack(CTreeListModel& model);
    void TakeOut(CTreeListModel& model);

    CTreeListItemTree& m_tree;
    Kind m_kind;
    HTREEITEM m_item;
    HTREEITEM m_parent;
    int m_position;
    bool m_held;
};

// Every item of the tree taken out at once (the grid emptied before a refill).
class CTreeListRemoveAllChange : public CTreeListChange
{
public:
    CTreeListRemoveAllChange(CTreeListItemTree& tree, std::vector<HTREEITEM> items);
    ~CTreeListRemoveAllChange() override;
    void Undo(CTreeListModel& model) override;
    void Redo(CTreeListModel& model) override;
    bool ChangesRows() const override { return true; }

private:
    CTreeListItemTree& m_tree;
    std::vector<HTREEITEM> m_items;
    bool m_held = true;
};

class CTreeListMoveChange : public CTreeListChange
{
public:
    struct Place
    {
        HTREEITEM parent;
        int position;
    };
    CTreeListMoveChange(HTREEITEM item, Place from, Place to);
    void Undo(CTreeListModel& model) override;
    void Redo(CTreeListModel& model) override;
    HTREEITEM Item() const override { return m_item; }

    bool ChangesRows() const override { return true; }

private:
    HTREEITEM m_item;
    Place m_from;
    Place m_to;
};

// A step of the grid's owner (data it keeps beside the rows), recorded in the same
// operation as the grid's own steps.
class CTreeListOwnerChange : public CTreeListChange
{
public:
    CTreeListOwnerChange(std::function<void()> undo, std::function<void()> redo);
    void Undo(CTreeListModel& model) override;
    void Redo(CTreeListModel& model) override;

private:
    std::function<void()> m_undo;
    std::function<void()> m_redo;
};
