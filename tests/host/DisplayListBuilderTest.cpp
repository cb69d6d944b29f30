// The drawing turned into the display list: entities on layers, by the layer's
// colour, whatever the case of the layer name they carry, and none on a layer
// that is off; and a large drawing, built in two halves.
#include "DisplayListBuilder.h"

#include "DxfWriter.h"
#include "LineTypeMgr.h"
#include "QvKsCodeStyles.h"
#include "TestDrawing.h"
#include "ZcDbCircle.h"
#include "ZcDbLine.h"
#include "ZcDbText.h"

#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(DisplayListBuilder, EntitiesTakeTheirLayersByNameInAnyCaseAndSkipLayersThatAreOff)
{
    QTemporaryDir dir;
    const QString file = dir.filePath(QStringLiteral("layers.dxf"));
    {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        DxfWriter writer(&out);
        writer.addLayer(QStringLiteral("Pipes"), 1);
        writer.addLayer(QStringLiteral("Ducts"), 5);
        writer.addLayer(QStringLiteral("Hidden"), -3); // off
        const QStringList layers { QStringLiteral("PIPES"), QStringLiteral("Ducts"), QStringLiteral("hidden"),
            QStringLiteral("pipes"), QStringLiteral("Hidden"), QStringLiteral("dUCTS") };
        for (int i = 0; i < layers.size(); ++i)
            writer.addLine({ 0, i * 10.0, 0 }, { 100, i * 10.0, 0 }, { layers[i] });
        ASSERT_TRUE(writer.finish());
    }
    ZcDbDatabase drawing(false, true);
    ASSERT_EQ(drawing.readDwgFile(file), Zcad::eOk);
    const QvKsCodeStyles noCodes;
    DisplayList list;
    DisplayListBuilder(noCodes, *LineTypeMgr::Instance(), {}).Build(&drawing, list);

    std::vector<QRgb> colours;
    std::vector<double> heights;
    for (std::size_t i = 0; i < list.Entities().size(); ++i)
        list.ForEachPrimitive(i, [&](const DisplayPrimitive& line) {
            colours.push_back(line.look.color);
            heights.push_back(line.points.front().y());
        });
    const QRgb red = DisplayListBuilder::AciColor(1).rgb();
    const QRgb blue = DisplayListBuilder::AciColor(5).rgb();
    EXPECT_EQ(colours, (std::vector<QRgb> { red, blue, red, blue }));
    EXPECT_EQ(heights, (std::vector<double> { 0, 10, 30, 50 }));
}

// A floor large enough to be built in two halves at once comes out as if built in
// one go: every entity in drawing order, lines and polylines drawn from the drawing,
// circles and texts as items, each in its own colour.
TEST(DisplayListBuilder, LargeDrawingBuiltInHalvesKeepsOrderAndLooks)
{
    ZcDbDatabase drawing;
    drawing.setLayer({ QStringLiteral("Red"), 1 });
    drawing.setLayer({ QStringLiteral("Green"), 3 });
    constexpr int kEntities = 30001;
    std::vector<ZcDbObjectId> ids;
    for (int i = 0; i < kEntities; ++i) {
        ZcDbEntity* entity = nullptr;
        switch (i % 4) {
        case 0:
            entity = new ZcDbLine({ 0, double(i), 0 }, { 5, double(i), 0 });
            entity->setLayer(QStringLiteral("Red"));
            break;
        case 1:
            entity = new ZcDbLine({ 0, double(i), 0 }, { 5, double(i), 0 });
            entity->setColorIndex(5);
            break;
        case 2:
            entity = new ZcDbCircle({ 0, double(i), 0 }, 1.0);
            entity->setLayer(QStringLiteral("Green"));
            break;
        default:
            entity = new ZcDbText({ 0, double(i), 0 }, QStringLiteral("T%1").arg(i));
            entity->setColorIndex(i % 8 == 3 ? 5 : 1);
            break;
        }
        ids.push_back(AppendTo(drawing, entity));
    }
    const QvKsCodeStyles noCodes;
    DisplayList list;
    DisplayListBuilder(noCodes, *LineTypeMgr::Instance(), {}).Build(&drawing, list);

    ASSERT_EQ(list.Entities().size(), std::size_t(kEntities));
    const QRgb red = DisplayListBuilder::AciColor(1).rgba();
    const QRgb green = DisplayListBuilder::AciColor(3).rgba();
    const QRgb blue = DisplayListBuilder::AciColor(5).rgba();
    for (int i = 0; i < kEntities; ++i) {
        const DisplayEntity& entity = list.Entities()[std::size_t(i)];
        ASSERT_EQ(list.IdOf(entity), ids[std::size_t(i)]) << i;
        EXPECT_EQ(entity.IsShape(), i % 4 < 2) << i;
        int primitives = 0;
        list.ForEachPrimitive(std::size_t(i), [&](const DisplayPrimitive& p) {
            ++primitives;
            const QRgb expected = i % 4 == 0 ? red
                : i % 4 == 1                 ? blue
                : i % 4 == 2                 ? green
                : i % 8 == 3                 ? blue
                                             : red;
            EXPECT_EQ(p.look.color, expected) << i;
            if (i % 4 == 3) {
                ASSERT_NE(p.text, nullptr);
                EXPECT_EQ(p.text->text, QStringLiteral("T%1").arg(i));
                EXPECT_EQ(p.points.front().y(), double(i));
            } else if (i % 4 == 2) {
                EXPECT_TRUE(p.closed);
                EXPECT_NEAR(p.points.front().y(), double(i), 1.0);
            } else {
                EXPECT_EQ(p.points.front(), QPointF(0, i));
            }
        });
        EXPECT_EQ(primitives, 1) << i;
    }
    EXPECT_EQ(list.Bounds().top(), 0.0);
    EXPECT_GE(list.Bounds().bottom(), double(kEntities - 1));
}
