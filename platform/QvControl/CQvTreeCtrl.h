#pragma once

// A tree of names addressed by paths: each item's path is the texts from its top
// item down to it joined by "\" ("电气\管线\导线·导管\BV-2.5"). Built from a list of
// such paths, so a name library with nested categories shows as a tree.
//
// Paths are compared exactly (letter case counts). Leading, trailing and doubled
// "\" are ignored when a path is read, so "电气\管线\" names the item "管线" under
// "电气"; the paths the tree gives out never have them.
#include <QStringList>
#include <QTreeWidget>

class CQvTreeCtrl : public QTreeWidget
{
    Q_OBJECT
public:
    // Flags of ImpByPaths.
    enum ImpFlags : unsigned {
        kImpKeepOrder = 0x0, // siblings in the order they first appear in the list
        kImpSortNames = 0x1, // siblings sorted by name
    };

    explicit CQvTreeCtrl(QWidget* parent = nullptr);

    // Builds the tree from paths: one item per distinct path prefix, so shared
    // categories appear once. With `bClear` the tree is emptied first; otherwise the
    // paths are merged into the items already there. Empty paths add nothing.
    // Returns the number of items created.
    int ImpByPaths(const QStringList& paths, unsigned flags = kImpKeepOrder, bool bClear = true);

    // The item with that path, or null.
    QTreeWidgetItem* GetItemByDir(const QString& dir) const;
    // The path of an item; empty for null.
    QString GetItemDir(const QTreeWidgetItem* item) const;

    // Appends to `leafDirs` the paths of all items without children under `item`
    // (the item itself when it has none), depth first in tree order. `itemDir` is
    // the path of `item`; pass the root item's text for a top-level item.
    static void GetLeafDirs(
        const CQvTreeCtrl* tree, const QString& itemDir, const QTreeWidgetItem* item, QStringList& leafDirs);

    // The names of a path's levels, with empty levels dropped.
    static QStringList SplitDir(const QString& dir);

    // The framework's tree idioms the dialogs use.
    QTreeWidgetItem* GetRootItem() const { return topLevelItem(0); }
    QTreeWidgetItem* GetSelectedItem() const;
    // Selects and shows the item (expanding its parents); null clears the selection.
    void SelectItem(QTreeWidgetItem* item);
    void DeleteAllItems() { clear(); }
    // Expands every item that has children.
    void ExpandAllItems() { expandAll(); }

private:
    QTreeWidgetItem* FindChild(QTreeWidgetItem* parent, const QString& name) const;
};
