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
    // Who records the changes made to the tree (the grid, for its undo history):
    // edits through Qt's generic calls (setData, insertRows, removeRows, moveRows)
    // are handed to it, so that they are recorded like the grid's own. Without an
    // owner the model changes the tree itself.
    class Owner
    {
    public:
        virtual ~Owner() = default;
        virtual bool writeCell(HTREEITEM item, int column, const QVariant& value) = 0;
        virtual HTREEITEM insertChild(HTREEITEM parent, int position) = 0;
        virtual bool removeChild(HTREEITEM item) = 0;
        // `position` counts the parent's children before the move (Qt's rule).
        virtual bool moveChild(HTREEITEM item, HTREEITEM parent, int position) = 0;
    };

    explicit CTreeListModel(QObject* parent = nullptr);
    void setOwner(Owner* owner) { m_owner = owner; }

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
    // Qt::EditRole reads and writes the cell's value (see CTreeListCell): a string
    // written to a typed column is read as that column reads texts.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    bool insertRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;
    bool removeRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;
    bool moveRows(const QModelIndex& sourceParent, int sourceRow, int count,
        const QModelIndex& destinationParent, int destinationChild) override;

    // The same edits without an owner: the tree changed and the views told.
    bool writeCell(HTREEITEM item, int column, const QVariant& value);
    // Inserts an item with no text at `position` among `parent`'s children.
    HTREEITEM insertChild(HTREEITEM parent, int position);
    // `position` as in Owner::moveChild.
    bool moveChild(HTREEITEM item, HTREEITEM parent, int position);

private:
    HTREEITEM itemOrRoot(const QModelIndex& index) const;

    CTreeListItemTree m_tree;
    Owner* m_owner = nullptr;
};

// The colour of a COLORREF (0x00BBGGRR) for painting.
QColor ColorFromColorref(COLORREF colour);
