#include "QvKsModelSpace.h"

#include "ZcDbBlockTableRecord.h"
#include "ZcDbDatabase.h"
#include "ZcDbLine.h"
#include "ZcDbPolyline.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {
double SegmentDistance(double px, double py, double ax, double ay, double bx, double by)
{
    const double dx = bx - ax;
    const double dy = by - ay;
    const double lengthSq = dx * dx + dy * dy;
    double t = lengthSq > 0 ? ((px - ax) * dx + (py - ay) * dy) / lengthSq : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    return std::hypot(px - (ax + t * dx), py - (ay + t * dy));
}
} // namespace

std::vector<ZcDbObjectId> QvKsModelSpace::EntityIds(ZcDbDatabase* database)
{
    if (!database)
        return {};
    ZcDbBlockTableRecord* space = nullptr;
    if (zcdbOpenObject(space, database->modelSpaceId(), ZcDb::kForRead) != Zcad::eOk)
        return {};
    std::vector<ZcDbObjectId> ids = space->entityIds();
    space->close();
    return ids;
}

double QvKsModelSpace::DistanceTo(const ZcDbEntity& entity, const ZcGePoint3d& point)
{
    if (const ZcDbLine* line = ZcDbLine::cast(&entity)) {
        const ZcGePoint3d a = line->startPoint();
        const ZcGePoint3d b = line->endPoint();
        return SegmentDistance(point.x, point.y, a.x, a.y, b.x, b.y);
    }
    if (const ZcDbPolyline* polyline = ZcDbPolyline::cast(&entity)) {
        const auto& v = polyline->vertices();
        double best = std::numeric_limits<double>::infinity();
        for (size_t i = 0; i + 1 < v.size(); ++i)
            best = std::min(best, SegmentDistance(point.x, point.y, v[i].x, v[i].y, v[i + 1].x, v[i + 1].y));
        if (polyline->isClosed() && v.size() > 2)
            best = std::min(best, SegmentDistance(point.x, point.y, v.back().x, v.back().y, v[0].x, v[0].y));
        if (v.size() == 1)
            best = std::hypot(point.x - v[0].x, point.y - v[0].y);
        return best;
    }
    ZcDbExtents extents;
    if (entity.getGeomExtents(extents) != Zcad::eOk || extents.isEmpty())
        return std::numeric_limits<double>::infinity();
    const double dx = std::max({ extents.minPoint().x - point.x, 0.0, point.x - extents.maxPoint().x });
    const double dy = std::max({ extents.minPoint().y - point.y, 0.0, point.y - extents.maxPoint().y });
    return std::hypot(dx, dy);
}
