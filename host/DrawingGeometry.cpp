#include "DrawingGeometry.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace DrawingGeometry {
namespace {
constexpr double kPi = std::numbers::pi;

ZcGeVector3d Cross(const ZcGeVector3d& a, const ZcGeVector3d& b)
{
    return { a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x };
}

ZcGeVector3d Unit(const ZcGeVector3d& v)
{
    const double length = v.length();
    return length > 0 ? ZcGeVector3d(v.x / length, v.y / length, v.z / length) : ZcGeVector3d(0, 0, 1);
}

// Steps for an arc of `angle` radians: one every 1/64 of a turn, 2 to 256.
int ArcSteps(double angle)
{
    return std::clamp(int(std::ceil(std::abs(angle) / (kPi / 32))), 2, 256);
}
} // namespace

ZcGeMatrix3d ObjectToWorld(const ZcGeVector3d& normal)
{
    const ZcGeVector3d z = Unit(normal);
    ZcGeMatrix3d m;
    if (z.x == 0 && z.y == 0 && z.z > 0)
        return m;
    constexpr double kLimit = 1.0 / 64;
    const ZcGeVector3d x = std::abs(z.x) < kLimit && std::abs(z.y) < kLimit ? Unit(Cross({ 0, 1, 0 }, z))
                                                                            : Unit(Cross({ 0, 0, 1 }, z));
    const ZcGeVector3d y = Unit(Cross(z, x));
    const ZcGeVector3d axes[3] = { x, y, z };
    for (int column = 0; column < 3; ++column) {
        m.entry[0][column] = axes[column].x;
        m.entry[1][column] = axes[column].y;
        m.entry[2][column] = axes[column].z;
    }
    return m;
}

QPointF Project(const ZcGeMatrix3d& m, const ZcGePoint3d& p)
{
    return QPointF(m.entry[0][0] * p.x + m.entry[0][1] * p.y + m.entry[0][2] * p.z + m.entry[0][3],
        m.entry[1][0] * p.x + m.entry[1][1] * p.y + m.entry[1][2] * p.z + m.entry[1][3]);
}

QPointF ProjectVector(const ZcGeMatrix3d& m, const ZcGeVector3d& v)
{
    return QPointF(m.entry[0][0] * v.x + m.entry[0][1] * v.y + m.entry[0][2] * v.z,
        m.entry[1][0] * v.x + m.entry[1][1] * v.y + m.entry[1][2] * v.z);
}

void AddArc(Points3& points, double cx, double cy, double z, double radius, double a0, double a1)
{
    while (a1 <= a0)
        a1 += 2 * kPi;
    while (a1 - a0 > 2 * kPi + 1e-12)
        a1 -= 2 * kPi;
    const int steps = ArcSteps(a1 - a0);
    for (int i = 0; i <= steps; ++i) {
        const double a = a0 + (a1 - a0) * i / steps;
        points.push_back({ cx + radius * std::cos(a), cy + radius * std::sin(a), z });
    }
}

void AddEllipse(Points3& points, const ZcGePoint3d& centre, const ZcGeVector3d& major,
    const ZcGeVector3d& normal, double ratio, double t0, double t1)
{
    const ZcGeVector3d minorDirection = Unit(Cross(Unit(normal), major));
    const double minorLength = major.length() * ratio;
    const ZcGeVector3d minor(
        minorDirection.x * minorLength, minorDirection.y * minorLength, minorDirection.z * minorLength);
    while (t1 <= t0)
        t1 += 2 * kPi;
    while (t1 - t0 > 2 * kPi + 1e-12)
        t1 -= 2 * kPi;
    const int steps = ArcSteps(t1 - t0);
    for (int i = 0; i <= steps; ++i) {
        const double t = t0 + (t1 - t0) * i / steps;
        const double c = std::cos(t);
        const double s = std::sin(t);
        points.push_back({ centre.x + major.x * c + minor.x * s, centre.y + major.y * c + minor.y * s,
            centre.z + major.z * c + minor.z * s });
    }
}

void AddBulge(Points3& points, const ZcGePoint3d& a, const ZcGePoint3d& b, double bulge)
{
    const double dx = b.x - a.x;
    const double dy = b.y - a.y;
    const double chord = std::hypot(dx, dy);
    if (std::abs(bulge) < 1e-9 || chord < 1e-12) {
        points.push_back(b);
        return;
    }
    const double angle = 4 * std::atan(bulge);
    const double radius = chord / (2 * std::sin(std::abs(angle) / 2));
    const double toCentre = radius * std::cos(angle / 2) * (bulge > 0 ? 1 : -1);
    const double cx = (a.x + b.x) / 2 - dy / chord * toCentre;
    const double cy = (a.y + b.y) / 2 + dx / chord * toCentre;
    const double start = std::atan2(a.y - cy, a.x - cx);
    const int steps = ArcSteps(angle);
    for (int i = 1; i <= steps; ++i) {
        const double t = start + angle * i / steps;
        points.push_back({ cx + std::abs(radius) * std::cos(t), cy + std::abs(radius) * std::sin(t), a.z });
    }
}

