// The geometry the view is drawn from: the arbitrary-axis rule for an entity's own
// coordinates, bulged segments, B-splines (rational ones too) and the bands wide
// polylines cover.
#include "DrawingGeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {
using DrawingGeometry::Points3;

void ExpectNear(const ZcGePoint3d& a, const ZcGePoint3d& b, double tolerance = 1e-9)
{
    EXPECT_NEAR(a.x, b.x, tolerance);
    EXPECT_NEAR(a.y, b.y, tolerance);
    EXPECT_NEAR(a.z, b.z, tolerance);
}
} // namespace

TEST(DrawingGeometry, ObjectAxesFollowTheArbitraryAxisRule)
{
    struct Case
    {
        ZcGeVector3d normal;
        ZcGePoint3d x; // where the object's x axis points in the world
        ZcGePoint3d y;
    };
    const double r = std::sqrt(0.5);
    const Case cases[] = {
        { { 0, 0, 1 }, { 1, 0, 0 }, { 0, 1, 0 } },
        // Mirrored: x turns round, y stays.
        { { 0, 0, -1 }, { -1, 0, 0 }, { 0, 1, 0 } },
        // Far from the world z axis: x is world z × normal.
        { { 1, 0, 0 }, { 0, 1, 0 }, { 0, 0, 1 } },
        { { 0, -2, 0 }, { 1, 0, 0 }, { 0, 0, 1 } },
        { { 1, 1, 0 }, { -r, r, 0 }, { 0, 0, 1 } },
    };
    for (const Case& c : cases) {
        const ZcGeMatrix3d m = DrawingGeometry::ObjectToWorld(c.normal);
        ExpectNear(m.apply(ZcGePoint3d(1, 0, 0)), c.x);
        ExpectNear(m.apply(ZcGePoint3d(0, 1, 0)), c.y);
    }
    // Near the world z axis (within 1/64) x is world y × normal instead.
    const ZcGeMatrix3d nearZ = DrawingGeometry::ObjectToWorld({ 0.01, 0, 1 });
    const ZcGePoint3d x = nearZ.apply(ZcGePoint3d(1, 0, 0));
    EXPECT_NEAR(x.y, 0.0, 1e-12);
    EXPECT_GT(x.x, 0.99);
}

TEST(DrawingGeometry, AMirroredArcLiesOnTheOtherSide)
{
    Points3 arc;
    DrawingGeometry::AddArc(arc, 8000, 0, 0, 500, 0, std::numbers::pi / 2);
    const ZcGeMatrix3d m = DrawingGeometry::ObjectToWorld({ 0, 0, -1 });
    for (const ZcGePoint3d& p : arc) {
        const QPointF shown = DrawingGeometry::Project(m, p);
        EXPECT_NEAR(std::hypot(shown.x() + 8000, shown.y()), 500, 1e-6);
        EXPECT_LE(shown.x(), -7499.999);
    }
}

TEST(DrawingGeometry, BulgesBendToTheirSide)
{
    // Bulge 1 is a half circle, counter-clockwise from start to end: below a
    // segment running in +x; -1 above it.
    for (const double bulge : { 1.0, -1.0, 0.4142135623730951 }) {
        Points3 points;
        DrawingGeometry::AddBulge(points, { 0, 0, 3 }, { 2, 0, 3 }, bulge);
        ExpectNear(points.back(), { 2, 0, 3 });
        const double angle = 4 * std::atan(bulge);
        const double radius = 1.0 / std::sin(std::abs(angle) / 2);
        const double centreY = (bulge > 0 ? 1 : -1) * radius * std::cos(angle / 2);
        for (const ZcGePoint3d& p : points) {
            EXPECT_NEAR(std::hypot(p.x - 1, p.y - centreY), radius, 1e-9);
            EXPECT_LE(p.y * bulge, 1e-12);
        }
    }
}

TEST(DrawingGeometry, SplinesPassTheirEndsAndRationalOnesDrawCircles)
{
    const ZcGePoint3d control[] = { { 0, 0, 0 }, { 1, 2, 0 }, { 3, 2, 0 }, { 4, 0, 0 } };
    const double bezier[] = { 0, 0, 0, 0, 1, 1, 1, 1 };
    const Points3 cubic = DrawingGeometry::Spline(3, bezier, control, {}, {});
    ASSERT_GT(cubic.size(), 10u);
    ExpectNear(cubic.front(), control[0]);
    ExpectNear(cubic.back(), control[3]);
    // Half way a cubic Bézier is (P0 + 3 P1 + 3 P2 + P3) / 8.
    ExpectNear(cubic[cubic.size() / 2], { 2, 1.5, 0 });

    const ZcGePoint3d quarter[] = { { 1, 0, 0 }, { 1, 1, 0 }, { 0, 1, 0 } };
    const double knots[] = { 0, 0, 0, 1, 1, 1 };
    const double weights[] = { 1, std::sqrt(0.5), 1 };
    for (const ZcGePoint3d& p : DrawingGeometry::Spline(2, knots, quarter, weights, {}))
        EXPECT_NEAR(std::hypot(p.x, p.y), 1.0, 1e-9);

    // Without control points (or with knots that do not fit them) the fit points
    // are what there is.
    const ZcGePoint3d fit[] = { { 0, 0, 0 }, { 5, 5, 0 } };
    EXPECT_EQ(DrawingGeometry::Spline(3, {}, {}, {}, fit).size(), 2u);
    EXPECT_EQ(DrawingGeometry::Spline(3, knots, control, {}, fit).size(), 2u);
}

TEST(DrawingGeometry, WidePolylinesCoverBandsOfTheirWidth)
{
    const DrawingGeometry::WideVertex straight[]
        = { { 0, 0, 0, 2, 2 }, { 10, 0, 0, 2, 4 }, { 10, 10, 0, 0, 0 } };
    const std::vector<Points3> bands = DrawingGeometry::WideSegments(straight, false, 5);
    ASSERT_EQ(bands.size(), 2u);
    const Points3& first = bands[0];
    ASSERT_EQ(first.size(), 4u);
    ExpectNear(first[0], { 0, 1, 5 });
    ExpectNear(first[1], { 10, 1, 5 });
    ExpectNear(first[2], { 10, -1, 5 });
    ExpectNear(first[3], { 0, -1, 5 });
    // The second segment widens from 2 to 4 going up.
    const Points3& second = bands[1];
    ExpectNear(second[0], { 9, 0, 5 });
    ExpectNear(second[1], { 8, 10, 5 });
    // Closed, the last vertex joins the first.
    EXPECT_EQ(DrawingGeometry::WideSegments(straight, true, 0).size(), 3u);
}
