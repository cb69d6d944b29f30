// Drawings made by the writer and written by hand come back with every entity kind
// the module looks at: product entities, texts, multi-line texts, block references
// with visible and invisible attributes, attribute definitions, and the curves.
#include "DxfWriter.h"
#include "QvKsEntity.h"
#include "ZcSdk.h"

#include <QBuffer>
#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace {
const QString kWaterSupply = QStringLiteral("生活给水");

QByteArray writeSample(DxfWriter::Version version)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    DxfWriter writer(&buffer, version);
    writer.addLayer(QStringLiteral("给排水"), 5);
    writer.addLayer(QStringLiteral("TEXT"), 2);
    writer.beginBlock(QStringLiteral("ROOMTAG"), { 10, 10, 0 });
    writer.addText({ 10, 10, 0 }, QStringLiteral("房间"), 2.0);
    writer.addAttributeDefinition(
        { QStringLiteral("NAME"), QStringLiteral("名称"), QStringLiteral("?"), { 12, 10, 0 } });
    writer.addAttributeDefinition(
        { QStringLiteral("CODE"), QStringLiteral("编号"), QString(), { 12, 8, 0 }, 2.5, true });
    writer.addCircle({ 10, 10, 0 }, 1.0);
    writer.endBlock();
    const DxfWriter::Style pipe { QStringLiteral("给排水"), 1 };
    writer.addProductEntity(QStringLiteral("3\\12"), { { 0, 0, 0 }, { 100, 0, 0 } }, pipe);
    writer.addProductEntity(QStringLiteral("6\\2"), { { 0, 0, 0 }, { 50, 0, 0 }, { 50, 40, 0 } }, pipe);
    writer.addText({ 5, 5, 0 }, kWaterSupply, 3.0, { QStringLiteral("TEXT"), 256 });
    writer.addMText({ 5, 20, 0 }, QStringLiteral("A\\PB"), 2.5, 30);
    writer.addLine({ 0, 0, 0 }, { 1, 1, 0 });
    writer.addArc({ 0, 0, 0 }, 5, 0, 90);
    writer.addBlockReference(QStringLiteral("ROOMTAG"), { 110, 210, 0 },
        { { QStringLiteral("NAME"), QStringLiteral("卫生间"), { 112, 210, 0 } },
            { QStringLiteral("CODE"), QStringLiteral("WS-01"), { 112, 208, 0 }, 2.5, true } },
        {}, 2.0, 90.0);
    EXPECT_TRUE(writer.finish());
    return buffer.data();
}

std::vector<ZcDbEntity*> modelSpaceEntities(ZcDbDatabase& db, bool skipErased = false)
{
    std::vector<ZcDbEntity*> list;
    ZcDbBlockTable* table = nullptr;
    EXPECT_EQ(db.getBlockTable(table, ZcDb::kForRead), Zcad::eOk);
    if (!table)
        return list;
    ZcDbBlockTableRecord* model = nullptr;
    EXPECT_EQ(table->getAt(ZCDB_MODEL_SPACE, model, ZcDb::kForRead), Zcad::eOk);
    table->close();
    if (!model)
        return list;
    ZcDbBlockTableRecordIterator* it = nullptr;
    model->newIterator(it, true, skipErased);
    model->close();
    for (; !it->done(); it->step(true, skipErased)) {
        ZcDbEntity* entity = nullptr;
        if (it->getEntity(entity, ZcDb::kForRead, true) == Zcad::eOk) {
            list.push_back(entity);
            entity->close();
        }
    }
    delete it;
    return list;
}

template <class T> std::vector<T*> ofClass(const std::vector<ZcDbEntity*>& entities)
{
    std::vector<T*> list;
    for (ZcDbEntity* entity : entities)
        if (T* typed = T::cast(entity))
            list.push_back(typed);
    return list;
}

Zcad::ErrorStatus readText(ZcDbDatabase& db, const QByteArray& bytes)
{
    return db.readDxfData(std::string_view(bytes.constData(), size_t(bytes.size())));
}

class WrittenDrawing : public ::testing::TestWithParam<DxfWriter::Version>
{ };
} // namespace

