#include "IniFile.h"

#include "OrdinaryUser.h"
#include "QvKsFileFaults.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include <cerrno>

namespace {

using namespace Qt::StringLiterals;

// Every case sets DispAddedMsg of section SysCodeConfig to 1.
TEST(IniEdit, ChangesOnlyTheKeyLine)
{
    const std::pair<const char*, const char*> cases[] = { { "", "[SysCodeConfig]\r\nDispAddedMsg=1\r\n" },
        { "[SysCodeConfig]\nDispAddedMsg=0\n", "[SysCodeConfig]\nDispAddedMsg=1\n" },
        { "[ syscodeCONFIG ]\r\n  dispaddedmsg = 0  \r\n", "[ syscodeCONFIG ]\r\n  dispaddedmsg = 1\r\n" },
        { "[SysCodeConfig]\r\nDispAddedMsg\r\n", "[SysCodeConfig]\r\nDispAddedMsg=1\r\n" },
        { "\xEF\xBB\xBF[SysCodeConfig]\r\nDispAddedMsg=0\r\n",
            "\xEF\xBB\xBF[SysCodeConfig]\r\nDispAddedMsg=1\r\n" },
        // The key goes after the section's last key, before blank lines and the next section.
        { "; settings\r\n[A]\r\nx=1\r\n\r\n[SysCodeConfig]\r\n; note\r\nOther=2\r\n\r\n[B]\r\ny=3",
            "; settings\r\n[A]\r\nx=1\r\n\r\n[SysCodeConfig]\r\n; note\r\nOther=2\r\nDispAddedMsg=1\r\n\r\n["
            "B]\r\ny=3" },
        { "[SysCodeConfig]\r\n;DispAddedMsg=0\r\n",
            "[SysCodeConfig]\r\nDispAddedMsg=1\r\n;DispAddedMsg=0\r\n" },
        { "[SysCodeConfig]\r\nx=1", "[SysCodeConfig]\r\nx=1\r\nDispAddedMsg=1" },
        { "[SysCodeConfig]\r", "[SysCodeConfig]\r\r\nDispAddedMsg=1" },
        { "[A]\r\nDispAddedMsg=0\r\n", "[A]\r\nDispAddedMsg=0\r\n\r\n[SysCodeConfig]\r\nDispAddedMsg=1\r\n" },
        { "[A]\nx=1", "[A]\nx=1\n\n[SysCodeConfig]\nDispAddedMsg=1\n" },
        // Only the first section of the name counts; bytes that are no UTF-8 stay as they were.
        { "[A]\r\nname=\xB8\xF8\xCB\xAE\r\n[SysCodeConfig]\r\nDispAddedMsg=0\r\n[SysCodeConfig]"
          "\r\nDispAddedMsg=0\r\n",
            "[A]\r\nname=\xB8\xF8\xCB\xAE\r\n[SysCodeConfig]\r\nDispAddedMsg=1\r\n[SysCodeConfig]"
            "\r\nDispAddedMsg=0\r\n" } };
    for (const auto& [before, after] : cases) {
        QByteArray result;
        ASSERT_TRUE(SetIniValue(before, u"SysCodeConfig"_s, u"DispAddedMsg"_s, u"1"_s, result)) << before;
        EXPECT_EQ(result.toStdString(), std::string(after));
    }
}

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
    EXPECT_FALSE(SetIniValue("", u" "_s, u"K"_s, u"1"_s, result));
    EXPECT_FALSE(SetIniValue("", u"S"_s, u"a=b"_s, u"1"_s, result));
    EXPECT_FALSE(SetIniValue("", u"S"_s, u"K"_s, u"1\n[X]"_s, result));
    EXPECT_EQ(result, QByteArray("unchanged"));
}

QByteArray ReadAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

class IniWrite : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(kBefore);
    }
    bool Write(const QString& target) const
    {
        return WriteProfileString(u"s"_s, u"k"_s, u"1"_s, target).IsOk();
    }
    QStringList Files() const { return QDir(dir.path()).entryList(QDir::Files | QDir::Hidden); }

    static constexpr const char* kBefore = "; keep me\r\n[T]\r\nx = 5\r\n\r\n[S]\r\nK=0\r\n";
    QTemporaryDir dir;
    QString path = QDir(dir.path()).filePath(u"a.ini"_s);
};

