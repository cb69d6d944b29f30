// Typed cells, and the edits other code makes through the grid's Qt model: both go
// through the grid's own recorded operations, so undo sees them like any other.
#include "CTreeListCtrl.h"

BOOL CTreeListCtrl::SetItemValue(HTREEITEM item, const QVariant& value, int column)
{
    return changeCell(
        item, column, column, [&](CTreeListItemTree& tree) { tree.setValue(item, column, value); });
}

BOOL CTreeListCtrl::SetItemValueKeepText(HTREEITEM item, const QVariant& value, int column)
{
    return changeCell(
        item, column, column, [&](CTreeListItemTree& tree) { tree.setValue(item, column, value, true); });
}

QVariant CTreeListCtrl::GetItemValue(HTREEITEM item, int column) const
{
    if (!valid(item) || column < 0)
        return QVariant();
    return m_model->tree().value(item, column);
}

void CTreeListCtrl::SetColumnValueFormat(int column, std::function<QString(const QVariant&)> toText,
    std::function<QVariant(const QString&)> fromText)
{
    if (column < 0 || column >= GetColumnCount())
        return;
    CTreeListColumn& info = m_model->tree().columnForWrite(column);
    info.toText = std::move(toText);
    info.fromText = std::move(fromText);
}

bool CTreeListCtrl::writeCell(HTREEITEM item, int column, const QVariant& value)
{
    if (value.typeId() == QMetaType::QString)
        return SetItemText(item, value.toString(), column);
    return SetItemValue(item, value, column);
}

HTREEITEM CTreeListCtrl::AfterPosition(HTREEITEM parent, int position)
{
    return position <= 0 ? TVI_FIRST : parent->children()[size_t(position - 1)];
}

HTREEITEM CTreeListCtrl::insertChild(HTREEITEM parent, int position)
{
    if (position < 0 || position > int(parent->children().size()))
        return nullptr;
    return InsertItem(QString(), parent, AfterPosition(parent, position));
}

bool CTreeListCtrl::removeChild(HTREEITEM item)
{
    return DeleteItem(item);
}

bool CTreeListCtrl::moveChild(HTREEITEM item, HTREEITEM parent, int position)
{
    if (position < 0 || position > int(parent->children().size()))
        return false;
    HTREEITEM after = AfterPosition(parent, position);
    return MoveItem(item, parent, after);
}
