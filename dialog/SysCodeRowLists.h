#pragma once

// The items of a new row's drop-down cells, read from the store once for a whole
// fill or operation: rows inserted while one of these is alive take the lists the
// outermost one read, and share them (one copy of each list, however many rows).
// Each fill or operation reads afresh, so it offers what the store holds then.
#include <QStringList>

class SysCodeDlg;

class SysCodeRowLists
{
public:
    explicit SysCodeRowLists(SysCodeDlg& dialog);
    ~SysCodeRowLists();
    SysCodeRowLists(const SysCodeRowLists&) = delete;
    SysCodeRowLists& operator=(const SysCodeRowLists&) = delete;

    // The items of a logical column's cells; empty for a column without a list.
    const QStringList& Items(int logicalColumn) const;

private:
    SysCodeDlg& m_dialog;
    bool m_outermost;
};
