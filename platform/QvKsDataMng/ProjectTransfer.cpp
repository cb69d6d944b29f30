// Making a project on a server and carrying projects between a store file and a
// server.
#include "PgDb.h"
#include "PgSchema.h"
#include "ProjectStore.h"
#include "QvKsAtomicFile.h"
#include "QvKsDataMng.h"
#include "StoreCopy.h"
#include "StoreLocation.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace {

bool fail(QString* error, const QString& message)
{
    ProjectStore::Fail(message);
    if (error)
        *error = message;
    return false;
}

// The store the project folder names, refusing the open project's folder: its
// connection would go on writing to the store left behind.
bool projectLocation(const QString& folder, QString& dir, StoreLocation& location, QString* error)
{
    dir = QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
    if (!QFileInfo(dir).isDir())
        return fail(error, QStringLiteral("the project folder does not exist: %1").arg(dir));
    if (QvKsDataMng::IsProjectOpen() && QvKsDataMng::ProjectFolder() == dir)
        return fail(error, QStringLiteral("the project %1 is open here; close it first").arg(dir));
    QString why;
    if (!StoreLocation::ForFolder(dir, location, &why))
        return fail(error, why);
    if (location.engine == SqlEngine::File && !QFileInfo::exists(location.file))
        return fail(error,
            QStringLiteral("no project store in %1 (missing %2)").arg(dir, QvKsDataMng::StoreFileName()));
    return true;
}

} // namespace

namespace QvKsDataMng {

bool CreateServerProject(
    const QString& folder, const QString& url, const QString& projectName, QString* error)
{
    StoreLocation location;
    QString why;
    if (!StoreLocation::FromUrl(url, location, &why)) {
        CloseProject();
        return fail(error, why);
    }
    return ProjectStore::CreateOnServer(folder, location, projectName, error);
}

bool MoveProjectToServer(const QString& folder, const QString& url, QString* error)
{
    QString dir;
    StoreLocation source;
    StoreLocation target;
    QString why;
    if (!projectLocation(folder, dir, source, error))
        return false;
    if (source.engine != SqlEngine::File)
        return fail(error, QStringLiteral("the project %1 already has its store on a server").arg(dir));
    if (!StoreLocation::FromUrl(url, target, &why))
        return fail(error, why);
    std::unique_ptr<SqlDb> from = ProjectStore::Connect(source, false, &why);
    if (!from)
        return fail(error, why);
    std::unique_ptr<SqlDb> to = ProjectStore::Connect(target, true, &why);
    if (!to)
        return fail(error, why);
    auto undo = [&](const QString& message) {
        PgSchema::Drop(static_cast<PgDb*>(to.get()), nullptr);
        return fail(error, message);
    };
    if (!StoreCopy::Copy(from.get(), to.get(), &why))
        return undo(why);
    from.reset();
    const QString entry = dir + QLatin1Char('/') + StoreLocation::EntryFileName();
    const QvKsWriteStatus written = QvKsAtomicFile::Write(entry, target.EntryText(), dir);
    if (!written)
        return undo(written.Describe());
    if (!QFile::remove(source.file)) {
        QFile::remove(entry);
        return undo(QStringLiteral("the store file %1 cannot be removed").arg(source.file));
    }
    return true;
}

bool MoveProjectToFile(const QString& folder, QString* error)
{
    QString dir;
    StoreLocation source;
    QString why;
    if (!projectLocation(folder, dir, source, error))
        return false;
    if (source.engine != SqlEngine::Server)
        return fail(error, QStringLiteral("the project %1 already has its store in a file").arg(dir));
    std::unique_ptr<SqlDb> from = ProjectStore::Connect(source, false, &why);
    if (!from)
        return fail(error, why);
    // Made under a name of its own and put in place only when whole.
    StoreLocation target;
    target.file = dir + QLatin1Char('/') + StoreFileName() + QStringLiteral(".part");
    QFile::remove(target.file);
    std::unique_ptr<SqlDb> to = ProjectStore::Connect(target, true, &why);
    if (!to)
        return fail(error, why);
    const bool copied = StoreCopy::Copy(from.get(), to.get(), &why);
    to.reset();
    if (!copied) {
        QFile::remove(target.file);
        return fail(error, why);
    }
    const QString file = dir + QLatin1Char('/') + StoreFileName();
    if (!QFile::rename(target.file, file)) {
        QFile::remove(target.file);
        return fail(error, QStringLiteral("the store file %1 cannot be put in place").arg(file));
    }
    if (!QFile::remove(dir + QLatin1Char('/') + StoreLocation::EntryFileName())) {
        QFile::remove(file);
        return fail(error, QStringLiteral("the server entry in %1 cannot be removed").arg(dir));
    }
    return true;
}

QString StoreDescription()
{
    const ProjectStore* store = ProjectStore::Current();
    return store ? store->Location().Describe() : QString();
}

} // namespace QvKsDataMng
