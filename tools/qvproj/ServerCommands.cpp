#include "ServerCommands.h"

#include "QvKsDataMng.h"

#include <QDir>
#include <QStringList>
#include <QTextStream>

namespace ServerCommands {

namespace {
int fail(QTextStream& err, const QString& message)
{
    err << "qvproj: " << message << "\n";
    return 1;
}
} // namespace

int NewOnServer(
    const QString& folder, const QString& url, const QString& name, QTextStream& out, QTextStream& err)
{
    QString error;
    const QString projectName = name.isEmpty() ? QDir(folder).dirName() : name;
    if (!QvKsDataMng::CreateServerProject(folder, url, projectName, &error))
        return fail(err, error);
    out << "made the project " << QvKsDataMng::ProjectFolder() << " on " << QvKsDataMng::StoreDescription()
        << "\n";
    QvKsDataMng::CloseProject();
    return 0;
}

int NewOwnOnServer(const QString& folder, const QString& url, const QString& name,
    const QList<FloorSource>& floors, QTextStream& out, QTextStream& err)
{
    const bool folderExisted = QDir(folder).exists();
    const int made = ProjectFloors::New(folder, name, floors, out, err);
    if (made != 0)
        return made;
    QString error;
    if (QvKsDataMng::MoveProjectToServer(folder, url, &error)) {
        out << "its store is on the server now\n";
        return 0;
    }
    // The folder was new or empty before: what is in it now is the project made.
    ProjectFloors::RemoveMade(folder, !folderExisted);
    return fail(err, error);
}

int MoveToServer(const QString& folder, const QString& url, QTextStream& out, QTextStream& err)
{
    QString error;
    if (!QvKsDataMng::MoveProjectToServer(folder, url, &error))
        return fail(err, error);
    if (!QvKsDataMng::OpenProject(folder, &error))
        return fail(err, error);
    out << "the project " << QvKsDataMng::ProjectFolder() << " now keeps its store on "
        << QvKsDataMng::StoreDescription() << "\n";
    QvKsDataMng::CloseProject();
    return 0;
}

int MoveToFile(const QString& folder, QTextStream& out, QTextStream& err)
{
    QString error;
    if (!QvKsDataMng::MoveProjectToFile(folder, &error))
        return fail(err, error);
    if (!QvKsDataMng::OpenProject(folder, &error))
        return fail(err, error);
    out << "the project " << QvKsDataMng::ProjectFolder() << " now keeps its store in "
        << QvKsDataMng::StoreDescription() << " (the server's database was left as it was)\n";
    QvKsDataMng::CloseProject();
    return 0;
}

bool Dispatch(const QStringList& args, int& rc, QTextStream& out, QTextStream& err)
{
    const QString command = args.value(0);
    if (command == QLatin1String("new") && args.size() == 4 && args[2] == QLatin1String("--server"))
        rc = NewOnServer(args[1], args[3], QString(), out, err);
    else if (command == QLatin1String("move-to-server") && args.size() == 3)
        rc = MoveToServer(args[1], args[2], out, err);
    else if (command == QLatin1String("move-to-file") && args.size() == 2)
        rc = MoveToFile(args[1], out, err);
    else
        return false;
    return true;
}

const char* Usage()
{
    return "  qvproj new DIR --server postgresql://USER@HOST:PORT/DATABASE\n"
           "                                  make an empty project whose store is a database on a\n"
           "                                  server (the password: ~/.pgpass or PGPASSWORD)\n"
           "  qvproj move-to-server DIR URL   carry a project's store from its file to an empty\n"
           "                                  database on a server, whole or not at all\n"
           "  qvproj move-to-file DIR         carry it back into a store file in DIR\n";
}

} // namespace ServerCommands
