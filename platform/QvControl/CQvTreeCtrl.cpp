#include "CQvTreeCtrl.h"

#include <QHash>

namespace {

const QChar kSep = QLatin1Char('\\');

} // namespace

CQvTreeCtrl::CQvTreeCtrl(QWidget* parent)
    : QTreeWidget(parent)
{
    setColumnCount(1);
    setHeaderHidden(true);
    setRootIsDecorated(true);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setExpandsOnDoubleClick(false);
    setUniformRowHeights(true);
}

QStringList CQvTreeCtrl::SplitDir(const QString& dir)
{
    return dir.split(kSep, Qt::SkipEmptyParts);
}

QTreeWidgetItem* CQvTreeCtrl::FindChild(QTreeWidgetItem* parent, const QString& name) const
{
    const int count = parent ? parent->childCount() : topLevelItemCount();
    for (int i = 0; i < count; ++i) {
        QTreeWidgetItem* child = parent ? parent->child(i) : topLevelItem(i);
        if (child->text(0) == name)
            return child;
    }
    return nullptr;
}

int CQvTreeCtrl::ImpByPaths(const QStringList& paths, unsigned flags, bool bClear)
{
    if (bClear)
        clear();
    // Long name lists repeat the same categories many times: remember each prefix's
    // item so every path costs one hash look-up per level, not a scan of siblings.
    QHash<QString, QTreeWidgetItem*> byDir;
    int created = 0;
    for (const QString& path : paths) {
        QTreeWidgetItem* parent = nullptr;
        QString dir;
        for (const QString& name : SplitDir(path)) {
            dir = dir.isEmpty() ? name : dir + kSep + name;
            auto it = byDir.constFind(dir);
            QTreeWidgetItem* item = it != byDir.constEnd() ? *it : FindChild(parent, name);
            if (!item) {
                item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(this);
                item->setText(0, name);
                ++created;
            }
            byDir.insert(dir, item);
            parent = item;
        }
    }
    if (flags & kImpSortNames)
        sortItems(0, Qt::AscendingOrder);
    return created;
}

QTreeWidgetItem* CQvTreeCtrl::GetItemByDir(const QString& dir) const
{
    const QStringList names = SplitDir(dir);
    QTreeWidgetItem* item = nullptr;
    for (const QString& name : names) {
        item = FindChild(item, name);
        if (!item)
            return nullptr;
    }
    return item;
}

QString CQvTreeCtrl::GetItemDir(const QTreeWidgetItem* item) const
{
    QStringList names;
    for (; item; item = item->parent())
        names.prepend(item->text(0));
    return names.join(kSep);
}

void CQvTreeCtrl::GetLeafDirs(
    const CQvTreeCtrl* tree, const QString& itemDir, const QTreeWidgetItem* item, QStringList& leafDirs)
{
    if (!item)
        return;
    if (item->childCount() == 0) {
        leafDirs.append(itemDir);
        return;
    }
    for (int i = 0; i < item->childCount(); ++i) {
        const QTreeWidgetItem* child = item->child(i);
        GetLeafDirs(tree, itemDir + kSep + child->text(0), child, leafDirs);
    }
}

QTreeWidgetItem* CQvTreeCtrl::GetSelectedItem() const
{
    const QList<QTreeWidgetItem*> selected = selectedItems();
    return selected.isEmpty() ? nullptr : selected.first();
}

void CQvTreeCtrl::SelectItem(QTreeWidgetItem* item)
{
    if (!item) {
        clearSelection();
        setCurrentItem(nullptr);
        return;
    }
    for (QTreeWidgetItem* p = item->parent(); p; p = p->parent())
        p->setExpanded(true);
    setCurrentItem(item);
    item->setSelected(true);
    scrollToItem(item);
}
