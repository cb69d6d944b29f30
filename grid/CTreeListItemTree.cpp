#include "CTreeListItemTree.h"

#include <algorithm>

namespace {
int compareByText(HTREEITEM a, HTREEITEM b)
{
    return QString::compare(a->cell(0).text, b->cell(0).text, Qt::CaseInsensitive);
}
} // namespace

CTreeListItemTree::CTreeListItemTree()
    : m_root(std::make_unique<CTreeListItem>())
{
    m_root->m_expanded = true;
    m_live.insert(m_root.get());
}

CTreeListItemTree::~CTreeListItemTree()
{
    removeAllItems();
}

bool CTreeListItemTree::isItem(HTREEITEM item) const
{
    return item == TVI_ROOT || m_live.count(item) != 0;
}

HTREEITEM CTreeListItemTree::resolve(HTREEITEM item) const
{
    return (item == nullptr || item == TVI_ROOT) ? m_root.get() : item;
}

bool CTreeListItemTree::isAncestorOrSelf(HTREEITEM ancestor, HTREEITEM item) const
{
    for (HTREEITEM p = item; p; p = p->m_parent)
        if (p == ancestor)
            return true;
    return false;
}

int CTreeListItemTree::insertPosition(HTREEITEM parent, HTREEITEM insertAfter, const QString& text) const
{
    const int count = int(parent->m_children.size());
    if (insertAfter == TVI_FIRST)
        return 0;
    if (insertAfter == TVI_LAST || insertAfter == nullptr)
        return count;
    if (insertAfter == TVI_SORT)
        return sortedPosition(parent, text);
    if (!isItem(insertAfter) || insertAfter->m_parent != parent)
        return -1;
    return insertAfter->m_indexInParent + 1;
}

int CTreeListItemTree::sortedPosition(HTREEITEM parent, const QString& text) const
{
    // The new item does not exist yet: a scratch item carries its text to the
    // column's comparison function.
    CTreeListItem probe;
    probe.cellForWrite(0).text = text;
    const TreeListCompare& compare = columnCompare(0);
    const auto& siblings = parent->m_children;
    for (size_t i = 0; i < siblings.size(); ++i) {
        const int order = compare ? compare(&probe, siblings[i]) : compareByText(&probe, siblings[i]);
        if (order < 0)
            return int(i);
    }
    return int(siblings.size());
}

HTREEITEM CTreeListItemTree::insertAt(HTREEITEM parent, int position, const QString& text)
{
    ++m_contentChanges;
    auto* item = new CTreeListItem;
    item->cellForWrite(0).text = text;
    m_live.insert(item);
    attach(parent, item, position);
    return item;
}

HTREEITEM CTreeListItemTree::copyAt(HTREEITEM source, HTREEITEM parent, int position)
{
    ++m_contentChanges;
    HTREEITEM copy = copySubtree(source, nullptr, 0);
    attach(parent, copy, position);
    return copy;
}

HTREEITEM CTreeListItemTree::copySubtree(const CTreeListItem* source, HTREEITEM parent, int position)
{
    auto* item = new CTreeListItem;
    item->m_cells = source->m_cells;
    item->m_expanded = source->m_expanded;
    item->m_data = source->m_data;
    m_live.insert(item);
    if (parent) {
        item->m_parent = parent;
        item->m_indexInParent = position;
        parent->m_children.push_back(item);
    }
    // Copy the children after taking their list: a subtree copied into itself
    // (under one of its own items) must not see the new children.
    const std::vector<CTreeListItem*> sourceChildren = source->m_children;
    for (size_t i = 0; i < sourceChildren.size(); ++i)
        copySubtree(sourceChildren[i], item, int(i));
    return item;
}

void CTreeListItemTree::moveTo(HTREEITEM item, HTREEITEM parent, int position)
{
    HTREEITEM oldParent = item->m_parent;
    if (oldParent == parent && position > item->m_indexInParent)
        --position;
    detach(item);
    attach(parent, item, position);
}

void CTreeListItemTree::remove(HTREEITEM item)
{
    if (!item || item == m_root.get())
        return;
    ++m_contentChanges;
    detach(item);
    destroySubtree(item);
}

void CTreeListItemTree::removeAllItems()
{
    ++m_contentChanges;
    invalidateRowsUnder(m_root.get());
    for (HTREEITEM child : m_root->m_children)
        destroySubtree(child);
    m_root->m_children.clear();
}

void CTreeListItemTree::detachKeep(HTREEITEM item)
{
    if (!item || item == m_root.get())
        return;
    ++m_contentChanges;
    detach(item);
    setLive(item, false);
}

