// qvhost as a program: a script run offscreen with screenshots, and the clear
// refusals of a broken start (nothing written to the project then).
#include "DemoProject.h"

#include "DxfWriter.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>

namespace {
QByteArray FolderDigest(const QString& folder)
{
    QCryptographicHash hash(QCryptographicHash::Sha1);
    QDir dir(folder);
    for (const QString& name : dir.entryList(QDir::Files, QDir::Name)) {
        QFile file(dir.filePath(name));
        if (file.open(QIODevice::ReadOnly)) {
            hash.addData(name.toUtf8());
            hash.addData(file.readAll());
        }
    }
    return hash.result();
}

bool WriteText(const QString& path, const QByteArray& text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text) == text.size();
}
} // namespace

TEST(HostProgram, ScriptRunsOffscreenAndSavesScreenshots)
{
    DemoProject project;
    const QString shot = ArtifactPath(QStringLiteral("host-main.png"));
    const QString script = project.File(QStringLiteral("demo.qvs"));
    ASSERT_TRUE(WriteText(script,
        QStringLiteral(
            "select -1e6 -1e6 1e6 1e6\ncommand qvhtest\nexpect [qvhtest] selected\nscreenshot %1\n")
            .arg(shot)
            .toUtf8()));
    QFile::remove(shot);
    const HostRun run = RunQvhost({ QStringLiteral("--project"), project.Path(), QStringLiteral("--plugin"),
        QStringLiteral(QV_HOST_TEST_PLUGIN), QStringLiteral("--script"), script });
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    const QImage image(shot);
    ASSERT_FALSE(image.isNull());
    EXPECT_GE(image.width(), 800);
}

TEST(HostProgram, FailingScriptStatementGivesExitOneAndSaysWhich)
{
    DemoProject project;
    const QString script = project.File(QStringLiteral("bad.qvs"));
    ASSERT_TRUE(WriteText(script, "echo start\nexpect no such text\n"));
    const HostRun run = RunQvhost({ QStringLiteral("--project"), project.Path(), QStringLiteral("--plugin"),
        QStringLiteral(QV_HOST_TEST_PLUGIN), QStringLiteral("--script"), script });
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("line 2"))) << run.err.toStdString();
}

// Plug-ins load before the window is built: what they print then still reaches the
// command line, beside the host's note of each loaded file.
TEST(HostProgram, WhatPluginsPrintWhileLoadingReachesTheCommandLine)
{
    DemoProject project;
    const QString script = project.File(QStringLiteral("loaded.qvs"));
    const QString plugin = QFileInfo(QStringLiteral(QV_HOST_TEST_PLUGIN)).fileName();
    ASSERT_TRUE(WriteText(
        script, QStringLiteral("expect [qvhtest] loaded\nexpect 已加载 %1\n").arg(plugin).toUtf8()));
    const HostRun run = RunQvhost({ QStringLiteral("--project"), project.Path(), QStringLiteral("--plugin"),
        QStringLiteral(QV_HOST_TEST_PLUGIN), QStringLiteral("--script"), script });
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_FALSE(run.out.contains(QStringLiteral("[qvhtest] loaded"))) << run.out.toStdString();
}

// A floor of 25,000 pipes opens whole: read while the window is made, built in two
// halves, painted, and picked by window and crossing boxes, as on a small floor.
TEST(HostProgram, LargeFloorOpensPaintsAndPicksLikeASmallOne)
{
    DemoProject project;
    {
        QFile drawing(project.File(QStringLiteral("1F.dxf")));
        ASSERT_TRUE(drawing.open(QIODevice::WriteOnly));
        DxfWriter writer(&drawing);
        writer.registerApp(QStringLiteral("QVKS"));
        for (int i = 0; i < 25000; ++i) {
            const ZcGePoint3d from { 0, double(i), 0 };
            const ZcGePoint3d to { 100, double(i), 0 };
            if (i % 5 == 4)
                writer.addLine(from, to);
            else
                writer.addProductEntity(QStringLiteral("3\\%1").arg(i % 40 + 1), { from, to });
        }
        ASSERT_TRUE(writer.finish());
    }
    const QString shot = ArtifactPath(QStringLiteral("host-large-floor.png"));
    QFile::remove(shot);
    const QString script = project.File(QStringLiteral("large.qvs"));
    ASSERT_TRUE(WriteText(script,
        QStringLiteral("select -1 -0.5 101 9.5\ncommand qvhtest\nexpect [qvhtest] selected 10\n"
                       "select 101 24990.5 50 24991.5\ncommand qvhtest\nexpect [qvhtest] selected 1\n"
                       "select 101 -1 -1 30000\ncommand qvhtest\nexpect [qvhtest] selected 25000\n"
                       "screenshot %1\n")
            .arg(shot)
            .toUtf8()));
    const HostRun run = RunQvhost({ QStringLiteral("--project"), project.Path(), QStringLiteral("--plugin"),
        QStringLiteral(QV_HOST_TEST_PLUGIN), QStringLiteral("--script"), script });
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString() << run.out.toStdString();
    EXPECT_FALSE(QImage(shot).isNull());
}

