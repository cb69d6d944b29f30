#pragma once

// A circular arc, counter-clockwise from the start to the end angle (radians).
#include "ZcDbCurve.h"

class ZcDbArc : public ZcDbCurve
{
    ZCRX_DECLARE_MEMBERS(ZcDbArc)
public:
    ZcDbArc() = default;
    ZcDbArc(const ZcGePoint3d& center, double radius, double startAngle, double endAngle)
        : m_center(center)
        , m_radius(radius)
        , m_startAngle(startAngle)
        , m_endAngle(endAngle)
    { }
    ZCDB_DECLARE_CLONE(ZcDbArc)

    ZcGePoint3d center() const { return m_center; }
    void setCenter(const ZcGePoint3d& center) { m_center = center; }
    // The extrusion direction: the z axis of the entity's own coordinate system.
    ZcGeVector3d normal() const { return m_normal; }
    void setNormal(const ZcGeVector3d& normal) { m_normal = normal; }
    double radius() const { return m_radius; }
    void setRadius(double radius) { m_radius = radius; }
    double startAngle() const { return m_startAngle; }
    double endAngle() const { return m_endAngle; }
    void setStartAngle(double angle) { m_startAngle = angle; }
    void setEndAngle(double angle) { m_endAngle = angle; }

    Zcad::ErrorStatus transformBy(const ZcGeMatrix3d& transform) override;
    Zcad::ErrorStatus getGeomExtents(ZcDbExtents& extents) const override;

private:
    ZcGePoint3d m_center;
    double m_radius = 0.0;
    double m_startAngle = 0.0;
    double m_endAngle = 0.0;
    ZcGeVector3d m_normal { 0.0, 0.0, 1.0 };
};
