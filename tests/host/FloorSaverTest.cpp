// A floor written back and read again is the floor that was read: entity by
// entity, on the demo floors and on a drawing another program made. Codes put on
// lines and taken off keep the entities' ids; with colours by system the file
// carries each code's colour and line type.
#include "FloorSaver.h"
#include "DemoFloorWriter.h"
#include "DemoProject.h"
#include "DxfDatabaseWriter.h"
#include "HostDrawingCommands.h"
#include "LineTypeMgr.h"
#include "QvKsAciPalette.h"
#include "QvKsCodeStyles.h"
#include "QvKsDataMng.h"
#include "QvKsEntity.h"
#include "TestDrawing.h"
#include "ZcDbArc.h"
#include "ZcDbAttribute.h"
#include "ZcDbAttributeDefinition.h"
#include "ZcDbBlockReference.h"
#include "ZcDbBlockTable.h"
#include "ZcDbCircle.h"
#include "ZcDbLine.h"
#include "ZcDbMText.h"
#include "ZcDbPolyline.h"
#include "ZcDbProxyEntity.h"
#include "ZcDbText.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

QString num(double v)
{
    return QString::number(v, 'g', 12);
}

QString pointText(const ZcGePoint3d& p)
{
    return QStringLiteral("(%1 %2 %3)").arg(num(p.x), num(p.y), num(p.z));
}

QString xdataText(const ZcDbEntity& entity)
{
    QStringList parts;
    if (const auto* apps = entity.xDataAll())
        for (const ZcDbXDataApp& app : *apps) {
            parts << app.appName;
            for (const ZcDbXDataValue& v : app.values)
                parts << QStringLiteral("%1=%2%3").arg(v.code).arg(
                    v.text, v.isString() ? QString() : num(v.value[0]));
        }
    return parts.join(u' ');
}

QString normalText(const ZcGeVector3d& n)
{
    return QStringLiteral(" n (%1 %2 %3)").arg(num(n.x), num(n.y), num(n.z));
}

QString textText(const ZcDbText& t)
{
    return QStringLiteral("%1 at %2 align %3 h %4 r %5 modes %6/%7 w %8 o %9 g %10")
               .arg(t.textString(), pointText(t.position()), pointText(t.alignmentPoint()), num(t.height()),
                   num(t.rotation()))
               .arg(t.horizontalMode())
               .arg(t.verticalMode())
               .arg(num(t.widthFactor()), num(t.oblique()))
               .arg(t.generationFlags())
        + normalText(t.normal());
}

