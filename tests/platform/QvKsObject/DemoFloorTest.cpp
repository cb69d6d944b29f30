// A demo floor drawing reads back with the product entities of every code given,
// room names and the labelled block.
#include "DemoFloorWriter.h"
#include "QvKsEntity.h"
#include "ZcSdk.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>

TEST(DemoFloor, ReadsBackWithProductEntitiesOfEveryCode)
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("1F.dxf"));
    const QList<DemoFloorCode> codes { { QStringLiteral("3\\1"), QStringLiteral("公共照明") },
        { QStringLiteral("3\\4"), QStringLiteral("应急照明") },
        { QStringLiteral("6\\2"), QStringLiteral("综合布线") } };
    QString error;
    ASSERT_TRUE(WriteDemoFloorDrawing(path, QStringLiteral("1F"), codes, &error)) << error.toStdString();

    ZcDbDatabase db(false, true);
    ASSERT_EQ(db.readDwgFile(path), Zcad::eOk) << db.readError().toStdString();
    std::map<QString, int> perCode;
    QStringList texts;
    int tags = 0;
    const auto* model = ZcDbBlockTableRecord::cast(db.modelSpaceId().object());
    for (const ZcDbObjectId& id : model->entityIds()) {
        ZcDbEntity* entity = nullptr;
        ASSERT_EQ(zcdbOpenObject(entity, id, ZcDb::kForRead), Zcad::eOk);
        if (const auto* product = QvKsEntity::cast(entity))
            ++perCode[product->GetSysCodeIndex()];
        else if (const auto* text = ZcDbText::cast(entity))
            texts.append(text->textString());
        else if (const auto* reference = ZcDbBlockReference::cast(entity)) {
            ++tags;
            ASSERT_EQ(reference->attributes().size(), 2u);
            EXPECT_TRUE(reference->attributes()[0]->textString().startsWith(QStringLiteral("1F-")));
            EXPECT_TRUE(reference->attributes()[1]->isInvisible());
        }
        entity->close();
    }
    ASSERT_EQ(perCode.size(), 3u);
    for (const auto& [index, count] : perCode)
        EXPECT_EQ(count, 4) << index.toStdString();
    EXPECT_TRUE(texts.contains(QStringLiteral("配电间")));
    EXPECT_TRUE(texts.contains(QStringLiteral("综合布线")));
    EXPECT_EQ(tags, 10);
}

TEST(DemoFloor, UnwritablePathFails)
{
    QString error;
    EXPECT_FALSE(
        WriteDemoFloorDrawing(QStringLiteral("/nonexistent/dir/B1.dxf"), QStringLiteral("B1"), {}, &error));
    EXPECT_FALSE(error.isEmpty());
}

TEST(QvKsEntity, IndexPathIsTheFirstStringOfItsData)
{
    QvKsEntity entity(std::make_unique<ZcDbLine>(ZcGePoint3d(0, 0), ZcGePoint3d(1, 0)));
    EXPECT_EQ(entity.GetSysCodeIndex(), QString());
    entity.setXData(QvKsEntity::kAppName,
        { ZcDbXDataValue::integer(7, 1070), ZcDbXDataValue::string(QStringLiteral("5\\9")),
            ZcDbXDataValue::string(QStringLiteral("x")) });
    EXPECT_EQ(entity.GetSysCodeIndex(), QStringLiteral("5\\9"));
    entity.SetSysCodeIndex(QStringLiteral("5\\10"));
    EXPECT_EQ(entity.GetSysCodeIndex(), QStringLiteral("5\\10"));
    EXPECT_EQ(entity.xData(QvKsEntity::kAppName).size(), 3u);
    std::unique_ptr<ZcDbEntity> copy(entity.clone());
    ASSERT_NE(QvKsEntity::cast(copy.get()), nullptr);
    EXPECT_EQ(QvKsEntity::cast(copy.get())->GetSysCodeIndex(), QStringLiteral("5\\10"));
}
