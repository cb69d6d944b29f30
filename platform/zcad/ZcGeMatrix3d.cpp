#include "ZcGeMatrix3d.h"

#include <cmath>

ZcGeMatrix3d::ZcGeMatrix3d()
{
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c)
            entry[r][c] = r == c ? 1.0 : 0.0;
}

ZcGeMatrix3d ZcGeMatrix3d::translation(const ZcGeVector3d& v)
{
    ZcGeMatrix3d m;
    m.entry[0][3] = v.x;
    m.entry[1][3] = v.y;
    m.entry[2][3] = v.z;
    return m;
}

ZcGeMatrix3d ZcGeMatrix3d::rotationZ(double angle, const ZcGePoint3d& center)
{
    ZcGeMatrix3d r;
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    r.entry[0][0] = c;
    r.entry[0][1] = -s;
    r.entry[1][0] = s;
    r.entry[1][1] = c;
    const ZcGeVector3d toCenter = center - ZcGePoint3d::kOrigin;
    return translation(toCenter) * r * translation({ -toCenter.x, -toCenter.y, -toCenter.z });
}

ZcGeMatrix3d ZcGeMatrix3d::scaling(double sx, double sy, double sz, const ZcGePoint3d& center)
{
    ZcGeMatrix3d s;
    s.entry[0][0] = sx;
    s.entry[1][1] = sy;
    s.entry[2][2] = sz;
    const ZcGeVector3d toCenter = center - ZcGePoint3d::kOrigin;
    return translation(toCenter) * s * translation({ -toCenter.x, -toCenter.y, -toCenter.z });
}

ZcGeMatrix3d ZcGeMatrix3d::operator*(const ZcGeMatrix3d& other) const
{
    ZcGeMatrix3d m;
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k)
                sum += entry[r][k] * other.entry[k][c];
            m.entry[r][c] = sum;
        }
    return m;
}

ZcGePoint3d ZcGeMatrix3d::apply(const ZcGePoint3d& p) const
{
    return { entry[0][0] * p.x + entry[0][1] * p.y + entry[0][2] * p.z + entry[0][3],
        entry[1][0] * p.x + entry[1][1] * p.y + entry[1][2] * p.z + entry[1][3],
        entry[2][0] * p.x + entry[2][1] * p.y + entry[2][2] * p.z + entry[2][3] };
}

ZcGeVector3d ZcGeMatrix3d::apply(const ZcGeVector3d& v) const
{
    return { entry[0][0] * v.x + entry[0][1] * v.y + entry[0][2] * v.z,
        entry[1][0] * v.x + entry[1][1] * v.y + entry[1][2] * v.z,
        entry[2][0] * v.x + entry[2][1] * v.y + entry[2][2] * v.z };
}

double ZcGeMatrix3d::scaleXY() const
{
    const double sx = std::hypot(entry[0][0], entry[1][0]);
    const double sy = std::hypot(entry[0][1], entry[1][1]);
    return (sx + sy) / 2.0;
}

double ZcGeMatrix3d::rotationAngleZ() const
{
    return std::atan2(entry[1][0], entry[0][0]);
}
