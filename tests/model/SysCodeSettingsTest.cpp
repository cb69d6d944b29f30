#include "SysCodeSettings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

QByteArray ReadSettings(const QString& folder)
{
    QFile file(QDir(folder).filePath(QStringLiteral("SysCodeMng.ini")));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(DispAddedMsgSetting, AnyNonZeroValueIsStoredAsOne)
{
    QTemporaryDir profile;
    ASSERT_TRUE(SaveDispAddedMsgSetting(profile.path(), 7));
    EXPECT_EQ(ReadSettings(profile.path()), QByteArray("[SysCodeConfig]\r\nDispAddedMsg=1\r\n"));
    ASSERT_TRUE(SaveDispAddedMsgSetting(profile.path(), 0));
    EXPECT_EQ(ReadSettings(profile.path()), QByteArray("[SysCodeConfig]\r\nDispAddedMsg=0\r\n"));
    ASSERT_TRUE(SaveDispAddedMsgSetting(profile.path(), -1));
    EXPECT_EQ(ReadSettings(profile.path()), QByteArray("[SysCodeConfig]\r\nDispAddedMsg=1\r\n"));
}

TEST(DispAddedMsgSetting, KeepsWhatOtherModulesStoredInTheFile)
{
    QTemporaryDir profile;
    QFile file(QDir(profile.path()).filePath(QStringLiteral("SysCodeMng.ini")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[Other]\nScale=100\n[SysCodeConfig]\nDispAddedMsg=0\nLast=2\n");
    file.close();
    ASSERT_TRUE(SaveDispAddedMsgSetting(profile.path(), 1));
    EXPECT_EQ(ReadSettings(profile.path()),
        QByteArray("[Other]\nScale=100\n[SysCodeConfig]\nDispAddedMsg=1\nLast=2\n"));
}

TEST(DispAddedMsgSetting, FailsQuietlyWithoutAUsableFolder)
{
    QTemporaryDir profile;
    EXPECT_FALSE(SaveDispAddedMsgSetting(QString(), 1));
    EXPECT_FALSE(SaveDispAddedMsgSetting(QDir(profile.path()).filePath(QStringLiteral("gone")), 1));
}

} // namespace
