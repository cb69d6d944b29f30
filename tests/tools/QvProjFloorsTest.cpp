// A project of one's own floors with the project tool: new, add-floor, floors, and
// every refusal leaving nothing behind.
#include "CHorizontalLayMng.h"
#include "CISysCode.h"
#include "CProj.h"
#include "CSysCodeData.h"
#include "DxfWriter.h"
#include "ProjectFloors.h"
#include "QvKsDataMng.h"
#include "QvProjRun.h"
#include "Specialty.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

// A small floor: walls and, when asked, one pipe with a code.
QString writeFloor(const QString& path, int walls, const QString& indexPath = QString())
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    DxfWriter writer(&file);
    writer.addLayer(QStringLiteral("墙体"), 8);
    for (int i = 0; i < walls; ++i)
        writer.addLine({ 0, i * 100.0, 0 }, { 1000, i * 100.0, 0 }, { QStringLiteral("墙体"), 256 });
    if (!indexPath.isEmpty())
        writer.addProductEntity(indexPath, { { 0, 0, 0 }, { 500, 0, 0 } });
    EXPECT_TRUE(writer.finish());
    return path;
}

QStringList entriesOf(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden, QDir::Name);
}

struct QvProjFloors : ::testing::Test
{
    QTemporaryDir dir;
    QString project = dir.filePath(QStringLiteral("own"));
    QString ground = writeFloor(dir.filePath(QStringLiteral("ground.dxf")), 3);
    QString upper = writeFloor(dir.filePath(QStringLiteral("upper.dxf")), 2, QStringLiteral("1\\2"));

    void TearDown() override { QvKsDataMng::CloseProject(); }
};

TEST_F(QvProjFloors, NewProjectHasTheCatalogueCodesAndTheFloorsInOrder)
{
    const ToolRun run = qvproj({ QStringLiteral("new"), project, QStringLiteral("--name"),
        QStringLiteral("我的项目"), QStringLiteral("--floor"), QStringLiteral("2F=") + upper,
        QStringLiteral("--floor"), QStringLiteral("1F=") + ground });
    ASSERT_EQ(run.code, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.contains(QStringLiteral("floor 2F: 2F.dxf (3 entities, 1 with a system code)")))
        << run.out.toStdString();
    EXPECT_EQ(entriesOf(project),
        (QStringList { QStringLiteral("1F.dxf"), QStringLiteral("2F.dxf"), QStringLiteral("Profile"),
            QStringLiteral("project.qvks") }));
    EXPECT_TRUE(QDir(project + QStringLiteral("/Profile/系统编号")).exists());
    EXPECT_TRUE(QFile::exists(project + QStringLiteral("/Profile/SysCodeMng.ini")));

    ASSERT_TRUE(QvKsDataMng::OpenProject(project));
    const CProj proj;
    EXPECT_EQ(proj.GetPrjName(), QStringLiteral("我的项目"));
    EXPECT_EQ(proj.GetCurFloorName(), QStringLiteral("2F"));
    QVector<SQvKsFloorData> floors;
    ASSERT_TRUE(proj.GetAllFloorData(floors));
    ASSERT_EQ(floors.size(), 2);
    EXPECT_EQ(floors[0].strName, QStringLiteral("2F"));
    EXPECT_EQ(floors[1].strDwgFile, QStringLiteral("1F.dxf"));
    // Every specialty holds exactly its catalogue names, in catalogue order, at the
    // top level, numbered from 1.
    EXPECT_EQ(CISysCode::GetAllSpecNames(),
        (QStringList {
            g_strSpecWater, g_strSpecElectrical, g_strSpecHvac, g_strSpecFire, g_strSpecLowVoltage }));
    for (const QString& spec : CISysCode::GetAllSpecNames()) {
        CSysCodeData root;
        ASSERT_TRUE(CISysCode::GetSpecCodeInfos(root, spec));
        QStringList expected;
        GetDefaultSysNames(spec, expected);
        QStringList names;
        for (const CSysCodeData* code : root.GetChildren()) {
            names.append(code->GetNodeName());
            EXPECT_EQ(code->GetChildCount(), 0) << code->GetNodeName().toStdString();
            EXPECT_EQ(code->GetNodeIndex(), names.size());
        }
        EXPECT_EQ(names, expected) << spec.toStdString();
    }
    // The copied drawing is the drafter's byte for byte.
    QFile original(upper);
    QFile copied(project + QStringLiteral("/2F.dxf"));
    ASSERT_TRUE(original.open(QIODevice::ReadOnly) && copied.open(QIODevice::ReadOnly));
    EXPECT_EQ(original.readAll(), copied.readAll());
}

