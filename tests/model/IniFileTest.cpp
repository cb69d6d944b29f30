#include "IniFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct EditCase
{
    const char* before;
    const char* after;
};

class IniEdit : public ::testing::TestWithParam<EditCase>
{ };

// Every case sets key DispAddedMsg of section SysCodeConfig to 1.
TEST_P(IniEdit, ChangesOnlyTheKeyLine)
{
    QByteArray result;
    ASSERT_TRUE(SetIniValue(GetParam().before, QStringLiteral("SysCodeConfig"),
        QStringLiteral("DispAddedMsg"), QStringLiteral("1"), result));
    EXPECT_EQ(result.toStdString(), std::string(GetParam().after));
}

INSTANTIATE_TEST_SUITE_P(Files, IniEdit,
    ::testing::Values(EditCase { "", "[SysCodeConfig]\r\nDispAddedMsg=1\r\n" },
        EditCase { "[SysCodeConfig]\r\nDispAddedMsg=0\r\n", "[SysCodeConfig]\r\nDispAddedMsg=1\r\n" },
        EditCase { "[SysCodeConfig]\nDispAddedMsg=0\n", "[SysCodeConfig]\nDispAddedMsg=1\n" },
        EditCase {
            "[ syscodeCONFIG ]\r\n  dispaddedmsg = 0  \r\n", "[ syscodeCONFIG ]\r\n  dispaddedmsg = 1\r\n" },
        EditCase { "[SysCodeConfig]\r\nDispAddedMsg\r\n", "[SysCodeConfig]\r\nDispAddedMsg=1\r\n" },
        EditCase { "\xEF\xBB\xBF[SysCodeConfig]\r\nDispAddedMsg=0\r\n",
            "\xEF\xBB\xBF[SysCodeConfig]\r\nDispAddedMsg=1\r\n" },
        // The key goes after the section's last key, before blank lines and the next section.
        EditCase { "; settings\r\n[A]\r\nx=1\r\n\r\n[SysCodeConfig]\r\n; note\r\nOther=2\r\n\r\n[B]\r\ny=3",
            "; settings\r\n[A]\r\nx=1\r\n\r\n[SysCodeConfig]\r\n; note\r\nOther=2\r\nDispAddedMsg=1\r\n\r\n["
            "B]\r\ny=3" },
        EditCase { "[SysCodeConfig]\r\n;DispAddedMsg=0\r\n",
            "[SysCodeConfig]\r\nDispAddedMsg=1\r\n;DispAddedMsg=0\r\n" },
        EditCase { "[SysCodeConfig]\r\nx=1", "[SysCodeConfig]\r\nx=1\r\nDispAddedMsg=1" },
        EditCase { "[SysCodeConfig]\r", "[SysCodeConfig]\r\r\nDispAddedMsg=1" },
        EditCase { "[A]\r\nDispAddedMsg=0\r\n",
            "[A]\r\nDispAddedMsg=0\r\n\r\n[SysCodeConfig]\r\nDispAddedMsg=1\r\n" },
        EditCase { "[A]\nx=1", "[A]\nx=1\n\n[SysCodeConfig]\nDispAddedMsg=1\n" },
        // Only the first section of the name counts; bytes that are no UTF-8 stay as they were.
        EditCase { "[A]\r\nname=\xB8\xF8\xCB\xAE\r\n[SysCodeConfig]\r\nDispAddedMsg=0\r\n[SysCodeConfig]"
                   "\r\nDispAddedMsg=0\r\n",
            "[A]\r\nname=\xB8\xF8\xCB\xAE\r\n[SysCodeConfig]\r\nDispAddedMsg=1\r\n[SysCodeConfig]"
            "\r\nDispAddedMsg=0\r\n" }));

TEST(IniEdit, Utf16FileStaysUtf16)
{
    const QString before = QStringLiteral("[给水]\r\n名称=生活\r\n[SysCodeConfig]\r\nDispAddedMsg=0\r\n");
    QByteArray bytes("\xFF\xFE");
    bytes += QByteArray(reinterpret_cast<const char*>(before.utf16()), before.size() * 2);
    QByteArray result;
    ASSERT_TRUE(SetIniValue(bytes, QStringLiteral("SysCodeConfig"), QStringLiteral("DispAddedMsg"),
        QStringLiteral("开"), result));
    ASSERT_TRUE(result.startsWith("\xFF\xFE"));
    const QString after = QString::fromUtf16(
        reinterpret_cast<const char16_t*>(result.constData() + 2), (result.size() - 2) / 2);
    EXPECT_EQ(after, QStringLiteral("[给水]\r\n名称=生活\r\n[SysCodeConfig]\r\nDispAddedMsg=开\r\n"));
}

