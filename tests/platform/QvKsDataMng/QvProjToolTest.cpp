// The project tool as a user runs it: demo, print, export, import, bad input.
#include "QvProjRun.h"
#include "TempProject.h"

#include <QElapsedTimer>
#include <QProcess>

#include <cerrno>
#include <cstring>
#include <sys/mount.h>
#include <sys/stat.h>

namespace {

struct QvProjTool : ::testing::Test
{
    QTemporaryDir dir;
    QString demo = dir.path() + QStringLiteral("/demo");
    void SetUp() override { ASSERT_EQ(qvproj({ QStringLiteral("demo"), demo }).code, 0); }
};

TEST_F(QvProjTool, PrintsOneStableLinePerCodeWithEveryAttribute)
{
    const ToolRun first = qvproj({ QStringLiteral("print"), demo, QStringLiteral("电气") });
    ASSERT_EQ(first.code, 0) << first.err.toStdString();
    const QStringList lines = first.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    ASSERT_EQ(lines.size(), 14); // a header and 13 codes
    EXPECT_TRUE(lines[3].startsWith(
        QStringLiteral("公共照明\\WL1\\WL1-1  index=9 color=0x0000ffff width=15 alpha=30 ")));
    EXPECT_TRUE(
        lines[3].endsWith(QStringLiteral("info=\"电气\\管线\\电线穿管\\BV-3×2.5-SC20\" remark=\"支路\"")));
    EXPECT_EQ(qvproj({ QStringLiteral("print"), demo, QStringLiteral("电气") }).out, first.out);
    EXPECT_TRUE(QFile::exists(demo + QStringLiteral("/Profile/系统编号/演示项目-电气.scn")));
}

TEST_F(QvProjTool, ExportThenImportIntoAnotherSpecialtyAddsTheCodes)
{
    const QString file = dir.path() + QStringLiteral("/e.scn");
    ASSERT_EQ(qvproj({ QStringLiteral("export"), demo, QStringLiteral("电气"), file }).code, 0);
    // The file says it holds 电气's codes: 弱电 takes them only when told to.
    const QString before = qvproj({ QStringLiteral("print"), demo, QStringLiteral("弱电") }).out;
    const ToolRun refused = qvproj({ QStringLiteral("import"), demo, QStringLiteral("弱电"), file });
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.err.endsWith(QStringLiteral(
        "e.scn holds codes of 电气, not of 弱电: not imported (--any-spec imports it all the same)\n")))
        << refused.err.toStdString();
    EXPECT_EQ(qvproj({ QStringLiteral("print"), demo, QStringLiteral("弱电") }).out, before);
    const ToolRun imported = qvproj(
        { QStringLiteral("import"), demo, QStringLiteral("弱电"), file, QStringLiteral("--any-spec") });
    ASSERT_EQ(imported.code, 0) << imported.err.toStdString();
    const QString printed = qvproj({ QStringLiteral("print"), demo, QStringLiteral("弱电") }).out;
    EXPECT_TRUE(printed.startsWith(QStringLiteral("# 弱电: 25 codes")));
    // New codes are numbered after 弱电's highest index (12), parents first.
    EXPECT_TRUE(printed.contains(QStringLiteral("\n公共照明  index=13 "))) << printed.toStdString();
    // Importing again changes nothing but attributes.
    ASSERT_EQ(
        qvproj({ QStringLiteral("import"), demo, QStringLiteral("弱电"), file, QStringLiteral("--any-spec") })
            .code,
        0);
    EXPECT_EQ(qvproj({ QStringLiteral("print"), demo, QStringLiteral("弱电") }).out, printed);
}

TEST_F(QvProjTool, ImportUpgradesOlderFilesAndRefusesNewerOnes)
{
    const QString old = dir.path() + QStringLiteral("/old.scn");
    ASSERT_TRUE(writeBytes(old,
        "<SysCodeData Version=\"2.0\"><SysNode><Name>中水</Name><Color>0,255,0</Color>"
        "</SysNode></SysCodeData>"));
    ASSERT_EQ(qvproj({ QStringLiteral("import"), demo, QStringLiteral("给排水"), old }).code, 0);
    EXPECT_TRUE(readText(old).contains(QStringLiteral("<SysCodeFile")));
    EXPECT_TRUE(qvproj({ QStringLiteral("print"), demo, QStringLiteral("给排水") })
                    .out.contains(QStringLiteral("中水  index=18 color=0x0000ff00")));

    const QString newer = dir.path() + QStringLiteral("/newer.scn");
    ASSERT_TRUE(writeBytes(newer, "<SysCodeFile Version=\"99.0\"><Code Name=\"X\"/></SysCodeFile>"));
    const ToolRun refused = qvproj({ QStringLiteral("import"), demo, QStringLiteral("给排水"), newer });
    EXPECT_EQ(refused.code, 1);
    EXPECT_TRUE(refused.err.contains(QStringLiteral("newer version")));
}

