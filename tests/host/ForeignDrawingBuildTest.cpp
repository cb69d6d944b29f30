// Drawings as other programs write them, read and built into the display list:
// block references composed in order however they are mirrored, sheared or
// nested, grids of copies, deep and self-referencing blocks, the drawing's line
// types, layer 0 and colours by block inside blocks, and what cannot be drawn
// counted by kind.
#include "DisplayListBuilder.h"

#include "LineTypeMgr.h"
#include "QvKsCodeStyles.h"
#include "ZcDbDatabase.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {
struct Built
{
    std::vector<std::vector<QPointF>> paths;
    std::vector<QRgb> colours;
    QString notShown;
};

Built Build(const QByteArray& blocks, const QByteArray& entities, const QByteArray& tables = {})
{
    const QByteArray text = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$LTSCALE\n40\n2\n0\nENDSEC\n"
                            "0\nSECTION\n2\nTABLES\n"
        + tables + "0\nENDSEC\n0\nSECTION\n2\nBLOCKS\n" + blocks + "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n"
        + entities + "0\nENDSEC\n0\nEOF\n";
    ZcDbDatabase drawing(false, true);
    EXPECT_EQ(drawing.readDxfData(std::string_view(text.constData(), size_t(text.size()))), Zcad::eOk)
        << drawing.readError().toStdString();
    const QvKsCodeStyles noCodes;
    DisplayList list;
    DisplayListBuilder builder(noCodes, *LineTypeMgr::Instance(), {});
    builder.Build(&drawing, list);
    Built built;
    for (std::size_t i = 0; i < list.Entities().size(); ++i)
        list.ForEachPrimitive(i, [&](const DisplayPrimitive& p) {
            built.paths.emplace_back(p.points.begin(), p.points.end());
            built.colours.push_back(p.look.color);
        });
    built.notShown = builder.NotShownSummary();
    return built;
}

QByteArray Block(const QByteArray& name, const QByteArray& content)
{
    return "0\nBLOCK\n8\n0\n2\n" + name + "\n70\n0\n10\n0\n20\n0\n30\n0\n" + content + "0\nENDBLK\n8\n0\n";
}

QByteArray Insert(const QByteArray& name, double x, double y, double sx, double sy, double angle)
{
    return QStringLiteral("0\nINSERT\n8\n0\n2\n%1\n10\n%2\n20\n%3\n30\n0\n41\n%4\n42\n%5\n50\n%6\n")
        .arg(QString::fromLatin1(name))
        .arg(x)
        .arg(y)
        .arg(sx)
        .arg(sy)
        .arg(angle)
        .toLatin1();
}

QPointF Turn(const QPointF& p, double degrees)
{
    const double a = degrees * std::numbers::pi / 180;
    return { p.x() * std::cos(a) - p.y() * std::sin(a), p.x() * std::sin(a) + p.y() * std::cos(a) };
}
} // namespace

TEST(ForeignDrawingBuild, NestedReferencesComposeInOrderHoweverMirroredOrSheared)
{
    // INNER holds a line from (0,0) to (10,0); OUTER holds INNER at (5,0) turned 90°;
    // the drawing holds OUTER at (100,0) scaled and turned as each case says.
    struct Case
    {
        double sx, sy, angle;
    };
    const Case cases[] = { { -1, 1, 0 }, { -1, 1, 90 }, { 1, -1, 90 }, { -1, -1, 0 }, { 2, 0.5, 30 } };
    const QByteArray blocks = Block("INNER", "0\nLINE\n8\n0\n10\n0\n20\n0\n30\n0\n11\n10\n21\n0\n31\n0\n")
        + Block("OUTER", Insert("INNER", 5, 0, 1, 1, 90));
    for (const Case& c : cases) {
        const Built built = Build(blocks, Insert("OUTER", 100, 0, c.sx, c.sy, c.angle));
        ASSERT_EQ(built.paths.size(), 1u);
        // In OUTER the line runs from (5,0) to (5,10); the reference scales, then turns.
        for (int end = 0; end < 2; ++end) {
            const QPointF inOuter(5, end * 10.0);
            const QPointF expected
                = QPointF(100, 0) + Turn(QPointF(inOuter.x() * c.sx, inOuter.y() * c.sy), c.angle);
            EXPECT_NEAR(built.paths[0][size_t(end)].x(), expected.x(), 1e-9)
                << c.sx << " " << c.sy << " " << c.angle;
            EXPECT_NEAR(built.paths[0][size_t(end)].y(), expected.y(), 1e-9)
                << c.sx << " " << c.sy << " " << c.angle;
        }
    }
}

