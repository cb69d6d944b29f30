// The node operations from the keyboard, on the grid's current row: Insert adds a
// code beside it, Ctrl+Insert one below it, Delete deletes the selected codes,
// Ctrl+C and Ctrl+V copy and paste, Alt+Up and Alt+Down move the code among its
// siblings. Each runs what the menu or a drag runs, with the same checks and
// messages; none fires while a cell's editor has the keyboard.
#include "SysCodeDlg.h"

#include "ModuleStrings.h"
#include "Resource.h"
#include "SysCodeUndoGroup.h"
#include "WinMessageBox.h"

#include <QShortcut>

void SysCodeDlg::ConnectNodeKeys()
{
    const auto bind = [this](QKeySequence keys, auto handler) {
        auto* shortcut = new QShortcut(keys, &m_tree);
        shortcut->setContext(Qt::WidgetShortcut);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, handler);
    };
    bind(QKeySequence(Qt::Key_Insert),
        [this] { RunKeyCommand(m_tree.GetCaretItem() ? ID_MENU_ADD_SIBLING : ID_MENU_INSERT); });
    bind(QKeySequence(Qt::CTRL | Qt::Key_Insert), [this] { RunKeyCommand(ID_MENU_ADD_CHILD); });
    bind(QKeySequence(Qt::Key_Delete), [this] { RunKeyCommand(ID_MENU_DELETE); });
    bind(QKeySequence(Qt::CTRL | Qt::Key_C), [this] { RunKeyCommand(ID_MENU_COPY); });
    bind(QKeySequence(Qt::CTRL | Qt::Key_V), [this] { RunKeyCommand(ID_MENU_PASTE); });
    bind(QKeySequence(Qt::ALT | Qt::Key_Up), [this] { MoveRowAmongSiblings(false); });
    bind(QKeySequence(Qt::ALT | Qt::Key_Down), [this] { MoveRowAmongSiblings(true); });
}

// The menu's rules: commands on one row wait for a single selection, paste for
// something copied.
void SysCodeDlg::RunKeyCommand(int commandId)
{
    HTREEITEM caret = m_tree.GetCaretItem();
    const bool oneRow = m_tree.GetSelectedCount() <= 1;
    switch (commandId) {
    case ID_MENU_ADD_SIBLING:
    case ID_MENU_ADD_CHILD:
    case ID_MENU_COPY:
        if (!caret || !oneRow)
            return;
        break;
    case ID_MENU_PASTE:
        if (!caret || !oneRow || m_clipboard.GetChildCount() == 0 || m_nLevelBase <= 0)
            return;
        break;
    case ID_MENU_INSERT:
        if (m_tree.GetChildItem(m_tree.GetRootItem()))
            return; // a grid with rows adds beside the current one
        break;
    default:
        break;
    }
    m_pCurRow = caret;
    OnCommand(commandId);
}

// A move among siblings keeps the code's level and parent, so only the one-row
// rule of a drag can refuse it.
bool SysCodeDlg::MoveRowAmongSiblings(bool down)
{
    HTREEITEM row = m_tree.GetCaretItem();
    if (!row)
        return false;
    if (m_tree.GetSelectedCount() >= 2) {
        AfxMessageBox(QStringLiteral("一次不能移动超过一行系统编号") + g_strExclaim);
        return false;
    }
    HTREEITEM parent = m_tree.GetParentItem(row);
    HTREEITEM after = nullptr;
    if (down) {
        after = m_tree.GetNextSiblingItem(row);
        if (!after)
            return false;
    } else {
        HTREEITEM previous = m_tree.GetPrevSiblingItem(row);
        if (!previous)
            return false;
        after = m_tree.GetPrevSiblingItem(previous);
        if (!after)
            after = TVI_FIRST;
    }
    const SysCodeUndoGroup undoGroup(*this);
    if (!m_tree.MoveItem(row, parent, after))
        return false;
    m_tree.SelectItem(row);
    m_tree.EnsureVisible(row);
    return true;
}
