#pragma once

// The grid's undo history: one command per user operation, each the list of steps
// (CTreeListChange) the grid recorded while the operation's group was open. Groups
// nest; the outermost one closes the command. Undo and redo replay the steps with
// recording off. The history knows its clean point: where the grid matches what
// was filled or last saved.
#include "CTreeListChange.h"

#include <cstddef>
#include <memory>
#include <unordered_set>
#include <vector>

class CTreeListModel;

class CTreeListHistory
{
public:
    explicit CTreeListHistory(CTreeListModel& model);
    ~CTreeListHistory();
    CTreeListHistory(const CTreeListHistory&) = delete;
    CTreeListHistory& operator=(const CTreeListHistory&) = delete;

    void BeginGroup();
    void EndGroup();
    // Whether changes to the grid are being recorded now.
    bool IsRecording() const { return m_depth > 0 && !m_replaying; }
    bool IsReplaying() const { return m_replaying; }
    void Record(std::unique_ptr<CTreeListChange> change);

    // Items inserted in the open group: their later changes in the same group need
    // no step of their own (undoing the insert takes them away as they are).
    void MarkBorn(HTREEITEM item);
    bool IsBorn(HTREEITEM item) const;

    bool CanUndo() const { return m_depth == 0 && m_applied > 0; }
    bool CanRedo() const { return m_depth == 0 && m_applied < m_commands.size(); }
    // The row to show afterwards (null when none), or null when nothing was done.
    HTREEITEM Undo();
    HTREEITEM Redo();
    // Whether the command the next Undo (or Redo) replays puts, takes or moves rows.
    bool NextChangesRows(bool undo) const;
    // The rows the steps of the last replay touched that are rows of the grid now.
    const std::vector<HTREEITEM>& ReplayedRows() const { return m_replayedRows; }
    // Whether the last replay put back or took every row at once.
    bool ReplayedAllRows() const { return m_replayedAllRows; }
    std::size_t UndoCount() const { return m_applied; }
    std::size_t RedoCount() const { return m_commands.size() - m_applied; }

    // Forgets every command. `clean`: the grid now matches what was filled or saved;
    // false when it was changed behind the history's back (the clean point is lost).
    void Clear(bool clean);
    bool IsClean() const { return m_cleanKnown && m_applied == m_clean; }
    // A cell was changed with no group open: the history cannot say any more when
    // the grid matches what was filled or saved.
    void LoseCleanPoint() { m_cleanKnown = false; }

private:
    using Command = std::vector<std::unique_ptr<CTreeListChange>>;
    HTREEITEM Replay(Command& command, bool undo);
    void DropRedo();

    CTreeListModel& m_model;
    std::vector<Command> m_commands; // the first m_applied are applied
    std::size_t m_applied = 0;
    std::size_t m_clean = 0;
    bool m_cleanKnown = true;
    Command m_open;
    int m_depth = 0;
    bool m_replaying = false;
    std::unordered_set<HTREEITEM> m_born;
    std::vector<HTREEITEM> m_replayedRows;
    bool m_replayedAllRows = false;
};
