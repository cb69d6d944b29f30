#pragma once

#include "ZcDbCurve.h"

class ZcDbCircle : public ZcDbCurve
{
    ZCRX_DECLARE_MEMBERS(ZcDbCircle)
public:
    ZcDbCircle() = default;
    ZcDbCircle(const ZcGePoint3d& center, double radius)
        : m_center(center)
        , m_radius(radius)
    { }
    ZCDB_DECLARE_CLONE(ZcDbCircle)

    ZcGePoint3d center() const { return m_center; }
    void setCenter(const ZcGePoint3d& center) { m_center = center; }
    double radius() const { return m_radius; }
    void setRadius(double radius) { m_radius = radius; }
    // The extrusion direction: the z axis of the entity's own coordinate system.
    ZcGeVector3d normal() const { return m_normal; }
    void setNormal(const ZcGeVector3d& normal) { m_normal = normal; }

    Zcad::ErrorStatus transformBy(const ZcGeMatrix3d& transform) override;
    Zcad::ErrorStatus getGeomExtents(ZcDbExtents& extents) const override;

private:
    ZcGePoint3d m_center;
    double m_radius = 0.0;
    ZcGeVector3d m_normal { 0.0, 0.0, 1.0 };
};
