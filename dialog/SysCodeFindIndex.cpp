#include "SysCodeFindIndex.h"

#include "CTreeListCtrl.h"
#include "CTreeListItem.h"

namespace {
// Between the parts of a code's text: no one types it, so no match spans two parts.
constexpr QChar kPartSeparator = QChar(0x1F);
} // namespace

void SysCodeFindIndex::Update(const CTreeListCtrl& grid, int remarkColumn, int pipeColumn)
{
    if (m_gathered && m_gridChanges == grid.ContentChanges() && m_remarkColumn == remarkColumn
        && m_pipeColumn == pipeColumn)
        return;
    const CTreeListItemTree& tree = grid.GetModel()->tree();
    m_texts.clear();
    const auto gather = [&](auto&& self, const CTreeListItem* parent) -> void {
        for (CTreeListItem* row : parent->children()) {
            QString text = row->cell(0).text;
            if (remarkColumn >= 0)
                text += kPartSeparator + row->cell(remarkColumn).text;
            if (pipeColumn >= 0)
                text += kPartSeparator + tree.value(row, pipeColumn).toString();
            m_texts.emplace_back(row, std::move(text));
            self(self, row);
        }
    };
    gather(gather, grid.GetRootItem());
    m_gathered = true;
    m_gridChanges = grid.ContentChanges();
    m_remarkColumn = remarkColumn;
    m_pipeColumn = pipeColumn;
}

void SysCodeFindIndex::Clear()
{
    m_texts.clear();
    m_texts.shrink_to_fit();
    m_gathered = false;
}

std::vector<HTREEITEM> SysCodeFindIndex::Holding(const QString& text, Qt::CaseSensitivity cs) const
{
    std::vector<HTREEITEM> rows;
    for (const auto& [row, haystack] : m_texts) {
        if (haystack.contains(text, cs))
            rows.push_back(row);
    }
    return rows;
}
