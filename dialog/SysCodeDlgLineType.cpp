// The drop-down lists of the grid's cells and the editor each cell opens; the text
// picked from the drawing for the name and remark cells.
#include "SysCodeDlg.h"

#include "CHorizontalLayMng.h"
#include "CProj.h"
#include "DrawingTextPicker.h"
#include "Resource.h"
#include "SysCodeColumns.h"
#include "SysCodeRowLists.h"

namespace {
const QStringList& lineStyleItems()
{
    static const QStringList items = { QString(), QStringLiteral("按字符"),
        QStringLiteral("QVCenter ____ _ ____"), QStringLiteral("QVDash __ __ __ __"),
        QStringLiteral("QV_Busbar ----/----"), QStringLiteral("QVdashdot ____ . ____") };
    return items;
}

struct CellEditor
{
    int mode;
    int editorId;
    int buttonId;
};

CellEditor cellEditor(int logical)
{
    switch (logical) {
    case kColName:
        return { TLEM_EDITBUTTON, IDC_EDIT_NAME, IDC_EDIT_NAME_INNER };
    case kColColor:
        return { TLEM_BUTTON, 0, IDC_BTN_COLOR_CELL };
    case kColPipeInfo:
        return { TLEM_BUTTON, 0, IDC_BTN_PIPEINFO_CELL };
    case kColHorLaying:
    case kColVerLaying:
    case kColLineStyle:
        return { TLEM_LIST, IDC_COMBO_LIST, 0 };
    case kColLineString:
    case kColAlpha:
        return { TLEM_CODE, 0, 0 };
    case kColLineWidth:
        return { TLEM_COMBO, IDC_COMBO_LINEWIDTH, 0 };
    case kColRemark:
        return { TLEM_EDITBUTTON, IDC_EDIT_REMARK, IDC_EDIT_REMARK_INNER };
    default:
        return { TLEM_NONE, 0, 0 };
    }
}
} // namespace

void SysCodeDlg::GetComboItems(int logicalColumn, QStringList& items) const
{
    switch (logicalColumn) {
    case kColHorLaying: {
        QVector<SQvKsLayModeInfo> modes;
        // A floor whose modes cannot be read offers nothing, not even the empty item.
        if (!CHorizontalLayMng::GetAllLayModeInfos(CProj().GetCurFloorName(), modes))
            return;
        items << QString();
        for (const SQvKsLayModeInfo& mode : modes)
            items << mode.strName;
        return;
    }
    case kColVerLaying: {
        QStringList names;
        CHorizontalLayMng::GetVerticalLayModeName(names);
        items << QString() << names;
        return;
    }
    case kColLineStyle:
        items << lineStyleItems();
        return;
    case kColLineWidth:
        items << QStringLiteral("1") << QStringLiteral("5") << QStringLiteral("15") << QStringLiteral("25")
              << QStringLiteral("30");
        return;
    default:
        return;
    }
}

// A row inserted on its own reads the lists for itself; the rows of a fill or a
// paste take those their operation read once.
void SysCodeDlg::SetRowEditors(HTREEITEM row, bool withPipeColumns)
{
    const SysCodeRowLists lists(*this);
    for (int logical = 0; logical < kSysCodeColumnCount; ++logical) {
        const int column = SysCodeVisibleColumn(logical, withPipeColumns);
        if (column >= 0)
            m_tree.SetEditMode(row, cellEditor(logical).mode, lists.Items(logical), column);
    }
}

void SysCodeDlg::SetColumnEditModes(bool withPipeColumns)
{
    const SysCodeRowLists lists(*this);
    for (int logical = 0; logical < kSysCodeColumnCount; ++logical) {
        const int column = SysCodeVisibleColumn(logical, withPipeColumns);
        if (column >= 0)
            m_tree.SetColumnEditMode(column, cellEditor(logical).mode, lists.Items(logical));
    }
}

void SysCodeDlg::SetColumnEditors(bool withPipeColumns)
{
    for (int logical = 0; logical < kSysCodeColumnCount; ++logical) {
        const int column = SysCodeVisibleColumn(logical, withPipeColumns);
        const CellEditor editor = cellEditor(logical);
        if (column >= 0)
            m_tree.SetColumnEditorIds(column, editor.editorId, editor.buttonId);
    }
    // A changed line style or line-type characters means the line-type file is
    // written again after the dialog closes.
    m_tree.SetLineTypeColumns({ SysCodeVisibleColumn(kColLineStyle, withPipeColumns),
        SysCodeVisibleColumn(kColLineString, withPipeColumns) });
}

// Text picking is DrawingTextPicker's; the cells' editors ask the dialog for it.
QString SysCodeDlg::GetEntityText(const ZcDbText* text, bool insideBlock)
{
    return DrawingTextPicker::EntityText(text, insideBlock);
}

QString SysCodeDlg::PickTextFromDrawing()
{
    return DrawingTextPicker::Pick();
}
