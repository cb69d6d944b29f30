#include "CTreeListItem.h"

const CTreeListCell& CTreeListItem::cell(int column) const
{
    static const CTreeListCell empty;
    if (column < 0 || size_t(column) >= m_cells.size())
        return empty;
    return m_cells[size_t(column)];
}

int CTreeListItem::depth() const
{
    int d = 0;
    for (const CTreeListItem* p = m_parent; p; p = p->m_parent)
        ++d;
    return d;
}

CTreeListCell& CTreeListItem::cellForWrite(int column)
{
    if (size_t(column) >= m_cells.size())
        m_cells.resize(size_t(column) + 1);
    return m_cells[size_t(column)];
}