TEST_F(QvProjFloors, RefusalsLeaveNothingBehind)
{
    const QString broken = dir.filePath(QStringLiteral("broken.dxf"));
    {
        QFile file(broken);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("0\nSECTION\n2\nENTITIES\n0\nLINE\n10\n");
    }
    const QString floor1 = QStringLiteral("1F=") + ground;
    const struct
    {
        const char* what;
        QStringList args;
        const char* message;
    } cases[] = {
        { "an unreadable drawing",
            { QStringLiteral("--name"), QStringLiteral("P"), QStringLiteral("--floor"), floor1,
                QStringLiteral("--floor"), QStringLiteral("2F=") + broken },
            "broken.dxf cannot be read" },
        { "a missing drawing",
            { QStringLiteral("--name"), QStringLiteral("P"), QStringLiteral("--floor"),
                QStringLiteral("1F=") + dir.filePath(QStringLiteral("none.dxf")) },
            "none.dxf cannot be read" },
        { "a floor twice",
            { QStringLiteral("--name"), QStringLiteral("P"), QStringLiteral("--floor"), floor1,
                QStringLiteral("--floor"), floor1 },
            "the floor 1F is given twice" },
        { "no floor", { QStringLiteral("--name"), QStringLiteral("P") }, "at least one floor" },
        { "no name", { QStringLiteral("--floor"), floor1 }, "needs a name" },
    };
    for (const auto& c : cases) {
        const ToolRun run = qvproj(QStringList { QStringLiteral("new"), project } + c.args);
        EXPECT_EQ(run.code, 1) << c.what;
        EXPECT_TRUE(run.err.contains(QString::fromUtf8(c.message)))
            << c.what << ": " << run.err.toStdString();
        EXPECT_FALSE(QFileInfo::exists(project)) << c.what;
    }
    // An empty folder that was there stays, empty.
    ASSERT_TRUE(QDir().mkdir(project));
    EXPECT_EQ(qvproj({ QStringLiteral("new"), project, QStringLiteral("--name"), QStringLiteral("P"),
                         QStringLiteral("--floor"), QStringLiteral("2F=") + broken })
                  .code,
        1);
    EXPECT_TRUE(QDir(project).exists());
    EXPECT_TRUE(entriesOf(project).isEmpty());
    // A project is never made over another.
    ASSERT_EQ(qvproj({ QStringLiteral("new"), project, QStringLiteral("--name"), QStringLiteral("P"),
                         QStringLiteral("--floor"), floor1 })
                  .code,
        0);
    const QStringList made = entriesOf(project);
    const ToolRun again = qvproj({ QStringLiteral("new"), project, QStringLiteral("--name"),
        QStringLiteral("Q"), QStringLiteral("--floor"), QStringLiteral("9F=") + upper });
    EXPECT_EQ(again.code, 1);
    EXPECT_TRUE(again.err.contains(QStringLiteral("already holds a project"))) << again.err.toStdString();
    EXPECT_EQ(entriesOf(project), made);
}

