#include "SysCodeSettings.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

TEST(DispAddedMsgSetting, StoresOneForAnyNonZeroValueInTheProfileFolder)
{
    QTemporaryDir profile;
    QFile file(QDir(profile.path()).filePath(QStringLiteral("SysCodeMng.ini")));
    for (const auto& [value, stored] :
        { std::pair { 7, "1" }, std::pair { 0, "0" }, std::pair { -1, "1" } }) {
        ASSERT_TRUE(SaveDispAddedMsgSetting(profile.path(), value));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        EXPECT_EQ(file.readAll(), "[SysCodeConfig]\r\nDispAddedMsg=" + QByteArray(stored) + "\r\n");
        file.close();
    }
    EXPECT_FALSE(SaveDispAddedMsgSetting(QString(), 1)); // never the working folder
    EXPECT_EQ(SaveDispAddedMsgSetting(QDir(profile.path()).filePath(QStringLiteral("gone")), 1).GetKind(),
        QvKsWriteStatus::Kind::Path);
}

// The profile folder of a shared project replaced by a link out of it: the setting
// is not written there.
TEST(DispAddedMsgSetting, StaysInsideTheProjectFolder)
{
    QTemporaryDir project;
    QTemporaryDir elsewhere;
    const QString profile = QDir(project.path()).filePath(QStringLiteral("Profile"));
    ASSERT_TRUE(QFile::link(elsewhere.path(), profile));
    EXPECT_EQ(SaveDispAddedMsgSetting(profile, 1, project.path()).GetKind(), QvKsWriteStatus::Kind::Outside);
    EXPECT_TRUE(QDir(elsewhere.path()).isEmpty());
}

} // namespace
