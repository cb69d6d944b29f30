#include "ZcDbArc.h"

ZCRX_DEFINE_MEMBERS(ZcDbArc, ZcDbCurve)

Zcad::ErrorStatus ZcDbArc::transformBy(const ZcGeMatrix3d& transform)
{
    const double turn = transform.rotationAngleZ();
    m_center = transform.apply(m_center);
    m_radius *= transform.scaleXY();
    m_startAngle += turn;
    m_endAngle += turn;
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbArc::getGeomExtents(ZcDbExtents& extents) const
{
    // The whole circle: a safe box for drawing and zooming.
    extents.addPoint(m_center + ZcGeVector3d(-m_radius, -m_radius, 0));
    extents.addPoint(m_center + ZcGeVector3d(m_radius, m_radius, 0));
    return Zcad::eOk;
}
