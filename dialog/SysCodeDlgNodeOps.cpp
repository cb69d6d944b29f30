// The grid's context-menu commands: adding rows beside, below and after the last
// top-level row, deleting the selected rows unless a drawing uses their codes, and
// copying and pasting a row with its subtree. Everything stays in the grid until
// the dialog saves.
#include "SysCodeDlg.h"

#include "CISysCode.h"
#include "CQVCheckSysNameLegal.h"
#include "CQVSpecTypeInfoGet.h"
#include "CTreeListItem.h"
#include "ModuleStrings.h"
#include "QvKsColorTool.h"
#include "SysCodeCells.h"
#include "SysCodeColumns.h"
#include "SysCodeDefaults.h"
#include "SysCodePath.h"
#include "SysCodeRowLists.h"
#include "UniqueSysName.h"
#include "WinMessageBox.h"

#include <algorithm>
#include <vector>

namespace {
// Each new row takes the next colour of one sequence that runs for the module's
// life, so rows added one after another are told apart at a glance.
COLORREF NextNewRowColor()
{
    static COLORREF colour = 0xCCFFCC;
    colour = QvKsColorTool::RandomColor(colour, 0x555555);
    return colour;
}

constexpr COLORREF kFirstRowColor = 0xFFFF00;
} // namespace

HTREEITEM SysCodeDlg::AddSiblingRow()
{
    if (!m_pCurRow)
        return nullptr;
    return InsertAddedRow(m_pCurRow, m_tree.GetParentItem(m_pCurRow), m_pCurRow, false);
}

HTREEITEM SysCodeDlg::AddChildRow()
{
    if (!m_pCurRow || !CQVCheckSysNameLegal::CheckSysCodeLevel(m_tree.GetItemLevel(m_pCurRow) + 1))
        return nullptr;
    return InsertAddedRow(m_pCurRow, m_pCurRow, TVI_LAST, true);
}

HTREEITEM SysCodeDlg::AppendTopLevelRow()
{
    HTREEITEM last = m_tree.GetChildItem(m_tree.GetRootItem());
    if (!last)
        return nullptr;
    while (HTREEITEM next = m_tree.GetNextSiblingItem(last))
        last = next;
    return InsertAddedRow(last, m_tree.GetRootItem(), last, false);
}

// The row "A" of an empty specialty, with the cells a blank row starts with.
HTREEITEM SysCodeDlg::CreateFirstRow()
{
    CSysCodeData blank;
    SetBlankSysCodeAttributes(blank, IsElectrical());
    HTREEITEM row = InsertNewRow(blank, m_tree.GetRootItem(), TVI_FIRST, QStringLiteral("A"), kFirstRowColor);
    UpdateData(false);
    return row;
}

// A row made from `from`'s cells, named after it by the new-name rules so that it
// clashes with no code of the specialty, in the next new-row colour.
HTREEITEM SysCodeDlg::InsertAddedRow(HTREEITEM from, HTREEITEM parent, HTREEITEM after, bool child)
{
    CSysCodeData snapshot;
    BuildRecordFromRow(snapshot, from);
    const QString fullName
        = MakeNewRowName(GetRowAmpersandName(from), child, CollectFoldedNamesBelow(parent));
    const QString name = fullName.mid(fullName.lastIndexOf(QLatin1Char('&')) + 1);
    m_tree.SetItemState(from, 0, LVIS_SELECTED);
    HTREEITEM row = InsertNewRow(snapshot, parent, after, name, NextNewRowColor());
    FocusNewRow(nullptr, row);
    UpdateData(false);
    if (row)
        m_tree.EnsureVisible(row);
    return row;
}

// A row made in the dialog: it carries no stored index until the dialog saves.
HTREEITEM SysCodeDlg::InsertNewRow(
    const CSysCodeData& node, HTREEITEM parent, HTREEITEM after, const QString& name, COLORREF colour)
{
    const bool pipe = IsElectrical();
    HTREEITEM row = InsertNodeRow(node, parent, pipe, after);
    if (!row)
        return nullptr;
    const int colourColumn = SysCodeVisibleColumn(kColColor, pipe);
    m_tree.SetItemText(row, name, 0);
    m_tree.SetItemColor(row, colour, colourColumn);
    m_tree.SetItemBackColor(row, colour, colourColumn);
    m_tree.SetItemData(row, 0);
    return row;
}

void SysCodeDlg::FocusNewRow(HTREEITEM previous, HTREEITEM row)
{
    if (previous)
        m_tree.SetItemState(previous, 0, LVIS_SELECTED);
    if (!row)
        return;
    m_tree.SetItemState(row, 0, LVIS_SELECTED);
    m_tree.SetItemState(row, LVIS_FOCUSED | LVIS_SELECTED, LVIS_FOCUSED | LVIS_SELECTED);
}

QString SysCodeDlg::GetRowAmpersandName(HTREEITEM row) const
{
    return AmpersandSysCodePath(GetRowFullName(row));
}

