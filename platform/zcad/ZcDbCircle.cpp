#include "ZcDbCircle.h"

ZCRX_DEFINE_MEMBERS(ZcDbCircle, ZcDbCurve)

Zcad::ErrorStatus ZcDbCircle::transformBy(const ZcGeMatrix3d& transform)
{
    m_center = transform.apply(m_center);
    m_radius *= transform.scaleXY();
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbCircle::getGeomExtents(ZcDbExtents& extents) const
{
    extents.addPoint(m_center + ZcGeVector3d(-m_radius, -m_radius, 0));
    extents.addPoint(m_center + ZcGeVector3d(m_radius, m_radius, 0));
    return Zcad::eOk;
}
