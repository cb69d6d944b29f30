#include "CTreeListModel.h"

#include <QColor>

#include <algorithm>

QColor ColorFromColorref(COLORREF colour)
{
    return QColor(GetRValue(colour), GetGValue(colour), GetBValue(colour));
}

CTreeListModel::CTreeListModel(QObject* parent)
    : QAbstractItemModel(parent)
{ }

HTREEITEM CTreeListModel::itemFromIndex(const QModelIndex& index) const
{
    if (!index.isValid() || index.model() != this)
        return nullptr;
    return static_cast<HTREEITEM>(index.internalPointer());
}

QModelIndex CTreeListModel::indexFromItem(HTREEITEM item, int column) const
{
    if (!item || item == m_tree.root() || item == TVI_ROOT)
        return QModelIndex();
    return createIndex(item->indexInParent(), column, item);
}

HTREEITEM CTreeListModel::insertItem(const QString& text, HTREEITEM parent, HTREEITEM insertAfter)
{
    if (!m_tree.isItem(parent ? parent : TVI_ROOT))
        return nullptr;
    parent = m_tree.resolve(parent);
    const int position = m_tree.insertPosition(parent, insertAfter, text);
    if (position < 0)
        return nullptr;
    beginInsertRows(indexFromItem(parent), position, position);
    HTREEITEM item = m_tree.insertAt(parent, position, text);
    endInsertRows();
    return item;
}

bool CTreeListModel::moveItem(HTREEITEM item, HTREEITEM newParent, HTREEITEM insertAfter)
{
    newParent = m_tree.resolve(newParent);
    if (!m_tree.isItem(item) || item == m_tree.root() || !m_tree.isItem(newParent)
        || m_tree.isAncestorOrSelf(item, newParent))
        return false;
    if (insertAfter == item)
        return item->parent() == newParent;
    const int position = m_tree.insertPosition(newParent, insertAfter, item->cell(0).text);
    if (position < 0)
        return false;
    HTREEITEM oldParent = item->parent();
    const int from = item->indexInParent();
    if (!beginMoveRows(indexFromItem(oldParent), from, from, indexFromItem(newParent), position))
        return true; // already there
    m_tree.moveTo(item, newParent, position);
    endMoveRows();
    return true;
}

HTREEITEM CTreeListModel::copyItem(HTREEITEM source, HTREEITEM newParent, HTREEITEM insertAfter)
{
    newParent = m_tree.resolve(newParent);
    if (!m_tree.isItem(newParent))
        return nullptr;
    const int position = m_tree.insertPosition(newParent, insertAfter, source->cell(0).text);
    if (position < 0)
        return nullptr;
    beginInsertRows(indexFromItem(newParent), position, position);
    HTREEITEM copy = m_tree.copyAt(source, newParent, position);
    endInsertRows();
    return copy;
}

void CTreeListModel::removeItem(HTREEITEM item)
{
    if (!m_tree.isItem(item) || item == m_tree.root() || item == TVI_ROOT)
        return;
    const int row = item->indexInParent();
    beginRemoveRows(indexFromItem(item->parent()), row, row);
    m_tree.remove(item);
    endRemoveRows();
}

void CTreeListModel::removeAllItems()
{
    beginResetModel();
    m_tree.removeAllItems();
    endResetModel();
}

void CTreeListModel::detachItem(HTREEITEM item)
{
    const int row = item->indexInParent();
    beginRemoveRows(indexFromItem(item->parent()), row, row);
    m_tree.detachKeep(item);
    endRemoveRows();
}

void CTreeListModel::attachItem(HTREEITEM item, HTREEITEM parent, int position)
{
    position = std::clamp(position, 0, int(parent->children().size()));
    beginInsertRows(indexFromItem(parent), position, position);
    m_tree.reattach(item, parent, position);
    endInsertRows();
}

void CTreeListModel::moveItemTo(HTREEITEM item, HTREEITEM parent, int position)
{
    HTREEITEM oldParent = item->parent();
    const int from = item->indexInParent();
    // The tree counts the position without the item when it stays under its parent;
    // the model counts it with the item.
    const int to = std::clamp(
        oldParent == parent && position > from ? position + 1 : position, 0, int(parent->children().size()));
    if (!beginMoveRows(indexFromItem(oldParent), from, from, indexFromItem(parent), to))
        return;
    m_tree.moveTo(item, parent, to);
    endMoveRows();
}

