// Entities of kinds without a class of their own come back as proxies holding
// every group they were read from, in file order, texts decoded and numbers as
// they were written; kinds with a class are not kept twice.
#include "QvKsEntity.h"
#include "ZcSdk.h"

#include <QStringEncoder>

#include <gtest/gtest.h>

namespace {
using Group = ZcDbProxyEntity::Group;

std::vector<ZcDbEntity*> modelSpace(ZcDbDatabase& db)
{
    std::vector<ZcDbEntity*> list;
    ZcDbBlockTable* table = nullptr;
    if (db.getBlockTable(table, ZcDb::kForRead) != Zcad::eOk)
        return list;
    ZcDbBlockTableRecord* model = nullptr;
    table->getAt(ZCDB_MODEL_SPACE, model, ZcDb::kForRead);
    table->close();
    if (!model)
        return list;
    ZcDbBlockTableRecordIterator* it = nullptr;
    model->newIterator(it);
    model->close();
    for (; !it->done(); it->step()) {
        ZcDbEntity* entity = nullptr;
        if (it->getEntity(entity, ZcDb::kForRead) == Zcad::eOk) {
            list.push_back(entity);
            entity->close();
        }
    }
    delete it;
    return list;
}

void expectGroups(const ZcDbProxyEntity& proxy, const std::vector<std::pair<int, QString>>& expected)
{
    const std::vector<Group>& groups = proxy.dxfGroups();
    ASSERT_EQ(groups.size(), expected.size());
    for (size_t i = 0; i < groups.size(); ++i) {
        EXPECT_EQ(groups[i].code, expected[i].first) << "group " << i;
        EXPECT_EQ(groups[i].value, expected[i].second) << "group " << i;
    }
}
} // namespace

TEST(DxfKeptGroups, UnknownKindsKeepEveryGroupInOrderWithOrWithoutExtendedData)
{
    QStringEncoder gbk("GBK");
    const QByteArray text = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$DWGCODEPAGE\n3\nANSI_936\n"
                            "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n"
                            "0\nELLIPSE\n5\n2A\n100\nAcDbEntity\n8\nPIPE\n10\n1.50\n20\n-2\n30\n0\n11\n"
                            " 4e1\n21\n0\n31\n0\n40\n0.5\n41\n0\n42\n6.283185307179586\n"
                            "0\nLINE\n8\n0\n10\n0\n20\n0\n11\n1\n21\n1\n"
                            "0\nMLINE\n8\n"
        + gbk(QStringLiteral("给排水")) + "\n2\nSTANDARD\n101\nEmbedded Object\n70\n3\n"
        + "1001\nQVKS\n1000\n" + gbk(QStringLiteral("冷水")) + "\n1070\n5\n0\nENDSEC\n0\nEOF\n";
    ZcDbDatabase db(false, true);
    ASSERT_EQ(db.readDxfData(std::string_view(text.constData(), size_t(text.size()))), Zcad::eOk)
        << db.readError().toStdString();
    const auto entities = modelSpace(db);
    ASSERT_EQ(entities.size(), 3u);

    const auto* ellipse = ZcDbProxyEntity::cast(entities[0]);
    ASSERT_NE(ellipse, nullptr);
    EXPECT_EQ(ellipse->originalDxfName(), QStringLiteral("ELLIPSE"));
    EXPECT_EQ(ellipse->layer(), QStringLiteral("PIPE"));
    expectGroups(*ellipse,
        { { 5, "2A" }, { 100, "AcDbEntity" }, { 8, "PIPE" }, { 10, "1.50" }, { 20, "-2" }, { 30, "0" },
            { 11, " 4e1" }, { 21, "0" }, { 31, "0" }, { 40, "0.5" }, { 41, "0" },
            { 42, "6.283185307179586" } });

    EXPECT_EQ(ZcDbProxyEntity::cast(entities[1]), nullptr);
    EXPECT_NE(ZcDbLine::cast(entities[1]), nullptr);

    // The product's own extended data makes a product entity; its shape still
    // keeps the groups, embedded object and extended data included.
    const ZcDbEntity* mlineEntity = entities[2];
    if (const auto* product = QvKsEntity::cast(mlineEntity))
        mlineEntity = product->shape();
    const auto* mline = ZcDbProxyEntity::cast(mlineEntity);
    ASSERT_NE(mline, nullptr);
    expectGroups(*mline,
        { { 8, QStringLiteral("给排水") }, { 2, "STANDARD" }, { 101, "Embedded Object" }, { 70, "3" },
            { 1001, "QVKS" }, { 1000, QStringLiteral("冷水") }, { 1070, "5" } });

    // A copy keeps them too.
    std::unique_ptr<ZcDbEntity> copy(ellipse->clone());
    EXPECT_EQ(ZcDbProxyEntity::cast(copy.get())->dxfGroups().size(), ellipse->dxfGroups().size());
}

TEST(DxfKeptGroups, BinaryDrawingNumbersAndChunksBecomeTheirTextForm)
{
    QByteArray bytes("Drawing Binary DXF\r\n\x1a", 21);
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
    str(0, "HATCH");
    str(8, "0");
    real(10, 0.1);
    real(20, -3);
    code(70);
    const qint16 solid = 1;
    bytes.append(reinterpret_cast<const char*>(&solid), 2);
    code(90);
    const qint32 loops = 70000;
    bytes.append(reinterpret_cast<const char*>(&loops), 4);
    code(310);
    bytes.append(char(3));
    bytes.append("\x01\xAB\xff", 3);
    str(0, "ENDSEC");
    str(0, "EOF");
    ZcDbDatabase db(false, true);
    ASSERT_EQ(db.readDxfData(std::string_view(bytes.constData(), size_t(bytes.size()))), Zcad::eOk)
        << db.readError().toStdString();
    const auto entities = modelSpace(db);
    ASSERT_EQ(entities.size(), 1u);
    const auto* hatch = ZcDbProxyEntity::cast(entities[0]);
    ASSERT_NE(hatch, nullptr);
    expectGroups(*hatch,
        { { 8, "0" }, { 10, "0.10000000000000001" }, { 20, "-3" }, { 70, "1" }, { 90, "70000" },
            { 310, "01ABFF" } });
}

TEST(DxfKeptGroups, GroupsSetByHandComeBackAlikeAndCopiesKeepThem)
{
    ZcDbProxyEntity proxy(QStringLiteral("ACAD_TABLE"));
    proxy.setDxfGroups({ { -3, QStringLiteral("ACAD") }, { 1, QStringLiteral("给水\tA") },
        { 1071, QString() }, { 1000, QStringLiteral("a") + QChar(0) + QStringLiteral("b") } });
    const std::vector<std::pair<int, QString>> expected { { -3, "ACAD" }, { 1, QStringLiteral("给水\tA") },
        { 1071, QString() }, { 1000, "ab" } };
    expectGroups(proxy, expected);
    const std::vector<Group> fresh = proxy.unpackedDxfGroups();
    ASSERT_EQ(fresh.size(), expected.size());
    EXPECT_EQ(fresh[1].value, expected[1].second);
    std::unique_ptr<ZcDbEntity> copy(proxy.clone());
    expectGroups(*ZcDbProxyEntity::cast(copy.get()), expected);
    proxy.setDxfGroups({});
    EXPECT_TRUE(proxy.dxfGroups().empty());
}
