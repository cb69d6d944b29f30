#pragma once

// What the find field searches, gathered once from every code of the grid: its
// name, remark and pipeline information side by side in one text per code. A
// keystroke then reads one text per code instead of three texts and a look-up;
// the texts are gathered again when the grid's texts or codes, or the pipeline
// information, changed since.
#include "TreeListTypes.h"

#include <QString>

#include <cstdint>
#include <unordered_map>
#include <utility>
#include <vector>

class CTreeListCtrl;

class SysCodeFindIndex
{
public:
    // Gathers the texts unless those gathered are still current: `infoChanges`
    // counts the changes to the pipeline information.
    void Update(const CTreeListCtrl& grid, const std::unordered_map<HTREEITEM, QString>& infos,
        int remarkColumn, std::uint64_t infoChanges);
    void Clear();
    // The codes whose name, remark or pipeline information holds `text`.
    std::vector<HTREEITEM> Holding(const QString& text, Qt::CaseSensitivity cs) const;

private:
    std::vector<std::pair<HTREEITEM, QString>> m_texts;
    bool m_gathered = false;
    std::uint64_t m_gridChanges = 0;
    std::uint64_t m_infoChanges = 0;
    int m_remarkColumn = -1;
};