// Everything the reader keeps of an entity, as one line.
QString describe(const ZcDbEntity& entity, bool withLook = true)
{
    QString shape;
    const ZcDbEntity* geometry = &entity;
    if (const auto* product = QvKsEntity::cast(&entity)) {
        shape = QStringLiteral("product %1: ").arg(product->GetSysCodeIndex());
        geometry = product->shape();
    }
    if (const auto* line = ZcDbLine::cast(geometry))
        shape += QStringLiteral("line %1 %2").arg(pointText(line->startPoint()), pointText(line->endPoint()));
    else if (const auto* poly = ZcDbPolyline::cast(geometry)) {
        shape += QStringLiteral("polyline closed %1 elevation %2:")
                     .arg(poly->isClosed())
                     .arg(num(poly->elevation()));
        for (const auto& v : poly->vertices())
            shape += QStringLiteral(" %1,%2,%3").arg(num(v.x), num(v.y), num(v.bulge));
        shape += QStringLiteral(" width %1").arg(num(poly->constantWidth())) + normalText(poly->normal());
    } else if (const auto* arc = ZcDbArc::cast(geometry))
        shape += QStringLiteral("arc %1 %2 %3 %4")
                     .arg(pointText(arc->center()), num(arc->radius()), num(arc->startAngle()),
                         num(arc->endAngle()))
            + normalText(arc->normal());
    else if (const auto* circle = ZcDbCircle::cast(geometry))
        shape += QStringLiteral("circle %1 %2").arg(pointText(circle->center()), num(circle->radius()))
            + normalText(circle->normal());
    else if (const auto* def = ZcDbAttributeDefinition::cast(geometry))
        shape += QStringLiteral("attdef %1 %2 %3 %4")
                     .arg(def->tag(), def->prompt())
                     .arg(def->flags())
                     .arg(textText(*def));
    else if (const auto* attribute = ZcDbAttribute::cast(geometry))
        shape += QStringLiteral("attrib %1 %2 %3")
                     .arg(attribute->tag())
                     .arg(attribute->flags())
                     .arg(textText(*attribute));
    else if (const auto* text = ZcDbText::cast(geometry))
        shape += QStringLiteral("text ") + textText(*text);
    else if (const auto* mtext = ZcDbMText::cast(geometry))
        shape += QStringLiteral("mtext %1 at %2 h %3 w %4 r %5 a %6")
                     .arg(mtext->contents(), pointText(mtext->location()), num(mtext->textHeight()),
                         num(mtext->width()), num(mtext->rotation()))
                     .arg(mtext->attachment())
            + QStringLiteral(" spacing %1").arg(num(mtext->lineSpacingFactor()))
            + normalText(mtext->normal());
    else if (const auto* reference = ZcDbBlockReference::cast(geometry)) {
        const auto* block = ZcDbBlockTableRecord::cast(reference->blockTableRecord().object());
        shape += QStringLiteral("insert %1 at %2 scale %3,%4,%5 r %6")
                     .arg(block ? block->name() : QStringLiteral("?"), pointText(reference->position()),
                         num(reference->scaleFactors().x), num(reference->scaleFactors().y),
                         num(reference->scaleFactors().z), num(reference->rotation()))
            + QStringLiteral(" grid %1x%2 %3,%4")
                  .arg(reference->columns())
                  .arg(reference->rows())
                  .arg(num(reference->columnSpacing()), num(reference->rowSpacing()))
            + normalText(reference->normal());
        for (const ZcDbAttribute* a : reference->attributes())
            shape += QStringLiteral(" [%1 %2]").arg(describe(*a), a->layer());
    } else if (const auto* proxy = ZcDbProxyEntity::cast(geometry)) {
        shape += QStringLiteral("proxy %1:").arg(proxy->originalDxfName());
        for (const auto& g : proxy->dxfGroups())
            if (g.code != 5 && g.code != 330 && g.code != 102)
                shape += QStringLiteral(" %1=%2").arg(g.code).arg(g.value);
    } else
        shape += QStringLiteral("? %1").arg(geometry ? geometry->isA()->name() : QStringLiteral("none"));
    if (!withLook)
        return shape;
    const ZcDbLineStyle line
        = entity.database() ? entity.database()->lineStyle(entity.lineStyleIndex()) : ZcDbLineStyle {};
    return QStringLiteral("%1 | layer %2 color %3 true %4 line %5 x%6 | %7")
        .arg(shape, entity.layer())
        .arg(entity.colorIndex())
        .arg(entity.hasTrueColor() ? qint64(entity.trueColor()) : -1)
        .arg(line.lineType.toUpper(), num(line.scale), xdataText(entity));
}

QStringList describeBlock(const ZcDbBlockTableRecord& block, bool withLook = true)
{
    QStringList lines;
    for (const ZcDbObjectId& id : block.entityIds())
        if (const auto* entity = ZcDbEntity::cast(id.object()))
            lines << describe(*entity, withLook);
    return lines;
}

// The layers, applications, blocks and both spaces, as lines to compare.
QStringList describeDatabase(ZcDbDatabase& db)
{
    QStringList lines;
    for (const ZcDbLayerTableRecord& l : db.layers())
        lines << QStringLiteral("layer %1 %2 %3 %4 %5%6%7")
                     .arg(l.name)
                     .arg(l.colorIndex)
                     .arg(l.hasTrueColor ? qint64(l.trueColor) : -1)
                     .arg(l.linetype)
                     .arg(l.isOff)
                     .arg(l.isFrozen)
                     .arg(l.isLocked);
    for (const ZcDbLineType& t : db.lineTypes()) {
        QStringList dashes;
        for (double d : t.pattern)
            dashes << num(d);
        lines << QStringLiteral("line type %1: %2").arg(t.name.toUpper(), dashes.join(u' '));
    }
    lines << QStringLiteral("line type scale %1").arg(num(db.lineTypeScale()));
    // Every drawing written registers the product's application.
    QStringList apps = db.registeredApps() << QStringLiteral("QVKS");
    for (QString& app : apps)
        app = app.toUpper();
    apps.removeDuplicates();
    apps.sort();
    lines << QStringLiteral("apps ") + apps.join(u' ');
    ZcDbBlockTable* table = nullptr;
    EXPECT_EQ(db.getBlockTable(table, ZcDb::kForRead), Zcad::eOk);
    const std::vector<ZcDbObjectId> ids = table->recordIds();
    table->close();
    for (const ZcDbObjectId& id : ids)
        if (const auto* block = ZcDbBlockTableRecord::cast(id.object())) {
            lines << QStringLiteral("block %1 %2").arg(block->name(), pointText(block->origin()));
            lines << describeBlock(*block);
        }
    return lines;
}

struct Saved
{
    QByteArray bytes;
    FloorSaveResult result;
};