TEST_P(WrittenDrawing, ReadsBackEveryEntityKind)
{
    ZcDbDatabase db(false, true);
    ASSERT_EQ(readText(db, writeSample(GetParam())), Zcad::eOk) << db.readError().toStdString();
    const auto entities = modelSpaceEntities(db);
    // R12 has no multi-line text: the writer leaves it out.
    const bool r12 = GetParam() == DxfWriter::Version::R12;
    ASSERT_EQ(entities.size(), r12 ? 6u : 7u);

    const auto products = ofClass<QvKsEntity>(entities);
    ASSERT_EQ(products.size(), 2u);
    EXPECT_EQ(products[0]->GetSysCodeIndex(), QStringLiteral("3\\12"));
    EXPECT_EQ(products[1]->GetSysCodeIndex(), QStringLiteral("6\\2"));
    EXPECT_EQ(products[0]->layer(), QStringLiteral("给排水"));
    EXPECT_EQ(products[0]->colorIndex(), 1);
    ASSERT_NE(ZcDbPolyline::cast(products[1]->shape()), nullptr);
    EXPECT_EQ(ZcDbPolyline::cast(products[1]->shape())->numVerts(), 3);

    const auto texts = ofClass<ZcDbText>(entities);
    ASSERT_EQ(texts.size(), 1u);
    EXPECT_EQ(texts[0]->textString(), kWaterSupply);
    const auto mtexts = ofClass<ZcDbMText>(entities);
    ASSERT_EQ(mtexts.size(), r12 ? 0u : 1u);
    if (!r12)
        EXPECT_EQ(mtexts[0]->contents(), QStringLiteral("A\\PB"));
    ASSERT_EQ(ofClass<ZcDbArc>(entities).size(), 1u);
    EXPECT_NEAR(ofClass<ZcDbArc>(entities)[0]->endAngle(), std::numbers::pi / 2, 1e-12);

    const auto references = ofClass<ZcDbBlockReference>(entities);
    ASSERT_EQ(references.size(), 1u);
    const auto attributes = references[0]->attributes();
    ASSERT_EQ(attributes.size(), 2u);
    EXPECT_EQ(attributes[0]->tag(), QStringLiteral("NAME"));
    EXPECT_EQ(attributes[0]->textString(), QStringLiteral("卫生间"));
    EXPECT_FALSE(attributes[0]->isInvisible());
    EXPECT_TRUE(attributes[1]->isInvisible());

    const ZcDbLayerTableRecord* layer = db.layer(QStringLiteral("给排水"));
    ASSERT_NE(layer, nullptr);
    EXPECT_EQ(layer->colorIndex, 5);
    EXPECT_TRUE(db.registeredApps().contains(QStringLiteral("QVKS")));
}

TEST_P(WrittenDrawing, ExplodedBlockReferenceIsTransformedAndLeavesTheDrawingAlone)
{
    ZcDbDatabase db(false, true);
    ASSERT_EQ(readText(db, writeSample(GetParam())), Zcad::eOk);
    const quint32 objectsBefore = db.objectCount();
    const auto references = ofClass<ZcDbBlockReference>(modelSpaceEntities(db));
    ASSERT_EQ(references.size(), 1u);

    ZcDbVoidPtrArray pieces;
    ASSERT_EQ(references[0]->explode(pieces), Zcad::eOk);
    // Block text, two definitions, the circle, then the two attributes.
    ASSERT_EQ(pieces.length(), 6);
    std::vector<std::unique_ptr<ZcDbEntity>> owned;
    for (void* piece : pieces)
        owned.emplace_back(static_cast<ZcDbEntity*>(piece));
    const auto* text = ZcDbText::cast(owned[0].get());
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->textString(), QStringLiteral("房间"));
    // The base point (10,10) lands on (110,210); the scale doubles the height.
    EXPECT_NEAR(text->position().x, 110, 1e-9);
    EXPECT_NEAR(text->position().y, 210, 1e-9);
    EXPECT_NEAR(text->height(), 4.0, 1e-9);
    const auto* definition = ZcDbAttributeDefinition::cast(owned[1].get());
    ASSERT_NE(definition, nullptr);
    EXPECT_EQ(definition->tag(), QStringLiteral("NAME"));
    // (12,10) is 2 right of the base; turned 90° and doubled it is 4 up.
    EXPECT_NEAR(definition->position().x, 110, 1e-9);
    EXPECT_NEAR(definition->position().y, 214, 1e-9);
    EXPECT_TRUE(ZcDbAttributeDefinition::cast(owned[2].get())->isInvisible());
    EXPECT_NEAR(ZcDbCircle::cast(owned[3].get())->radius(), 2.0, 1e-9);
    EXPECT_EQ(ZcDbAttribute::cast(owned[4].get())->textString(), QStringLiteral("卫生间"));
    EXPECT_TRUE(ZcDbAttribute::cast(owned[5].get())->isInvisible());
    for (const auto& piece : owned)
        EXPECT_FALSE(piece->isDatabaseResident());
    EXPECT_EQ(db.objectCount(), objectsBefore);
}

