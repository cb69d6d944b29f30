#pragma once

// What the find field searches, gathered once from every code of the grid: its
// name, remark and pipeline information side by side in one text per code. A
// keystroke then reads one text per code instead of three cells; the texts are
// gathered again when the grid's cells or codes changed since.
#include "TreeListTypes.h"

#include <QString>

#include <cstdint>
#include <utility>
#include <vector>

class CTreeListCtrl;

class SysCodeFindIndex
{
public:
    // Gathers the texts unless those gathered are still current. A column of -1
    // is not shown and not searched; the pipeline column is searched by its path.
    void Update(const CTreeListCtrl& grid, int remarkColumn, int pipeColumn);
    void Clear();
    // The codes whose name, remark or pipeline information holds `text`.
    std::vector<HTREEITEM> Holding(const QString& text, Qt::CaseSensitivity cs) const;

private:
    std::vector<std::pair<HTREEITEM, QString>> m_texts;
    bool m_gathered = false;
    std::uint64_t m_gridChanges = 0;
    int m_remarkColumn = -1;
    int m_pipeColumn = -1;
};
