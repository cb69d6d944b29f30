#pragma once

// Makes one user operation of the management dialog one step of its undo history:
// every change the operation makes to the grid, the pipeline information beside it
// and the renames recorded for the save, undone and redone together. Operations
// that call one another nest; the outermost one closes the step.
#include <QString>

#include <utility>
#include <vector>

class SysCodeDlg;

class SysCodeUndoGroup
{
public:
    explicit SysCodeUndoGroup(SysCodeDlg& dialog);
    ~SysCodeUndoGroup();
    SysCodeUndoGroup(const SysCodeUndoGroup&) = delete;
    SysCodeUndoGroup& operator=(const SysCodeUndoGroup&) = delete;

private:
    SysCodeDlg& m_dialog;
    bool m_outermost;
    std::vector<std::pair<QString, QString>> m_renamesBefore;
};
