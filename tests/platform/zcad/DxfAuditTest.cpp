// Every drawing this project writes passes the audit of an outside DXF library
// with no error and no fix: the demo floors of the project tool and drawings of
// every entity kind the writer makes, in each version it writes.
#include "DxfWriter.h"
#include "EzdxfRunner.h"

#include <QDirIterator>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

void writeEveryKind(DxfWriter& writer)
{
    writer.addLayer(QStringLiteral("给排水"), 5, QStringLiteral("DASHED"));
    writer.addLayer(QStringLiteral("TEXT"), 2);
    writer.registerApp(QStringLiteral("OTHERAPP"));
    writer.beginBlock(QStringLiteral("ROOMTAG"), { 10, 10, 0 });
    writer.addText({ 10, 10, 0 }, QStringLiteral("房间"), 2.0);
    writer.addAttributeDefinition(
        { QStringLiteral("NAME"), QStringLiteral("名称"), QStringLiteral("?"), { 12, 10, 0 } });
    writer.addAttributeDefinition(
        { QStringLiteral("CODE"), QStringLiteral("编号"), QString(), { 12, 8, 0 }, 2.5, true });
    writer.addCircle({ 10, 10, 0 }, 1.0);
    writer.endBlock();
    writer.beginBlock(QStringLiteral("EMPTY"));
    writer.endBlock();
    const DxfWriter::Style pipe { QStringLiteral("给排水"), 1 };
    writer.addProductEntity(QStringLiteral("3\\12"), { { 0, 0, 0 }, { 100, 0, 0 } }, pipe);
    writer.addProductEntity(QStringLiteral("6\\2"), { { 0, 0, 3 }, { 50, 0, 3 }, { 50, 40, 3 } }, pipe);
    writer.addPolyline({ { 0, 0, 0 }, { 10, 0, 0 }, { 10, 10, 0 } }, true);
    writer.addLine({ 0, 0, 0 }, { 1, 1, 0 }, {},
        { { QStringLiteral("OTHERAPP"),
            { ZcDbXDataValue::string(QStringLiteral("x")), ZcDbXDataValue::integer(7, 1070),
                ZcDbXDataValue::real(1.5), ZcDbXDataValue::point({ 1, 2, 3 }) } } });
    writer.addText({ 5, 5, 0 }, QStringLiteral("生活给水"), 3.0, { QStringLiteral("TEXT"), 256 }, 30.0);
    writer.addMText({ 5, 20, 0 }, QStringLiteral("A\\PB") + QString(600, QLatin1Char('x')), 2.5, 30);
    writer.addArc({ 0, 0, 0 }, 5, 0, 90);
    writer.addBlockReference(QStringLiteral("ROOMTAG"), { 110, 210, 0 },
        { { QStringLiteral("NAME"), QStringLiteral("卫生间"), { 112, 210, 0 } },
            { QStringLiteral("CODE"), QStringLiteral("WS-01"), { 112, 208, 0 }, 2.5, true } },
        {}, 2.0, 90.0);
    writer.addBlockReference(QStringLiteral("EMPTY"), { 0, 0, 0 });
}

QStringList drawingsIn(const QString& folder)
{
    QStringList files;
    QDirIterator it(folder, { QStringLiteral("*.dxf"), QStringLiteral("*.dwg") }, QDir::Files,
        QDirIterator::Subdirectories);
    while (it.hasNext())
        files.append(it.next());
    files.sort();
    return files;
}

// Runs the audit; the failure message carries the findings of every file.
void expectCleanAudit(const QStringList& files)
{
    ASSERT_FALSE(files.isEmpty());
    const EzdxfRun run = runPython(QStringList { ezdxfScript(QStringLiteral("audit.py")) } + files);
    EXPECT_EQ(run.code, 0) << run.out.toStdString() << run.err.toStdString();
    EXPECT_EQ(run.out.count(QLatin1Char('\n')), files.size()) << run.out.toStdString();
}

struct DxfAudit : ::testing::Test
{
    QTemporaryDir dir;
    void SetUp() override
    {
        if (const QString reason = ezdxfMissingReason(); !reason.isEmpty())
            GTEST_SKIP() << reason.toStdString();
    }
};

TEST_F(DxfAudit, DrawingsOfEveryEntityKindInEveryVersionAreClean)
{
    const struct
    {
        DxfWriter::Version version;
        const char* name;
        bool withEntities;
    } cases[] = {
        { DxfWriter::Version::R12, "r12.dxf", true },
        { DxfWriter::Version::R2000, "r2000.dxf", true },
        { DxfWriter::Version::R2018, "r2018.dxf", true },
        { DxfWriter::Version::R12, "r12-empty.dxf", false },
        { DxfWriter::Version::R2000, "r2000-empty.dxf", false },
        { DxfWriter::Version::R2018, "r2018-empty.dxf", false },
    };
    for (const auto& c : cases) {
        QFile file(dir.filePath(QString::fromLatin1(c.name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        DxfWriter writer(&file, c.version);
        if (c.withEntities)
            writeEveryKind(writer);
        ASSERT_TRUE(writer.finish()) << c.name;
    }
    expectCleanAudit(drawingsIn(dir.path()));
}

#ifdef QVPROJ_EXE
TEST_F(DxfAudit, DemoFloorsOfTheProjectToolAreClean)
{
    QProcess tool;
    tool.start(QStringLiteral(QVPROJ_EXE), { QStringLiteral("demo"), dir.filePath(QStringLiteral("demo")) });
    ASSERT_TRUE(tool.waitForFinished(60000));
    ASSERT_EQ(tool.exitCode(), 0) << tool.readAllStandardError().toStdString();
    const QStringList floors = drawingsIn(dir.path());
    EXPECT_GE(floors.size(), 2);
    expectCleanAudit(floors);
}
#endif

} // namespace
