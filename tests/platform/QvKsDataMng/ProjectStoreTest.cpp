// Opening project stores: every refusal leaves the file exactly as it was.
#include "CISysCode.h"
#include "CProj.h"
#include "IQvKsAppProfile.h"
#include "QvKsProfile.h"
#include "TempProject.h"

#include <QDir>

#include <sqlite3.h>

namespace {

// A raw connection to a store file, as another program would hold it.
struct RawDb
{
    sqlite3* db = nullptr;
    explicit RawDb(const QString& file) { sqlite3_open(file.toUtf8().constData(), &db); }
    ~RawDb() { sqlite3_close(db); }
    int Exec(const char* sql) { return sqlite3_exec(db, sql, nullptr, nullptr, nullptr); }
};

// Makes a project with one code, closes it and returns the store file's path.
QString closedProject(QTemporaryDir& dir)
{
    EXPECT_TRUE(QvKsDataMng::CreateProject(dir.path(), QStringLiteral("p")));
    EXPECT_TRUE(QvKsDataMng::RunScript(QString::fromUtf8(kFiveSpecs)));
    CSysCodeData root;
    addCode(root, QStringLiteral("公共照明"));
    EXPECT_TRUE(CISysCode::SetSpecCodeInfos(root, QStringLiteral("电气")));
    QvKsDataMng::CloseProject();
    return dir.path() + QStringLiteral("/project.qvks");
}

// Opening must fail with a message containing `expected`, and leave the bytes alone.
void expectRefused(const QString& folder, const QString& file, const char* expected)
{
    const QByteArray before = readBytes(file);
    QString error;
    EXPECT_FALSE(QvKsDataMng::OpenProject(folder, &error));
    EXPECT_TRUE(error.contains(QLatin1String(expected))) << error.toStdString();
    EXPECT_EQ(QvKsDataMng::LastError(), error);
    EXPECT_FALSE(QvKsDataMng::IsProjectOpen());
    EXPECT_EQ(readBytes(file), before);
}

TEST(ProjectStore, OpensWhatItCreatedWithProfileFolders)
{
    QTemporaryDir dir;
    const QString file = closedProject(dir);
    EXPECT_TRUE(QvKsDataMng::OpenProject(dir.path()));
    EXPECT_EQ(CProj().GetPrjName(), QStringLiteral("p"));
    EXPECT_EQ(QvKsProfile::GetAppProfile()->GetPath(), dir.path() + QStringLiteral("/Profile"));
    EXPECT_TRUE(QDir(dir.path() + QStringLiteral("/Profile/系统编号")).exists());
    QvKsDataMng::CloseProject();
    EXPECT_TRUE(QvKsProfile::GetAppProfile()->GetPath().isEmpty());
    EXPECT_TRUE(QFile::exists(file));
}

TEST(ProjectStore, MissingStoreOrFolderIsRefusedAndNothingIsCreated)
{
    QTemporaryDir dir;
    QString error;
    EXPECT_FALSE(QvKsDataMng::OpenProject(dir.path(), &error));
    EXPECT_TRUE(error.contains(QLatin1String("no project store"))) << error.toStdString();
    EXPECT_FALSE(QFile::exists(dir.path() + QStringLiteral("/project.qvks")));
    EXPECT_FALSE(QvKsDataMng::OpenProject(dir.path() + QStringLiteral("/nowhere"), &error));
    EXPECT_TRUE(error.contains(QLatin1String("does not exist")));
}

TEST(ProjectStore, CreateRefusesAFolderThatHoldsAStore)
{
    QTemporaryDir dir;
    const QString file = closedProject(dir);
    const QByteArray before = readBytes(file);
    QString error;
    EXPECT_FALSE(QvKsDataMng::CreateProject(dir.path(), QStringLiteral("q"), &error));
    EXPECT_TRUE(error.contains(QLatin1String("already holds")));
    EXPECT_EQ(readBytes(file), before);
}

TEST(ProjectStore, GarbageFileIsNotAStore)
{
    QTemporaryDir dir;
    const QString file = dir.path() + QStringLiteral("/project.qvks");
    ASSERT_TRUE(writeBytes(file, QByteArray(4096, 'x')));
    expectRefused(dir.path(), file, "not a project store");
}

TEST(ProjectStore, ForeignSqliteDatabaseIsNotAStore)
{
    QTemporaryDir dir;
    const QString file = dir.path() + QStringLiteral("/project.qvks");
    {
        RawDb raw(file);
        ASSERT_EQ(raw.Exec("CREATE TABLE t(x); INSERT INTO t VALUES(1);"), SQLITE_OK);
    }
    expectRefused(dir.path(), file, "not a project store of this product");
}

TEST(ProjectStore, DamagedPagesAreReportedNotRepaired)
{
    QTemporaryDir dir;
    const QString file = closedProject(dir);
    QByteArray bytes = readBytes(file);
    ASSERT_GT(bytes.size(), 3 * 4096);
    // Wipe the second page (a table's b-tree page) but keep the header intact.
    for (int i = 4096; i < 2 * 4096; ++i)
        bytes[i] = char(0xA5);
    ASSERT_TRUE(writeBytes(file, bytes));
    expectRefused(dir.path(), file, "damaged");
}

TEST(ProjectStore, NewerLayoutIsRefusedUntouched)
{
    QTemporaryDir dir;
    const QString file = closedProject(dir);
    {
        RawDb raw(file);
        ASSERT_EQ(raw.Exec("PRAGMA user_version = 7"), SQLITE_OK);
    }
    expectRefused(dir.path(), file, "newer version");
}

TEST(ProjectStore, LockedStoreIsReportedAndSavesFailWhileLocked)
{
    QTemporaryDir dir;
    const QString file = closedProject(dir);
    QvKsDataMng::SetBusyTimeout(50);
    {
        RawDb other(file);
        ASSERT_EQ(other.Exec("BEGIN EXCLUSIVE"), SQLITE_OK);
        expectRefused(dir.path(), file, "locked");
    }
    ASSERT_TRUE(QvKsDataMng::OpenProject(dir.path()));
    RawDb other(file);
    ASSERT_EQ(other.Exec("BEGIN EXCLUSIVE"), SQLITE_OK);
    CSysCodeData root;
    addCode(root, QStringLiteral("区域照明"));
    EXPECT_FALSE(CISysCode::SetSpecCodeInfos(root, QStringLiteral("电气")));
    EXPECT_FALSE(QvKsDataMng::LastError().isEmpty());
    other.Exec("ROLLBACK");
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(root, QStringLiteral("电气")));
    EXPECT_EQ(dumpTree(root).size(), 1);
    QvKsDataMng::CloseProject();
    QvKsDataMng::SetBusyTimeout(5000);
}

TEST(ProjectStore, OperationsFailCleanlyWithoutAProject)
{
    QvKsDataMng::CloseProject();
    CSysCodeData root;
    QStringList names;
    QString scale;
    EXPECT_FALSE(CISysCode::GetSpecCodeInfos(root, QStringLiteral("电气")));
    EXPECT_FALSE(CISysCode::SetSpecCodeInfos(root, QStringLiteral("电气")));
    EXPECT_FALSE(CISysCode::GetFullNameAryBySpec(names, QStringLiteral("电气")));
    EXPECT_TRUE(CISysCode::GetIndexPath(QStringLiteral("电气\\公共照明")).isEmpty());
    EXPECT_FALSE(CISysCode::GetLineTypeScale(scale));
    EXPECT_TRUE(CProj().GetCurrentSpec().isEmpty());
    EXPECT_FALSE(CProj().SetCurrentSpec(QStringLiteral("电气")));
    EXPECT_TRUE(QvKsDataMng::LastError().contains(QLatin1String("no project is open")));
    EXPECT_FALSE(QvKsDataMng::RunScript(QStringLiteral("SELECT 1")));
}

} // namespace