// The bar and "显示控制" are filled while the drawing is read, before the plug-ins
// load: a code a plug-in writes to the store as it loads still shows in them.
TEST(HostProgram, CodesAPluginWritesAsItLoadsShowInTheBar)
{
    DemoProject project;
    const QString script = project.File(QStringLiteral("bar.qvs"));
    ASSERT_TRUE(WriteText(script, QStringLiteral("bar-select 载入时系统\nexpect-bar 载入时系统\n").toUtf8()));
    qputenv("QVHTEST_CODE_AT_LOAD", QStringLiteral("载入时系统").toUtf8());
    const HostRun run = RunQvhost({ QStringLiteral("--project"), project.Path(), QStringLiteral("--plugin"),
        QStringLiteral(QV_HOST_TEST_PLUGIN), QStringLiteral("--script"), script });
    qunsetenv("QVHTEST_CODE_AT_LOAD");
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString() << run.out.toStdString();
}

struct BrokenStart
{
    const char* what;
    int exitCode;
    const char* message;
};

class HostBrokenStart : public ::testing::TestWithParam<BrokenStart>
{ };

TEST_P(HostBrokenStart, RefusesWithClearMessageAndWritesNothing)
{
    const BrokenStart& c = GetParam();
    DemoProject project;
    const QString what = QString::fromLatin1(c.what);
    QStringList args { QStringLiteral("--project"), project.Path(), QStringLiteral("--script"),
        project.File(QStringLiteral("s.qvs")) };
    ASSERT_TRUE(WriteText(project.File(QStringLiteral("s.qvs")), "echo hi\n"));
    if (what == QLatin1String("missing project"))
        args[1] = project.File(QStringLiteral("nowhere"));
    else if (what == QLatin1String("broken store"))
        ASSERT_TRUE(WriteText(project.File(QStringLiteral("project.qvks")), "not a store"));
    else if (what == QLatin1String("missing drawing"))
        ASSERT_TRUE(QFile::remove(project.File(QStringLiteral("1F.dxf"))));
    else if (what == QLatin1String("broken drawing"))
        ASSERT_TRUE(
            WriteText(project.File(QStringLiteral("1F.dxf")), "0\nSECTION\n2\nENTITIES\n0\nLINE\n10\nabc"));
    else if (what == QLatin1String("unknown floor"))
        args << QStringLiteral("--floor") << QStringLiteral("9F");
    else if (what == QLatin1String("broken plug-in")) {
        ASSERT_TRUE(WriteText(project.File(QStringLiteral("x.zrx")), "not a library"));
        args << QStringLiteral("--plugin") << project.File(QStringLiteral("x.zrx"));
    } else if (what == QLatin1String("missing plug-in"))
        args << QStringLiteral("--plugin") << project.File(QStringLiteral("none.zrx"));
    else if (what == QLatin1String("bad option"))
        args << QStringLiteral("--frobnicate");
    const QByteArray before = FolderDigest(project.Path());
    const HostRun run = RunQvhost(args);
    EXPECT_EQ(run.exitCode, c.exitCode) << run.err.toStdString();
    EXPECT_TRUE(run.err.contains(QString::fromUtf8(c.message))) << run.err.toStdString();
    EXPECT_EQ(FolderDigest(project.Path()), before);
}

INSTANTIATE_TEST_SUITE_P(Cases, HostBrokenStart,
    ::testing::Values(BrokenStart { "missing project", 3, "does not exist" },
        BrokenStart { "broken store", 3, "cannot be opened" },
        BrokenStart { "missing drawing", 3, "cannot be read" },
        BrokenStart { "broken drawing", 3, "cannot be read" },
        BrokenStart { "unknown floor", 3, "no floor \"9F\"" },
        BrokenStart { "broken plug-in", 4, "cannot be loaded" },
        BrokenStart { "missing plug-in", 4, "does not exist" },
        BrokenStart { "bad option", 2, "unknown argument" }));

TEST(HostProgram, HelpPrintsUsageAndExitsZeroWhileAWrongCallExitsTwo)
{
    struct Call
    {
        QString program;
        QStringList arguments;
        int exitCode;
        bool usageOnOut;
    };
    const QString host = QStringLiteral(QV_QVHOST);
    const QString tool = QStringLiteral(QV_QVPROJ);
    for (const Call& call : { Call { host, { QStringLiteral("--help") }, 0, true },
             Call { host, { QStringLiteral("--frobnicate") }, 2, false },
             Call { tool, { QStringLiteral("--help") }, 0, true },
             Call { tool, { QStringLiteral("-h") }, 0, true },
             Call { tool, { QStringLiteral("--help"), QStringLiteral("x") }, 2, false },
             Call { tool, { QStringLiteral("frobnicate") }, 2, false } }) {
        QProcess process;
        process.start(call.program, call.arguments);
        ASSERT_TRUE(process.waitForFinished(60000));
        const QString out = QString::fromLocal8Bit(process.readAllStandardOutput());
        const QString err = QString::fromLocal8Bit(process.readAllStandardError());
        const std::string what = (call.program + u' ' + call.arguments.join(u' ')).toStdString();
        EXPECT_EQ(process.exitCode(), call.exitCode) << what;
        EXPECT_EQ(out.contains(QStringLiteral("usage")), call.usageOnOut) << what;
        EXPECT_EQ(err.contains(QStringLiteral("usage")), !call.usageOnOut) << what;
    }
}