TEST_F(QvProjTool, BadInputGivesAMessageAndAFailingExitCode)
{
    const QString bad = dir.path() + QStringLiteral("/bad.scn");
    ASSERT_TRUE(writeBytes(bad, "<SysCodeFile Version=\"3.2.0\"><Code Name=\"X\">"));
    const struct
    {
        QStringList args;
        int code;
        const char* message;
    } cases[] = {
        { {}, 2, "usage" },
        { { QStringLiteral("frobnicate") }, 2, "usage" },
        { { QStringLiteral("print"), demo }, 2, "usage" },
        { { QStringLiteral("demo"), demo }, 1, "not empty" },
        { { QStringLiteral("print"), dir.path(), QStringLiteral("电气") }, 1, "no project store" },
        { { QStringLiteral("print"), demo, QStringLiteral("土建") }, 1, "no specialty" },
        { { QStringLiteral("import"), demo, QStringLiteral("电气"), bad }, 1,
            "not a valid system-code file" },
        { { QStringLiteral("export"), demo, QStringLiteral("电气"),
              dir.path() + QStringLiteral("/no/x.scn") },
            1, "cannot be written" },
    };
    const QString before = qvproj({ QStringLiteral("print"), demo, QStringLiteral("电气") }).out;
    for (const auto& c : cases) {
        const ToolRun run = qvproj(c.args);
        EXPECT_EQ(run.code, c.code) << c.args.join(QLatin1Char(' ')).toStdString();
        EXPECT_TRUE(run.err.contains(QLatin1String(c.message))) << run.err.toStdString();
    }
    EXPECT_EQ(qvproj({ QStringLiteral("print"), demo, QStringLiteral("电气") }).out, before);
}

} // namespace

