#include "ProxyShapes.h"

#include "HatchShapeReader.h"
#include "ZcDbProxyEntity.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>

namespace {
using DrawingGeometry::Points3;
using Group = ZcDbProxyEntity::Group;
constexpr double kPi = std::numbers::pi;

double Number(const Group& g)
{
    bool ok = false;
    const double value = QStringView(g.value).trimmed().toDouble(&ok);
    return ok && std::isfinite(value) ? value : 0.0;
}

int Integer(const Group& g)
{
    return int(std::lround(Number(g)));
}

// Reads groups in order; points are a group x followed by its y (code + 10) and z
// (code + 20) when they follow.
class Cursor
{
public:
    explicit Cursor(std::span<const Group> groups)
        : m_groups(groups)
    { }
    bool AtEnd() const { return m_at >= m_groups.size(); }
    const Group& Peek() const { return m_groups[m_at]; }
    const Group& Next() { return m_groups[m_at++]; }
    int Code() const { return AtEnd() ? -1 : m_groups[m_at].code; }
    // The point starting at the group just read (code `code`).
    ZcGePoint3d PointAfter(const Group& x)
    {
        ZcGePoint3d p(Number(x), 0.0, 0.0);
        if (Code() == x.code + 10)
            p.y = Number(Next());
        if (Code() == x.code + 20)
            p.z = Number(Next());
        return p;
    }
    // The next group of `code` read, skipping others; false at the end.
    bool SkipTo(int code)
    {
        while (!AtEnd() && Code() != code)
            ++m_at;
        return !AtEnd();
    }

private:
    std::span<const Group> m_groups;
    size_t m_at = 0;
};

ZcGeVector3d NormalOf(std::span<const Group> groups)
{
    ZcGeVector3d normal(0, 0, 1);
    for (const Group& g : groups) {
        if (g.code == 210)
            normal.x = Number(g);
        else if (g.code == 220)
            normal.y = Number(g);
        else if (g.code == 230)
            normal.z = Number(g);
    }
    return normal.length() > 0 ? normal : ZcGeVector3d(0, 0, 1);
}

void ToWorld(const ZcGeMatrix3d& ocs, Points3& points)
{
    for (ZcGePoint3d& p : points)
        p = ocs.apply(p);
}

// The groups with the first of each code, for kinds whose groups come once.
struct Simple
{
    explicit Simple(std::span<const Group> groups)
    {
        Cursor c(groups);
        while (!c.AtEnd()) {
            const Group& g = c.Next();
            if (g.code >= 10 && g.code <= 18 && !has[g.code]) {
                points[g.code - 10] = c.PointAfter(g);
                has[g.code] = true;
            } else if (g.code >= 0 && g.code < 100 && !has[g.code]) {
                values[g.code] = Number(g);
                has[g.code] = true;
            }
        }
    }
    double Value(int code, double fallback) const { return has[code] ? values[code] : fallback; }
    ZcGePoint3d points[9];
    double values[100] = {};
    bool has[100] = {};
};

void ReadEllipse(std::span<const Group> groups, ProxyShapes& shapes)
{
    const Simple s(groups);
    Points3 points;
    const ZcGePoint3d& m = s.points[1];
    DrawingGeometry::AddEllipse(points, s.points[0], { m.x, m.y, m.z }, NormalOf(groups), s.Value(40, 1.0),
        s.Value(41, 0.0), s.Value(42, 2 * kPi));
    shapes.paths.push_back(std::move(points));
}

void ReadSpline(std::span<const Group> groups, ProxyShapes& shapes)
{
    std::vector<double> knots;
    std::vector<double> weights;
    Points3 control;
    Points3 fit;
    int degree = 3;
    int flags = 0;
    Cursor c(groups);
    while (!c.AtEnd()) {
        const Group& g = c.Next();
        if (g.code == 40)
            knots.push_back(Number(g));
        else if (g.code == 41)
            weights.push_back(Number(g));
        else if (g.code == 10)
            control.push_back(c.PointAfter(g));
        else if (g.code == 11)
            fit.push_back(c.PointAfter(g));
        else if (g.code == 71)
            degree = Integer(g);
        else if (g.code == 70)
            flags = Integer(g);
    }
    Points3 points = DrawingGeometry::Spline(degree, knots, control, weights, fit);
    if ((flags & 1) && !fit.empty() && control.empty())
        shapes.closedPaths.push_back(std::move(points));
    else
        shapes.paths.push_back(std::move(points));
}

// SOLID and TRACE: a filled quadrilateral, corners in the order 1 2 4 3.
void ReadSolid(std::span<const Group> groups, ProxyShapes& shapes, bool face)
{
    const Simple s(groups);
    const ZcGeMatrix3d ocs = face ? ZcGeMatrix3d() : DrawingGeometry::ObjectToWorld(NormalOf(groups));
    const ZcGePoint3d& fourth = s.has[13] ? s.points[3] : s.points[2];
    Points3 corners { s.points[0], s.points[1], face ? s.points[2] : fourth, face ? fourth : s.points[2] };
    ToWorld(ocs, corners);
    if (face) {
        // A 3D face's edges; flag bits 1, 2, 4, 8 hide edges one to four.
        const int hidden = int(s.Value(70, 0));
        for (int edge = 0; edge < 4; ++edge)
            if (!(hidden & (1 << edge)))
                shapes.paths.push_back({ corners[size_t(edge)], corners[size_t((edge + 1) % 4)] });
        return;
    }
    shapes.fills.push_back({ corners });
}

void ReadPoint(std::span<const Group> groups, ProxyShapes& shapes)
{
    const Simple s(groups);
    shapes.points.push_back(s.points[0]);
}

void AddArrow(ProxyShapes& shapes, const ZcGePoint3d& tip, const ZcGePoint3d& from, double size)
{
    const double dx = from.x - tip.x;
    const double dy = from.y - tip.y;
    const double length = std::hypot(dx, dy);
    if (length <= 0 || size <= 0)
        return;
    const double ux = dx / length * size;
    const double uy = dy / length * size;
    const ZcGePoint3d base(tip.x + ux, tip.y + uy, tip.z);
    shapes.fills.push_back({ { tip, { base.x - uy / 6, base.y + ux / 6, tip.z },
        { base.x + uy / 6, base.y - ux / 6, tip.z } } });
}

void ReadLeader(std::span<const Group> groups, ProxyShapes& shapes, double arrowSize)
{
    Points3 vertices;
    bool arrow = true;
    Cursor c(groups);
    while (!c.AtEnd()) {
        const Group& g = c.Next();
        if (g.code == 10)
            vertices.push_back(c.PointAfter(g));
        else if (g.code == 71)
            arrow = Integer(g) != 0;
    }
    if (vertices.size() < 2)
        return;
    if (arrow)
        AddArrow(shapes, vertices[0], vertices[1], arrowSize);
    shapes.paths.push_back(std::move(vertices));
}

// A multi-line: each element is a line through the vertices, moved from each along
// its miter direction by the first of that element's parameters there.
void ReadMLine(std::span<const Group> groups, ProxyShapes& shapes)
{
    struct Vertex
    {
        ZcGePoint3d at;
        ZcGeVector3d miter;
        std::vector<double> offsets;
    };
    std::vector<Vertex> vertices;
    int flags = 0;
    int elements = 0;
    Cursor c(groups);
    while (!c.AtEnd()) {
        const Group& g = c.Next();
        if (g.code == 71) {
            flags = Integer(g);
        } else if (g.code == 73) {
            elements = Integer(g);
        } else if (g.code == 11) {
            vertices.push_back({ c.PointAfter(g), {}, {} });
        } else if (g.code == 13 && !vertices.empty()) {
            const ZcGePoint3d m = c.PointAfter(g);
            vertices.back().miter = { m.x, m.y, m.z };
        } else if (g.code == 74 && !vertices.empty()) {
            const int count = Integer(g);
            double offset = 0.0;
            for (int k = 0; k < count && c.Code() == 41; ++k) {
                const double value = Number(c.Next());
                if (k == 0)
                    offset = value;
            }
            vertices.back().offsets.push_back(offset);
        }
    }
    for (int e = 0; e < elements; ++e) {
        Points3 line;
        for (const Vertex& v : vertices) {
            const double d = size_t(e) < v.offsets.size() ? v.offsets[size_t(e)] : 0.0;
            line.push_back({ v.at.x + v.miter.x * d, v.at.y + v.miter.y * d, v.at.z + v.miter.z * d });
        }
        if (line.size() < 2)
            continue;
        if (flags & 2)
            shapes.closedPaths.push_back(std::move(line));
        else
            shapes.paths.push_back(std::move(line));
    }
}

// A multi-leader: its leader lines (each ending at its leader's connection point)
// with arrowheads, and its text.
void ReadMultiLeader(std::span<const Group> groups, ProxyShapes& shapes, double arrowSize)
{
    Cursor c(groups);
    ProxyText text;
    bool hasText = false;
    double arrow = arrowSize;
    ZcGePoint3d connection;
    // Only the context data describes what is drawn.
    bool inContext = false;
    bool inLeader = false;
    bool inLine = false;
    Points3 line;
    auto endLine = [&] {
        if (line.empty())
            return;
        line.push_back(connection);
        if (line.size() >= 2)
            AddArrow(shapes, line[0], line[1], arrow);
        shapes.paths.push_back(std::move(line));
        line.clear();
    };
    while (!c.AtEnd()) {
        const Group& g = c.Next();
        if (g.code == 300 && g.value == u"CONTEXT_DATA{") {
            inContext = true;
            continue;
        }
        if (g.code == 301) {
            inContext = false;
            continue;
        }
        if (!inContext)
            continue;
        if (g.code == 302 || g.code == 304 || g.code == 303 || g.code == 305) {
            const QString& v = g.value;
            if (v == u"LEADER{") {
                inLeader = true;
            } else if (v == u"LEADER_LINE{") {
                inLine = true;
                line.clear();
            } else if (v == u"}" && g.code == 305) {
                endLine();
                inLine = false;
            } else if (v == u"}" && g.code == 303) {
                inLeader = false;
            } else if (g.code == 304 && !inLeader) {
                text.contents = v;
                hasText = true;
            }
            continue;
        }
        if (inLine && g.code == 10) {
            line.push_back(c.PointAfter(g));
        } else if (inLeader && !inLine && g.code == 10) {
            connection = c.PointAfter(g);
        } else if (!inLeader && g.code == 12) {
            text.at = c.PointAfter(g);
        } else if (!inLeader && g.code == 13) {
            const ZcGePoint3d d = c.PointAfter(g);
            text.direction = { d.x, d.y, d.z };
        } else if (!inLeader && g.code == 41) {
            text.height = Number(g);
        } else if (!inLeader && g.code == 43) {
            text.width = Number(g);
        } else if (!inLeader && g.code == 171) {
            text.attachment = std::clamp(Integer(g), 1, 9);
        } else if (!inLeader && g.code == 140) {
            arrow = Number(g);
        }
    }
    if (hasText && !text.contents.isEmpty())
        shapes.texts.push_back(text);
}

void ReadMesh(std::span<const Group> groups, ProxyShapes& shapes)
{
    int flags = 0;
    int m = 0;
    int n = 0;
    size_t at = 0;
    // The polyline's own groups come before its first vertex.
    for (; at < groups.size() && groups[at].code != 0; ++at) {
        if (groups[at].code == 70)
            flags = Integer(groups[at]);
        else if (groups[at].code == 71)
            m = Integer(groups[at]);
        else if (groups[at].code == 72)
            n = Integer(groups[at]);
    }
    Points3 locations;
    std::vector<std::array<int, 4>> faces;
    while (at < groups.size()) {
        const bool vertex = groups[at].value == u"VERTEX";
        ++at;
        size_t end = at;
        while (end < groups.size() && groups[end].code != 0)
            ++end;
        if (vertex) {
            const Simple s(groups.subspan(at, end - at));
            const int vertexFlags = int(s.Value(70, 0));
            if ((vertexFlags & 128) && !(vertexFlags & 64))
                faces.push_back(
                    { int(s.Value(71, 0)), int(s.Value(72, 0)), int(s.Value(73, 0)), int(s.Value(74, 0)) });
            else
                locations.push_back(s.points[0]);
        }
        at = end;
    }
    if (flags & 64) {
        // Face records name their vertices from 1; a negative index hides the edge
        // that starts there.
        for (const auto& face : faces) {
            std::vector<int> corners;
            for (int index : face)
                if (index != 0)
                    corners.push_back(index);
            for (size_t k = 0; k < corners.size(); ++k) {
                const int from = corners[k];
                const int to = std::abs(corners[(k + 1) % corners.size()]);
                if (from < 0 || size_t(from) > locations.size() || size_t(to) > locations.size() || to == 0)
                    continue;
                shapes.paths.push_back({ locations[size_t(from - 1)], locations[size_t(to - 1)] });
            }
        }
        return;
    }
    if (m <= 0 || n <= 0 || locations.size() < size_t(m) * size_t(n))
        return;
    for (int i = 0; i < m; ++i) {
        Points3 row(locations.begin() + i * n, locations.begin() + (i + 1) * n);
        (flags & 32) ? shapes.closedPaths.push_back(std::move(row)) : shapes.paths.push_back(std::move(row));
    }
    for (int j = 0; j < n; ++j) {
        Points3 column;
        for (int i = 0; i < m; ++i)
            column.push_back(locations[size_t(i * n + j)]);
        (flags & 1) ? shapes.closedPaths.push_back(std::move(column))
                    : shapes.paths.push_back(std::move(column));
    }
}
} // namespace