TEST(ForeignDrawingBuild, GridsDeepNestingAndBlocksThatHoldThemselves)
{
    // A 6 × 4 grid of a one-line block, 20 apart across and 30 up, turned 90°.
    const Built grid = Build(Block("ONE", "0\nLINE\n8\n0\n10\n0\n20\n0\n11\n1\n21\n0\n"),
        Insert("ONE", 0, 0, 1, 1, 90) + "70\n6\n71\n4\n44\n20\n45\n30\n");
    ASSERT_EQ(grid.paths.size(), 24u);
    // The last copy: column 5, row 3, the spacing turned with the reference.
    EXPECT_NEAR(grid.paths.back()[0].x(), -90, 1e-9);
    EXPECT_NEAR(grid.paths.back()[0].y(), 100, 1e-9);

    QByteArray blocks = Block("L0", "0\nLINE\n8\n0\n10\n0\n20\n0\n11\n1\n21\n0\n");
    for (int k = 1; k < 60; ++k)
        blocks += Block("L" + QByteArray::number(k), Insert("L" + QByteArray::number(k - 1), 0, 1, 1, 1, 0));
    blocks += Block("SELF", "0\nLINE\n8\n0\n10\n0\n20\n0\n11\n1\n21\n0\n" + Insert("SELF", 1, 0, 1, 1, 0));
    const Built deep = Build(blocks, Insert("L59", 0, 0, 1, 1, 0) + Insert("SELF", 0, 0, 1, 1, 0));
    ASSERT_EQ(deep.paths.size(), 2u);
    EXPECT_DOUBLE_EQ(deep.paths[0][0].y(), 59);
}

TEST(ForeignDrawingBuild, LineTypesOfTheDrawingAtItsScale)
{
    // DASHED: 5 on, 2.5 off; $LTSCALE 2 and the line's own 0.5 make it 5 and 2.5.
    const QByteArray tables
        = "0\nTABLE\n2\nLTYPE\n70\n1\n0\nLTYPE\n2\nDASHED\n70\n0\n3\n__ __\n72\n65\n73\n2\n40\n7.5\n"
          "49\n5\n74\n0\n49\n-2.5\n74\n0\n0\nENDTAB\n"
          "0\nTABLE\n2\nLAYER\n70\n1\n0\nLAYER\n2\nCENTRE\n70\n0\n62\n1\n6\nDASHED\n0\nENDTAB\n";
    const Built own = Build({}, "0\nLINE\n8\n0\n6\nDASHED\n48\n0.5\n10\n0\n20\n0\n11\n30\n21\n0\n", tables);
    ASSERT_EQ(own.paths.size(), 4u);
    for (std::size_t k = 0; k < own.paths.size(); ++k) {
        EXPECT_NEAR(own.paths[k].front().x(), 7.5 * double(k), 1e-9);
        EXPECT_NEAR(own.paths[k].back().x(), 7.5 * double(k) + 5, 1e-9);
    }
    // By layer the pattern is the layer's, at the drawing's scale: 10 on, 5 off.
    const Built byLayer = Build({}, "0\nLINE\n8\nCENTRE\n10\n0\n20\n0\n11\n30\n21\n0\n", tables);
    ASSERT_EQ(byLayer.paths.size(), 2u);
    EXPECT_NEAR(byLayer.paths[1].front().x(), 15, 1e-9);
}

TEST(ForeignDrawingBuild, InsideBlocksLayerZeroAndByBlockTakeTheReferences)
{
    const QByteArray tables
        = "0\nTABLE\n2\nLAYER\n70\n1\n0\nLAYER\n2\nBLUE\n70\n0\n62\n5\n6\nCONTINUOUS\n0\nENDTAB\n";
    const Built built = Build(Block("B",
                                  "0\nLINE\n8\n0\n10\n0\n20\n0\n11\n1\n21\n0\n"
                                  "0\nLINE\n8\n0\n62\n0\n10\n0\n20\n1\n11\n1\n21\n1\n"),
        "0\nINSERT\n8\nBLUE\n62\n3\n2\nB\n10\n0\n20\n0\n", tables);
    ASSERT_EQ(built.colours.size(), 2u);
    EXPECT_EQ(built.colours[0], DisplayListBuilder::AciColor(5).rgba());
    EXPECT_EQ(built.colours[1], DisplayListBuilder::AciColor(3).rgba());
}

TEST(ForeignDrawingBuild, WhatCannotBeDrawnIsCountedByKind)
{
    const Built built = Build(
        {}, "0\nWIPEOUT\n8\n0\n0\nWIPEOUT\n8\n0\n0\nACAD_TABLE\n8\n0\n0\nPOINT\n8\n0\n10\n1\n20\n2\n");
    EXPECT_EQ(built.notShown, QStringLiteral("未显示: 1 个 ACAD_TABLE, 2 个 WIPEOUT"));
    ASSERT_EQ(built.paths.size(), 1u);
    EXPECT_EQ(built.paths[0].size(), 1u);
    EXPECT_TRUE(Build({}, "0\nPOINT\n8\n0\n").notShown.isEmpty());
}