namespace {

// What the tool cannot read it refuses at once, with the reason and the line, and
// the specialty stays as it was.
TEST_F(QvProjTool, ImportRefusesWhatItCannotReadAtOnce)
{
    const QString before = qvproj({ QStringLiteral("print"), demo, QStringLiteral("电气") }).out;
    const QString fifo = dir.path() + QStringLiteral("/f.scn");
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const auto file = [&](const char* name, const QByteArray& body) {
        const QString path = dir.path() + QLatin1Char('/') + QLatin1String(name);
        EXPECT_TRUE(writeBytes(
            path, "<SysCodeFile Version=\"3.2.0\">\n<Code Name=\"新\"/>\n" + body + "\n</SysCodeFile>\n"));
        return path;
    };
    const struct
    {
        QString path;
        const char* message;
    } cases[] = {
        { fifo, "f.scn: a named pipe, not a regular file" },
        { dir.path(), "a folder, not a file" },
        { file("newline.scn", R"(<Code Name="照明&#10;回路"/>)"),
            "line 3: the code name \"照明\\u000a回路\" is not legal" },
        { file("twice.scn", R"(<Code Name="新 "/>)"), "line 3: the code \"新\" appears twice at one level" },
        { file("alpha.scn", R"(<Code Name="A" Alpha="99999"/>)"),
            "line 3: the code \"A\": the transparency 99999 is outside 0 to 100" },
        { file("width.scn", R"(<Code Name="A" LineWidth="1e308"/>)"),
            "line 3: the code \"A\": the line width 1e+308 is outside 0 to 100 mm" },
    };
    for (const auto& c : cases) {
        QElapsedTimer clock;
        clock.start();
        const ToolRun run = qvproj({ QStringLiteral("import"), demo, QStringLiteral("电气"), c.path });
        EXPECT_LT(clock.elapsed(), 10000) << c.path.toStdString();
        EXPECT_EQ(run.code, 1) << c.path.toStdString();
        EXPECT_TRUE(run.err.contains(QString::fromUtf8(c.message))) << run.err.toStdString();
    }
    EXPECT_EQ(qvproj({ QStringLiteral("print"), demo, QStringLiteral("电气") }).out, before);
}

TEST_F(QvProjTool, ImportOfIllegalNamesFailsNamingTheLineAndChangesNothing)
{
    const QString before = qvproj({ QStringLiteral("print"), demo, QStringLiteral("弱电") }).out;
    const QString file = dir.path() + QStringLiteral("/bad.scn");
    ASSERT_TRUE(writeBytes(file,
        "<SysCodeFile Version=\"3.2.0\">\n<Code Name=\"OK\"/>\n<Code Name=\"A/B\"/>\n<Code Name=\"SYS\"/>\n"
        "<Code Name=\"R&amp;D\"/>\n</SysCodeFile>\n"));
    const ToolRun run = qvproj({ QStringLiteral("import"), demo, QStringLiteral("弱电"), file });
    EXPECT_NE(run.code, 0);
    EXPECT_TRUE(run.err.contains(QStringLiteral("line 3: the code name \"A/B\" is not legal")))
        << run.err.toStdString();
    EXPECT_EQ(qvproj({ QStringLiteral("print"), demo, QStringLiteral("弱电") }).out, before);
}

} // namespace

namespace {

// A small memory file system that fills up, where this process may mount one.
class FullDisk
{
public:
    FullDisk()
    {
        const QByteArray point = QFile::encodeName(m_dir.path());
        if (::mount("tmpfs", point.constData(), "tmpfs", 0, "size=256k") != 0)
            m_why = QString::fromLocal8Bit(std::strerror(errno));
        else
            m_mounted = true;
    }
    ~FullDisk()
    {
        if (m_mounted)
            ::umount2(QFile::encodeName(m_dir.path()).constData(), MNT_DETACH);
    }
    bool IsMounted() const { return m_mounted; }
    QString Why() const { return m_why; }
    QString File(const char* name) const { return m_dir.path() + u'/' + QString::fromUtf8(name); }
    // Takes every byte left.
    void Fill() const
    {
        QFile filler(File("filler"));
        if (!filler.open(QIODevice::WriteOnly))
            return;
        const QByteArray block(4096, 'f');
        while (filler.write(block) == block.size() && filler.flush()) { }
    }

private:
    QTemporaryDir m_dir;
    bool m_mounted = false;
    QString m_why;
};

// The disk fills up between two exports: the second one fails with the reason and
// a failing exit code, and the file of the first is kept whole.
TEST_F(QvProjTool, AnExportOnAFullDiskFailsAndKeepsTheOldFile)
{
    FullDisk disk;
    if (!disk.IsMounted())
        GTEST_SKIP() << "cannot mount a small tmpfs here (needs root): " << disk.Why().toStdString();
    const QString file = disk.File("q.scn");
    ASSERT_EQ(qvproj({ QStringLiteral("export"), demo, QStringLiteral("电气"), file }).code, 0);
    const QByteArray good = readBytes(file);
    disk.Fill();
    const ToolRun run = qvproj({ QStringLiteral("export"), demo, QStringLiteral("电气"), file });
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("cannot be written: the disk is full")))
        << run.err.toStdString();
    EXPECT_FALSE(run.out.contains(QStringLiteral("written"))) << run.out.toStdString();
    EXPECT_EQ(readBytes(file), good);
}

// The user's own older file is rewritten in place before it is read: on a full
// disk it stays as the user had it, and nothing is imported.
TEST_F(QvProjTool, AnOlderFileOnAFullDiskIsNotImportedAndStaysAsItWas)
{
    FullDisk disk;
    if (!disk.IsMounted())
        GTEST_SKIP() << "cannot mount a small tmpfs here (needs root): " << disk.Why().toStdString();
    const QString old = disk.File("old.scn");
    const QByteArray legacy = "<SysCodeData Version=\"2.0\"><SysNode><Name>中水</Name><Color>0,255,0</Color>"
                              "</SysNode></SysCodeData>";
    ASSERT_TRUE(writeBytes(old, legacy));
    disk.Fill();
    const QString before = qvproj({ QStringLiteral("print"), demo, QStringLiteral("给排水") }).out;
    const ToolRun run = qvproj({ QStringLiteral("import"), demo, QStringLiteral("给排水"), old });
    EXPECT_EQ(run.code, 1);
    EXPECT_TRUE(run.err.contains(QStringLiteral("the disk is full"))) << run.err.toStdString();
    EXPECT_EQ(readBytes(old), legacy);
    EXPECT_EQ(qvproj({ QStringLiteral("print"), demo, QStringLiteral("给排水") }).out, before);
}

} // namespace