std::vector<HTREEITEM> CTreeListModel::detachAllItems()
{
    beginResetModel();
    std::vector<HTREEITEM> items = m_tree.root()->children();
    for (auto it = items.rbegin(); it != items.rend(); ++it)
        m_tree.detachKeep(*it);
    endResetModel();
    return items;
}

void CTreeListModel::attachAllItems(const std::vector<HTREEITEM>& items)
{
    beginResetModel();
    for (HTREEITEM item : items)
        m_tree.reattach(item, m_tree.root(), int(m_tree.root()->children().size()));
    endResetModel();
}

void CTreeListModel::setCell(HTREEITEM item, int column, const CTreeListCell& cell)
{
    m_tree.setCell(item, column, cell);
    cellChanged(item, -1);
}

int CTreeListModel::insertColumn(int index, const CTreeListColumn& column)
{
    if (index < 0)
        return -1;
    index = std::min(index, m_tree.columnCount());
    beginInsertColumns(QModelIndex(), index, index);
    m_tree.insertColumn(index, column);
    endInsertColumns();
    return index;
}

bool CTreeListModel::removeColumn(int index)
{
    if (index < 0 || index >= m_tree.columnCount())
        return false;
    beginRemoveColumns(QModelIndex(), index, index);
    m_tree.removeColumn(index);
    endRemoveColumns();
    return true;
}

void CTreeListModel::setColumnTitle(int index, const QString& title)
{
    if (index < 0 || index >= m_tree.columnCount())
        return;
    m_tree.columnForWrite(index).title = title;
    Q_EMIT headerDataChanged(Qt::Horizontal, index, index);
}

void CTreeListModel::cellChanged(HTREEITEM item, int column)
{
    const int columns = m_tree.columnCount();
    if (columns == 0 || !item || item == m_tree.root())
        return;
    const int first = column < 0 ? 0 : std::min(column, columns - 1);
    const int last = column < 0 ? columns - 1 : first;
    Q_EMIT dataChanged(indexFromItem(item, first), indexFromItem(item, last));
}

Qt::Alignment CTreeListModel::ColumnAlignment(int column) const
{
    const int format = column >= 0 && column < m_tree.columnCount() ? m_tree.column(column).format & 0x3 : 0;
    const Qt::Alignment h = format == LVCFMT_CENTER ? Qt::AlignHCenter
        : format == LVCFMT_RIGHT                    ? Qt::AlignRight
                                                    : Qt::AlignLeft;
    return h | Qt::AlignVCenter;
}

QModelIndex CTreeListModel::index(int row, int column, const QModelIndex& parent) const
{
    if (column < 0 || column >= m_tree.columnCount() || row < 0)
        return QModelIndex();
    HTREEITEM p = parent.isValid() ? itemFromIndex(parent) : m_tree.root();
    if (!p || row >= int(p->children().size()))
        return QModelIndex();
    return createIndex(row, column, p->children()[size_t(row)]);
}

QModelIndex CTreeListModel::parent(const QModelIndex& child) const
{
    HTREEITEM item = itemFromIndex(child);
    if (!item || !item->parent())
        return QModelIndex();
    return indexFromItem(item->parent());
}

int CTreeListModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid() && parent.column() != 0)
        return 0;
    HTREEITEM p = parent.isValid() ? itemFromIndex(parent) : m_tree.root();
    return p ? int(p->children().size()) : 0;
}

int CTreeListModel::columnCount(const QModelIndex&) const
{
    return m_tree.columnCount();
}

bool CTreeListModel::hasChildren(const QModelIndex& parent) const
{
    return rowCount(parent) > 0;
}

QVariant CTreeListModel::data(const QModelIndex& index, int role) const
{
    HTREEITEM item = itemFromIndex(index);
    if (!item)
        return QVariant();
    const CTreeListCell& cell = item->cell(index.column());
    switch (role) {
    case Qt::DisplayRole:
        return cell.text;
    case Qt::EditRole:
        return m_tree.value(item, index.column());
    case Qt::ForegroundRole:
        return cell.hasTextColor ? QVariant(ColorFromColorref(cell.textColor)) : QVariant();
    case Qt::BackgroundRole:
        return cell.hasBackColor ? QVariant(ColorFromColorref(cell.backColor)) : QVariant();
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(ColumnAlignment(index.column()));
    default:
        return QVariant();
    }
}

