#include "ZcDbAttributeDefinition.h"

ZCRX_DEFINE_MEMBERS(ZcDbAttributeDefinition, ZcDbText)

Zcad::ErrorStatus ZcDbAttributeDefinition::setTag(const QString& tag)
{
    if (tag.isEmpty() || tag.contains(u' '))
        return Zcad::eInvalidInput;
    m_tag = tag;
    return Zcad::eOk;
}
