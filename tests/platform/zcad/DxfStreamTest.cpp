// A drawing file is read piece by piece while it is parsed, and entities read
// with equal extended data share it. Neither may show: a file of many pieces
// reads as its bytes in memory do, and changing one entity changes no other.
#include "DxfWriter.h"
#include "QvKsEntity.h"
#include "ZcSdk.h"

#include <QBuffer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {
// Larger than a few of the pieces the file is read in, with a text line that
// alone spans more than one piece.
constexpr qint64 kDrawingBytes = 10LL << 20;
constexpr int kLongText = 5 << 20;

QByteArray writeLargeDrawing(int& entities)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    DxfWriter writer(&buffer, DxfWriter::Version::R2000);
    writer.addLayer(QStringLiteral("QV_管线"), 1);
    const DxfWriter::Style pipe { QStringLiteral("QV_管线"), 2 };
    entities = 0;
    for (int n = 0; buffer.pos() < kDrawingBytes; ++n, ++entities) {
        if (n == 1000)
            writer.addText({ 0, 0, 0 }, QString(kLongText, QLatin1Char('x')) + QStringLiteral("尾"), 2.5);
        else
            writer.addProductEntity(
                QStringLiteral("3\\%1").arg(n % 97), { { n * 1.0, 0, 0 }, { n + 8.0, 1, 0 } }, pipe);
    }
    EXPECT_TRUE(writer.finish());
    return buffer.data();
}

std::vector<QString> describeModelSpace(ZcDbDatabase& db)
{
    std::vector<QString> lines;
    ZcDbBlockTable* table = nullptr;
    ZcDbBlockTableRecord* model = nullptr;
    if (db.getBlockTable(table, ZcDb::kForRead) != Zcad::eOk)
        return lines;
    table->getAt(ZCDB_MODEL_SPACE, model, ZcDb::kForRead);
    table->close();
    ZcDbBlockTableRecordIterator* it = nullptr;
    model->newIterator(it, true, false);
    model->close();
    for (; !it->done(); it->step(true, false)) {
        ZcDbEntity* entity = nullptr;
        if (it->getEntity(entity, ZcDb::kForRead, true) != Zcad::eOk)
            continue;
        QString line = QStringLiteral("%1 %2 %3")
                           .arg(entity->isA()->name())
                           .arg(entity->handle())
                           .arg(entity->layer());
        if (const auto* product = QvKsEntity::cast(entity))
            line += QLatin1Char(' ') + product->GetSysCodeIndex();
        if (const auto* text = ZcDbText::cast(entity))
            line += QStringLiteral(" %1 %2").arg(text->textString().size()).arg(text->textString().right(2));
        lines.push_back(line);
        entity->close();
    }
    delete it;
    return lines;
}

class LargeDrawingFile : public ::testing::TestWithParam<bool>
{ };

TEST_P(LargeDrawingFile, ReadsAsItsBytesInMemoryDo)
{
    QvKsEntity::rxInit();
    int written = 0;
    QByteArray bytes = writeLargeDrawing(written);
    if (GetParam())
        bytes.replace("\n", "\r\n");
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("floor.dxf"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
    file.close();

    ZcDbDatabase fromFile(false, true);
    ASSERT_EQ(fromFile.readDwgFile(path), Zcad::eOk) << qPrintable(fromFile.readError());
    ZcDbDatabase fromMemory(false, true);
    ASSERT_EQ(fromMemory.readDxfData({ bytes.constData(), size_t(bytes.size()) }), Zcad::eOk);

    const std::vector<QString> read = describeModelSpace(fromFile);
    ASSERT_EQ(read.size(), size_t(written));
    EXPECT_EQ(read, describeModelSpace(fromMemory));
    EXPECT_TRUE(read[1000].startsWith(QStringLiteral("ZcDbText ")));
    EXPECT_TRUE(read[1000].endsWith(QStringLiteral(" %1 x尾").arg(kLongText + 1)));
}

INSTANTIATE_TEST_SUITE_P(LineEnds, LargeDrawingFile, ::testing::Values(false, true),
    [](const auto& info) { return info.param ? "Crlf" : "Lf"; });

TEST(DxfSharedXData, ChangingOneEntitysCodeLeavesItsTwinsAlone)
{
    QvKsEntity::rxInit();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    DxfWriter writer(&buffer, DxfWriter::Version::R2000);
    for (int n = 0; n < 3; ++n)
        writer.addProductEntity(QStringLiteral("3\\12"), { { 0, 0, 0 }, { 10, 0, 0 } });
    ASSERT_TRUE(writer.finish());
    ZcDbDatabase db(false, true);
    ASSERT_EQ(db.readDxfData({ buffer.data().constData(), size_t(buffer.data().size()) }), Zcad::eOk);
    std::vector<QvKsEntity*> products;
    // Index 0 names no object: the objects are 1 … objectCount().
    for (quint32 i = 1; i <= db.objectCount(); ++i)
        if (auto* product = QvKsEntity::cast(db.objectAt(i)))
            products.push_back(product);
    ASSERT_EQ(products.size(), 3u);
    std::unique_ptr<ZcDbEntity> copy(products[2]->clone());

    products[0]->SetSysCodeIndex(QStringLiteral("3\\99"));
    static_cast<QvKsEntity*>(copy.get())->SetSysCodeIndex(QStringLiteral("6\\1"));

    EXPECT_EQ(products[0]->GetSysCodeIndex(), QStringLiteral("3\\99"));
    EXPECT_EQ(products[1]->GetSysCodeIndex(), QStringLiteral("3\\12"));
    EXPECT_EQ(products[2]->GetSysCodeIndex(), QStringLiteral("3\\12"));
}
// Few codes repeated often are shared; more codes than the pools hold, each
// seen twice, are not. Either way every pipe keeps its own code.
class ManyCodes : public ::testing::TestWithParam<int>
{ };

TEST_P(ManyCodes, EveryPipeReadsBackItsOwnCode)
{
    QvKsEntity::rxInit();
    const int codes = GetParam();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    DxfWriter writer(&buffer, DxfWriter::Version::R2000);
    for (int n = 0; n < 60000; ++n)
        writer.addProductEntity(QStringLiteral("3\\%1").arg(n % codes), { { 0, 0, 0 }, { 1, 0, 0 } });
    ASSERT_TRUE(writer.finish());
    ZcDbDatabase db(false, true);
    ASSERT_EQ(db.readDxfData({ buffer.data().constData(), size_t(buffer.data().size()) }), Zcad::eOk);
    int n = 0;
    for (quint32 i = 1; i <= db.objectCount(); ++i)
        if (const auto* product = QvKsEntity::cast(db.objectAt(i)))
            ASSERT_EQ(product->GetSysCodeIndex(), QStringLiteral("3\\%1").arg(n++ % codes)) << "pipe " << n;
    EXPECT_EQ(n, 60000);
}

INSTANTIATE_TEST_SUITE_P(DistinctCodes, ManyCodes, ::testing::Values(7, 30000));
} // namespace
