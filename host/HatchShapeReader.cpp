#include "HatchShapeReader.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {
using DrawingGeometry::Points3;
using Group = ZcDbProxyEntity::Group;
constexpr double kPi = std::numbers::pi;
// Pattern lines drawn at most for one hatch: a pattern too fine for its area shows
// as its boundaries instead.
constexpr long kMaxPatternLines = 4000;

double Number(const Group& g)
{
    bool ok = false;
    const double value = QStringView(g.value).trimmed().toDouble(&ok);
    return ok && std::isfinite(value) ? value : 0.0;
}

class Reader
{
public:
    explicit Reader(std::span<const Group> groups)
        : m_groups(groups)
    { }
    bool AtEnd() const { return m_at >= m_groups.size(); }
    int Code() const { return AtEnd() ? -1 : m_groups[m_at].code; }
    const Group& Next() { return m_groups[m_at++]; }
    // The value of the next group if it has `code`, else `fallback` (nothing read).
    double Take(int code, double fallback = 0.0) { return Code() == code ? Number(Next()) : fallback; }
    // A point of groups `code` and `code` + 10, when the next group is `code`.
    bool TakePoint(int code, double& x, double& y)
    {
        if (Code() != code)
            return false;
        x = Number(Next());
        y = Take(code + 10);
        return true;
    }

private:
    std::span<const Group> m_groups;
    size_t m_at = 0;
};

void Arc(Points3& ring, double cx, double cy, double r, double start, double end, bool ccw, double z)
{
    Points3 arc;
    if (ccw)
        DrawingGeometry::AddArc(arc, cx, cy, z, r, start * kPi / 180, end * kPi / 180);
    else
        DrawingGeometry::AddArc(arc, cx, cy, z, r, -end * kPi / 180, -start * kPi / 180);
    if (!ccw)
        std::reverse(arc.begin(), arc.end());
    ring.insert(ring.end(), arc.begin(), arc.end());
}

void Ellipse(Points3& ring, double cx, double cy, double mx, double my, double ratio, double start,
    double end, bool ccw, double z)
{
    // Edge angles are of the ellipse's circle before it is squeezed: parameters.
    Points3 arc;
    const double t0 = (ccw ? start : -end) * kPi / 180;
    const double t1 = (ccw ? end : -start) * kPi / 180;
    DrawingGeometry::AddEllipse(arc, { cx, cy, z }, { mx, my, 0 }, { 0, 0, 1 }, ratio, t0, t1);
    if (!ccw)
        std::reverse(arc.begin(), arc.end());
    ring.insert(ring.end(), arc.begin(), arc.end());
}

void Spline(Reader& r, Points3& ring, double z)
{
    const int degree = int(r.Take(94, 3));
    const bool rational = r.Take(73) != 0;
    r.Take(74);
    const int knotCount = int(r.Take(95));
    const int controlCount = int(r.Take(96));
    std::vector<double> knots;
    for (int k = 0; k < knotCount && r.Code() == 40; ++k)
        knots.push_back(Number(r.Next()));
    Points3 control;
    std::vector<double> weights;
    for (int k = 0; k < controlCount; ++k) {
        double x = 0;
        double y = 0;
        if (!r.TakePoint(10, x, y))
            break;
        control.push_back({ x, y, z });
        if (rational || r.Code() == 42)
            weights.push_back(r.Take(42, 1.0));
    }
    Points3 fit;
    const int fitCount = int(r.Take(97));
    for (int k = 0; k < fitCount; ++k) {
        double x = 0;
        double y = 0;
        if (!r.TakePoint(11, x, y))
            break;
        fit.push_back({ x, y, z });
    }
    double x = 0;
    double y = 0;
    r.TakePoint(12, x, y);
    r.TakePoint(13, x, y);
    const Points3 points = DrawingGeometry::Spline(degree, knots, control, weights, fit);
    ring.insert(ring.end(), points.begin(), points.end());
}

