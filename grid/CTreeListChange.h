#pragma once

// One step of a change to the grid, as the undo history keeps it: it can be taken
// back and made again. Steps of one user operation are undone in reverse order.
#include "TreeListTypes.h"

class CTreeListModel;

class CTreeListChange
{
public:
    virtual ~CTreeListChange() = default;
    virtual void Undo(CTreeListModel& model) = 0;
    virtual void Redo(CTreeListModel& model) = 0;
    // The row the user should be shown after the step is undone or redone; null
    // when the step concerns no row.
    virtual HTREEITEM Item() const { return nullptr; }
    // Whether the step puts, takes or moves rows (else it only writes cells or data).
    virtual bool ChangesRows() const { return false; }
};
