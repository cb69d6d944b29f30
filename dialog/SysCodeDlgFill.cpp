// Opening the dialog: the specialty list, the columns, the rows of a specialty,
// the initial selection, the settings and the pipeline items of every floor.
#include "SysCodeDlg.h"

#include "CISysCode.h"
#include "CProj.h"
#include "CtrlId.h"
#include "IQvKsAppProfile.h"
#include "ModuleStrings.h"
#include "PipelineItems.h"
#include "QvKsDataMng.h"
#include "QvKsProfile.h"
#include "Resource.h"
#include "Specialty.h"
#include "SysCodeCells.h"
#include "SysCodeColumns.h"
#include "SysCodeIcon.h"
#include "SysCodeOrder.h"
#include "WinMessageBox.h"
#include "ZcDbHostApplicationServices.h"

#include <QCheckBox>
#include <QLineEdit>

#include <algorithm>
#include <memory>

bool SysCodeDlg::OnInitDialog()
{
    setWindowIcon(LoadSysCodeIcon(IDI_SYSCODE_ICON));
    AnchorControls();
    if (!m_bAllowImportExport) {
        GetDlgItem(this, IDC_BTN_IMPORT)->setVisible(false);
        GetDlgItem(this, IDC_BTN_EXPORT)->setVisible(false);
    }
    m_layout.Layout();
    FillSpecList();
    InsertColumns(false);
    SetGridStyles();
    if (m_strSpec.isEmpty())
        m_strSpec = CProj().GetCurrentSpec();
    if (m_strSpec.isEmpty() && m_specList.count() > 0)
        m_strSpec = m_specList.item(0)->text();
    // A store that cannot give the codes is said so, and the dialog does not open.
    if (!FillSysCodeTree(m_strSpec))
        return false;
    UpdateData(true);
    SelectInitialCode();

    // The working drawing may be large: it is scanned at the first question about a
    // code's use (a delete, the usage view), not before the dialog shows. The host
    // keeps that drawing while the modal dialog runs.
    m_usedCodeIndexes.clear();
    ZcDbDatabase* working = zcdbHostApplicationServices()->workingDatabase();
    m_usedCodeIndexes.Defer([this, working] { ScanModelSpace(working); });

    m_nDispAddedMsg = CISysCode::ReadSysCodeConfigFile(QvKsProfile::GetAppProfile()->GetPath());
    m_nDispAddedMsgAtOpen = m_nDispAddedMsg;
    ClearClipboard();

    CISysCode::GetLineTypeScale(m_strScale);
    m_editScale.SetLimits(0.0, 9999.0);
    m_editScale.SetWindowText(m_strScale);

    UpdateData(false);
    UpdateElectricalButtons();
    LoadPipelineInfo();
    m_bInitialised = true;
    return true;
}

// The specialties in their usual order, as far as the project has them; any other
// specialty of the project after them.
void SysCodeDlg::FillSpecList()
{
    const QStringList known
        = { g_strSpecWater, g_strSpecElectrical, g_strSpecHvac, g_strSpecFire, g_strSpecLowVoltage };
    const QStringList stored = CISysCode::GetAllSpecNames();
    QStringList names;
    for (const QString& spec : known) {
        if (stored.isEmpty() || stored.contains(spec))
            names << spec;
    }
    for (const QString& spec : stored) {
        if (!names.contains(spec))
            names << spec;
    }
    const QSignalBlocker blocker(&m_specList);
    m_specList.clear();
    m_specList.addItems(names);
}

void SysCodeDlg::InsertColumns(bool withPipeColumns)
{
    for (const SysCodeColumnInfo& column : SysCodeColumnSet(withPipeColumns))
        m_tree.InsertColumn(m_tree.GetColumnCount(), column.title, column.format, column.width, -1);
    const auto ids = [&](int logical, int editorId, int buttonId) {
        const int visible = SysCodeVisibleColumn(logical, withPipeColumns);
        if (visible >= 0)
            m_tree.SetColumnEditorIds(visible, editorId, buttonId);
    };
    ids(kColName, IDC_EDIT_NAME, 0);
    ids(kColColor, 0, IDC_BTN_COLOR_CELL);
    ids(kColPipeInfo, 0, IDC_BTN_PIPEINFO_CELL);
    ids(kColLineWidth, IDC_COMBO_LINEWIDTH, 0);
    ids(kColRemark, IDC_EDIT_REMARK, 0);
    // The width, the transparency and the pipeline information hold values; their
    // cells show texts made from them.
    for (int logical = 0; logical < kSysCodeColumnCount; ++logical) {
        const int visible = SysCodeVisibleColumn(logical, withPipeColumns);
        if (visible >= 0 && IsTypedSysCodeColumn(logical))
            m_tree.SetColumnValueFormat(
                visible, [logical](const QVariant& value) { return SysCodeValueText(logical, value); },
                [logical](const QString& text) { return SysCodeTextValue(logical, text); });
    }
    // Sibling codes sort by name with their trailing numbers as numbers (P2 before
    // P10) wherever the grid places a row in order.
    m_tree.SetColumnCompare(0, [](HTREEITEM first, HTREEITEM second) {
        return CompareSysCodeNames(first->cell(0).text, second->cell(0).text);
    });
    SetColumnEditors(withPipeColumns);
}

