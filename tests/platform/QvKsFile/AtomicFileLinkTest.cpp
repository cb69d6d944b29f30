// Links planted in a shared folder: the file a link points to is never written, and
// a write kept to a folder cannot be led out of it.
#include "QvKsAtomicFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

using Kind = QvKsWriteStatus::Kind;

QByteArray readAll(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("<missing>");
}

class AtomicFileLinks : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QDir().mkpath(project + QStringLiteral("/Profile/系统编号")));
        ASSERT_TRUE(QDir().mkpath(elsewhere));
        QFile victim(victimFile);
        ASSERT_TRUE(victim.open(QIODevice::WriteOnly));
        victim.write(kVictim);
    }

    static inline const QByteArray kVictim = "someone else's file\n";
    QTemporaryDir dir;
    QString project = dir.filePath(QStringLiteral("project"));
    QString elsewhere = dir.filePath(QStringLiteral("elsewhere"));
    QString victimFile = elsewhere + QStringLiteral("/victim.txt");
};

TEST_F(AtomicFileLinks, ALinkInPlaceOfTheFileIsNeitherFollowedNorReplaced)
{
    const QString link = project + QStringLiteral("/Profile/系统编号/P-电气.scn");
    ASSERT_TRUE(QFile::link(victimFile, link));
    for (const QString& confine : { QString(), project }) {
        const QvKsWriteStatus status = QvKsAtomicFile::Write(link, "planted", confine);
        EXPECT_EQ(status.GetKind(), Kind::Link);
        EXPECT_EQ(QvKsAtomicFile::CheckTarget(link, confine).GetKind(), Kind::Link);
    }
    EXPECT_EQ(readAll(victimFile), kVictim);
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    // A link that points nowhere yet would create the file: refused as well.
    const QString dangling = project + QStringLiteral("/Profile/SysCodeMng.ini");
    ASSERT_TRUE(QFile::link(elsewhere + QStringLiteral("/new.ini"), dangling));
    EXPECT_EQ(QvKsAtomicFile::Write(dangling, "planted", project).GetKind(), Kind::Link);
    EXPECT_FALSE(QFile::exists(elsewhere + QStringLiteral("/new.ini")));
}

TEST_F(AtomicFileLinks, AFolderLinkOrDotsCannotLeadAWriteOutOfTheProject)
{
    // The exchange folder replaced by a link to somewhere else.
    ASSERT_TRUE(QDir(project + QStringLiteral("/Profile")).removeRecursively());
    ASSERT_TRUE(QFile::link(elsewhere, project + QStringLiteral("/Profile")));
    ASSERT_TRUE(QDir().mkpath(project + QStringLiteral("/floors")));
    const struct
    {
        QString path;
        Kind kind;
    } cases[] = {
        { project + QStringLiteral("/Profile/victim.txt"), Kind::Outside },
        { project + QStringLiteral("/Profile/new.scn"), Kind::Outside },
        { project + QStringLiteral("/floors/../../elsewhere/victim.txt"), Kind::Outside },
        { project + QStringLiteral("/../elsewhere/victim.txt"), Kind::Outside },
    };
    for (const auto& c : cases) {
        const QvKsWriteStatus status = QvKsAtomicFile::Write(c.path, "planted", project);
        EXPECT_EQ(status.GetKind(), c.kind) << c.path.toStdString();
        if (c.kind == Kind::Outside) {
            EXPECT_TRUE(status.Describe().contains(QDir::toNativeSeparators(project)));
        }
    }
    EXPECT_EQ(readAll(victimFile), kVictim);
    EXPECT_FALSE(QFile::exists(elsewhere + QStringLiteral("/new.scn")));
}

TEST_F(AtomicFileLinks, PathsOutsideTheFolderAndLinksWithinItAreWritten)
{
    // A file the user chose outside the project is no business of the project's.
    const QString chosen = elsewhere + QStringLiteral("/chosen.scn");
    EXPECT_TRUE(QvKsAtomicFile::Write(chosen, "chosen", project));
    EXPECT_EQ(readAll(chosen), QByteArray("chosen"));
    // A folder link that stays inside the project is the project's own.
    ASSERT_TRUE(QFile::link(project + QStringLiteral("/Profile"), project + QStringLiteral("/alias")));
    EXPECT_TRUE(QvKsAtomicFile::Write(project + QStringLiteral("/alias/in.ini"), "in", project));
    EXPECT_EQ(readAll(project + QStringLiteral("/Profile/in.ini")), QByteArray("in"));
    // The project reached through a link of its own is still the project.
    ASSERT_TRUE(QFile::link(project, dir.filePath(QStringLiteral("shortcut"))));
    EXPECT_TRUE(QvKsAtomicFile::Write(dir.filePath(QStringLiteral("shortcut/Profile/via.ini")), "via",
        dir.filePath(QStringLiteral("shortcut"))));
}

} // namespace