INSTANTIATE_TEST_SUITE_P(Versions, WrittenDrawing,
    ::testing::Values(DxfWriter::Version::R12, DxfWriter::Version::R2000, DxfWriter::Version::R2018));

TEST(DxfRead, HandWrittenCrlfDrawingWithoutHeaderAndLongHandles)
{
    const QByteArray text = QByteArray(
        "999\r\nmade by hand\r\n  0\r\nSECTION\r\n  2\r\nENTITIES\r\n"
        "  0\r\nLINE\r\n  5\r\n00000000000000001A2B3C4D5E6F7A8B\r\n  8\r\nPIPE\r\n 62\r\n3\r\n"
        " 10\r\n1.5\r\n 20\r\n-2\r\n 30\r\n0.0\r\n 11\r\n+4e2\r\n 21\r\n  7\r\n 31\r\n0\r\n"
        "1001\r\nQVKS\r\n1000\r\n3\\7\r\n1070\r\n   5\r\n1010\r\n1\r\n1020\r\n2\r\n1030\r\n3\r\n"
        "  0\r\nTEXT\r\n  5\r\nFF\r\n  8\r\n0\r\n 10\r\n0\r\n 20\r\n0\r\n 40\r\n2.5\r\n  1\r\nWS\r\n"
        "  0\r\nENDSEC\r\n  0\r\nEOF\r\n");
    ZcDbDatabase db(false, true);
    ASSERT_EQ(readText(db, text), Zcad::eOk) << db.readError().toStdString();
    const auto entities = modelSpaceEntities(db);
    ASSERT_EQ(entities.size(), 2u);
    const auto* product = QvKsEntity::cast(entities[0]);
    ASSERT_NE(product, nullptr);
    EXPECT_EQ(product->GetSysCodeIndex(), QStringLiteral("3\\7"));
    EXPECT_EQ(product->handle(), 0x1A2B3C4D5E6F7A8BULL);
    EXPECT_EQ(product->layer(), QStringLiteral("PIPE"));
    const auto xdata = product->xData(QStringLiteral("qvks"));
    ASSERT_EQ(xdata.size(), 3u);
    EXPECT_EQ(xdata[1].toInt(), 5);
    EXPECT_EQ(xdata[2].value[2], 3.0);
    const auto* line = ZcDbLine::cast(product->shape());
    ASSERT_NE(line, nullptr);
    EXPECT_EQ(line->startPoint(), ZcGePoint3d(1.5, -2, 0));
    EXPECT_EQ(line->endPoint(), ZcGePoint3d(400, 7, 0));
    EXPECT_EQ(ZcDbText::cast(entities[1])->textString(), QStringLiteral("WS"));
    EXPECT_EQ(entities[1]->handle(), 0xFFu);
}

TEST(DxfRead, GbkTextOfALegacyDrawingDecodesAndUnicodeEscapesExpand)
{
    QStringEncoder gbk("GBK");
    const QByteArray name = gbk(QStringLiteral("公共照明"));
    const QByteArray text
        = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$DWGCODEPAGE\n3\nANSI_936\n0\nENDSEC\n"
          "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n1\n0\nLAYER\n2\n"
        + name
        + "\n62\n-4\n70\n0\n0\nENDTAB\n0\nENDSEC\n"
          "0\nSECTION\n2\nENTITIES\n0\nTEXT\n8\n"
        + name + "\n10\n0\n20\n0\n40\n1\n1\n" + name + "\\U+6C34\n0\nMTEXT\n8\n0\n10\n0\n20\n0\n40\n1\n3\n"
        + name + "\\P\n1\n" + name + "\n0\nENDSEC\n0\nEOF\n";
    ZcDbDatabase db(false, true);
    ASSERT_EQ(readText(db, text), Zcad::eOk) << db.readError().toStdString();
    EXPECT_EQ(db.codePage(), QStringLiteral("ANSI_936"));
    const ZcDbLayerTableRecord* layer = db.layer(QStringLiteral("公共照明"));
    ASSERT_NE(layer, nullptr);
    EXPECT_EQ(layer->colorIndex, 4);
    EXPECT_TRUE(layer->isOff);
    const auto entities = modelSpaceEntities(db);
    ASSERT_EQ(entities.size(), 2u);
    EXPECT_EQ(ZcDbText::cast(entities[0])->textString(), QStringLiteral("公共照明水"));
    EXPECT_EQ(entities[0]->layer(), QStringLiteral("公共照明"));
    EXPECT_EQ(ZcDbMText::cast(entities[1])->contents(), QStringLiteral("公共照明\\P公共照明"));
}

