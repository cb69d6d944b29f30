// Drawings as other programs write them: stray groups between sections passed over
// and noted, line types and their scales, extrusion directions, the looks of texts,
// multi-line text angles in degrees, grids of block copies, polyline widths, and
// meshes kept whole with their vertices.
#include "ZcSdk.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {
struct Read
{
    std::unique_ptr<ZcDbDatabase> db = std::make_unique<ZcDbDatabase>(false, true);
    std::vector<ZcDbEntity*> entities;
};

Read ReadEntities(const QByteArray& entities, const QByteArray& before = {})
{
    const QByteArray text = before + "0\nSECTION\n2\nENTITIES\n" + entities + "0\nENDSEC\n0\nEOF\n";
    Read read;
    EXPECT_EQ(read.db->readDxfData(std::string_view(text.constData(), size_t(text.size()))), Zcad::eOk)
        << read.db->readError().toStdString();
    ZcDbBlockTableRecord* model = nullptr;
    if (zcdbOpenObject(model, read.db->modelSpaceId(), ZcDb::kForRead) != Zcad::eOk)
        return read;
    for (const quint32 index : model->entityIndexes())
        read.entities.push_back(ZcDbEntity::cast(read.db->objectAt(index)));
    model->close();
    return read;
}

double Degrees(double radians)
{
    return radians * 180 / std::numbers::pi;
}
} // namespace

TEST(DxfForeignRead, StrayGroupsBetweenSectionsArePassedOverAndNoted)
{
    const QByteArray header = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n9\n$STRAY\n70\n1\n";
    const Read read = ReadEntities("0\nLINE\n8\n0\n10\n0\n20\n0\n11\n1\n21\n1\n", header);
    ASSERT_EQ(read.entities.size(), 1u);
    ASSERT_EQ(read.db->readNotes().size(), 1);
    EXPECT_TRUE(read.db->readNotes()[0].startsWith(QStringLiteral("skipped 2 group(s) between sections")))
        << read.db->readNotes()[0].toStdString();
    // A drawing that ends among stray groups is still refused.
    const QByteArray cut = header + "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n5\nFF\n";
    ZcDbDatabase db(false, true);
    EXPECT_EQ(db.readDxfData(std::string_view(cut.constData(), size_t(cut.size()))), Zcad::eDwgNeedsRecovery);
}

TEST(DxfForeignRead, LineTypesAndTheirScales)
{
    const QByteArray before
        = "0\nSECTION\n2\nHEADER\n9\n$LTSCALE\n40\n25\n0\nENDSEC\n"
          "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLTYPE\n70\n1\n"
          "0\nLTYPE\n2\nDashDot\n70\n0\n73\n4\n40\n2\n49\n1\n74\n0\n49\n-0.5\n74\n0\n49\n0\n74\n0\n"
          "49\n-0.5\n74\n0\n0\nENDTAB\n0\nENDSEC\n";
    const Read read = ReadEntities("0\nLINE\n8\n0\n6\nDASHDOT\n48\n0.5\n10\n0\n20\n0\n11\n1\n21\n1\n"
                                   "0\nLINE\n8\n0\n10\n0\n20\n0\n11\n1\n21\n1\n"
                                   "0\nCIRCLE\n8\n0\n6\nDASHDOT\n48\n0.5\n10\n0\n20\n0\n40\n1\n",
        before);
    EXPECT_DOUBLE_EQ(read.db->lineTypeScale(), 25);
    const ZcDbLineType* dashDot = read.db->lineType(QStringLiteral("dashdot"));
    ASSERT_NE(dashDot, nullptr);
    EXPECT_EQ(dashDot->pattern, (std::vector<double> { 1, -0.5, 0, -0.5 }));
    ASSERT_EQ(read.entities.size(), 3u);
    const ZcDbLineStyle& style = read.db->lineStyle(read.entities[0]->lineStyleIndex());
    EXPECT_EQ(style.lineType, QStringLiteral("DASHDOT"));
    EXPECT_DOUBLE_EQ(style.scale, 0.5);
    EXPECT_EQ(read.entities[1]->lineStyleIndex(), 0);
    EXPECT_EQ(read.entities[2]->lineStyleIndex(), read.entities[0]->lineStyleIndex());
}

