#pragma once

// A thin Qt model over the grid's item tree: it owns the tree, reports every change
// to attached views, and shows cells with their texts, colours and column formats.
// All changes to the tree's structure go through it so views stay in step.
#include "CTreeListItemTree.h"

#include <QAbstractItemModel>

#include <vector>

class CTreeListModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    explicit CTreeListModel(QObject* parent = nullptr);

    CTreeListItemTree& tree() { return m_tree; }
    const CTreeListItemTree& tree() const { return m_tree; }

    HTREEITEM itemFromIndex(const QModelIndex& index) const;
    QModelIndex indexFromItem(HTREEITEM item, int column = 0) const;

    // Structure. Each returns null / false when the tree refuses (see CTreeListCtrl).
    HTREEITEM insertItem(const QString& text, HTREEITEM parent, HTREEITEM insertAfter);
    bool moveItem(HTREEITEM item, HTREEITEM newParent, HTREEITEM insertAfter);
    HTREEITEM copyItem(HTREEITEM source, HTREEITEM newParent, HTREEITEM insertAfter);
    void removeItem(HTREEITEM item);
    void removeAllItems();
    // Undo support: items taken out and put back as the same objects (see
    // CTreeListItemTree::detachKeep), moves to a position, and whole cells.
    void detachItem(HTREEITEM item);
    void attachItem(HTREEITEM item, HTREEITEM parent, int position);
    void moveItemTo(HTREEITEM item, HTREEITEM parent, int position);
    std::vector<HTREEITEM> detachAllItems();
    void attachAllItems(const std::vector<HTREEITEM>& items);
    void setCell(HTREEITEM item, int column, const CTreeListCell& cell);
    int insertColumn(int index, const CTreeListColumn& column);
    bool removeColumn(int index);
    void setColumnTitle(int index, const QString& title);

    // Where a column's cells put their text: its format's side, centred vertically.
    Qt::Alignment ColumnAlignment(int column) const;

    // Reports a changed cell, or a whole row when column is -1.
    void cellChanged(HTREEITEM item, int column);

    // QAbstractItemModel
    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    CTreeListItemTree m_tree;
};

// The colour of a COLORREF (0x00BBGGRR) for painting.
QColor ColorFromColorref(COLORREF colour);
