// The one reader of ".scn" files that the dialog, the reload and the project tool
// share: every hostile file is refused with the reason (and the line, where there is
// one), at once, and the tree it was to fill stays as it was.
#include "SysCodeFileReader.h"

#include "CQvKsVersion.h"
#include "CSysCodeData.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <sys/stat.h>

namespace {
using namespace Qt::StringLiterals;

QByteArray wrap(const QByteArray& body, const QByteArray& rootAttributes = "Version=\"3.2.0\"")
{
    return "<SysCodeFile " + rootAttributes + ">\n" + body + "\n</SysCodeFile>\n";
}

QByteArray randomBytes(int size)
{
    QByteArray bytes(size, '\0');
    QRandomGenerator generator(20240611);
    for (char& b : bytes)
        b = char(generator.bounded(256));
    return bytes;
}

struct FileReaderTest : ::testing::Test
{
    QTemporaryDir dir;
    QString write(const char* name, const QByteArray& bytes) const
    {
        const QString path = dir.filePath(QString::fromUtf8(name));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(bytes);
        return path;
    }
    // A tree with one code, to see that a refusal leaves it whole.
    static void fill(CSysCodeData& tree)
    {
        auto* kept = new CSysCodeData;
        kept->SetNodeName(u"kept"_s);
        int counter = 0;
        tree.AddDataToChild(counter, kept, false);
    }
};

TEST_F(FileReaderTest, HostileFilesAreRefusedWithTheReasonAndTheLine)
{
    const QByteArray ten(10000, 'n');
    const struct
    {
        const char* what;
        QByteArray bytes;
        const char* reason; // a part of the reason
    } cases[] = {
        { "3000 random bytes", randomBytes(3000), "is not a valid system-code file: line " },
        { "empty", QByteArray(), "is not a valid system-code file: line 1:" },
        { "backslash in a name", wrap(R"(<Code Name="a\b"/>)"),
            "line 2: the code name \"a\\b\" is not legal" },
        { "10,000-character name", wrap("<Code Name=\"" + ten + "\"/>"), "line 2:" },
        { "duplicate siblings", wrap(R"(<Code Name="A"/><Code Name="A"/>)"), "appears twice" },
        { "siblings one once trimmed",
            wrap("<Code Name=\"重复\"/>\n<Code Name=\"重复 \"/>\n<Code Name=\" 重复\"/>"),
            "line 3: the code \"重复\" appears twice" },
        { "four levels",
            wrap(R"(<Code Name="1"><Code Name="2"><Code Name="3"><Code Name="4"/></Code></Code></Code>)"),
            "deeper than 3 levels" },
        { "entity bomb",
            "<?xml version=\"1.0\"?><!DOCTYPE r [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;\">]>"
                + wrap("<Code Name=\"&b;\"/>"),
            "document type declarations are not accepted" },
        { "newline in a name", wrap(R"(<Code Name="照明&#10;回路"/>)"), "U+000A" },
        { "tab in a name", wrap(R"(<Code Name="照明&#9;回路"/>)"), "U+0009" },
        { "DEL in a name", wrap(R"(<Code Name="WL&#127;"/>)"), "U+007F" },
        { "zero-width space", wrap(R"(<Code Name="WL&#x200B;1"/>)"), "U+200B" },
        { "right-to-left mark", wrap(R"(<Code Name="&#x200F;WL1"/>)"), "U+200F" },
        { "transparency 99999", wrap(R"(<Code Name="A" Alpha="99999"/>)"), "transparency 99999" },
        { "transparency -7", wrap(R"(<Code Name="A" Alpha="-7"/>)"), "transparency -7" },
        { "width 1e308", wrap(R"(<Code Name="A" LineWidth="1e308"/>)"), "line width 1e+308" },
        { "width -30", wrap(R"(<Code Name="A" LineWidth="-30"/>)"), "line width -30" },
        { "broken older file",
            "<SysCodeData Version=\"1.0\"><SysNode><Name>a/b</Name></SysNode></SysCodeData>",
            "cannot be converted" },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const QString path = write("hostile.scn", c.bytes);
        CSysCodeData tree;
        fill(tree);
        const SysCodeFileResult read = LoadSysCodeFile(path, tree);
        EXPECT_EQ(read.status, SysCodeFileStatus::Refused);
        EXPECT_TRUE(read.reason.contains(QString::fromUtf8(c.reason))) << read.reason.toStdString();
        ASSERT_EQ(tree.GetChildCount(), 1);
        EXPECT_EQ(tree.GetChild(0)->GetNodeName(), u"kept"_s);
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), c.bytes); // nothing rewrites a refused file
    }
}

// What is not a regular file is refused at once: a pipe no one writes to would
// otherwise hold the reader for good, and a device never ends.
TEST_F(FileReaderTest, OnlyRegularFilesAreRead)
{
    const QString fifo = dir.filePath(u"f.scn"_s);
    ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    const QString folder = dir.filePath(u"folder.scn"_s);
    ASSERT_TRUE(QDir().mkdir(folder));
    const struct
    {
        QString path;
        const char* reason;
    } cases[] = {
        { fifo, "a named pipe, not a regular file" },
        { folder, "a folder, not a file" },
        { u"/dev/zero"_s, "a device, not a regular file" },
        { dir.filePath(u"missing.scn"_s), "no such file" },
    };
    for (const auto& c : cases) {
        CSysCodeData tree;
        fill(tree);
        QElapsedTimer clock;
        clock.start();
        const SysCodeFileResult read = LoadSysCodeFile(c.path, tree);
        EXPECT_LT(clock.elapsed(), 5000) << c.path.toStdString();
        EXPECT_EQ(read.status, SysCodeFileStatus::Refused);
        EXPECT_TRUE(read.reason.startsWith(c.path)) << read.reason.toStdString();
        EXPECT_TRUE(read.reason.endsWith(QString::fromUtf8(c.reason))) << read.reason.toStdString();
        EXPECT_EQ(tree.GetChildCount(), 1);
    }
}

TEST_F(FileReaderTest, VersionsAndTheSpecialtyOfAFileThatIsRead)
{
    const CQvKsVersion now = CQvKsVersion::Current();
    const QString newer = CQvKsVersion(now.Major() + 1, 0, 0).ToString();
    const struct
    {
        QByteArray bytes;
        SysCodeFileStatus status;
        QString spec;
    } cases[] = {
        { wrap(R"(<Code Name="A"/>)", "Version=\"" + now.ToString().toUtf8() + "\" Spec=\"给排水\""),
            SysCodeFileStatus::Read, u"给排水"_s },
        { wrap(R"(<Code Name="A"/>)", ""), SysCodeFileStatus::Read, QString() },
        { "<SysCodeData Version=\"2.0\"><SysNode><Name>A</Name></SysNode></SysCodeData>",
            SysCodeFileStatus::Read, QString() },
        { wrap(R"(<Code Name="A"/>)", "Version=\"" + newer.toUtf8() + "\""), SysCodeFileStatus::Newer,
            QString() },
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.bytes.toStdString());
        CSysCodeData tree;
        const SysCodeFileResult read = LoadSysCodeFile(write("in.scn", c.bytes), tree);
        EXPECT_EQ(read.status, c.status) << read.reason.toStdString();
        EXPECT_EQ(read.spec, c.spec);
        EXPECT_EQ(tree.GetChildCount(), c.status == SysCodeFileStatus::Read ? 1 : 0);
        EXPECT_EQ(IsForAnotherSpec(read, u"电气"_s), !c.spec.isEmpty());
        EXPECT_FALSE(IsForAnotherSpec(read, u"给排水"_s));
    }
}
} // namespace
