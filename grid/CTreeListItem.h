#pragma once

// One item of the grid's tree: its place in the tree, its cells and its state. The
// dialogs only hold handles to it; the tree (CTreeListItemTree) owns and changes it.
#include "WinTypes.h"

#include <QString>
#include <QStringList>
#include <QVariant>

#include <cstdint>
#include <vector>

struct CTreeListCell
{
    // What the cell shows. In a column with a value format it is derived from
    // `value` (or given, and `value` read from it); elsewhere it is the value.
    QString text;
    // The cell's typed value (a number, a path…) in a column with a value format;
    // empty elsewhere, and when a given text did not read as one.
    QVariant value;
    COLORREF textColor = 0;
    COLORREF backColor = 0;
    bool hasTextColor = false;
    bool hasBackColor = false;
    // The cell's own editor and drop-down items; a cell without them (ownEditor
    // false) takes its column's.
    bool ownEditor = false;
    int editMode = 0;
    QStringList options;

    bool operator==(const CTreeListCell& other) const = default;
};

class CTreeListItem
{
public:
    CTreeListItem* parent() const { return m_parent; }
    const std::vector<CTreeListItem*>& children() const { return m_children; }
    int indexInParent() const { return m_indexInParent; }
    bool isExpanded() const { return m_expanded; }
    // Hidden by the grid's row filter: neither a row nor shown, with its subtree.
    bool isFilteredOut() const { return m_filteredOut; }
    UINT state() const { return m_state; }
    quintptr data() const { return m_data; }
    // The cell of a column; columns never written read as an empty cell.
    const CTreeListCell& cell(int column) const;
    int depth() const;

private:
    friend class CTreeListItemTree;

    CTreeListCell& cellForWrite(int column);

    CTreeListItem* m_parent = nullptr;
    std::vector<CTreeListItem*> m_children; // owned
    int m_indexInParent = 0;
    std::vector<CTreeListCell> m_cells;
    UINT m_state = 0;
    bool m_expanded = false;
    bool m_filteredOut = false;
    bool m_kept = false; // while a row filter given as items is applied
    quintptr m_data = 0;
    // Shown-row index: valid when m_rowStamp equals the tree's current stamp.
    int m_row = -1;
    std::uint64_t m_rowStamp = 0;
};