TEST_F(QvProjFloors, AddedFloorsComeLastWithTheirLayingModesAndAreListed)
{
    ASSERT_EQ(qvproj({ QStringLiteral("new"), project, QStringLiteral("--name"), QStringLiteral("P"),
                         QStringLiteral("--floor"), QStringLiteral("1F=") + ground })
                  .code,
        0);
    const ToolRun added = qvproj({ QStringLiteral("add-floor"), project, QStringLiteral("屋顶"), upper });
    ASSERT_EQ(added.code, 0) << added.err.toStdString();
    // The same name again, and an unreadable drawing, are refused and add no file.
    const ToolRun twice = qvproj({ QStringLiteral("add-floor"), project, QStringLiteral("屋顶"), ground });
    EXPECT_EQ(twice.code, 1);
    EXPECT_TRUE(twice.err.contains(QStringLiteral("already has a floor 屋顶"))) << twice.err.toStdString();
    EXPECT_EQ(qvproj({ QStringLiteral("add-floor"), project, QStringLiteral("B1"),
                         dir.filePath(QStringLiteral("none.dxf")) })
                  .code,
        1);
    EXPECT_EQ(entriesOf(project),
        (QStringList { QStringLiteral("1F.dxf"), QStringLiteral("Profile"), QStringLiteral("project.qvks"),
            QStringLiteral("屋顶.dxf") }));

    QFile::remove(project + QStringLiteral("/1F.dxf"));
    const ToolRun listed = qvproj({ QStringLiteral("floors"), project });
    ASSERT_EQ(listed.code, 0) << listed.err.toStdString();
    EXPECT_EQ(listed.out, QStringLiteral("1F\t1F.dxf\t(missing)\t(current)\n屋顶\t屋顶.dxf\n"));

    ASSERT_TRUE(QvKsDataMng::OpenProject(project));
    // Each floor has the horizontal laying modes the demo's floors have.
    for (const QString& floor : { QStringLiteral("1F"), QStringLiteral("屋顶") }) {
        QVector<SQvKsLayModeInfo> modes;
        ASSERT_TRUE(CHorizontalLayMng::GetAllLayModeInfos(floor, modes));
        ASSERT_EQ(modes.size(), 6) << floor.toStdString();
        EXPECT_EQ(modes.first().strName, QStringLiteral("沿墙明敷"));
        EXPECT_EQ(modes.last().strName, QStringLiteral("沿桥架敷设"));
    }
}

TEST(QvProjFloorFileName, CleansTheNameAndAvoidsFilesThere)
{
    QTemporaryDir dir;
    QFile(dir.filePath(QStringLiteral("1F.dxf"))).open(QIODevice::WriteOnly);
    const struct
    {
        const char* floor;
        QStringList taken;
        const char* file;
    } cases[] = {
        { "2F", {}, "2F.dxf" },
        { "1F", {}, "1F-2.dxf" },
        { "2F", { QStringLiteral("2f.dxf") }, "2F-2.dxf" },
        { "../up/2F", {}, "up2F.dxf" },
        { "..", {}, "floor.dxf" },
    };
    for (const auto& c : cases)
        EXPECT_EQ(ProjectFloors::FloorFileName(dir.path(), QString::fromUtf8(c.floor), c.taken),
            QString::fromUtf8(c.file))
            << c.floor;
}

TEST(QvProjFloorArgument, NeedsBothSides)
{
    FloorSource floor;
    EXPECT_TRUE(ProjectFloors::ParseFloorArgument(QStringLiteral("1F=a=b.dxf"), floor));
    EXPECT_EQ(floor.name, QStringLiteral("1F"));
    EXPECT_EQ(floor.file, QStringLiteral("a=b.dxf"));
    EXPECT_FALSE(ProjectFloors::ParseFloorArgument(QStringLiteral("=a.dxf"), floor));
    EXPECT_FALSE(ProjectFloors::ParseFloorArgument(QStringLiteral("1F="), floor));
    EXPECT_FALSE(ProjectFloors::ParseFloorArgument(QStringLiteral("1F"), floor));
}

} // namespace
