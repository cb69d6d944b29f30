#include "ZcDbAttribute.h"

#include "ZcDbAttributeDefinition.h"

ZCRX_DEFINE_MEMBERS(ZcDbAttribute, ZcDbText)

Zcad::ErrorStatus ZcDbAttribute::setTag(const QString& tag)
{
    if (tag.isEmpty() || tag.contains(u' '))
        return Zcad::eInvalidInput;
    m_tag = tag;
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbAttribute::setAttributeFromBlock(
    const ZcDbAttributeDefinition* definition, const ZcGeMatrix3d& blockTransform)
{
    if (!definition)
        return Zcad::eNullObjectPointer;
    m_tag = definition->tag();
    m_flags = definition->flags();
    setTextString(definition->textString());
    setPosition(definition->position());
    setAlignmentPoint(definition->alignmentPoint());
    setHeight(definition->height());
    setRotation(definition->rotation());
    setHorizontalMode(definition->horizontalMode());
    setVerticalMode(definition->verticalMode());
    setLayer(definition->layer());
    setColorIndex(definition->colorIndex());
    return transformBy(blockTransform);
}
