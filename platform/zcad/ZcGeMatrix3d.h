#pragma once

// An affine transformation of world coordinates (row-major 4x4, last row 0 0 0 1).
#include "ZcGePoint3d.h"

class ZcGeMatrix3d
{
public:
    ZcGeMatrix3d();

    static ZcGeMatrix3d translation(const ZcGeVector3d& v);
    // Rotation about the z axis through `center`, angle in radians.
    static ZcGeMatrix3d rotationZ(double angle, const ZcGePoint3d& center = ZcGePoint3d::kOrigin);
    static ZcGeMatrix3d scaling(
        double sx, double sy, double sz, const ZcGePoint3d& center = ZcGePoint3d::kOrigin);

    // this * other: applies `other` first.
    ZcGeMatrix3d operator*(const ZcGeMatrix3d& other) const;
    ZcGePoint3d apply(const ZcGePoint3d& p) const;
    ZcGeVector3d apply(const ZcGeVector3d& v) const;
    // The factor by which lengths in the xy plane grow (mean of the axis scales).
    double scaleXY() const;
    // The angle by which the x axis turns, radians.
    double rotationAngleZ() const;

    double entry[4][4];
};
