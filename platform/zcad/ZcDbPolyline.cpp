#include "ZcDbPolyline.h"

ZCRX_DEFINE_MEMBERS(ZcDbPolyline, ZcDbCurve)

Zcad::ErrorStatus ZcDbPolyline::addVertexAt(int index, const ZcGePoint3d& point, double bulge)
{
    if (index < 0 || index > numVerts())
        return Zcad::eInvalidIndex;
    m_vertices.insert(m_vertices.begin() + index, { point.x, point.y, bulge });
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbPolyline::getPointAt(int index, ZcGePoint3d& point) const
{
    if (index < 0 || index >= numVerts())
        return Zcad::eInvalidIndex;
    point = { m_vertices[size_t(index)].x, m_vertices[size_t(index)].y, m_elevation };
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbPolyline::getBulgeAt(int index, double& bulge) const
{
    if (index < 0 || index >= numVerts())
        return Zcad::eInvalidIndex;
    bulge = m_vertices[size_t(index)].bulge;
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbPolyline::transformBy(const ZcGeMatrix3d& transform)
{
    const double det
        = transform.entry[0][0] * transform.entry[1][1] - transform.entry[0][1] * transform.entry[1][0];
    double z = m_elevation;
    for (Vertex& v : m_vertices) {
        const ZcGePoint3d p = transform.apply(ZcGePoint3d(v.x, v.y, m_elevation));
        v.x = p.x;
        v.y = p.y;
        z = p.z;
        if (det < 0)
            v.bulge = -v.bulge;
    }
    m_elevation = z;
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbPolyline::getGeomExtents(ZcDbExtents& extents) const
{
    if (m_vertices.empty())
        return Zcad::eInvalidInput;
    for (const Vertex& v : m_vertices)
        extents.addPoint({ v.x, v.y, m_elevation });
    return Zcad::eOk;
}
