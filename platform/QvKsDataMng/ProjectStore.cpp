#include "ProjectStore.h"

#include "PgDb.h"
#include "PgSchema.h"
#include "QvKsAtomicFile.h"
#include "QvKsDataMng.h"
#include "QvKsProfile.h"
#include "SqlStatement.h"
#include "SqlTransaction.h"
#include "SqliteDb.h"
#include "StoreSchema.h"

#include <QDir>
#include <QFileInfo>

#include <memory>
#include <sqlite3.h>

namespace {

std::unique_ptr<ProjectStore>& current()
{
    static std::unique_ptr<ProjectStore> store;
    return store;
}

QString& lastError()
{
    static QString text;
    return text;
}

int& busyTimeout()
{
    static int ms = 5000;
    return ms;
}

bool fail(QString* error, const QString& message)
{
    lastError() = message;
    if (error)
        *error = message;
    return false;
}

} // namespace

ProjectStore* ProjectStore::Current()
{
    return current().get();
}

ProjectStore* ProjectStore::Require()
{
    if (!current())
        Fail(QStringLiteral("no project is open"));
    return current().get();
}

ProjectStore::~ProjectStore()
{
    m_writeGroup.reset(); // rolls back before the connection goes
}

std::unique_ptr<SqlDb> ProjectStore::Connect(const StoreLocation& location, bool create, QString* error)
{
    if (location.engine == SqlEngine::Server) {
        std::unique_ptr<PgDb> db = PgDb::Connect(location.server, error);
        if (!db) {
            lastError() = error ? *error : QString();
            return nullptr;
        }
        db->SetBusyTimeout(busyTimeout());
        QString why;
        if (!(create ? PgSchema::Create(db.get(), &why) : PgSchema::Check(db.get(), &why))) {
            fail(error, QStringLiteral("%1: %2").arg(location.Describe(), why));
            return nullptr;
        }
        return db;
    }
    const QString& file = location.file;
    sqlite3* handle = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
    if (sqlite3_open_v2(file.toUtf8().constData(), &handle, flags, nullptr) != SQLITE_OK) {
        const QString why
            = handle ? QString::fromUtf8(sqlite3_errmsg(handle)) : QStringLiteral("out of memory");
        sqlite3_close(handle);
        fail(error, QStringLiteral("the project store cannot be opened: %1").arg(why));
        return nullptr;
    }
    auto db = std::make_unique<SqliteDb>(handle);
    sqlite3_busy_timeout(handle, busyTimeout());
    sqlite3_exec(handle, "PRAGMA foreign_keys=ON", nullptr, nullptr, nullptr);

    QString why;
    const bool ready = create ? StoreSchema::Create(db.get(), &why) : StoreSchema::Check(db.get(), &why);
    if (!ready) {
        db.reset();
        if (create)
            QFile::remove(file); // only the file this call made
        fail(error, QStringLiteral("%1: %2").arg(file, why));
        return nullptr;
    }
    return db;
}

namespace {
// The folder's absolute path, made when asked; empty with `error` set when it is not
// a folder.
QString projectDir(const QString& folder, bool create, QString* error)
{
    const QString dir = QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
    if (create && !QDir().mkpath(dir)) {
        fail(error, QStringLiteral("the project folder cannot be made: %1").arg(dir));
        return QString();
    }
    if (!QFileInfo(dir).isDir()) {
        fail(error, QStringLiteral("the project folder does not exist: %1").arg(dir));
        return QString();
    }
    return dir;
}

// Refuses a folder that already names a store of either kind.
bool folderIsFree(const QString& dir, QString* error)
{
    for (const QString& name : { QvKsDataMng::StoreFileName(), StoreLocation::EntryFileName() }) {
        const QString path = dir + QLatin1Char('/') + name;
        if (QFileInfo::exists(path))
            return fail(error, QStringLiteral("the folder already holds a project store: %1").arg(path));
    }
    return true;
}
} // namespace

bool ProjectStore::Open(const QString& folder, bool create, const QString& name, QString* error)
{
    Close();
    const QString dir = projectDir(folder, create, error);
    if (dir.isEmpty())
        return false;
    StoreLocation location;
    location.file = dir + QLatin1Char('/') + QvKsDataMng::StoreFileName();
    if (create) {
        if (!folderIsFree(dir, error))
            return false;
    } else {
        QString why;
        if (!StoreLocation::ForFolder(dir, location, &why))
            return fail(error, why);
        if (location.engine == SqlEngine::File && !QFileInfo::exists(location.file))
            return fail(error,
                QStringLiteral("no project store in %1 (missing %2)").arg(dir, QvKsDataMng::StoreFileName()));
    }
    std::unique_ptr<SqlDb> db = Connect(location, create, error);
    if (!db)
        return false;
    if (!Adopt(std::move(db), dir, location))
        return false;
    if (create) {
        current()->SetMeta(QStringLiteral("project_name"), name);
        QDir(dir).mkpath(QvKsDataMng::ProfileFolderName() + QStringLiteral("/系统编号"));
    }
    return true;
}