TEST(DxfRead, BinaryDrawingWithTwoByteCodes)
{
    QByteArray bytes("AutoCAD Binary DXF\r\n\x1a", 21);
    bytes.append('\0');
    auto code = [&](qint16 c) { bytes.append(reinterpret_cast<const char*>(&c), 2); };
    auto str = [&](qint16 c, const char* s) {
        code(c);
        bytes.append(s);
        bytes.append('\0');
    };
    auto real = [&](qint16 c, double v) {
        code(c);
        bytes.append(reinterpret_cast<const char*>(&v), 8);
    };
    str(0, "SECTION");
    str(2, "ENTITIES");
    str(0, "LINE");
    str(8, "0");
    code(62);
    const qint16 red = 1;
    bytes.append(reinterpret_cast<const char*>(&red), 2);
    real(10, 1);
    real(20, 2);
    real(11, 3);
    real(21, 4);
    str(1001, "QVKS");
    str(1000, "6\\3");
    str(0, "ENDSEC");
    str(0, "EOF");
    ZcDbDatabase db(false, true);
    ASSERT_EQ(db.readDxfData(std::string_view(bytes.constData(), size_t(bytes.size()))), Zcad::eOk)
        << db.readError().toStdString();
    const auto entities = modelSpaceEntities(db);
    ASSERT_EQ(entities.size(), 1u);
    const auto* product = QvKsEntity::cast(entities[0]);
    ASSERT_NE(product, nullptr);
    EXPECT_EQ(product->GetSysCodeIndex(), QStringLiteral("6\\3"));
    EXPECT_EQ(product->colorIndex(), 1);
    EXPECT_EQ(ZcDbLine::cast(product->shape())->endPoint(), ZcGePoint3d(3, 4, 0));
}

TEST(DxfRead, ErasedEntitiesStayInModelSpaceMarked)
{
    ZcDbDatabase db(false, true);
    ASSERT_EQ(readText(db, writeSample(DxfWriter::Version::R2000)), Zcad::eOk);
    const ZcDbObjectId firstId = modelSpaceEntities(db)[0]->objectId();
    ZcDbEntity* entity = nullptr;
    ASSERT_EQ(zcdbOpenObject(entity, firstId, ZcDb::kForRead), Zcad::eOk);
    ZcDbEntity* again = nullptr;
    EXPECT_EQ(zcdbOpenObject(again, firstId, ZcDb::kForRead), Zcad::eOk) << "many readers";
    EXPECT_EQ(entity->erase(), Zcad::eNotOpenForWrite);
    ZcDbEntity* writer = nullptr;
    EXPECT_EQ(zcdbOpenObject(writer, firstId, ZcDb::kForWrite), Zcad::eWasOpenForRead);
    entity->close();
    again->close();
    ASSERT_EQ(zcdbOpenObject(writer, firstId, ZcDb::kForWrite), Zcad::eOk);
    EXPECT_EQ(writer->erase(), Zcad::eOk);
    writer->close();

    EXPECT_EQ(zcdbOpenObject(entity, firstId, ZcDb::kForRead), Zcad::eWasErased);
    ZcDbText* text = nullptr;
    EXPECT_EQ(zcdbOpenObject(text, firstId, ZcDb::kForRead, true), Zcad::eNotThatKindOfClass);
    EXPECT_EQ(modelSpaceEntities(db, false).size(), 7u);
    EXPECT_EQ(modelSpaceEntities(db, true).size(), 6u);
    EXPECT_TRUE(QvKsEntity::cast(modelSpaceEntities(db, false)[0])->isErased());
}

TEST(DxfRead, ReadsFilesFromDiskAndReportsMissingOnes)
{
    ZcDbDatabase db(false, true);
    EXPECT_EQ(db.readDwgFile(u"/nonexistent/B1.dxf"), Zcad::eFileNotFound);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("1F.dxf"));
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(writeSample(DxfWriter::Version::R2018));
    file.close();
    ASSERT_EQ(
        db.readDwgFile(reinterpret_cast<const ZTCHAR*>(path.utf16()), _SH_DENYWR, false, nullptr), Zcad::eOk);
    EXPECT_EQ(db.dxfVersion(), QStringLiteral("AC1032"));
    EXPECT_EQ(modelSpaceEntities(db).size(), 7u);
}