// A new row's full name can only meet the full names of the rows beside it, so
// only those are collected: the children of every row whose full name is
// `parent`'s, ignoring case. Read straight from the grid's items, which is cheaper
// than its checked accessors on a large specialty.
QSet<QString> SysCodeDlg::CollectFoldedNamesBelow(HTREEITEM parent) const
{
    QStringList path;
    for (HTREEITEM p = parent; p && p != m_tree.GetRootItem(); p = m_tree.GetParentItem(p))
        path.prepend(m_tree.GetItemText(p, 0).toCaseFolded());
    std::vector<const CTreeListItem*> level { m_tree.GetRootItem() };
    for (const QString& name : std::as_const(path)) {
        std::vector<const CTreeListItem*> next;
        for (const CTreeListItem* row : level) {
            for (const CTreeListItem* c : row->children()) {
                if (c->cell(0).text.toCaseFolded() == name)
                    next.push_back(c);
            }
        }
        level.swap(next);
    }
    const QString prefix = path.isEmpty() ? QString() : path.join(QLatin1Char('&')) + QLatin1Char('&');
    QSet<QString> names;
    for (const CTreeListItem* row : level) {
        for (const CTreeListItem* c : row->children())
            names.insert(prefix + c->cell(0).text.toCaseFolded());
    }
    return names;
}

QString SysCodeDlg::MakeUniqueChildName(const QString& name, HTREEITEM parent) const
{
    QStringList siblings;
    for (HTREEITEM c = m_tree.GetChildItem(parent); c; c = m_tree.GetNextSiblingItem(c))
        siblings.append(m_tree.GetItemText(c, 0));
    return ::MakeUniqueChildName(name, siblings);
}

// Bottom to top, so a deletion never shifts a row still to be visited. A code that a
// drawing uses stays; the user hears of all such rows once.
bool SysCodeDlg::DeleteSelectedRows()
{
    const int count = m_tree.GetItemCount();
    if (count == 0) {
        UpdateData(false);
        return false;
    }
    // The selected rows from the last up: a row deleted moves none of those before
    // it. Their state is read straight from the rows, once.
    std::vector<HTREEITEM> selected;
    for (int r = 0; r < count; ++r) {
        HTREEITEM row = m_tree.GetItemFromRow(r);
        if (row && (row->state() & LVIS_SELECTED))
            selected.push_back(row);
    }
    bool result = false;
    bool refused = false;
    QStringList usage;
    std::optional<bool> despiteUnreadFloors;
    for (auto it = selected.rbegin(); it != selected.rend(); ++it) {
        HTREEITEM row = *it;
        if (m_tree.GetItemLevel(row) <= 0)
            continue; // no longer the grid's (a question's answer may run other code)
        if (m_tree.ItemHasChildren(row)
            && MessageBoxExW(GetActiveWindow(),
                   QStringLiteral("删除所选行将连同其下级一起被删除，是否确定删除") + g_strQuestion,
                   g_strCaption, kMbQuestion)
                == IDNO)
            continue;
        if (IsSubtreeInUse(row)) {
            refused = true;
            usage = DescribeUsage(row) + usage;
            continue;
        }
        if (!MayDeleteDespiteUnreadFloors(row, despiteUnreadFloors))
            continue;
        result = m_tree.DeleteItem(row);
    }
    // The user learns which floors hold the codes that stay.
    if (refused)
        MessageBoxExW(GetActiveWindow(),
            QStringLiteral("该节点或者该节点的子级系统编号已被使用,不能删除") + g_strExclaim
                + (usage.isEmpty() ? QString() : QLatin1Char('\n') + usage.join(QLatin1Char('\n'))),
            g_strCaption, kMbWarning);
    UpdateData(false);
    return result;
}

// The look-ups before have read every floor they could: a floor that could not be
// read may still use the code, so the user decides, knowing which floors and why.
bool SysCodeDlg::MayDeleteDespiteUnreadFloors(HTREEITEM row, std::optional<bool>& answer)
{
    if (!HasSavedCode(row))
        return true;
    const QStringList floors = DescribeUnreadableFloors();
    if (floors.isEmpty())
        return true;
    if (!answer)
        answer = MessageBoxExW(GetActiveWindow(),
                     QStringLiteral(
                         "以下楼层的图纸缺失或无法读取，无法确认所选系统编号是否已被使用：\n%1\n是否仍然删除")
                             .arg(floors.join(QLatin1Char('\n')))
                         + g_strQuestion,
                     g_strCaption, kMbQuestionDefaultNo)
            == IDYES;
    return *answer;
}

bool SysCodeDlg::HasSavedCode(HTREEITEM row) const
{
    if (GetRowNodeIndex(row) > 0)
        return true;
    for (HTREEITEM c = m_tree.GetChildItem(row); c; c = m_tree.GetNextSiblingItem(c)) {
        if (HasSavedCode(c))
            return true;
    }
    return false;
}

