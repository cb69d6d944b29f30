#include "SysCodeFindIndex.h"

#include "CTreeListCtrl.h"
#include "CTreeListItem.h"

namespace {
// Between the parts of a code's text: no one types it, so no match spans two parts.
constexpr QChar kPartSeparator = QChar(0x1F);
} // namespace

void SysCodeFindIndex::Update(const CTreeListCtrl& grid, const std::unordered_map<HTREEITEM, QString>& infos,
    int remarkColumn, std::uint64_t infoChanges)
{
    if (m_gathered && m_gridChanges == grid.ContentChanges() && m_infoChanges == infoChanges
        && m_remarkColumn == remarkColumn)
        return;
    m_texts.clear();
    const auto gather = [&](auto&& self, const CTreeListItem* parent) -> void {
        for (CTreeListItem* row : parent->children()) {
            QString text = row->cell(0).text;
            if (remarkColumn >= 0)
                text += kPartSeparator + row->cell(remarkColumn).text;
            if (const auto info = infos.find(row); info != infos.end())
                text += kPartSeparator + info->second;
            m_texts.emplace_back(row, std::move(text));
            self(self, row);
        }
    };
    gather(gather, grid.GetRootItem());
    m_gathered = true;
    m_gridChanges = grid.ContentChanges();
    m_infoChanges = infoChanges;
    m_remarkColumn = remarkColumn;
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
