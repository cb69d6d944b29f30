// The drop-down lists of the grid's cells, the editor each cell opens, and picking
// text objects in the drawing for the name and remark cells.
#include "SysCodeDlg.h"

#include "CHorizontalLayMng.h"
#include "CProj.h"
#include "Resource.h"
#include "SysCodeColumns.h"
#include "SysCodeEditChecks.h"
#include "SysCodeRowLists.h"
#include "ZcDbAttribute.h"
#include "ZcDbAttributeDefinition.h"
#include "ZcDbBlockReference.h"
#include "ZcDbMText.h"
#include "ZcDbObjectId.h"
#include "ZcDbText.h"
#include "ZcDbVoidPtrArray.h"
#include "ZcEdSelection.h"
#include "ZcUtPrintf.h"

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

QString mtextText(const ZcDbMText* mtext)
{
    return mtext->contents().isEmpty() ? QString() : MTextPlainText(mtext->contents());
}

// The text of one exploded piece of a block reference.
QString pieceText(ZcDbEntity* piece)
{
    if (auto* text = ZcDbText::cast(piece))
        return SysCodeDlg::GetEntityText(text, true);
    if (auto* mtext = ZcDbMText::cast(piece))
        return mtextText(mtext);
    return QString();
}

QString blockText(const ZcDbBlockReference* block)
{
    ZcDbVoidPtrArray pieces;
    if (block->explode(pieces) != Zcad::eOk)
        return QString();
    QStringList texts;
    for (void* p : pieces) {
        auto* piece = static_cast<ZcDbEntity*>(p);
        texts << pieceText(piece);
        delete piece;
    }
    return JoinPickedTexts(texts);
}

QString pickedEntityText(const ZcDbObjectId& id)
{
    ZcDbEntity* entity = nullptr;
    if (zcdbOpenObject(entity, id, ZcDb::kForRead) != Zcad::eOk || !entity)
        return QString();
    QString text;
    if (auto* dbText = ZcDbText::cast(entity))
        text = SysCodeDlg::GetEntityText(dbText, false);
    else if (auto* mtext = ZcDbMText::cast(entity))
        text = mtextText(mtext);
    else if (auto* block = ZcDbBlockReference::cast(entity))
        text = blockText(block);
    entity->close();
    return text;
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

QString SysCodeDlg::GetEntityText(const ZcDbText* text, bool insideBlock)
{
    const auto* definition = ZcDbAttributeDefinition::cast(text);
    const auto* attribute = ZcDbAttribute::cast(text);
    if (insideBlock) {
        if (definition || (attribute && attribute->isInvisible()))
            return QString();
        return text->textString();
    }
    if (definition)
        return definition->tag();
    if (attribute)
        return attribute->tag();
    return text->textString();
}

QString SysCodeDlg::PickTextFromDrawing()
{
    zcutPrintf(QStringLiteral("\n请选择文字对象:"));
    zds_name selection = { 0, 0 };
    if (zcedSSGet(u"-W-WP", nullptr, nullptr, nullptr, selection) != RTNORM)
        return QString();
    qint32 length = 0;
    zcedSSLength(selection, &length);
    std::vector<ZcDbObjectId> ids;
    for (qint32 i = 0; i < length; ++i) {
        zds_name entity = { 0, 0 };
        ZcDbObjectId id;
        if (zcedSSName(selection, i, entity) == RTNORM && zcdbGetObjectId(id, entity) == Zcad::eOk)
            ids.push_back(id);
    }
    zcedSSFree(selection);
    QStringList texts;
    for (const ZcDbObjectId& id : ids)
        texts << pickedEntityText(id);
    return JoinPickedTexts(texts);
}