Points3 Boundary(Reader& r, double z)
{
    Points3 ring;
    const int flags = int(r.Take(92));
    if (flags & 2) {
        const bool bulges = r.Take(72) != 0;
        r.Take(73);
        const int count = int(r.Take(93));
        std::vector<DrawingGeometry::WideVertex> vertices;
        for (int k = 0; k < count; ++k) {
            double x = 0;
            double y = 0;
            if (!r.TakePoint(10, x, y))
                break;
            vertices.push_back({ x, y, bulges ? r.Take(42) : 0.0, 0, 0 });
        }
        for (size_t k = 0; k < vertices.size(); ++k) {
            const auto& a = vertices[k];
            const auto& b = vertices[(k + 1) % vertices.size()];
            if (k == 0)
                ring.push_back({ a.x, a.y, z });
            DrawingGeometry::AddBulge(ring, { a.x, a.y, z }, { b.x, b.y, z }, a.bulge);
        }
    } else {
        const int edges = int(r.Take(93));
        for (int e = 0; e < edges && r.Code() == 72; ++e) {
            const int type = int(Number(r.Next()));
            double x = 0;
            double y = 0;
            if (type == 1) {
                double x1 = 0;
                double y1 = 0;
                r.TakePoint(10, x, y);
                r.TakePoint(11, x1, y1);
                ring.push_back({ x, y, z });
                ring.push_back({ x1, y1, z });
            } else if (type == 2) {
                r.TakePoint(10, x, y);
                const double radius = r.Take(40);
                const double start = r.Take(50);
                const double end = r.Take(51, 360);
                Arc(ring, x, y, radius, start, end, r.Take(73, 1) != 0, z);
            } else if (type == 3) {
                double mx = 0;
                double my = 0;
                r.TakePoint(10, x, y);
                r.TakePoint(11, mx, my);
                const double ratio = r.Take(40, 1);
                const double start = r.Take(50);
                const double end = r.Take(51, 360);
                Ellipse(ring, x, y, mx, my, ratio, start, end, r.Take(73, 1) != 0, z);
            } else if (type == 4) {
                Spline(r, ring, z);
            }
        }
    }
    const int sources = int(r.Take(97));
    for (int k = 0; k < sources && r.Code() == 330; ++k)
        r.Next();
    return ring;
}

struct PatternLine
{
    double angle = 0.0; // radians
    double baseX = 0.0;
    double baseY = 0.0;
    double offsetX = 0.0;
    double offsetY = 0.0;
    std::vector<double> dashes;
};

// Where the line through `origin` along `direction` crosses the rings: distances
// along it, in order.
std::vector<double> Crossings(const std::vector<Points3>& rings, double ox, double oy, double dx, double dy)
{
    std::vector<double> at;
    for (const Points3& ring : rings)
        for (size_t k = 0; k < ring.size(); ++k) {
            const ZcGePoint3d& a = ring[k];
            const ZcGePoint3d& b = ring[(k + 1) % ring.size()];
            // Signed distances of the edge's ends from the line.
            const double da = (a.x - ox) * dy - (a.y - oy) * dx;
            const double db = (b.x - ox) * dy - (b.y - oy) * dx;
            if ((da > 0) == (db > 0))
                continue;
            const double t = da / (da - db);
            const double x = a.x + (b.x - a.x) * t;
            const double y = a.y + (b.y - a.y) * t;
            at.push_back((x - ox) * dx + (y - oy) * dy);
        }
    std::sort(at.begin(), at.end());
    return at;
}

void AddDashed(ProxyShapes& shapes, const PatternLine& line, double ox, double oy, double dx, double dy,
    double from, double to, double z)
{
    const auto point = [&](double t) { return ZcGePoint3d(ox + dx * t, oy + dy * t, z); };
    if (line.dashes.empty()) {
        shapes.paths.push_back({ point(from), point(to) });
        return;
    }
    double period = 0.0;
    for (double d : line.dashes)
        period += std::abs(d);
    if (period <= 0) {
        shapes.paths.push_back({ point(from), point(to) });
        return;
    }
    // The pattern repeats from the line's base point, so neighbouring pieces agree.
    double t = std::floor(from / period) * period;
    for (int guard = 0; t < to && guard < 100000; ++guard)
        for (double d : line.dashes) {
            const double length = std::abs(d);
            const double a = std::max(t, from);
            const double b = std::min(t + length, to);
            if (d > 0 && b > a)
                shapes.paths.push_back({ point(a), point(b) });
            else if (d == 0 && t >= from && t <= to)
                shapes.points.push_back(point(t));
            t += length;
            if (t >= to)
                break;
        }
}

