#include "ZcDbLine.h"

ZCRX_DEFINE_MEMBERS(ZcDbCurve, ZcDbEntity)
ZCRX_DEFINE_MEMBERS(ZcDbLine, ZcDbCurve)

Zcad::ErrorStatus ZcDbLine::transformBy(const ZcGeMatrix3d& transform)
{
    m_start = transform.apply(m_start);
    m_end = transform.apply(m_end);
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbLine::getGeomExtents(ZcDbExtents& extents) const
{
    extents.addPoint(m_start);
    extents.addPoint(m_end);
    return Zcad::eOk;
}
