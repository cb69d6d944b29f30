// Entities kept only as their DXF groups, read back into what they show: hatch
// patterns clipped to their boundaries (holes left out), multi-lines, meshes,
// dimensions by their blocks, and kinds that cannot be shown said to be so.
#include "ProxyShapes.h"

#include "ZcDbProxyEntity.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {
ZcDbProxyEntity Proxy(const QString& kind, const QString& groups)
{
    // "code value" pairs, one a line.
    std::vector<ZcDbProxyEntity::Group> list;
    const QStringList lines = groups.split(u'\n', Qt::SkipEmptyParts);
    for (int i = 0; i + 1 < lines.size(); i += 2)
        list.push_back({ lines[i].trimmed().toInt(), lines[i + 1] });
    ZcDbProxyEntity proxy(kind);
    proxy.setDxfGroups(std::move(list));
    return proxy;
}

QString Square(double left, double bottom, double size)
{
    return QStringLiteral(
        "92\n3\n72\n0\n73\n1\n93\n4\n10\n%1\n20\n%2\n10\n%3\n20\n%2\n10\n%3\n20\n%4\n10\n%1\n20\n%4\n97\n0\n")
        .arg(left)
        .arg(bottom)
        .arg(left + size)
        .arg(bottom + size);
}
} // namespace

TEST(ProxyShapes, HatchPatternLinesStayInsideTheBoundaryAndOutOfItsHoles)
{
    // Lines at 45°, 10 apart, over a square of 100 with a hole of 40 in its middle.
    const ZcDbProxyEntity hatch = Proxy(QStringLiteral("HATCH"),
        QStringLiteral("10\n0\n20\n0\n30\n0\n70\n0\n91\n2\n") + Square(0, 0, 100) + Square(30, 30, 40)
            + QStringLiteral("75\n0\n76\n1\n52\n45\n41\n1\n77\n0\n78\n1\n53\n45\n43\n0\n44\n0\n45\n-7."
                             "0710678\n46\n7.0710678\n79\n0\n"));
    const ProxyShapes shapes = ProxyShapeReader::Read(hatch);
    ASSERT_TRUE(shapes.understood);
    EXPECT_TRUE(shapes.fills.empty());
    // 141 units across the square, 10 apart: 14 lines, and the 5 or 6 through the
    // hole cut in two.
    EXPECT_GE(shapes.paths.size(), 18u);
    EXPECT_LE(shapes.paths.size(), 21u);
    for (const auto& path : shapes.paths) {
        ASSERT_EQ(path.size(), 2u);
        const ZcGePoint3d mid((path[0].x + path[1].x) / 2, (path[0].y + path[1].y) / 2);
        EXPECT_NEAR(path[1].y - path[0].y, path[1].x - path[0].x, 1e-6); // at 45°
        EXPECT_TRUE(mid.x > -1e-6 && mid.x < 100 + 1e-6 && mid.y > -1e-6 && mid.y < 100 + 1e-6);
        EXPECT_FALSE(mid.x > 30.5 && mid.x < 69.5 && mid.y > 30.5 && mid.y < 69.5) << mid.x << "," << mid.y;
    }
    // A pattern too fine for its area shows as the boundaries.
    const ZcDbProxyEntity fine = Proxy(QStringLiteral("HATCH"),
        QStringLiteral("70\n0\n91\n2\n") + Square(0, 0, 100) + Square(30, 30, 40)
            + QStringLiteral("78\n1\n53\n0\n43\n0\n44\n0\n45\n0\n46\n0.01\n79\n0\n"));
    const ProxyShapes outline = ProxyShapeReader::Read(fine);
    ASSERT_EQ(outline.paths.size(), 2u);
    EXPECT_EQ(outline.paths[0].size(), 5u);
    // Solid, the same boundary is one area of two rings.
    const ZcDbProxyEntity solid = Proxy(QStringLiteral("HATCH"),
        QStringLiteral("70\n1\n91\n2\n") + Square(0, 0, 100) + Square(30, 30, 40)
            + QStringLiteral("75\n0\n76\n1\n"));
    const ProxyShapes filled = ProxyShapeReader::Read(solid);
    ASSERT_EQ(filled.fills.size(), 1u);
    EXPECT_EQ(filled.fills[0].size(), 2u);
}

