#include "DemoFloorWriter.h"

#include "DxfWriter.h"
#include "QvKsAtomicFile.h"

#include <QBuffer>
#include <QStringList>

namespace {
constexpr double kRoomWidth = 6000.0;
constexpr double kRoomDepth = 5000.0;
constexpr double kCorridor = 2400.0;
constexpr int kRoomsPerRow = 5;

const QStringList kRoomNames { QStringLiteral("办公室"), QStringLiteral("卫生间"), QStringLiteral("配电间"),
    QStringLiteral("弱电间"), QStringLiteral("设备间"), QStringLiteral("会议室"), QStringLiteral("茶水间"),
    QStringLiteral("楼梯间"), QStringLiteral("储藏室"), QStringLiteral("机房") };

const QString kWallLayer = QStringLiteral("墙体");
const QString kRoomLayer = QStringLiteral("房间名称");
const QString kPipeLayer = QStringLiteral("QV_管线");
const QString kLabelLayer = QStringLiteral("QV_标注");
const QString kTagBlock = QStringLiteral("房间标签");

double rowY(int row)
{
    return row == 0 ? 0.0 : kRoomDepth + kCorridor;
}

void writeRooms(DxfWriter& writer, const QString& floorName)
{
    const DxfWriter::Style wall { kWallLayer, 256 };
    const DxfWriter::Style room { kRoomLayer, 256 };
    const double length = kRoomWidth * kRoomsPerRow;
    for (int row = 0; row < 2; ++row) {
        const double y = rowY(row);
        writer.addPolyline(
            { { 0, y, 0 }, { length, y, 0 }, { length, y + kRoomDepth, 0 }, { 0, y + kRoomDepth, 0 } }, true,
            wall);
        for (int i = 0; i < kRoomsPerRow; ++i) {
            const double x = i * kRoomWidth;
            if (i > 0)
                writer.addLine({ x, y, 0 }, { x, y + kRoomDepth, 0 }, wall);
            const int number = row * kRoomsPerRow + i;
            const QString name = kRoomNames[number % kRoomNames.size()];
            const QString roomNo = QStringLiteral("%1-%2").arg(floorName).arg(101 + number);
            writer.addText({ x + 600, y + kRoomDepth / 2, 0 }, name, 350, room);
            writer.addBlockReference(kTagBlock, { x + 600, y + kRoomDepth / 2 - 800, 0 },
                { { QStringLiteral("房间号"), roomNo, { x + 600, y + kRoomDepth / 2 - 800, 0 }, 250, false },
                    { QStringLiteral("面积"), QStringLiteral("%1㎡").arg(kRoomWidth * kRoomDepth / 1e6),
                        { x + 600, y + kRoomDepth / 2 - 1200, 0 }, 250, true } },
                room);
        }
    }
    // A door symbol on the corridor side of the first room.
    writer.addArc({ 900, kRoomDepth, 0 }, 900, 0, 90, wall);
    writer.addCircle({ length / 2, kRoomDepth + kCorridor / 2, 0 }, 150, wall);
}

void writeRuns(DxfWriter& writer, const QList<DemoFloorCode>& codes)
{
    const double length = kRoomWidth * kRoomsPerRow;
    const double corridorY = kRoomDepth + 300;
    for (int c = 0; c < codes.size(); ++c) {
        const DemoFloorCode& code = codes[c];
        const DxfWriter::Style style { kPipeLayer, 1 + c % 6 };
        // A main along the corridor, offset per code, and branches into rooms.
        const double y = corridorY + (c % 8) * 220.0;
        writer.addProductEntity(code.indexPath, { { 300, y, 0 }, { length - 300, y, 0 } }, style);
        for (int b = 0; b < 3; ++b) {
            const double x = kRoomWidth * (0.5 + ((c + b * 2) % kRoomsPerRow)) + c * 60.0;
            const bool up = (b + c) % 2 == 0;
            const double end = up ? rowY(1) + kRoomDepth * 0.6 : kRoomDepth * 0.4;
            writer.addProductEntity(
                code.indexPath, { { x, y, 0 }, { x, (y + end) / 2, 0 }, { x + 500, end, 0 } }, style);
        }
        writer.addText({ 400, y + 60, 0 }, code.codeName, 150, { kLabelLayer, 256 });
    }
}
} // namespace

bool WriteDemoFloorDrawing(
    const QString& filePath, const QString& floorName, const QList<DemoFloorCode>& codes, QString* error)
{
    QByteArray drawing;
    QBuffer file(&drawing);
    file.open(QIODevice::WriteOnly);
    DxfWriter writer(&file, DxfWriter::Version::R2000);
    writer.addLayer(kWallLayer, 8);
    writer.addLayer(kRoomLayer, 3);
    writer.addLayer(kPipeLayer, 1);
    writer.addLayer(kLabelLayer, 7);
    writer.registerApp(QStringLiteral("QVKS"));
    writer.beginBlock(kTagBlock);
    writer.addCircle({ -150, 0, 0 }, 100);
    writer.addAttributeDefinition(
        { QStringLiteral("房间号"), QStringLiteral("房间号"), QString(), {}, 250, false });
    writer.addAttributeDefinition(
        { QStringLiteral("面积"), QStringLiteral("面积"), QString(), { 0, -400, 0 }, 250, true });
    writer.endBlock();
    writeRooms(writer, floorName);
    writeRuns(writer, codes);
    writer.addMText({ 0, -1500, 0 }, QStringLiteral("%1 平面图\\P比例 1:100").arg(floorName), 500, 8000);
    if (!writer.finish()) {
        if (error)
            *error = QStringLiteral("the drawing of %1 cannot be made").arg(floorName);
        return false;
    }
    const QvKsWriteStatus status = QvKsAtomicFile::Write(filePath, drawing);
    if (!status && error)
        *error = status.Describe();
    return status.IsOk();
}