QVariant CTreeListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= m_tree.columnCount())
        return QVariant();
    if (role == Qt::DisplayRole)
        return m_tree.column(section).title;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignCenter));
    return QVariant();
}

Qt::ItemFlags CTreeListModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable;
}

HTREEITEM CTreeListModel::itemOrRoot(const QModelIndex& index) const
{
    return index.isValid() ? itemFromIndex(index) : m_tree.root();
}

bool CTreeListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    HTREEITEM item = itemFromIndex(index);
    if (!item || (role != Qt::EditRole && role != Qt::DisplayRole))
        return false;
    return m_owner ? m_owner->writeCell(item, index.column(), value) : writeCell(item, index.column(), value);
}

bool CTreeListModel::writeCell(HTREEITEM item, int column, const QVariant& value)
{
    if (!m_tree.isItem(item) || item == m_tree.root() || column < 0 || column >= m_tree.columnCount())
        return false;
    if (value.typeId() == QMetaType::QString)
        m_tree.setText(item, column, value.toString());
    else
        m_tree.setValue(item, column, value);
    cellChanged(item, column);
    return true;
}

HTREEITEM CTreeListModel::insertChild(HTREEITEM parent, int position)
{
    if (!m_tree.isItem(parent) || position < 0 || position > int(parent->children().size()))
        return nullptr;
    beginInsertRows(indexFromItem(parent), position, position);
    HTREEITEM item = m_tree.insertAt(parent, position, QString());
    endInsertRows();
    return item;
}

bool CTreeListModel::moveChild(HTREEITEM item, HTREEITEM parent, int position)
{
    if (!m_tree.isItem(item) || item == m_tree.root() || !m_tree.isItem(parent)
        || m_tree.isAncestorOrSelf(item, parent) || position < 0 || position > int(parent->children().size()))
        return false;
    const int from = item->indexInParent();
    if (!beginMoveRows(indexFromItem(item->parent()), from, from, indexFromItem(parent), position))
        return item->parent() == parent; // already there
    m_tree.moveTo(item, parent, position);
    endMoveRows();
    return true;
}

bool CTreeListModel::insertRows(int row, int count, const QModelIndex& parent)
{
    HTREEITEM p = itemOrRoot(parent);
    if (!p || count < 1 || row < 0 || row > int(p->children().size()))
        return false;
    for (int i = 0; i < count; ++i)
        if (!(m_owner ? m_owner->insertChild(p, row + i) : insertChild(p, row + i)))
            return false;
    return true;
}

bool CTreeListModel::removeRows(int row, int count, const QModelIndex& parent)
{
    HTREEITEM p = itemOrRoot(parent);
    if (!p || count < 1 || row < 0 || row + count > int(p->children().size()))
        return false;
    // From the last, so the rows still to go keep their numbers.
    for (int i = row + count - 1; i >= row; --i) {
        HTREEITEM item = p->children()[size_t(i)];
        if (!m_owner)
            removeItem(item);
        else if (!m_owner->removeChild(item))
            return false;
    }
    return true;
}

bool CTreeListModel::moveRows(const QModelIndex& sourceParent, int sourceRow, int count,
    const QModelIndex& destinationParent, int destinationChild)
{
    HTREEITEM from = itemOrRoot(sourceParent);
    HTREEITEM to = itemOrRoot(destinationParent);
    if (!from || !to || count < 1 || sourceRow < 0 || sourceRow + count > int(from->children().size())
        || destinationChild < 0 || destinationChild > int(to->children().size()))
        return false;
    const std::vector<HTREEITEM> moving(
        from->children().begin() + sourceRow, from->children().begin() + sourceRow + count);
    // Each goes in front of the item that was at the destination, or last.
    HTREEITEM before
        = destinationChild < int(to->children().size()) ? to->children()[size_t(destinationChild)] : nullptr;
    if (before && std::find(moving.begin(), moving.end(), before) != moving.end())
        return from == to; // onto itself: nothing moves
    for (HTREEITEM item : moving) {
        const int position = before ? before->indexInParent() : int(to->children().size());
        if (!(m_owner ? m_owner->moveChild(item, to, position) : moveChild(item, to, position)))
            return false;
    }
    return true;
}
