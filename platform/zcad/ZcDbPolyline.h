#pragma once

// A planar polyline at an elevation: vertices with the bulge of the segment that
// starts at each (0 straight, tan(angle/4) for an arc segment).
#include "ZcDbCurve.h"

#include <vector>

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
    ZCDB_DECLARE_CLONE(ZcDbPolyline)

    int numVerts() const { return int(m_vertices.size()); }
    Zcad::ErrorStatus addVertexAt(int index, const ZcGePoint3d& point, double bulge = 0.0);
    void appendVertex(double x, double y, double bulge = 0.0) { m_vertices.push_back({ x, y, bulge }); }
    Zcad::ErrorStatus getPointAt(int index, ZcGePoint3d& point) const;
    Zcad::ErrorStatus getBulgeAt(int index, double& bulge) const;
    const std::vector<Vertex>& vertices() const { return m_vertices; }
    void reserveVertices(size_t count) { m_vertices.reserve(count); }

    bool isClosed() const { return m_closed; }
    void setClosed(bool closed) { m_closed = closed; }
    double elevation() const { return m_elevation; }
    void setElevation(double elevation) { m_elevation = elevation; }

    Zcad::ErrorStatus transformBy(const ZcGeMatrix3d& transform) override;
    Zcad::ErrorStatus getGeomExtents(ZcDbExtents& extents) const override;

private:
    std::vector<Vertex> m_vertices;
    double m_elevation = 0.0;
    bool m_closed = false;
};