void CTreeListItemTree::reattach(HTREEITEM item, HTREEITEM parent, int position)
{
    ++m_contentChanges;
    setLive(item, true);
    attach(parent, item, position);
}

void CTreeListItemTree::destroyDetached(HTREEITEM item)
{
    for (HTREEITEM child : item->m_children)
        destroyDetached(child);
    delete item;
}

void CTreeListItemTree::setLive(HTREEITEM item, bool live)
{
    if (live) {
        m_live.insert(item);
    } else {
        m_live.erase(item);
        item->m_state = 0;
    }
    for (HTREEITEM child : item->m_children)
        setLive(child, live);
}

void CTreeListItemTree::forEachPostOrder(HTREEITEM item, const std::function<void(HTREEITEM)>& visit) const
{
    for (HTREEITEM child : item->m_children)
        forEachPostOrder(child, visit);
    visit(item);
}

void CTreeListItemTree::attach(HTREEITEM parent, HTREEITEM child, int position)
{
    position = std::clamp(position, 0, int(parent->m_children.size()));
    invalidateRowsUnder(parent);
    child->m_parent = parent;
    parent->m_children.insert(parent->m_children.begin() + position, child);
    renumberFrom(parent, position);
}

void CTreeListItemTree::detach(HTREEITEM item)
{
    HTREEITEM parent = item->m_parent;
    invalidateRowsUnder(parent);
    const int index = item->m_indexInParent;
    parent->m_children.erase(parent->m_children.begin() + index);
    renumberFrom(parent, index);
    item->m_parent = nullptr;
}

void CTreeListItemTree::destroySubtree(HTREEITEM item)
{
    for (HTREEITEM child : item->m_children)
        destroySubtree(child);
    m_live.erase(item);
    delete item;
}

void CTreeListItemTree::renumberFrom(HTREEITEM parent, int first)
{
    for (size_t i = size_t(first); i < parent->m_children.size(); ++i)
        parent->m_children[i]->m_indexInParent = int(i);
}

void CTreeListItemTree::setText(HTREEITEM item, int column, const QString& text)
{
    ++m_contentChanges;
    CTreeListCell& cell = item->cellForWrite(column);
    cell.text = text;
    if (column < columnCount() && m_columns[size_t(column)].fromText)
        cell.value = m_columns[size_t(column)].fromText(text);
}

void CTreeListItemTree::setValue(HTREEITEM item, int column, const QVariant& value, bool keepText)
{
    ++m_contentChanges;
    CTreeListCell& cell = item->cellForWrite(column);
    if (column < columnCount() && m_columns[size_t(column)].toText) {
        if (!keepText)
            cell.text = m_columns[size_t(column)].toText(value);
        cell.value = value;
    } else {
        cell.text = value.toString();
        cell.value.clear();
    }
}

QVariant CTreeListItemTree::value(HTREEITEM item, int column) const
{
    const CTreeListCell& cell = item->cell(column);
    return cell.value.isValid() ? cell.value : QVariant(cell.text);
}

void CTreeListItemTree::setCell(HTREEITEM item, int column, const CTreeListCell& cell)
{
    ++m_contentChanges;
    item->cellForWrite(column) = cell;
}

void CTreeListItemTree::setTextColor(HTREEITEM item, int column, COLORREF colour)
{
    CTreeListCell& cell = item->cellForWrite(column);
    cell.textColor = colour & 0xFFFFFFu;
    cell.hasTextColor = true;
}

void CTreeListItemTree::setBackColor(HTREEITEM item, int column, COLORREF colour)
{
    CTreeListCell& cell = item->cellForWrite(column);
    cell.backColor = colour & 0xFFFFFFu;
    cell.hasBackColor = true;
}

void CTreeListItemTree::setEditMode(HTREEITEM item, int column, int mode)
{
    CTreeListCell& cell = item->cellForWrite(column);
    if (!cell.ownEditor)
        cell.options = columnOptions(column);
    cell.ownEditor = true;
    cell.editMode = mode;
}

void CTreeListItemTree::setOptions(HTREEITEM item, int column, const QStringList& options)
{
    CTreeListCell& cell = item->cellForWrite(column);
    if (!cell.ownEditor)
        cell.editMode = columnEditMode(column);
    cell.ownEditor = true;
    cell.options = options;
}

int CTreeListItemTree::columnEditMode(int column) const
{
    return column >= 0 && column < columnCount() ? m_columns[size_t(column)].editMode : 0;
}

const QStringList& CTreeListItemTree::columnOptions(int column) const
{
    static const QStringList none;
    return column >= 0 && column < columnCount() ? m_columns[size_t(column)].options : none;
}

