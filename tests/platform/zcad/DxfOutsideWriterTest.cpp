// Drawings written by an outside DXF library (ezdxf) in four versions read into
// the same entities, texts, attributes (the invisible flag included), block
// contents and index paths as that library reads from them.
#include "EzdxfRunner.h"
#include "QvKsEntity.h"
#include "ZcSdk.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// The same words the outside library uses, so both sides describe an entity alike.
QString typeName(const ZcDbEntity* entity)
{
    if (ZcDbAttributeDefinition::cast(entity))
        return QStringLiteral("ATTDEF");
    if (ZcDbText::cast(entity))
        return QStringLiteral("TEXT");
    if (ZcDbMText::cast(entity))
        return QStringLiteral("MTEXT");
    if (ZcDbBlockReference::cast(entity))
        return QStringLiteral("INSERT");
    if (ZcDbLine::cast(entity))
        return QStringLiteral("LINE");
    if (ZcDbPolyline::cast(entity))
        return QStringLiteral("POLYLINE"); // light or not: one kind here
    if (ZcDbCircle::cast(entity))
        return QStringLiteral("CIRCLE");
    return entity->isA()->name();
}

QJsonObject describe(const ZcDbEntity* entity)
{
    const auto* product = QvKsEntity::cast(entity);
    const ZcDbEntity* shape = product && product->shape() ? product->shape() : entity;
    QJsonObject item { { QStringLiteral("type"), typeName(shape) },
        { QStringLiteral("layer"), entity->layer() } };
    if (const auto* definition = ZcDbAttributeDefinition::cast(shape)) {
        item[QStringLiteral("text")] = definition->textString();
        item[QStringLiteral("tag")] = definition->tag();
        item[QStringLiteral("invisible")] = definition->isInvisible();
    } else if (const auto* text = ZcDbText::cast(shape)) {
        item[QStringLiteral("text")] = text->textString();
    } else if (const auto* mtext = ZcDbMText::cast(shape)) {
        item[QStringLiteral("text")] = mtext->contents();
    } else if (const auto* reference = ZcDbBlockReference::cast(shape)) {
        ZcDbBlockTableRecord* block = nullptr;
        if (zcdbOpenObject(block, reference->blockTableRecord(), ZcDb::kForRead) == Zcad::eOk) {
            QString name;
            block->getName(name);
            item[QStringLiteral("block")] = name;
            block->close();
        }
        QJsonArray attributes;
        for (const ZcDbAttribute* attribute : reference->attributes())
            attributes.append(QJsonObject { { QStringLiteral("tag"), attribute->tag() },
                { QStringLiteral("text"), attribute->textString() },
                { QStringLiteral("invisible"), attribute->isInvisible() } });
        item[QStringLiteral("attribs")] = attributes;
    }
    if (product)
        item[QStringLiteral("qvks")] = product->GetSysCodeIndex();
    return item;
}

// The outside library's words for the polylines of each version become one.
QJsonArray normalised(QJsonArray items)
{
    for (auto it = items.begin(); it != items.end(); ++it) {
        QJsonObject item = it->toObject();
        if (item[QStringLiteral("type")] == QStringLiteral("LWPOLYLINE"))
            item[QStringLiteral("type")] = QStringLiteral("POLYLINE");
        *it = item;
    }
    return items;
}

QJsonArray entitiesOf(ZcDbBlockTableRecord* record)
{
    QJsonArray items;
    ZcDbBlockTableRecordIterator* it = nullptr;
    if (!record || record->newIterator(it) != Zcad::eOk)
        return items;
    for (; !it->done(); it->step()) {
        ZcDbEntity* entity = nullptr;
        if (it->getEntity(entity, ZcDb::kForRead) == Zcad::eOk) {
            items.append(describe(entity));
            entity->close();
        }
    }
    delete it;
    return items;
}

QJsonArray blockEntities(ZcDbDatabase& db, const QString& name)
{
    ZcDbBlockTable* table = nullptr;
    if (db.getBlockTable(table, ZcDb::kForRead) != Zcad::eOk)
        return {};
    ZcDbBlockTableRecord* record = nullptr;
    table->getAt(name, record, ZcDb::kForRead);
    table->close();
    QJsonArray items = entitiesOf(record);
    if (record)
        record->close();
    return items;
}

TEST(DxfOutsideWriter, DrawingsOfFourVersionsReadAsTheOutsideLibraryReadsThem)
{
    if (const QString reason = ezdxfMissingReason(); !reason.isEmpty())
        GTEST_SKIP() << reason.toStdString();
    QTemporaryDir dir;
    const EzdxfRun made = runPython({ ezdxfScript(QStringLiteral("make_drawings.py")), dir.path() });
    ASSERT_EQ(made.code, 0) << made.err.toStdString();
    const QJsonObject report = QJsonDocument::fromJson(made.out.toUtf8()).object();
    ASSERT_EQ(report.size(), 4) << made.out.toStdString();

    for (auto file = report.begin(); file != report.end(); ++file) {
        SCOPED_TRACE(file.key().toStdString());
        const QJsonObject expected = file.value().toObject();
        QFile in(file.key());
        ASSERT_TRUE(in.open(QIODevice::ReadOnly));
        const QByteArray bytes = in.readAll();
        ZcDbDatabase db(false, true);
        ASSERT_EQ(db.readDxfData(std::string_view(bytes.constData(), size_t(bytes.size()))), Zcad::eOk)
            << db.readError().toStdString();

        const QJsonArray wanted = normalised(expected[QStringLiteral("entities")].toArray());
        const QJsonArray read = blockEntities(db, QString::fromUtf16(ZCDB_MODEL_SPACE));
        EXPECT_EQ(read, wanted) << QJsonDocument(read).toJson().toStdString() << "\nwanted\n"
                                << QJsonDocument(wanted).toJson().toStdString();
        const QJsonObject blocks = expected[QStringLiteral("blocks")].toObject();
        const QJsonArray wantedTag = normalised(blocks[QStringLiteral("ROOMTAG")].toArray());
        const QJsonArray readTag = blockEntities(db, QStringLiteral("ROOMTAG"));
        EXPECT_EQ(readTag, wantedTag) << QJsonDocument(readTag).toJson().toStdString();
        EXPECT_TRUE(db.registeredApps().contains(QStringLiteral("QVKS")));
    }
}

} // namespace