// Only a saved code can be used by a drawing: rows made in the dialog never are.
bool SysCodeDlg::IsRowInUse(HTREEITEM row)
{
    const int index = row ? GetRowNodeIndex(row) : 0;
    if (index <= 0)
        return false;
    const int spec = int(CQVSpecTypeInfoGet::GetSpecTypeByName(m_strSpec));
    return IsCodeIndexUsed(QString::asprintf("%d\\%d", spec, index));
}

bool SysCodeDlg::IsSubtreeInUse(HTREEITEM row)
{
    UpdateData(true);
    if (!row)
        return false;
    if (IsRowInUse(row))
        return true;
    for (HTREEITEM c = m_tree.GetChildItem(row); c; c = m_tree.GetNextSiblingItem(c)) {
        if (IsSubtreeInUse(c))
            return true;
    }
    return false;
}

void SysCodeDlg::PasteRow(const CSysCodeData& clipboard, HTREEITEM row, bool bNewColors)
{
    if (clipboard.GetChildCount() == 0 || !row)
        return;
    const CSysCodeData& source = *clipboard.GetChild(0);
    if (!CQVCheckSysNameLegal::CheckSysCodeLevel(m_tree.GetItemLevel(row) + m_nLevelBase - 1))
        return;
    HTREEITEM parent = m_tree.GetParentItem(row);
    const SysCodeRowLists lists(*this);
    HTREEITEM pasted = InsertNewRow(
        source, parent, row, MakeUniqueChildName(source.GetNodeName(), parent), NextNewRowColor());
    if (!pasted)
        return;
    InsertPastedChildren(source, pasted, bNewColors);
    FocusNewRow(row, pasted);
    UpdateData(false);
    m_tree.EnsureVisible(pasted);
}

// Below a pasted row its codes keep their names: under a new parent they cannot clash.
void SysCodeDlg::InsertPastedChildren(const CSysCodeData& node, HTREEITEM parent, bool bNewColors)
{
    for (const CSysCodeData* child : node.GetChildren()) {
        HTREEITEM row = InsertNewRow(*child, parent, TVI_LAST, child->GetNodeName(),
            bNewColors ? NextNewRowColor() : child->GetMfcColor());
        if (row)
            InsertPastedChildren(*child, row, bNewColors);
    }
}

// Forgets the copied rows: an empty, nameless root again.
void SysCodeDlg::ClearClipboard()
{
    m_clipboard.DeleteData();
    m_clipboard.SetNodeIndex(0);
    m_clipboard.SetNodeName(QString());
    m_clipboard.SetDescribe(QString());
    m_clipboard.SetAddedMsg(QString());
    m_clipboard.SetHorLayingMode(QString());
    m_clipboard.SetVerLayingMode(QString());
    m_clipboard.SetLineStyle(QString());
    m_clipboard.SetLineString(QString());
    m_clipboard.SetLineWidth(1.0);
    m_clipboard.SetAlpha(0);
    m_clipboard.SetParent(nullptr);
}

// Levels of a row's subtree: 1 for a row without children.
int SysCodeDlg::GetSubtreeDepth(HTREEITEM row) const
{
    int deepest = 0;
    for (HTREEITEM c = m_tree.GetChildItem(row); c; c = m_tree.GetNextSiblingItem(c))
        deepest = std::max(deepest, GetSubtreeDepth(c));
    return deepest + 1;
}

// Fills `record` from a row's values; true when the row has no saved index yet. A
// save or an exchange turns every row into a record: the cells are read straight
// from the row, which is cheaper than the grid's checked accessors.
bool SysCodeDlg::BuildRecordFromRow(CSysCodeData& record, HTREEITEM row) const
{
    const bool pipe = IsElectrical();
    const CTreeListItemTree& tree = m_tree.GetModel()->tree();
    record.SetNodeName(m_tree.GetItemText(row, 0));
    record.SetMfcColor(m_tree.GetItemBackColor(row, kColColor));
    for (int logical = 1; logical < kSysCodeColumnCount; ++logical) {
        const int column = SysCodeVisibleColumn(logical, pipe);
        if (column >= 0 && logical != kColColor)
            SetSysCodeField(record, logical, tree.value(row, column));
    }
    if (const int index = int(row->data()); index > 0) {
        record.SetNodeIndex(index);
        return false;
    }
    return true;
}

void SysCodeDlg::BuildChildRecords(CSysCodeData& parent, HTREEITEM row)
{
    for (CTreeListItem* c : m_tree.GetModel()->tree().resolve(row)->children()) {
        auto* record = new CSysCodeData;
        BuildChildRecords(*record, c);
        if (BuildRecordFromRow(*record, c))
            record->SetNodeIndex(++m_nMaxIndex);
        parent.AddDataToChild(m_nMaxIndex, record, false);
    }
}

// The row with every row below it, all attributes, into the copy buffer.
void SysCodeDlg::CopyRow(HTREEITEM row)
{
    if (!row)
        return;
    ClearClipboard();
    m_nLevelBase = GetSubtreeDepth(row);
    auto* record = new CSysCodeData;
    BuildChildRecords(*record, row);
    BuildRecordFromRow(*record, row);
    m_clipboard.AddDataToChild(m_nMaxIndex, record, false);
}
