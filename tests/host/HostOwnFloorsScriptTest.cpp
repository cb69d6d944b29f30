// A drafter's own floor from a DXF to a saved, coloured floor, as the README walks
// it: a drawing made by another program, "qvproj new", codes put on its pipes in
// qvhost, "SAVE"; the file then shows the systems to any DXF reader. Also the
// command line offering the host's commands as one types.
#include "HostFixture.h"

#include "HostDrawingCommands.h"
#include "HostOptions.h"
#include "QvKsEntity.h"
#include "QvKsFileFaults.h"
#include "ZcDbBlockTableRecord.h"
#include "ZcDbDatabase.h"

#include <QCompleter>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QTest>

#include <gtest/gtest.h>

namespace {

QString python()
{
    return QStringLiteral("/usr/bin/python3");
}

// Empty when ezdxf cannot be run, else the drawing it made.
QString makeFloor(const QString& path)
{
    QProcess process;
    process.start(python(), { QStringLiteral(QV_EZDXF_SCRIPTS "/make_floor.py"), path });
    return process.waitForFinished(60000) && process.exitCode() == 0 ? path : QString();
}

int runTool(const QStringList& args, QString& output)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(QStringLiteral(QV_QVPROJ), args);
    process.waitForFinished(60000);
    output = QString::fromUtf8(process.readAll());
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

TEST(HostOwnFloors, FromADrawingToASavedColouredFloor)
{
    QTemporaryDir dir;
    const QString floor = makeFloor(dir.filePath(QStringLiteral("floor.dxf")));
    if (floor.isEmpty())
        GTEST_SKIP() << "python3 with ezdxf is needed to make the drawing (install python3-ezdxf)";
    const QString project = dir.filePath(QStringLiteral("myproj"));
    QString output;
    ASSERT_EQ(runTool({ QStringLiteral("new"), project, QStringLiteral("--name"), QStringLiteral("我的项目"),
                          QStringLiteral("--floor"), QStringLiteral("1F=") + floor },
                  output),
        0)
        << output.toStdString();

    // The pipes lie between y 1000 and 3500: the window takes the three lines, the
    // arc and the polyline, and nothing of the walls around them.
    const QString script = dir.filePath(QStringLiteral("own.qvs"));
    QFile text(script);
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("bar-select 生活给水\n"
               "select -100 900 11100 3600\n"
               "command FPBH\n"
               "expect 5 个对象赋上了系统编号 生活给水。\n"
               "command SAVE\n"
               "expect 已保存 1F.dxf: 22 个对象, 其中 5 个带系统编号, 按系统显示颜色。\n");
    text.close();
    const HostRun run
        = RunQvhost({ QStringLiteral("--project"), project, QStringLiteral("--script"), script });
    ASSERT_EQ(run.exitCode, 0) << run.err.toStdString();

    ZcDbDatabase saved(false, true);
    ASSERT_EQ(saved.readDwgFile(project + QStringLiteral("/1F.dxf")), Zcad::eOk);
    int products = 0;
    for (const ZcDbObjectId& id : ZcDbBlockTableRecord::cast(saved.modelSpaceId().object())->entityIds())
        if (const auto* product = QvKsEntity::cast(id.object())) {
            ++products;
            EXPECT_EQ(product->GetSysCodeIndex(), QStringLiteral("1\\1"));
            EXPECT_TRUE(product->hasTrueColor());
            EXPECT_EQ(product->trueColor(), 0x00FF00u); // 生活给水's green
            EXPECT_EQ(product->layer(), QStringLiteral("管线"));
        }
    EXPECT_EQ(products, 5);

    QProcess audit;
    audit.start(
        python(), { QStringLiteral(QV_EZDXF_SCRIPTS "/audit.py"), project + QStringLiteral("/1F.dxf") });
    ASSERT_TRUE(audit.waitForFinished(60000));
    const QString report = QString::fromUtf8(audit.readAllStandardOutput());
    EXPECT_EQ(audit.exitCode(), 0) << report.toStdString();
    EXPECT_TRUE(report.contains(QStringLiteral("\"errors\": [], \"fixes\": []"))) << report.toStdString();

    ASSERT_EQ(runTool({ QStringLiteral("floors"), project }, output), 0);
    EXPECT_EQ(output, QStringLiteral("1F\t1F.dxf\t(current)\n"));
}

// A save that cannot be written says why and leaves the drawing that was there.
class HostSaveScript : public HostFixture
{ };

TEST_F(HostSaveScript, AFailedSaveKeepsTheOldFileAndSaysWhy)
{
    const QString path = session.DrawingFile();
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray before = file.readAll();
    file.close();
    QvKsFileFaults::FailNthWrite(1);
    EXPECT_EQ(Run(QStringLiteral("select -1e6 -1e6 1e6 1e6\n"
                                 "bar-select 公共照明\n"
                                 "command _ASSIGNCODE\n"
                                 "command qsave\n"
                                 "expect 无法保存 %1:\n"
                                 "expect-not 已保存")
                      .arg(QFileInfo(path).fileName())),
        "");
    QvKsFileFaults::Clear();
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), before);
    file.close();
    // Once the disk takes it, the save goes through.
    EXPECT_EQ(Run(QStringLiteral("command qsave\nexpect 已保存")), "");
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_NE(file.readAll(), before);
}

TEST_F(HostSaveScript, TheCommandLineOffersTheHostsCommandsAsOneTypes)
{
    QLineEdit* input = window->CommandLine()->Input();
    input->setFocus();
    QTest::keyClicks(input, QStringLiteral("fp"));
    QCompleter* completer = window->CommandLine()->Completer();
    EXPECT_EQ(completer->completionCount(), 1);
    EXPECT_EQ(completer->currentCompletion(), QStringLiteral("FPBH"));
    input->clear();
    QTest::keyClicks(input, QStringLiteral("_rem"));
    EXPECT_EQ(completer->currentCompletion(), QStringLiteral("_REMOVECODE"));
    // And the usage lists them with both names.
    for (const HostCommandName& command : HostDrawingCommands::Names())
        EXPECT_TRUE(
            HostOptions::Usage().contains(QStringLiteral("%1 (_%2)").arg(command.local, command.global)))
            << command.global.toStdString();
}

} // namespace