ProxyShapes ProxyShapeReader::Read(const ZcDbProxyEntity& proxy, double arrowSize)
{
    ProxyShapes shapes;
    const QString kind = proxy.originalDxfName().toUpper();
    // Unpacked afresh: a drawing is built on two threads at once.
    const std::vector<Group> unpacked = proxy.unpackedDxfGroups();
    const std::span<const Group> groups = unpacked;
    shapes.understood = true;
    if (kind == u"ELLIPSE")
        ReadEllipse(groups, shapes);
    else if (kind == u"SPLINE")
        ReadSpline(groups, shapes);
    else if (kind == u"SOLID" || kind == u"TRACE")
        ReadSolid(groups, shapes, false);
    else if (kind == u"3DFACE")
        ReadSolid(groups, shapes, true);
    else if (kind == u"POINT")
        ReadPoint(groups, shapes);
    else if (kind == u"LEADER")
        ReadLeader(groups, shapes, arrowSize);
    else if (kind == u"MLINE")
        ReadMLine(groups, shapes);
    else if (kind == u"MULTILEADER" || kind == u"MLEADER")
        ReadMultiLeader(groups, shapes, arrowSize);
    else if (kind == u"POLYLINE")
        ReadMesh(groups, shapes);
    else if (kind == u"HATCH")
        HatchShapeReader::Read(groups, shapes);
    else if (kind == u"DIMENSION") {
        for (const Group& g : groups)
            if (g.code == 2) {
                shapes.blockName = g.value.trimmed();
                break;
            }
        shapes.understood = !shapes.blockName.isEmpty();
    } else
        shapes.understood = false;
    return shapes;
}
