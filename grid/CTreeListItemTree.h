#pragma once

// The grid's data without any widget: a tree of items under a hidden root, the
// columns, and the index of shown rows.
//
// Rows are the items whose ancestors are all expanded, numbered in display order.
// The row order is kept as a vector rebuilt lazily: a change that can move rows
// (an insert, delete or move among shown items, an expand or collapse of a shown
// item) only marks it stale, and the next row look-up rebuilds it in one walk. So
// GetRowFromItem and GetItemFromRow cost O(1) between changes, and a change under a
// collapsed item costs nothing.
#include "CTreeListItem.h"
#include "TreeListTypes.h"

#include <QString>

#include <functional>
#include <memory>
#include <unordered_set>
#include <vector>

struct CTreeListColumn
{
    QString title;
    int format = LVCFMT_LEFT;
    int width = 100;
    // The editor and drop-down items of the column's cells that have none of their own.
    int editMode = 0;
    QStringList options;
    // A column whose cells hold typed values: the text a value shows, and the value
    // a text given to a cell stands for (invalid when it stands for none).
    std::function<QString(const QVariant&)> toText;
    std::function<QVariant(const QString&)> fromText;
};

// Orders two items for sorting: negative when the first goes before the second.
using TreeListCompare = std::function<int(HTREEITEM, HTREEITEM)>;

class CTreeListItemTree
{
public:
    CTreeListItemTree();
    ~CTreeListItemTree();
    CTreeListItemTree(const CTreeListItemTree&) = delete;
    CTreeListItemTree& operator=(const CTreeListItemTree&) = delete;

    HTREEITEM root() const { return m_root.get(); }
    // Whether the handle names a live item of this tree (the root included); the
    // constant TVI_ROOT counts as the root.
    bool isItem(HTREEITEM item) const;
    // TVI_ROOT and null become the root; anything else is returned as it is.
    HTREEITEM resolve(HTREEITEM item) const;
    bool isAncestorOrSelf(HTREEITEM ancestor, HTREEITEM item) const;

    // Where a new child of `parent` goes for an insert-after value (TVI_FIRST,
    // TVI_LAST, TVI_SORT with `text` as the new column-0 text, or a child handle);
    // -1 when the value names no child of `parent`.
    int insertPosition(HTREEITEM parent, HTREEITEM insertAfter, const QString& text) const;
    HTREEITEM insertAt(HTREEITEM parent, int position, const QString& text);
    // Deep copy of `source` (from this or another tree) as a child at `position`.
    // The copy's state bits are cleared; texts, colours, options, data and expanded
    // flags are copied.
    HTREEITEM copyAt(HTREEITEM source, HTREEITEM parent, int position);
    // Moves an item with its subtree; the caller has checked it is no ancestor of parent.
    void moveTo(HTREEITEM item, HTREEITEM parent, int position);
    // Deletes an item (never the root) and its subtree.
    void remove(HTREEITEM item);
    void removeAllItems();
    // Undo support: an item taken out with its subtree stays alive, no longer an
    // item of the tree, until it is put back or destroyed. Its state bits are
    // cleared, so it comes back unselected.
    void detachKeep(HTREEITEM item);
    void reattach(HTREEITEM item, HTREEITEM parent, int position);
    void destroyDetached(HTREEITEM item);
    // Every item of the subtree, children before their parent.
    void forEachPostOrder(HTREEITEM item, const std::function<void(HTREEITEM)>& visit) const;

    // Cells.
    void setText(HTREEITEM item, int column, const QString& text);
    // In a column without a value format the value is kept as the cell's text.
    // `keepText`: the cell goes on showing what it showed (a typed column only).
    void setValue(HTREEITEM item, int column, const QVariant& value, bool keepText = false);
    // A cell's typed value; its text where the column has no value format or the
    // text stands for no value.
    QVariant value(HTREEITEM item, int column) const;
    void setTextColor(HTREEITEM item, int column, COLORREF colour);
    void setBackColor(HTREEITEM item, int column, COLORREF colour);
    // A cell given an editor or items keeps its own from then on; the other half
    // comes from its column.
    void setEditMode(HTREEITEM item, int column, int mode);
    void setOptions(HTREEITEM item, int column, const QStringList& options);
    // The editor and items a cell opens: its own, or its column's.
    int editMode(HTREEITEM item, int column) const;
    const QStringList& options(HTREEITEM item, int column) const;
    int columnEditMode(int column) const;
    const QStringList& columnOptions(int column) const;
    void setCell(HTREEITEM item, int column, const CTreeListCell& cell);
    void setData(HTREEITEM item, quintptr data) { item->m_data = data; }
    void setState(HTREEITEM item, UINT state) { item->m_state = state; }
    // Returns whether the flag changed.
    bool setExpanded(HTREEITEM item, bool expanded);
    // Returns whether the flag changed.
    bool setFilteredOut(HTREEITEM item, bool filteredOut);
    // A row filter given as the items to keep: each is marked with its ancestors,
    // and every item's mark is read and cleared as the filter is applied.
    void markKept(HTREEITEM item);
    bool takeKept(HTREEITEM item);
    // Counts the changes to the items' texts and to which items the tree holds: what
    // was gathered from the items is current while this stays the same.
    std::uint64_t contentChanges() const { return m_contentChanges; }

    // Columns; cells follow their column when columns are inserted or deleted.
    int columnCount() const { return int(m_columns.size()); }
    const CTreeListColumn& column(int index) const { return m_columns[size_t(index)]; }
    CTreeListColumn& columnForWrite(int index) { return m_columns[size_t(index)]; }
    void insertColumn(int index, const CTreeListColumn& column);
    void removeColumn(int index);
    void setColumnCompare(int column, TreeListCompare compare);
    const TreeListCompare& columnCompare(int column) const;

    // Shown rows.
    int rowCount() const;
    HTREEITEM itemFromRow(int row) const;
    int rowFromItem(HTREEITEM item) const;
    // Whether the children of the item are rows (the item and its ancestors expanded).
    bool childrenShown(HTREEITEM item) const;
    std::size_t itemCount() const { return m_live.size() - 1; }

private:
    void invalidateRowsUnder(HTREEITEM parent);
    void ensureRows() const;
    void renumberFrom(HTREEITEM parent, int first);
    void attach(HTREEITEM parent, HTREEITEM child, int position);
    void detach(HTREEITEM item);
    void destroySubtree(HTREEITEM item);
    void setLive(HTREEITEM item, bool live);
    HTREEITEM copySubtree(const CTreeListItem* source, HTREEITEM parent, int position);
    int sortedPosition(HTREEITEM parent, const QString& text) const;

    std::unique_ptr<CTreeListItem> m_root;
    std::unordered_set<const CTreeListItem*> m_live;
    std::vector<CTreeListColumn> m_columns;
    std::vector<TreeListCompare> m_compares;
    mutable std::vector<HTREEITEM> m_rows;
    mutable std::uint64_t m_stamp = 1;
    mutable bool m_rowsStale = true;
    std::uint64_t m_contentChanges = 0;
};
