#include "CTreeListHistory.h"

#include "CTreeListModel.h"

CTreeListHistory::CTreeListHistory(CTreeListModel& model)
    : m_model(model)
{ }

// Commands go newest first: a held item is destroyed by the step that last took it
// out, before any older step could still name it.
CTreeListHistory::~CTreeListHistory()
{
    m_open.clear();
    while (!m_commands.empty())
        m_commands.pop_back();
}

void CTreeListHistory::BeginGroup()
{
    ++m_depth;
}

void CTreeListHistory::EndGroup()
{
    if (m_depth == 0 || --m_depth > 0)
        return;
    m_born.clear();
    if (m_open.empty())
        return;
    DropRedo();
    m_commands.push_back(std::move(m_open));
    m_open.clear();
    ++m_applied;
}

void CTreeListHistory::Record(std::unique_ptr<CTreeListChange> change)
{
    if (IsRecording())
        m_open.push_back(std::move(change));
}

void CTreeListHistory::MarkBorn(HTREEITEM item)
{
    if (IsRecording())
        m_born.insert(item);
}

bool CTreeListHistory::IsBorn(HTREEITEM item) const
{
    if (m_born.empty())
        return false;
    for (HTREEITEM p = item; p; p = p->parent())
        if (m_born.count(p))
            return true;
    return false;
}

// Commands undone and then replaced by a new one are gone for good; so is a clean
// point among them.
void CTreeListHistory::DropRedo()
{
    if (m_cleanKnown && m_clean > m_applied)
        m_cleanKnown = false;
    while (m_commands.size() > m_applied)
        m_commands.pop_back();
}

bool CTreeListHistory::NextChangesRows(bool undo) const
{
    if (!(undo ? CanUndo() : CanRedo()))
        return false;
    const Command& command = m_commands[undo ? m_applied - 1 : m_applied];
    for (const auto& change : command)
        if (change->ChangesRows())
            return true;
    return false;
}

HTREEITEM CTreeListHistory::Replay(Command& command, bool undo)
{
    m_replayedRows.clear();
    m_replayedAllRows = false;
    m_replaying = true;
    if (undo) {
        for (auto it = command.rbegin(); it != command.rend(); ++it)
            (*it)->Undo(m_model);
    } else {
        for (auto& change : command)
            change->Redo(m_model);
    }
    m_replaying = false;
    const CTreeListItemTree& tree = m_model.tree();
    HTREEITEM shown = nullptr;
    for (const auto& change : command) {
        HTREEITEM item = change->Item();
        if (!item && change->ChangesRows())
            m_replayedAllRows = true;
        if (!item || item == tree.root() || !tree.isItem(item))
            continue;
        if (!shown)
            shown = item;
        m_replayedRows.push_back(item);
    }
    return shown;
}

HTREEITEM CTreeListHistory::Undo()
{
    if (!CanUndo())
        return nullptr;
    --m_applied;
    return Replay(m_commands[m_applied], true);
}

HTREEITEM CTreeListHistory::Redo()
{
    if (!CanRedo())
        return nullptr;
    ++m_applied;
    return Replay(m_commands[m_applied - 1], false);
}

void CTreeListHistory::Clear(bool clean)
{
    m_open.clear();
    m_born.clear();
    while (!m_commands.empty())
        m_commands.pop_back();
    m_applied = 0;
    m_clean = 0;
    m_cleanKnown = clean;
}