void SysCodeDlg::SetGridStyles()
{
    m_tree.ModifyStyle(0, TVS_HASBUTTONS | TVS_HASLINES | TVS_LINESATROOT | TVS_SHOWSELALWAYS);
    m_tree.ModifyExtendedStyle(0, LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT | LVS_EX_INFOTIP);
    m_tree.SetBkColor(kSysCodeGridBkColor);
}

bool SysCodeDlg::LoadSpecCodes(const QString& spec, CSysCodeData& root, quint64& stamp) const
{
    if (CISysCode::GetSpecCodeInfos(root, spec, stamp))
        return true;
    // An empty grid would pass for a specialty without codes, and a save would then
    // store that over the codes the store could not give.
    MessageBoxExW(GetActiveWindow(),
        QStringLiteral("无法从项目数据中读取%1的系统编号：\n%2").arg(spec, QvKsDataMng::LastError())
            + g_strExclaim,
        g_strCaption, kMbWarning);
    return false;
}

bool SysCodeDlg::FillSysCodeTree(const QString& spec)
{
    CSysCodeData root;
    quint64 stamp = 0;
    if (!LoadSpecCodes(spec, root, stamp))
        return false;
    FillSysCodeTree(spec, root, stamp);
    return true;
}

void SysCodeDlg::FillSysCodeTree(const QString& spec, const CSysCodeData& root, quint64 stamp)
{
    // Another specialty's rows are not what was being looked for.
    m_findBar->CloseIfOpen();
    const bool withPipeColumns = IsElectricalSpec(spec);
    m_tree.SetRedraw(false);
    m_tree.DeleteColumn(0); // every row, then every column
    InsertColumns(withPipeColumns);
    if (root.GetChildCount() > 0) {
        InsertNodeRows(root, TVI_ROOT, withPipeColumns);
        m_tree.Expand(m_tree.GetRootItem(), TVE_EXPAND);
        UpdateData(false);
    }
    // Codes made here are numbered past every index the store ever gave out.
    m_nMaxIndex = std::max(m_nMaxIndex, root.GetNodeIndex());
    KeepStoredCodes(root, stamp);
    m_tree.SetRedraw(true);
    SetCleanPoint();
}

HTREEITEM SysCodeDlg::InsertNodeRow(
    const CSysCodeData& node, HTREEITEM parent, bool withPipeColumns, HTREEITEM insertAfter, bool ownEditors)
{
    HTREEITEM row = m_tree.InsertItem(node.GetNodeName(), parent, insertAfter);
    if (!row)
        return nullptr;
    for (int logical = 0; logical < kSysCodeColumnCount; ++logical) {
        const int column = SysCodeVisibleColumn(logical, withPipeColumns);
        if (column < 0)
            continue;
        if (logical == kColColor) {
            m_tree.SetItemColor(row, node.GetMfcColor(), column);
            m_tree.SetItemBackColor(row, node.GetMfcColor(), column);
            continue;
        }
        if (logical != kColName)
            m_tree.SetItemValue(row, SysCodeCellValue(node, logical, withPipeColumns), column);
        m_tree.SetItemBackColor(row, kSysCodeGridBkColor, column);
    }
    if (ownEditors)
        SetRowEditors(row, withPipeColumns);
    m_tree.SetItemData(row, quintptr(std::max(node.GetNodeIndex(), 0)));
    m_nMaxIndex = std::max(m_nMaxIndex, node.GetNodeIndex());
    return row;
}

// The rows of a fill take their editors and drop-down lists from their columns,
// read once for the fill.
void SysCodeDlg::InsertNodeRows(const CSysCodeData& node, HTREEITEM parent, bool withPipeColumns)
{
    SetColumnEditModes(withPipeColumns);
    const auto insert = [&](auto&& self, const CSysCodeData& from, HTREEITEM under) -> void {
        for (const CSysCodeData* child : from.GetChildren()) {
            HTREEITEM row = InsertNodeRow(*child, under, withPipeColumns, TVI_LAST, false);
            if (row && child->GetChildCount() > 0)
                self(self, *child, row);
        }
    };
    insert(insert, node, parent);
}

void SysCodeDlg::SelectInitialCode()
{
    HTREEITEM row = FindRowByFullName(m_strSelCode);
    if (!row)
        return;
    m_tree.SelectItem(row);
    m_tree.EnsureVisible(row);
}

void SysCodeDlg::LoadPipelineInfo()
{
    QVector<SQvKsFloorData> floors;
    if (!CProj().GetAllFloorData(floors))
        return;
    for (const SQvKsFloorData& floor : floors) {
        QVector<SQvKsQdInfo> qdItems;
        QVector<SQvKsDeInfo> deItems;
        LoadFloorPipelineItems(floor.strName, qdItems, deItems);
        m_mapQdInfo[floor.strName] += qdItems;
        m_mapDeInfo[floor.strName] += deItems;
    }
}

void SysCodeDlg::UpdateElectricalButtons()
{
    const bool electrical = IsElectrical();
    GetDlgItem(this, IDC_BTN_BATCH_MODIFY)->setEnabled(electrical);
    GetDlgItem(this, IDC_BTN_DELETE_PIPEINFO)->setEnabled(electrical);
}
