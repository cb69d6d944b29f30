#pragma once

// A planar polyline at an elevation: vertices with the bulge of the segment that
// starts at each (0 straight, tan(angle/4) for an arc segment).
#include "ZcDbCurve.h"

#include <span>

class ZcDbPolyline : public ZcDbCurve
{
    ZCRX_DECLARE_MEMBERS(ZcDbPolyline)
public:
    struct Vertex
    {
        double x = 0.0;
        double y = 0.0;
        double bulge = 0.0;
    };

    ZcDbPolyline() = default;
    ~ZcDbPolyline() override;
    ZCDB_DECLARE_CLONE(ZcDbPolyline)

    int numVerts() const { return int(m_count); }
    Zcad::ErrorStatus addVertexAt(int index, const ZcGePoint3d& point, double bulge = 0.0);
    void appendVertex(double x, double y, double bulge = 0.0);
    Zcad::ErrorStatus getPointAt(int index, ZcGePoint3d& point) const;
    Zcad::ErrorStatus getBulgeAt(int index, double& bulge) const;
    std::span<const Vertex> vertices() const { return { m_vertices, m_count }; }
    void reserveVertices(size_t count);

    bool isClosed() const { return m_closed; }
    void setClosed(bool closed) { m_closed = closed; }
    double elevation() const { return m_elevation; }
    void setElevation(double elevation) { m_elevation = elevation; }
    // The width the whole polyline is drawn with (0: a thin line).
    double constantWidth() const { return m_constantWidth; }
    void setConstantWidth(double width) { m_constantWidth = float(width); }
    // The extrusion direction: the z axis of the entity's own coordinate system.
    ZcGeVector3d normal() const { return m_normal; }
    void setNormal(const ZcGeVector3d& normal) { m_normal = normal; }

    Zcad::ErrorStatus transformBy(const ZcGeMatrix3d& transform) override;
    Zcad::ErrorStatus getGeomExtents(ZcDbExtents& extents) const override;

protected:
    ZcDbPolyline(const ZcDbPolyline& other);

private:
    void setCapacity(size_t capacity);

    // The vertices sit in memory of their own: from the heap, or, for a polyline
    // a drawing reader makes, from the arena that holds the polyline (then given
    // back with it, not here).
    Vertex* m_vertices = nullptr;
    quint32 m_count = 0;
    quint32 m_capacity = 0;
    double m_elevation = 0.0;
    ZcGeVector3d m_normal { 0.0, 0.0, 1.0 };
    bool m_closed = false;
    bool m_verticesInArena = false;
    float m_constantWidth = 0.0f;
};
