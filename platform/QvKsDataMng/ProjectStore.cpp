#include "ProjectStore.h"

#include "QvKsDataMng.h"
#include "QvKsProfile.h"
#include "SqlStatement.h"
#include "SqlTransaction.h"
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
    sqlite3_close(m_db);
}

bool ProjectStore::Open(const QString& folder, bool create, const QString& name, QString* error)
{
    Close();
    const QString dir = QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
    if (create && !QDir().mkpath(dir))
        return fail(error, QStringLiteral("the project folder cannot be made: %1").arg(dir));
    if (!QFileInfo(dir).isDir())
        return fail(error, QStringLiteral("the project folder does not exist: %1").arg(dir));
    const QString file = dir + QLatin1Char('/') + QvKsDataMng::StoreFileName();
    const bool exists = QFileInfo::exists(file);
    if (create && exists)
        return fail(error, QStringLiteral("the folder already holds a project store: %1").arg(file));
    if (!create && !exists)
        return fail(error,
            QStringLiteral("no project store in %1 (missing %2)").arg(dir, QvKsDataMng::StoreFileName()));

    sqlite3* db = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
    if (sqlite3_open_v2(file.toUtf8().constData(), &db, flags, nullptr) != SQLITE_OK) {
        const QString why = db ? QString::fromUtf8(sqlite3_errmsg(db)) : QStringLiteral("out of memory");
        sqlite3_close(db);
        return fail(error, QStringLiteral("the project store cannot be opened: %1").arg(why));
    }
    std::unique_ptr<ProjectStore> store(new ProjectStore(db, dir));
    sqlite3_busy_timeout(db, busyTimeout());
    sqlite3_exec(db, "PRAGMA foreign_keys=ON", nullptr, nullptr, nullptr);

    QString why;
    const bool ready = create ? StoreSchema::Create(db, &why) : StoreSchema::Check(db, &why);
    if (!ready) {
        store.reset();
        if (create)
            QFile::remove(file); // only the file this call made
        return fail(error, QStringLiteral("%1: %2").arg(file, why));
    }
    if (create) {
        store->SetMeta(QStringLiteral("project_name"), name);
        QDir(dir).mkpath(QvKsDataMng::ProfileFolderName() + QStringLiteral("/系统编号"));
    }
    current() = std::move(store);
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
    SqlStatement stmt(m_db, "SELECT value FROM meta WHERE key = ?");
    stmt.Bind(1, key);
    return stmt.Next() ? stmt.Text(0) : QString();
}

bool ProjectStore::SetMeta(const QString& key, const QString& value)
{
    SqlStatement stmt(m_db,
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
    lastError() = QStringLiteral("%1: %2").arg(what, QString::fromUtf8(sqlite3_errmsg(m_db)));
}

QString ProjectStore::LastError()
{
    return lastError();
}

void ProjectStore::SetBusyTimeout(int ms)
{
    busyTimeout() = ms < 0 ? 0 : ms;
    if (current())
        sqlite3_busy_timeout(current()->m_db, busyTimeout());
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
    return store ? qint64(sqlite3_total_changes64(store->Db())) : 0;
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
    SqlTransaction tx(store->Db());
    char* message = nullptr;
    const QByteArray utf8 = sql.toUtf8();
    if (!tx.IsActive()
        || sqlite3_exec(store->Db(), utf8.constData(), nullptr, nullptr, &message) != SQLITE_OK) {
        const QString why
            = message ? QString::fromUtf8(message) : QString::fromUtf8(sqlite3_errmsg(store->Db()));
        sqlite3_free(message);
        return fail(error, QStringLiteral("the script failed: %1").arg(why));
    }
    if (!tx.Commit())
        return fail(
            error, QStringLiteral("the script cannot be stored: %1").arg(sqlite3_errmsg(store->Db())));
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
