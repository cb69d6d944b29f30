#pragma once

// A point and a displacement in world coordinates.
#include <cmath>

class ZcGeVector3d
{
public:
    constexpr ZcGeVector3d() = default;
    constexpr ZcGeVector3d(double ax, double ay, double az)
        : x(ax)
        , y(ay)
        , z(az)
    { }
    double length() const { return std::sqrt(x * x + y * y + z * z); }
    constexpr bool operator==(const ZcGeVector3d&) const = default;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

class ZcGePoint3d
{
public:
    constexpr ZcGePoint3d() = default;
    constexpr ZcGePoint3d(double ax, double ay, double az = 0.0)
        : x(ax)
        , y(ay)
        , z(az)
    { }
    constexpr bool operator==(const ZcGePoint3d&) const = default;
    constexpr ZcGePoint3d operator+(const ZcGeVector3d& v) const { return { x + v.x, y + v.y, z + v.z }; }
    constexpr ZcGeVector3d operator-(const ZcGePoint3d& p) const { return { x - p.x, y - p.y, z - p.z }; }
    double distanceTo(const ZcGePoint3d& p) const { return (*this - p).length(); }

    static const ZcGePoint3d kOrigin;

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

inline constexpr ZcGePoint3d ZcGePoint3d::kOrigin {};