TEST(ProxyShapes, MultiLineElementsRunAtTheirOffsets)
{
    // Two elements, 25 either side, through (0,0) and (100,0), miters straight up.
    const ZcDbProxyEntity mline = Proxy(QStringLiteral("MLINE"),
        QStringLiteral("40\n50\n70\n0\n71\n1\n72\n2\n73\n2\n10\n0\n20\n0\n30\n0\n"
                       "11\n0\n21\n0\n31\n0\n12\n1\n22\n0\n32\n0\n13\n0\n23\n1\n33\n0\n"
                       "74\n2\n41\n25\n41\n0\n75\n0\n74\n2\n41\n-25\n41\n0\n75\n0\n"
                       "11\n100\n21\n0\n31\n0\n12\n1\n22\n0\n32\n0\n13\n0\n23\n1\n33\n0\n"
                       "74\n2\n41\n25\n41\n0\n75\n0\n74\n2\n41\n-25\n41\n0\n75\n0\n"));
    const ProxyShapes shapes = ProxyShapeReader::Read(mline);
    ASSERT_EQ(shapes.paths.size(), 2u);
    EXPECT_DOUBLE_EQ(shapes.paths[0][0].y, 25);
    EXPECT_DOUBLE_EQ(shapes.paths[0][1].x, 100);
    EXPECT_DOUBLE_EQ(shapes.paths[1][1].y, -25);
}

TEST(ProxyShapes, PolyfaceMeshEdgesLeaveOutHiddenOnes)
{
    QString groups = QStringLiteral("66\n1\n70\n64\n71\n4\n72\n1\n");
    const double corners[4][2] = { { 0, 0 }, { 10, 0 }, { 10, 10 }, { 0, 10 } };
    for (const auto& c : corners)
        groups += QStringLiteral("0\nVERTEX\n10\n%1\n20\n%2\n30\n0\n70\n192\n").arg(c[0]).arg(c[1]);
    // One face over all four corners, the edge from the third hidden.
    groups += QStringLiteral(
        "0\nVERTEX\n10\n0\n20\n0\n30\n0\n70\n128\n71\n1\n72\n2\n73\n-3\n74\n4\n0\nSEQEND\n");
    const ProxyShapes shapes = ProxyShapeReader::Read(Proxy(QStringLiteral("POLYLINE"), groups));
    ASSERT_EQ(shapes.paths.size(), 3u);
    for (const auto& edge : shapes.paths)
        EXPECT_FALSE(edge[0].x == 10 && edge[0].y == 10 && edge[1].x == 0 && edge[1].y == 10);
}

TEST(ProxyShapes, KindsReadFromTheirGroups)
{
    const ProxyShapes dimension = ProxyShapeReader::Read(
        Proxy(QStringLiteral("DIMENSION"), QStringLiteral("2\n*D7\n10\n0\n20\n0\n")));
    EXPECT_EQ(dimension.blockName, QStringLiteral("*D7"));
    EXPECT_FALSE(ProxyShapeReader::Read(Proxy(QStringLiteral("WIPEOUT"), QStringLiteral("10\n0\n20\n0\n")))
                     .understood);
    // A solid's corners are drawn 1 2 4 3, in its own coordinates.
    const ProxyShapes solid = ProxyShapeReader::Read(Proxy(QStringLiteral("SOLID"),
        QStringLiteral(
            "10\n0\n20\n0\n11\n10\n21\n0\n12\n0\n22\n5\n13\n10\n23\n5\n210\n0\n220\n0\n230\n-1\n")));
    ASSERT_EQ(solid.fills.size(), 1u);
    const auto& ring = solid.fills[0][0];
    ASSERT_EQ(ring.size(), 4u);
    EXPECT_DOUBLE_EQ(ring[1].x, -10);
    EXPECT_DOUBLE_EQ(ring[2].x, -10);
    EXPECT_DOUBLE_EQ(ring[2].y, 5);
    // An ellipse runs between its parameters round its centre.
    const ProxyShapes ellipse = ProxyShapeReader::Read(Proxy(QStringLiteral("ELLIPSE"),
        QStringLiteral("10\n5\n20\n5\n30\n0\n11\n4\n21\n0\n31\n0\n40\n0.5\n41\n0\n42\n3.141592653589793\n")));
    ASSERT_EQ(ellipse.paths.size(), 1u);
    EXPECT_NEAR(ellipse.paths[0].front().x, 9, 1e-9);
    EXPECT_NEAR(ellipse.paths[0].back().x, 1, 1e-9);
    for (const ZcGePoint3d& p : ellipse.paths[0])
        EXPECT_NEAR(std::pow((p.x - 5) / 4, 2) + std::pow((p.y - 5) / 2, 2), 1.0, 1e-9);
}
