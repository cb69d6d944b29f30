// "导出" and "导入": the specialty's codes written to a file, and such a file merged
// into them; also the reload that RefreshSyscode asks for. The files themselves are
// SysCodeExchange's.
#include "SysCodeDlg.h"

#include "SysCodeExchange.h"
#include "SysCodeMerge.h"
#include "SysCodeUndoGroup.h"

bool SysCodeDlg::PreSaveForExchange(CSysCodeData& root)
{
    if (!IsModified()) {
        BuildChildRecords(root, m_tree.GetRootItem());
        return true;
    }
    if (!StoreGridCodes(m_strSpec, QString(), root, false))
        return false;
    StoreRowIndexes(root, m_tree.GetRootItem());
    SetSavedFlags();
    return true;
}

SysCodeExchange SysCodeDlg::Exchange()
{
    return SysCodeExchange(this, m_strSpec, [this](CSysCodeData& root) { BuildGridRecords(root); });
}

void SysCodeDlg::OnExport()
{
    CSysCodeData root;
    if (!PreSaveForExchange(root))
        return;
    const SysCodeExchange exchange = Exchange();
    const std::optional<QString> path = exchange.ChooseExportFile();
    if (!path || !exchange.Write(root, *path))
        return;
    SysCodeExchange::ShowNotice(QStringLiteral("导出完成"));
}

// The file is read and shown as a preview before anything changes: cancelling it
// leaves the grid and the store as they were.
void SysCodeDlg::OnImport()
{
    const SysCodeExchange exchange = Exchange();
    const std::optional<QString> path = exchange.ChooseImportFile();
    if (!path)
        return;
    CSysCodeData imported;
    if (!exchange.ReadForImport(*path, imported))
        return;
    CSysCodeData root;
    if (!PreSaveForExchange(root))
        return;
    MergeImported(root, imported);
    SysCodeExchange::ShowNotice(QStringLiteral("导入完成"));
    m_bLineTypesChanged = true;
}

// The file is read whole before the grid is stored: a file that is refused changes
// nothing.
bool SysCodeDlg::ReloadFromSysCodeFile(const QString& filePath)
{
    CSysCodeData imported;
    if (!Exchange().ReadSysCodeFile(filePath, imported))
        return false;
    CSysCodeData root;
    if (!PreSaveForExchange(root))
        return false;
    MergeImported(root, imported);
    return true;
}

// The grid's codes as records, for comparing with what a file brings.
void SysCodeDlg::BuildGridRecords(CSysCodeData& root)
{
    // Turning rows into records numbers the unsaved ones; a look must not.
    const int maxIndex = m_nMaxIndex;
    BuildChildRecords(root, m_tree.GetRootItem());
    m_nMaxIndex = maxIndex;
}

void SysCodeDlg::MergeImported(CSysCodeData& root, const CSysCodeData& imported)
{
    MergeSysCodeTree(m_nMaxIndex, &root, &imported, true);
    const SysCodeUndoGroup undoGroup(*this);
    FillRowsFromRoot(root);
}

// The grid shows `root`'s codes in the current specialty's columns.
void SysCodeDlg::FillRowsFromRoot(const CSysCodeData& root)
{
    const bool withPipeColumns = IsElectrical();
    m_tree.SetRedraw(false);
    m_tree.DeleteAllItems();
    if (root.GetChildCount() > 0) {
        InsertNodeRows(root, TVI_ROOT, withPipeColumns);
        m_tree.Expand(m_tree.GetRootItem(), TVE_EXPAND);
    }
    m_tree.SetRedraw(true);
    // A refill of its own (after a save) starts the history afresh; a merge
    // being recorded is one step of it.
    if (!m_tree.IsUndoRecording())
        SetCleanPoint();
}