int CTreeListItemTree::editMode(HTREEITEM item, int column) const
{
    const CTreeListCell& cell = item->cell(column);
    return cell.ownEditor ? cell.editMode : columnEditMode(column);
}

const QStringList& CTreeListItemTree::options(HTREEITEM item, int column) const
{
    const CTreeListCell& cell = item->cell(column);
    return cell.ownEditor ? cell.options : columnOptions(column);
}

bool CTreeListItemTree::setExpanded(HTREEITEM item, bool expanded)
{
    if (item == m_root.get() || item->m_expanded == expanded)
        return false;
    // Only an item whose own row is shown changes the rows by opening or closing.
    if (childrenShown(item->m_parent) && !item->m_children.empty())
        invalidateRowsUnder(item->m_parent);
    item->m_expanded = expanded;
    return true;
}

void CTreeListItemTree::insertColumn(int index, const CTreeListColumn& column)
{
    ++m_contentChanges;
    index = std::clamp(index, 0, columnCount());
    m_columns.insert(m_columns.begin() + index, column);
    m_compares.insert(m_compares.begin() + index, TreeListCompare());
    forEachPostOrder(m_root.get(), [index](HTREEITEM item) {
        if (size_t(index) < item->m_cells.size())
            item->m_cells.insert(item->m_cells.begin() + index, CTreeListCell());
    });
}

void CTreeListItemTree::removeColumn(int index)
{
    if (index < 0 || index >= columnCount())
        return;
    ++m_contentChanges;
    m_columns.erase(m_columns.begin() + index);
    m_compares.erase(m_compares.begin() + index);
    forEachPostOrder(m_root.get(), [index](HTREEITEM item) {
        if (size_t(index) < item->m_cells.size())
            item->m_cells.erase(item->m_cells.begin() + index);
    });
}

void CTreeListItemTree::setColumnCompare(int column, TreeListCompare compare)
{
    if (column >= 0 && column < columnCount())
        m_compares[size_t(column)] = std::move(compare);
}

const TreeListCompare& CTreeListItemTree::columnCompare(int column) const
{
    static const TreeListCompare none;
    if (column < 0 || column >= columnCount())
        return none;
    return m_compares[size_t(column)];
}

bool CTreeListItemTree::childrenShown(HTREEITEM item) const
{
    for (HTREEITEM p = item; p; p = p->m_parent)
        if (!p->m_expanded)
            return false;
    return true;
}

bool CTreeListItemTree::setFilteredOut(HTREEITEM item, bool filteredOut)
{
    if (item->m_filteredOut == filteredOut)
        return false;
    item->m_filteredOut = filteredOut;
    invalidateRowsUnder(item->m_parent);
    return true;
}

void CTreeListItemTree::markKept(HTREEITEM item)
{
    for (HTREEITEM p = item; p && p != m_root.get() && !p->m_kept; p = p->m_parent)
        p->m_kept = true;
}

bool CTreeListItemTree::takeKept(HTREEITEM item)
{
    const bool kept = item->m_kept;
    item->m_kept = false;
    return kept;
}

void CTreeListItemTree::invalidateRowsUnder(HTREEITEM parent)
{
    if (m_rowsStale || !childrenShown(parent))
        return;
    // A new stamp turns every cached row number invalid at once; no walk needed.
    m_rowsStale = true;
    m_rows.clear();
    ++m_stamp;
}

void CTreeListItemTree::ensureRows() const
{
    if (!m_rowsStale)
        return;
    ++m_stamp;
    m_rows.clear();
    m_rows.reserve(m_live.size());
    // Iterative pre-order walk through expanded items only.
    std::vector<std::pair<HTREEITEM, size_t>> stack;
    stack.emplace_back(m_root.get(), 0);
    while (!stack.empty()) {
        auto& [item, next] = stack.back();
        if (next == item->m_children.size()) {
            stack.pop_back();
            continue;
        }
        HTREEITEM child = item->m_children[next++];
        if (child->m_filteredOut)
            continue;
        child->m_row = int(m_rows.size());
        child->m_rowStamp = m_stamp;
        m_rows.push_back(child);
        if (child->m_expanded && !child->m_children.empty())
            stack.emplace_back(child, 0);
    }
    m_rowsStale = false;
}

int CTreeListItemTree::rowCount() const
{
    ensureRows();
    return int(m_rows.size());
}

HTREEITEM CTreeListItemTree::itemFromRow(int row) const
{
    ensureRows();
    if (row < 0 || row >= int(m_rows.size()))
        return nullptr;
    return m_rows[size_t(row)];
}

int CTreeListItemTree::rowFromItem(HTREEITEM item) const
{
    ensureRows();
    if (!item || item->m_rowStamp != m_stamp)
        return -1;
    return item->m_row;
}