bool ProjectStore::CreateOnServer(
    const QString& folder, const StoreLocation& location, const QString& name, QString* error)
{
    Close();
    const QString dir = projectDir(folder, true, error);
    if (dir.isEmpty() || !folderIsFree(dir, error))
        return false;
    std::unique_ptr<SqlDb> db = Connect(location, true, error);
    if (!db)
        return false;
    SqlDb* made = db.get();
    const QString entry = dir + QLatin1Char('/') + StoreLocation::EntryFileName();
    const QvKsWriteStatus written = QvKsAtomicFile::Write(entry, location.EntryText(), dir);
    if (!written) {
        PgSchema::Drop(static_cast<PgDb*>(made), nullptr); // only the tables this call made
        return fail(error, written.Describe());
    }
    Adopt(std::move(db), dir, location);
    current()->SetMeta(QStringLiteral("project_name"), name);
    QDir(dir).mkpath(QvKsDataMng::ProfileFolderName() + QStringLiteral("/系统编号"));
    return true;
}

bool ProjectStore::Adopt(std::unique_ptr<SqlDb> db, const QString& dir, const StoreLocation& location)
{
    current().reset(new ProjectStore(std::move(db), dir, location));
    QvKsProfile::SetProfilePath(dir + QLatin1Char('/') + QvKsDataMng::ProfileFolderName());
    lastError().clear();
    return true;
}

void ProjectStore::Close()
{
    if (!current())
        return;
    current().reset();
    QvKsProfile::SetProfilePath(QString());
}

QString ProjectStore::Meta(const QString& key) const
{
    SqlStatement stmt(m_db.get(), "SELECT value FROM meta WHERE key = ?");
    stmt.Bind(1, key);
    return stmt.Next() ? stmt.Text(0) : QString();
}

bool ProjectStore::SetMeta(const QString& key, const QString& value)
{
    SqlStatement stmt(m_db.get(),
        "INSERT INTO meta(key, value) VALUES(?, ?) "
        "ON CONFLICT(key) DO UPDATE SET value = excluded.value");
    stmt.Bind(1, key).Bind(2, value);
    if (!stmt.Exec()) {
        FailSql(QStringLiteral("the project setting %1 cannot be stored").arg(key));
        return false;
    }
    return true;
}

void ProjectStore::Fail(const QString& message)
{
    lastError() = message;
}

void ProjectStore::FailSql(const QString& what)
{
    lastError() = QStringLiteral("%1: %2").arg(what, m_db->Message());
}

QString ProjectStore::LastError()
{
    return lastError();
}

void ProjectStore::SetBusyTimeout(int ms)
{
    busyTimeout() = ms < 0 ? 0 : ms;
    if (current())
        current()->m_db->SetBusyTimeout(busyTimeout());
}

namespace QvKsDataMng {

bool OpenProject(const QString& folder, QString* error)
{
    return ProjectStore::Open(folder, false, QString(), error);
}

bool CreateProject(const QString& folder, const QString& projectName, QString* error)
{
    return ProjectStore::Open(folder, true, projectName, error);
}

void CloseProject()
{
    ProjectStore::Close();
}

bool IsProjectOpen()
{
    return ProjectStore::Current() != nullptr;
}

qint64 ChangesMade()
{
    const ProjectStore* store = ProjectStore::Current();
    return store ? store->Db()->TotalChanges() : 0;
}

QString ProjectFolder()
{
    const ProjectStore* store = ProjectStore::Current();
    return store ? store->Folder() : QString();
}

QString StoreFileName()
{
    return QStringLiteral("project.qvks");
}

QString ProfileFolderName()
{
    return QStringLiteral("Profile");
}

bool RunScript(const QString& sql, QString* error)
{
    ProjectStore* store = ProjectStore::Require();
    if (!store)
        return fail(error, LastError());
    SqlDb* db = store->Db();
    SqlTransaction tx(db);
    const QByteArray utf8 = sql.toUtf8();
    if (!tx.IsActive() || !db->Execute(utf8.constData()))
        return fail(error, QStringLiteral("the script failed: %1").arg(db->Message()));
    // Rows that came with their numbers: the server numbers new ones after them.
    QString why;
    if (db->Engine() == SqlEngine::Server && !PgSchema::SyncNumbering(static_cast<PgDb*>(db), &why))
        return fail(error, QStringLiteral("the script failed: %1").arg(why));
    if (!tx.Commit())
        return fail(error, QStringLiteral("the script cannot be stored: %1").arg(db->Message()));
    return true;
}

bool BeginWrites()
{
    ProjectStore* store = ProjectStore::Require();
    if (!store)
        return false;
    if (store->WriteGroup()) {
        ProjectStore::Fail(QStringLiteral("a group of writes is already open"));
        return false;
    }
    auto group = std::make_unique<SqlTransaction>(store->Db());
    if (!group->IsActive()) {
        store->FailSql(QStringLiteral("the store cannot be written"));
        return false;
    }
    store->WriteGroup() = std::move(group);
    return true;
}

bool CommitWrites()
{
    ProjectStore* store = ProjectStore::Require();
    if (!store || !store->WriteGroup()) {
        ProjectStore::Fail(QStringLiteral("no group of writes is open"));
        return false;
    }
    if (!store->WriteGroup()->Commit()) {
        store->FailSql(QStringLiteral("the changes cannot be stored"));
        return false; // the group stays open for RollbackWrites
    }
    store->WriteGroup().reset();
    return true;
}

void RollbackWrites()
{
    ProjectStore* store = ProjectStore::Current();
    if (!store)
        return;
    store->WriteGroup().reset();
    store->PendingQd().clear();
    store->PendingDe().clear();
}

QString LastError()
{
    return ProjectStore::LastError();
}

void SetBusyTimeout(int milliseconds)
{
    ProjectStore::SetBusyTimeout(milliseconds);
}

} // namespace QvKsDataMng
