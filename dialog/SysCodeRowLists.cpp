#include "SysCodeRowLists.h"

#include "SysCodeColumns.h"
#include "SysCodeDlg.h"

SysCodeRowLists::SysCodeRowLists(SysCodeDlg& dialog)
    : m_dialog(dialog)
    , m_outermost(dialog.m_rowLists.empty())
{
    if (!m_outermost)
        return;
    std::vector<QStringList> lists(kSysCodeColumnCount);
    for (int logical = 0; logical < kSysCodeColumnCount; ++logical)
        dialog.GetComboItems(logical, lists[size_t(logical)]);
    m_dialog.m_rowLists = std::move(lists);
}

SysCodeRowLists::~SysCodeRowLists()
{
    if (m_outermost)
        m_dialog.m_rowLists.clear();
}

const QStringList& SysCodeRowLists::Items(int logicalColumn) const
{
    static const QStringList none;
    const std::vector<QStringList>& lists = m_dialog.m_rowLists;
    return logicalColumn >= 0 && size_t(logicalColumn) < lists.size() ? lists[size_t(logicalColumn)] : none;
}