TEST(IniEdit, RefusesNamesThatWouldNotReadBack)
{
    QByteArray result("unchanged");
    const QString s = QStringLiteral("S"), k = QStringLiteral("K"), v = QStringLiteral("1");
    EXPECT_FALSE(SetIniValue("", QString(), k, v, result));
    EXPECT_FALSE(SetIniValue("", s, QStringLiteral("  "), v, result));
    EXPECT_FALSE(SetIniValue("", QStringLiteral("a]b"), k, v, result));
    EXPECT_FALSE(SetIniValue("", s, QStringLiteral("a=b"), v, result));
    EXPECT_FALSE(SetIniValue("", s, QStringLiteral(";k"), v, result));
    EXPECT_FALSE(SetIniValue("", s, k, QStringLiteral("1\r\n[X]"), result));
    EXPECT_EQ(result, QByteArray("unchanged"));
}

QByteArray ReadAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

void WriteAll(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

class IniWrite : public ::testing::Test
{
protected:
    QString Path(const QString& name) const { return QDir(dir.path()).filePath(name); }
    QTemporaryDir dir;
};

TEST_F(IniWrite, CreatesAndThenEditsARealFile)
{
    const QString path = Path(QStringLiteral("a.ini"));
    ASSERT_TRUE(WriteProfileString(QStringLiteral("S"), QStringLiteral("K"), QStringLiteral("1"), path));
    EXPECT_EQ(ReadAll(path), QByteArray("[S]\r\nK=1\r\n"));
    WriteAll(path, "; keep me\r\n[T]\r\nx = 5\r\n\r\n[S]\r\nK=1\r\n");
    ASSERT_TRUE(WriteProfileString(QStringLiteral("s"), QStringLiteral("k"), QStringLiteral("0"), path));
    EXPECT_EQ(ReadAll(path), QByteArray("; keep me\r\n[T]\r\nx = 5\r\n\r\n[S]\r\nK=0\r\n"));
    EXPECT_EQ(
        QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList({ QStringLiteral("a.ini") }));
}

TEST_F(IniWrite, MissingFolderFailsAndCreatesNothing)
{
    const QString path = Path(QStringLiteral("missing/a.ini"));
    EXPECT_FALSE(WriteProfileString(QStringLiteral("S"), QStringLiteral("K"), QStringLiteral("1"), path));
    EXPECT_FALSE(QFileInfo::exists(Path(QStringLiteral("missing"))));
    EXPECT_FALSE(
        WriteProfileString(QStringLiteral("S"), QStringLiteral("K"), QStringLiteral("1"), dir.path()));
}

TEST_F(IniWrite, ReadOnlyFolderFailsAndLeavesTheFileWhole)
{
    const QString path = Path(QStringLiteral("a.ini"));
    WriteAll(path, "[S]\r\nK=0\r\n");
    const QFile::Permissions readOnly = QFile::ReadOwner | QFile::ExeOwner;
    ASSERT_TRUE(QFile::setPermissions(dir.path(), readOnly));
    // Root writes into read-only folders anyway; then there is nothing to show.
    QFile probe(Path(QStringLiteral("probe")));
    if (probe.open(QIODevice::WriteOnly)) {
        probe.remove();
        QFile::setPermissions(dir.path(), readOnly | QFile::WriteOwner);
        GTEST_SKIP() << "running with rights that ignore folder permissions";
    }
    EXPECT_FALSE(WriteProfileString(QStringLiteral("S"), QStringLiteral("K"), QStringLiteral("1"), path));
    QFile::setPermissions(dir.path(), readOnly | QFile::WriteOwner);
    EXPECT_EQ(ReadAll(path), QByteArray("[S]\r\nK=0\r\n"));
    EXPECT_EQ(
        QDir(dir.path()).entryList(QDir::Files | QDir::Hidden), QStringList({ QStringLiteral("a.ini") }));
}

TEST_F(IniWrite, ReadOnlyFileIsNotReplaced)
{
    const QString path = Path(QStringLiteral("a.ini"));
    WriteAll(path, "[S]\r\nK=0\r\n");
    ASSERT_TRUE(QFile::setPermissions(path, QFile::ReadOwner));
    if (QFileInfo(path).isWritable())
        GTEST_SKIP() << "running with rights that ignore file permissions";
    EXPECT_FALSE(WriteProfileString(QStringLiteral("S"), QStringLiteral("K"), QStringLiteral("1"), path));
    EXPECT_EQ(ReadAll(path), QByteArray("[S]\r\nK=0\r\n"));
}

} // namespace
