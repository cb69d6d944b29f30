// The grid's context-menu commands. Copying is here; adding, inserting, deleting
// and pasting rows are the node operations that fill the remaining handlers.
#include "SysCodeDlg.h"

#include "SysCodeColumns.h"

#include <algorithm>

// Adding and inserting rows are not built yet: nothing changes, so nothing is marked
// modified.
bool SysCodeDlg::OnAddSiblingRow()
{
    return false;
}

bool SysCodeDlg::OnAddChildRow()
{
    return false;
}

bool SysCodeDlg::OnDeleteRows()
{
    return false;
}

bool SysCodeDlg::OnInsertRow()
{
    return false;
}

void SysCodeDlg::PasteRow(const CSysCodeData& /*clipboard*/, HTREEITEM /*row*/, bool /*bNewColors*/)
{ }

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

namespace {
int subtreeDepth(const CTreeListCtrl& tree, HTREEITEM row)
{
    int deepest = 0;
    for (HTREEITEM c = tree.GetChildItem(row); c; c = tree.GetNextSiblingItem(c))
        deepest = std::max(deepest, subtreeDepth(tree, c));
    return deepest + 1;
}
} // namespace

// Fills `record` from a row's cells; true when the row has no saved index yet.
bool SysCodeDlg::BuildRecordFromRow(CSysCodeData& record, HTREEITEM row) const
{
    const bool pipe = IsElectrical();
    const auto text
        = [&](int logical) { return m_tree.GetItemText(row, SysCodeVisibleColumn(logical, pipe)); };
    record.SetNodeName(text(kColName));
    record.SetMfcColor(m_tree.GetItemBackColor(row, kColColor));
    if (pipe) {
        const auto info = m_mapRowInfo.find(row);
        record.SetAddedMsg(info == m_mapRowInfo.end() ? QString() : info->second);
        record.SetHorLayingMode(text(kColHorLaying));
        record.SetVerLayingMode(text(kColVerLaying));
    }
    record.SetLineStyle(text(kColLineStyle));
    record.SetLineString(text(kColLineString));
    record.SetLineWidth(text(kColLineWidth).toDouble());
    record.SetAlpha(text(kColAlpha).toInt());
    record.SetDescribe(text(kColRemark));
    if (const int index = GetRowNodeIndex(row); index > 0) {
        record.SetNodeIndex(index);
        return false;
    }
    return true;
}

void SysCodeDlg::BuildChildRecords(CSysCodeData& parent, HTREEITEM row)
{
    for (HTREEITEM c = m_tree.GetChildItem(row); c; c = m_tree.GetNextSiblingItem(c)) {
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
    m_nLevelBase = subtreeDepth(m_tree, row);
    auto* record = new CSysCodeData;
    BuildChildRecords(*record, row);
    BuildRecordFromRow(*record, row);
    m_clipboard.AddDataToChild(m_nMaxIndex, record, false);
}