struct FloorSaverTest : ::testing::Test
{
    DemoProject project;
    QTemporaryDir dir;
    QvKsCodeStyles styles;

    void SetUp() override
    {
        ASSERT_TRUE(QvKsDataMng::OpenProject(project.Path()));
        ASSERT_TRUE(styles.Reload());
        LineTypeMgr::Instance()->LoadOrBuild(styles);
    }
    void TearDown() override { QvKsDataMng::CloseProject(); }

    Saved save(const ZcDbDatabase& db, bool colorBySystem)
    {
        Saved saved;
        FloorSaver::Settings settings;
        settings.colorBySystem = colorBySystem;
        saved.bytes = FloorSaver(styles, *LineTypeMgr::Instance(), settings).ToDxf(db, saved.result);
        return saved;
    }

    QString ezdxfFloor(const char* version)
    {
        const QString path = dir.filePath(QStringLiteral("ezdxf-%1.dxf").arg(QLatin1String(version)));
        QProcess python;
        python.start(QStringLiteral("/usr/bin/python3"),
            { QStringLiteral(QV_EZDXF_SCRIPTS "/make_floor.py"), path, QLatin1String(version) });
        if (!python.waitForFinished(60000) || python.exitCode() != 0)
            return QString();
        return path;
    }
};

TEST_F(FloorSaverTest, FloorsReadBackAsTheyWereRead)
{
    QStringList files;
    const QString demo = dir.filePath(QStringLiteral("demo.dxf"));
    ASSERT_TRUE(WriteDemoFloorDrawing(demo, QStringLiteral("1F"),
        { { QStringLiteral("3\\1"), QStringLiteral("公共照明") },
            { QStringLiteral("3\\4"), QStringLiteral("机房动力") } }));
    files << demo;
    for (const char* version : { "R2000", "R2018" })
        if (const QString made = ezdxfFloor(version); !made.isEmpty())
            files << made;
    for (const QString& file : files) {
        ZcDbDatabase first(false, true);
        ASSERT_EQ(first.readDwgFile(file), Zcad::eOk) << file.toStdString();
        const Saved saved = save(first, false);
        EXPECT_TRUE(saved.result.droppedEntities.isEmpty()) << saved.result.droppedEntities.toStdString();
        ZcDbDatabase second(false, true);
        ASSERT_EQ(second.readDxfData(std::string_view(saved.bytes.constData(), size_t(saved.bytes.size()))),
            Zcad::eOk)
            << second.readError().toStdString();
        const QStringList before = describeDatabase(first);
        EXPECT_EQ(describeDatabase(second), before) << file.toStdString();
        EXPECT_GT(before.size(), 10);
    }
}

TEST_F(FloorSaverTest, ProductEntitiesTakeTheirCodesColourAndLineTypeOnlyByColourBySystem)
{
    ZcDbDatabase db;
    ZcDbLine* plain = new ZcDbLine({ 0, 0, 0 }, { 10, 0, 0 });
    plain->setColorIndex(5);
    const ZcDbObjectId plainId = AppendTo(db, plain);
    // 生活给水 of 给排水 (1\1): green, drawn "按字符" J.
    const ZcDbObjectId pipeId = AppendTo(db, new ZcDbLine({ 0, 5, 0 }, { 10, 5, 0 }));
    ASSERT_EQ(HostDrawingCommands::AssignCode({ pipeId }, QStringLiteral("1\\1")).changed, 1);
    for (const bool bySystem : { true, false }) {
        const Saved saved = save(db, bySystem);
        EXPECT_EQ(saved.result.productEntities, 1);
        ZcDbDatabase back(false, true);
        ASSERT_EQ(back.readDxfData(std::string_view(saved.bytes.constData(), size_t(saved.bytes.size()))),
            Zcad::eOk);
        const auto* space = ZcDbBlockTableRecord::cast(back.modelSpaceId().object());
        const std::vector<ZcDbObjectId> ids = space->entityIds();
        ASSERT_EQ(ids.size(), 2u);
        const auto* other = ZcDbEntity::cast(ids[0].object());
        const auto* pipe = QvKsEntity::cast(ids[1].object());
        ASSERT_NE(pipe, nullptr);
        EXPECT_EQ(pipe->GetSysCodeIndex(), QStringLiteral("1\\1"));
        EXPECT_EQ(other->colorIndex(), 5);
        EXPECT_EQ(pipe->hasTrueColor(), bySystem);
        EXPECT_EQ(pipe->colorIndex(), bySystem ? 3 : 256);
        if (bySystem) {
            EXPECT_EQ(pipe->trueColor(), 0x00FF00u);
        }
        EXPECT_EQ(saved.bytes.contains("\n6\nQVSYS_J\n"), bySystem);
        EXPECT_EQ(saved.bytes.contains("\nLTYPE\n5\n"), true);
    }
    Q_UNUSED(plainId);
}

