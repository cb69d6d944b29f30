#include "ZcDbEntity.h"

ZCRX_DEFINE_MEMBERS(ZcDbEntity, ZcDbObject)

ZcDbEntity::ZcDbEntity() = default;
ZcDbEntity::~ZcDbEntity() = default;
ZcDbEntity::ZcDbEntity(const ZcDbEntity& other) = default;

Zcad::ErrorStatus ZcDbEntity::setLayer(const QString& layer)
{
    if (layer.isEmpty())
        return Zcad::eInvalidInput;
    m_layer = layer;
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbEntity::setColorIndex(quint16 index)
{
    if (index > kZcColorByLayer)
        return Zcad::eInvalidInput;
    m_colorIndex = index;
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbEntity::transformBy(const ZcGeMatrix3d&)
{
    return Zcad::eNotApplicable;
}

Zcad::ErrorStatus ZcDbEntity::explode(ZcDbVoidPtrArray&) const
{
    return Zcad::eNotApplicable;
}

Zcad::ErrorStatus ZcDbEntity::getGeomExtents(ZcDbExtents&) const
{
    return Zcad::eNotApplicable;
}