TEST_F(IniWrite, ReplacesTheFileWithOnlyTheValueChanged)
{
    ASSERT_TRUE(Write(path));
    EXPECT_EQ(ReadAll(path), QByteArray("; keep me\r\n[T]\r\nx = 5\r\n\r\n[S]\r\nK=1\r\n"));
    const QString created = QDir(dir.path()).filePath(u"new.ini"_s);
    ASSERT_TRUE(Write(created));
    EXPECT_EQ(ReadAll(created), QByteArray("[s]\r\nk=1\r\n"));
    EXPECT_EQ(Files(), QStringList({ u"a.ini"_s, u"new.ini"_s }));
}

TEST_F(IniWrite, MissingFolderOrAFolderAsFileFails)
{
    EXPECT_FALSE(Write(QDir(dir.path()).filePath(u"missing/a.ini"_s)));
    EXPECT_FALSE(Write(dir.path()));
    EXPECT_EQ(Files(), QStringList({ u"a.ini"_s }));
}

TEST_F(IniWrite, ReadOnlyFolderFailsAndLeavesTheFileWhole)
{
    OrdinaryUser user;
    if (!user.IsAvailable() || !user.Adopt(dir.path()))
        GTEST_SKIP() << "cannot write as an ordinary user here: " << user.Why().toStdString();
    const QFile::Permissions readOnly = QFile::ReadOwner | QFile::ExeOwner;
    ASSERT_TRUE(QFile::setPermissions(dir.path(), readOnly));
    const QByteArray written = user.Run([this] { return QByteArray(Write(path) ? "written" : "refused"); });
    QFile::setPermissions(dir.path(), readOnly | QFile::WriteOwner);
    EXPECT_EQ(written.toStdString(), "refused");
    EXPECT_EQ(ReadAll(path), QByteArray(kBefore));
    EXPECT_EQ(Files(), QStringList({ u"a.ini"_s }));
}

TEST_F(IniWrite, AFullDiskKeepsTheFileWholeAndSaysSo)
{
    using Step = QvKsFileFaults::Step;
    for (const Step step : { Step::Create, Step::Write, Step::Sync, Step::Close }) {
        QvKsFileFaults::FailNth(step, 1, ENOSPC);
        const QvKsWriteStatus status = WriteProfileString(u"S"_s, u"K"_s, u"1"_s, path);
        QvKsFileFaults::Clear();
        EXPECT_EQ(status.GetKind(), QvKsWriteStatus::Kind::DiskFull) << int(step);
        EXPECT_EQ(ReadAll(path), QByteArray(kBefore));
        EXPECT_EQ(Files(), QStringList({ u"a.ini"_s }));
    }
    // A value that is already there writes nothing, so nothing can fail.
    QvKsFileFaults::FailAll(ENOSPC);
    EXPECT_TRUE(WriteProfileString(u"S"_s, u"K"_s, u"0"_s, path));
    QvKsFileFaults::Clear();
}

TEST_F(IniWrite, ALinkInPlaceOfTheFileIsNeitherReadNorWritten)
{
    QTemporaryDir other;
    const QString target = QDir(other.path()).filePath(u"private.txt"_s);
    {
        QFile file(target);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[S]\nsecret=1\n");
    }
    const QString link = QDir(dir.path()).filePath(u"SysCodeMng.ini"_s);
    ASSERT_TRUE(QFile::link(target, link));
    EXPECT_EQ(
        WriteProfileString(u"S"_s, u"K"_s, u"1"_s, link, dir.path()).GetKind(), QvKsWriteStatus::Kind::Link);
    EXPECT_EQ(ReadAll(target), QByteArray("[S]\nsecret=1\n"));
    EXPECT_TRUE(QFileInfo(link).isSymLink());
}

} // namespace
