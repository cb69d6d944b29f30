// The drawing turned into the display list: entities on layers, by the layer's
// colour, whatever the case of the layer name they carry, and none on a layer
// that is off.
#include "DisplayListBuilder.h"

#include "DxfWriter.h"
#include "LineTypeMgr.h"
#include "QvKsCodeStyles.h"
#include "ZcDbDatabase.h"

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
    for (std::size_t i = 0; i < list.Entities().size(); ++i) {
        const DisplayItem& line = list.ItemsOf(i).front();
        colours.push_back(line.color);
        heights.push_back(list.PointsOf(line).front().y());
    }
    const QRgb red = DisplayListBuilder::AciColor(1).rgb();
    const QRgb blue = DisplayListBuilder::AciColor(5).rgb();
    EXPECT_EQ(colours, (std::vector<QRgb> { red, blue, red, blue }));
    EXPECT_EQ(heights, (std::vector<double> { 0, 10, 30, 50 }));
}