Points3 Spline(int degree, std::span<const double> knots, std::span<const ZcGePoint3d> control,
    std::span<const double> weights, std::span<const ZcGePoint3d> fit)
{
    const size_t n = control.size();
    if (n == 0 || degree < 1 || knots.size() != n + size_t(degree) + 1)
        return Points3(fit.begin(), fit.end());
    const bool rational = weights.size() == n;
    const double first = knots[size_t(degree)];
    const double last = knots[n];
    if (!(last > first))
        return Points3(control.begin(), control.end());
    const int steps = int(std::clamp<size_t>(n * 16, 16, 2048));
    Points3 points;
    points.reserve(size_t(steps) + 1);
    std::vector<double> x(size_t(degree) + 1), y(x.size()), z(x.size()), w(x.size());
    for (int i = 0; i <= steps; ++i) {
        const double t = std::min(first + (last - first) * i / steps, last);
        // The knot span holding t, then de Boor's algorithm in homogeneous form.
        size_t k = size_t(degree);
        while (k + 1 < n && knots[k + 1] <= t)
            ++k;
        for (int j = 0; j <= degree; ++j) {
            const size_t at = k - size_t(degree) + size_t(j);
            const double weight = rational ? weights[at] : 1.0;
            x[size_t(j)] = control[at].x * weight;
            y[size_t(j)] = control[at].y * weight;
            z[size_t(j)] = control[at].z * weight;
            w[size_t(j)] = weight;
        }
        for (int r = 1; r <= degree; ++r)
            for (int j = degree; j >= r; --j) {
                const size_t at = k - size_t(degree) + size_t(j);
                const double span = knots[at + size_t(degree) + 1 - size_t(r)] - knots[at];
                const double a = span > 0 ? (t - knots[at]) / span : 0.0;
                const size_t u = size_t(j);
                x[u] = (1 - a) * x[u - 1] + a * x[u];
                y[u] = (1 - a) * y[u - 1] + a * y[u];
                z[u] = (1 - a) * z[u - 1] + a * z[u];
                w[u] = (1 - a) * w[u - 1] + a * w[u];
            }
        const size_t top = size_t(degree);
        const double weight = w[top] != 0 ? w[top] : 1.0;
        points.push_back({ x[top] / weight, y[top] / weight, z[top] / weight });
    }
    return points;
}

std::vector<Points3> WideSegments(std::span<const WideVertex> vertices, bool closed, double z)
{
    std::vector<Points3> bands;
    const size_t count = vertices.size();
    const size_t segments = closed ? count : (count > 0 ? count - 1 : 0);
    for (size_t i = 0; i < segments; ++i) {
        const WideVertex& a = vertices[i];
        const WideVertex& b = vertices[(i + 1) % count];
        Points3 centre { { a.x, a.y, z } };
        AddBulge(centre, { a.x, a.y, z }, { b.x, b.y, z }, a.bulge);
        if (centre.size() < 2)
            continue;
        // Each point of the centre line is offset both ways by half the width there,
        // across the direction of travel.
        Points3 left;
        Points3 right;
        for (size_t k = 0; k < centre.size(); ++k) {
            const ZcGePoint3d& p = centre[k];
            const ZcGePoint3d& from = centre[k == 0 ? 0 : k - 1];
            const ZcGePoint3d& to = centre[k == 0 ? 1 : k];
            double dx = to.x - from.x;
            double dy = to.y - from.y;
            const double length = std::hypot(dx, dy);
            if (length <= 0)
                continue;
            dx /= length;
            dy /= length;
            const double t = double(k) / double(centre.size() - 1);
            const double half = (a.startWidth + (a.endWidth - a.startWidth) * t) / 2;
            left.push_back({ p.x - dy * half, p.y + dx * half, z });
            right.push_back({ p.x + dy * half, p.y - dx * half, z });
        }
        std::reverse(right.begin(), right.end());
        left.insert(left.end(), right.begin(), right.end());
        if (left.size() >= 3)
            bands.push_back(std::move(left));
    }
    return bands;
}

} // namespace DrawingGeometry