TEST(DxfForeignRead, ExtrusionsTextLooksAnglesGridsAndWidths)
{
    const Read read = ReadEntities(
        "0\nARC\n8\n0\n10\n8000\n20\n0\n40\n5\n50\n0\n51\n90\n210\n0\n220\n0\n230\n-1\n"
        "0\nTEXT\n8\n0\n10\n1\n20\n2\n40\n3\n1\nT\n41\n0.7\n51\n15\n71\n2\n210\n0\n220\n0\n230\n-1\n"
        "0\nMTEXT\n8\n0\n10\n0\n20\n0\n40\n2\n50\n30\n44\n1.5\n1\nM\n"
        "0\nMTEXT\n8\n0\n10\n0\n20\n0\n40\n2\n50\n30\n11\n0\n21\n1\n1\nM\n"
        "0\nINSERT\n8\n0\n2\nB\n10\n0\n20\n0\n70\n6\n71\n4\n44\n20\n45\n30\n"
        "0\nLWPOLYLINE\n8\n0\n90\n2\n43\n40\n10\n0\n20\n0\n10\n5\n20\n0\n210\n0\n220\n0\n230\n-1\n"
        "0\nPOLYLINE\n8\n0\n66\n1\n70\n0\n40\n3\n41\n3\n0\nVERTEX\n8\n0\n10\n0\n20\n0\n"
        "0\nVERTEX\n8\n0\n10\n1\n20\n0\n0\nSEQEND\n8\n0\n");
    ASSERT_EQ(read.entities.size(), 7u);
    const auto* arc = ZcDbArc::cast(read.entities[0]);
    ASSERT_NE(arc, nullptr);
    EXPECT_EQ(arc->normal(), ZcGeVector3d(0, 0, -1));
    const auto* text = ZcDbText::cast(read.entities[1]);
    ASSERT_NE(text, nullptr);
    EXPECT_DOUBLE_EQ(text->widthFactor(), 0.7);
    EXPECT_NEAR(Degrees(text->oblique()), 15, 1e-9);
    EXPECT_EQ(text->generationFlags(), 2);
    EXPECT_EQ(text->normal(), ZcGeVector3d(0, 0, -1));
    // A multi-line text's angle is in degrees; a direction, when given, decides.
    EXPECT_NEAR(Degrees(ZcDbMText::cast(read.entities[2])->rotation()), 30, 1e-9);
    EXPECT_DOUBLE_EQ(ZcDbMText::cast(read.entities[2])->lineSpacingFactor(), 1.5);
    EXPECT_NEAR(Degrees(ZcDbMText::cast(read.entities[3])->rotation()), 90, 1e-9);
    const auto* grid = ZcDbBlockReference::cast(read.entities[4]);
    ASSERT_NE(grid, nullptr);
    EXPECT_EQ(grid->columns(), 6);
    EXPECT_EQ(grid->rows(), 4);
    EXPECT_DOUBLE_EQ(grid->columnSpacing(), 20);
    EXPECT_DOUBLE_EQ(grid->rowSpacing(), 30);
    const auto* wide = ZcDbPolyline::cast(read.entities[5]);
    ASSERT_NE(wide, nullptr);
    EXPECT_DOUBLE_EQ(wide->constantWidth(), 40);
    EXPECT_EQ(wide->normal(), ZcGeVector3d(0, 0, -1));
    EXPECT_DOUBLE_EQ(ZcDbPolyline::cast(read.entities[6])->constantWidth(), 3);
}

TEST(DxfForeignRead, MeshesAreKeptWholeWithTheirVertices)
{
    const Read read = ReadEntities("0\nPOLYLINE\n8\n0\n66\n1\n70\n64\n71\n3\n72\n1\n"
                                   "0\nVERTEX\n8\n0\n10\n0\n20\n0\n30\n0\n70\n192\n"
                                   "0\nVERTEX\n8\n0\n10\n1\n20\n0\n30\n0\n70\n192\n"
                                   "0\nVERTEX\n8\n0\n10\n0\n20\n1\n30\n0\n70\n192\n"
                                   "0\nVERTEX\n8\n0\n10\n0\n20\n0\n30\n0\n70\n128\n71\n1\n72\n2\n73\n3\n"
                                   "0\nSEQEND\n8\n0\n"
                                   "0\nLINE\n8\n0\n10\n0\n20\n0\n11\n1\n21\n1\n");
    ASSERT_EQ(read.entities.size(), 2u);
    const auto* mesh = ZcDbProxyEntity::cast(read.entities[0]);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->originalDxfName(), QStringLiteral("POLYLINE"));
    int vertices = 0;
    bool ended = false;
    for (const auto& g : mesh->dxfGroups()) {
        vertices += g.code == 0 && g.value == u"VERTEX";
        ended = ended || (g.code == 0 && g.value == u"SEQEND");
    }
    EXPECT_EQ(vertices, 4);
    EXPECT_TRUE(ended);
    EXPECT_EQ(mesh->dxfGroups().back().value, QStringLiteral("0"));
    EXPECT_NE(ZcDbLine::cast(read.entities[1]), nullptr);
}