TEST_F(FloorSaverTest, CodesGoOnLinesArcsAndPolylinesAndComeOffKeepingIdsAndOtherData)
{
    ZcDbDatabase db;
    auto* line = new ZcDbLine({ 0, 0, 0 }, { 10, 0, 0 });
    line->setLayer(QStringLiteral("管线"));
    line->setXData(QStringLiteral("OTHER"), { ZcDbXDataValue::string(QStringLiteral("kept")) });
    auto* polyline = new ZcDbPolyline();
    polyline->appendVertex(0, 0, 0.5);
    polyline->appendVertex(5, 5);
    const std::vector<ZcDbObjectId> ids { AppendTo(db, line), AppendTo(db, new ZcDbArc({ 0, 0, 0 }, 5, 0, 1)),
        AppendTo(db, polyline), AppendTo(db, new ZcDbCircle({ 0, 0, 0 }, 1)),
        AppendTo(db, new ZcDbText({ 0, 0, 0 }, QStringLiteral("文字"))) };
    const QString before = describe(*ZcDbEntity::cast(ids[0].object()), false);

    const CodeAssignment put = HostDrawingCommands::AssignCode(ids, QStringLiteral("3\\12"));
    EXPECT_EQ(put.changed, 3);
    EXPECT_EQ(put.skipped, 2);
    EXPECT_TRUE(db.registeredApps().contains(QStringLiteral("QVKS"), Qt::CaseInsensitive));
    for (int i = 0; i < 3; ++i) {
        const auto* product = QvKsEntity::cast(ids[i].object());
        ASSERT_NE(product, nullptr) << i;
        EXPECT_EQ(product->GetSysCodeIndex(), QStringLiteral("3\\12"));
        EXPECT_EQ(product->objectId(), ids[i]);
        EXPECT_FALSE(product->isWriteEnabled());
    }
    const auto* product = QvKsEntity::cast(ids[0].object());
    EXPECT_EQ(product->layer(), QStringLiteral("管线"));
    EXPECT_EQ(product->xData(QStringLiteral("OTHER")).size(), 1u);
    // A second code replaces the first.
    EXPECT_EQ(HostDrawingCommands::AssignCode({ ids[0] }, QStringLiteral("3\\13")).changed, 1);
    EXPECT_EQ(QvKsEntity::cast(ids[0].object())->GetSysCodeIndex(), QStringLiteral("3\\13"));

    const CodeAssignment off = HostDrawingCommands::RemoveCode(ids);
    EXPECT_EQ(off.changed, 3);
    EXPECT_EQ(off.skipped, 2);
    for (const ZcDbObjectId& id : ids)
        EXPECT_EQ(QvKsEntity::cast(id.object()), nullptr);
    const auto* plain = ZcDbEntity::cast(ids[0].object());
    EXPECT_EQ(describe(*plain, false), before);
    EXPECT_EQ(plain->layer(), QStringLiteral("管线"));
    EXPECT_TRUE(plain->xData(QStringLiteral("QVKS")).empty());
    EXPECT_EQ(plain->xData(QStringLiteral("OTHER")).size(), 1u);
}

TEST(FloorSaverAci, NearestIndexedColour)
{
    for (int index = 1; index <= 255; ++index) {
        const COLORREF c = QvKsAciPalette::ColorOf(index);
        const quint32 rgb = ((c & 0xFF) << 16) | (c & 0xFF00) | ((c >> 16) & 0xFF);
        // An indexed colour finds an index of exactly that colour.
        EXPECT_EQ(QvKsAciPalette::ColorOf(FloorSaver::NearestAci(rgb)), c) << index;
    }
    EXPECT_EQ(FloorSaver::NearestAci(0xFE0101), 1);
    EXPECT_EQ(FloorSaver::NearestAci(0x00FF00), 3);
}

TEST(FloorParts, SaysWhatAFileHeldThatIsNotKept)
{
    const QByteArray dxf
        = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$INSUNITS\n70\n4\n0\nENDSEC\n"
          "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n0\nENDTAB\n0\nTABLE\n2\nDIMSTYLE\n0\nENDTAB\n"
          "0\nENDSEC\n0\nSECTION\n2\nOBJECTS\n0\nENDSEC\n0\nEOF\n";
    EXPECT_EQ(DxfDatabaseWriter::PartsNotKept(dxf),
        (QStringList { QStringLiteral("1 header variables"), QStringLiteral("table DIMSTYLE"),
            QStringLiteral("section OBJECTS") }));
}

} // namespace
