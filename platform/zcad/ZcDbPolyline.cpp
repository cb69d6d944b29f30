#include "ZcDbPolyline.h"

#include "ZcDbObjectArena.h"

#include <algorithm>
#include <limits>
#include <new>
#include <stdexcept>

ZCRX_DEFINE_MEMBERS(ZcDbPolyline, ZcDbCurve)

ZcDbPolyline::ZcDbPolyline(const ZcDbPolyline& other)
    : ZcDbCurve(other)
    , m_elevation(other.m_elevation)
    , m_normal(other.m_normal)
    , m_closed(other.m_closed)
    , m_constantWidth(other.m_constantWidth)
{
    setCapacity(other.m_count);
    std::copy_n(other.m_vertices, other.m_count, m_vertices);
    m_count = other.m_count;
}

ZcDbPolyline::~ZcDbPolyline()
{
    if (!m_verticesInArena)
        ::operator delete(m_vertices);
}

void ZcDbPolyline::setCapacity(size_t capacity)
{
    if (capacity <= m_capacity)
        return;
    if (capacity > std::numeric_limits<quint32>::max())
        throw std::length_error("too many polyline vertices");
    ZcDbObjectArena* arena = ZcDbObjectArena::current();
    const size_t bytes = capacity * sizeof(Vertex);
    auto* storage = static_cast<Vertex*>(arena ? arena->allocate(bytes) : ::operator new(bytes));
    std::copy_n(m_vertices, m_count, storage);
    if (!m_verticesInArena)
        ::operator delete(m_vertices);
    m_vertices = storage;
    m_capacity = quint32(capacity);
    m_verticesInArena = arena != nullptr;
}

void ZcDbPolyline::reserveVertices(size_t count)
{
    setCapacity(count);
}

void ZcDbPolyline::appendVertex(double x, double y, double bulge)
{
    if (m_count == m_capacity)
        setCapacity(std::max<size_t>(4, size_t(m_capacity) * 2));
    m_vertices[m_count++] = { x, y, bulge };
}

Zcad::ErrorStatus ZcDbPolyline::addVertexAt(int index, const ZcGePoint3d& point, double bulge)
{
    if (index < 0 || index > numVerts())
        return Zcad::eInvalidIndex;
    if (m_count == m_capacity)
        setCapacity(std::max<size_t>(4, size_t(m_capacity) * 2));
    std::copy_backward(m_vertices + index, m_vertices + m_count, m_vertices + m_count + 1);
    m_vertices[index] = { point.x, point.y, bulge };
    ++m_count;
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
    for (Vertex& v : std::span(m_vertices, m_count)) {
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
    if (m_count == 0)
        return Zcad::eInvalidInput;
    for (const Vertex& v : vertices())
        extents.addPoint({ v.x, v.y, m_elevation });
    return Zcad::eOk;
}
