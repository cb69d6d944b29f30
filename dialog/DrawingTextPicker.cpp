#include "DrawingTextPicker.h"

#include "SysCodeEditChecks.h"
#include "ZcDbAttribute.h"
#include "ZcDbAttributeDefinition.h"
#include "ZcDbBlockReference.h"
#include "ZcDbMText.h"
#include "ZcDbObjectId.h"
#include "ZcDbText.h"
#include "ZcDbVoidPtrArray.h"
#include "ZcEdSelection.h"
#include "ZcUtPrintf.h"

#include <QStringList>

#include <vector>

namespace {
QString mtextText(const ZcDbMText* mtext)
{
    return mtext->contents().isEmpty() ? QString() : MTextPlainText(mtext->contents());
}

// The text of one exploded piece of a block reference.
QString pieceText(ZcDbEntity* piece)
{
    if (auto* text = ZcDbText::cast(piece))
        return DrawingTextPicker::EntityText(text, true);
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
        text = DrawingTextPicker::EntityText(dbText, false);
    else if (auto* mtext = ZcDbMText::cast(entity))
        text = mtextText(mtext);
    else if (auto* block = ZcDbBlockReference::cast(entity))
        text = blockText(block);
    entity->close();
    return text;
}
} // namespace

QString DrawingTextPicker::EntityText(const ZcDbText* text, bool insideBlock)
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

QString DrawingTextPicker::Pick()
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