// False when the pattern is too fine for the area to draw.
bool Pattern(
    ProxyShapes& shapes, const std::vector<Points3>& rings, const std::vector<PatternLine>& lines, double z)
{
    double left = 1e300, right = -1e300, bottom = 1e300, top = -1e300;
    for (const Points3& ring : rings)
        for (const ZcGePoint3d& p : ring) {
            left = std::min(left, p.x);
            right = std::max(right, p.x);
            bottom = std::min(bottom, p.y);
            top = std::max(top, p.y);
        }
    if (left > right)
        return true;
    long drawn = 0;
    for (const PatternLine& line : lines) {
        const double dx = std::cos(line.angle);
        const double dy = std::sin(line.angle);
        // Lines follow one another by the offset's part across them.
        const double step = -line.offsetX * dy + line.offsetY * dx;
        if (std::abs(step) < 1e-9)
            continue;
        double low = 1e300, high = -1e300;
        for (const double cx : { left, right })
            for (const double cy : { bottom, top }) {
                const double across = -(cx - line.baseX) * dy + (cy - line.baseY) * dx;
                low = std::min(low, across / step);
                high = std::max(high, across / step);
            }
        const long first = long(std::floor(low));
        const long last = long(std::ceil(high));
        if (last - first + drawn > kMaxPatternLines)
            return false;
        for (long k = first; k <= last; ++k, ++drawn) {
            const double ox = line.baseX + line.offsetX * double(k);
            const double oy = line.baseY + line.offsetY * double(k);
            const std::vector<double> at = Crossings(rings, ox, oy, dx, dy);
            for (size_t i = 0; i + 1 < at.size(); i += 2)
                AddDashed(shapes, line, ox, oy, dx, dy, at[i], at[i + 1], z);
        }
    }
    return true;
}
} // namespace

void HatchShapeReader::Read(std::span<const ZcDbProxyEntity::Group> groups, ProxyShapes& shapes)
{
    Reader r(groups);
    double elevation = 0.0;
    ZcGeVector3d normal(0, 0, 1);
    bool solid = false;
    bool gradient = false;
    std::vector<Points3> rings;
    std::vector<PatternLine> lines;
    while (!r.AtEnd()) {
        const Group& g = r.Next();
        switch (g.code) {
        case 30:
            elevation = Number(g);
            break;
        case 210:
            normal.x = Number(g);
            break;
        case 220:
            normal.y = Number(g);
            break;
        case 230:
            normal.z = Number(g);
            break;
        case 70:
            solid = Number(g) != 0;
            break;
        case 450:
            gradient = Number(g) != 0;
            break;
        case 91: {
            const int count = int(Number(g));
            for (int k = 0; k < count && r.Code() == 92; ++k)
                rings.push_back(Boundary(r, elevation));
            break;
        }
        case 53: {
            PatternLine line;
            line.angle = Number(g) * kPi / 180;
            line.baseX = r.Take(43);
            line.baseY = r.Take(44);
            line.offsetX = r.Take(45);
            line.offsetY = r.Take(46);
            const int count = int(r.Take(79));
            for (int k = 0; k < count && r.Code() == 49; ++k)
                line.dashes.push_back(Number(r.Next()));
            lines.push_back(std::move(line));
            break;
        }
        default:
            break;
        }
    }
    std::erase_if(rings, [](const Points3& ring) { return ring.size() < 3; });
    if (rings.empty())
        return;
    ProxyShapes own;
    if (solid || gradient) {
        own.fills.push_back(rings);
    } else if (!Pattern(own, rings, lines, elevation)) {
        // Too fine a pattern shows as its boundaries.
        own.paths.clear();
        own.points.clear();
        for (const Points3& ring : rings) {
            Points3 closed = ring;
            if (!(ring.back() == ring.front()))
                closed.push_back(ring.front());
            own.paths.push_back(std::move(closed));
        }
    }
    // Boundary coordinates are the hatch's own, about its extrusion direction.
    const ZcGeMatrix3d ocs
        = DrawingGeometry::ObjectToWorld(normal.length() > 0 ? normal : ZcGeVector3d(0, 0, 1));
    const auto toWorld = [&ocs](Points3& points) {
        for (ZcGePoint3d& p : points)
            p = ocs.apply(p);
    };
    for (auto& fill : own.fills)
        for (Points3& ring : fill)
            toWorld(ring);
    for (Points3& path : own.paths)
        toWorld(path);
    toWorld(own.points);
    std::move(own.fills.begin(), own.fills.end(), std::back_inserter(shapes.fills));
    std::move(own.paths.begin(), own.paths.end(), std::back_inserter(shapes.paths));
    shapes.points.insert(shapes.points.end(), own.points.begin(), own.points.end());
}
