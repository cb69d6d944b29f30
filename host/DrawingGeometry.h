#pragma once

// The geometry the display list is made of: an entity's own coordinate system from
// its extrusion direction, and the curves of a drawing (arcs, ellipses, bulged
// segments, splines, wide polylines) as runs of points.
#include "ZcGeMatrix3d.h"
#include "ZcGePoint3d.h"

#include <QPointF>

#include <span>
#include <vector>

namespace DrawingGeometry {

using Points3 = std::vector<ZcGePoint3d>;

// From an entity's own coordinates to the world's: its z axis is `normal`, its x
// axis chosen by the arbitrary-axis rule (world y × normal when the normal is near
// the world z axis, world z × normal otherwise).
ZcGeMatrix3d ObjectToWorld(const ZcGeVector3d& normal);
// Where `p` lands on the drawing (its x and y once moved by `m`).
QPointF Project(const ZcGeMatrix3d& m, const ZcGePoint3d& p);
// A direction turned by `m`, on the drawing.
QPointF ProjectVector(const ZcGeMatrix3d& m, const ZcGeVector3d& v);

// Points of the arc of `radius` round (cx, cy) from angle a0 to a1 (radians,
// counter-clockwise), at height z; a whole circle when a1 - a0 is 2π.
void AddArc(Points3& points, double cx, double cy, double z, double radius, double a0, double a1);
// Points of an ellipse round `centre` with `major` as its major axis and the minor
// axis `ratio` times as long, along the normal's turn, from parameter t0 to t1.
void AddEllipse(Points3& points, const ZcGePoint3d& centre, const ZcGeVector3d& major,
    const ZcGeVector3d& normal, double ratio, double t0, double t1);
// The points after `a` of the segment from a to b with `bulge` (tan of a quarter of
// its arc's angle; 0 straight).
void AddBulge(Points3& points, const ZcGePoint3d& a, const ZcGePoint3d& b, double bulge);
// A B-spline (rational when `weights` is not empty) of `degree` over `knots`, as
// points; its fit points when it has no control points.
Points3 Spline(int degree, std::span<const double> knots, std::span<const ZcGePoint3d> control,
    std::span<const double> weights, std::span<const ZcGePoint3d> fit);

struct WideVertex
{
    double x = 0.0;
    double y = 0.0;
    double bulge = 0.0;
    double startWidth = 0.0;
    double endWidth = 0.0;
};
// The filled quadrilaterals (or bent bands of arc segments) a polyline of widths
// covers, one per segment, in its own coordinates at height z.
std::vector<Points3> WideSegments(std::span<const WideVertex> vertices, bool closed, double z);

} // namespace DrawingGeometry
