// qvproj: the project tool.
#include "ProjectCommands.h"
#include "ProjectFloors.h"
#include "ServerCommands.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTextStream>

#include <cstdio>

using ProjectFloors::ParseFloorArgument;

namespace {

// The usage on `stream`: standard output when asked for, standard error after a
// wrong call.
void usage(QTextStream& stream)
{
    stream
        << "usage:\n"
           "  qvproj demo DIR                 make the demo project in DIR (a new folder or an empty one)\n"
           "  qvproj new DIR --name NAME --floor NAME=FILE.dxf [--floor NAME=FILE.dxf]...\n"
           "                                  make a project of the default specialties and codes\n"
           "                                  with these floors (copied in, in this order; the\n"
           "                                  first is current) in DIR (a new folder or an empty one)\n"
           "                                  (with --server URL, its store on that server)\n"
           "  qvproj add-floor DIR NAME FILE.dxf\n"
           "                                  copy a drawing into the project as a new last floor\n"
           "  qvproj floors DIR               list the floors and their drawings\n"
           "  qvproj print DIR SPEC           print the system codes of a specialty, one line each\n"
           "  qvproj export DIR SPEC FILE.scn write a specialty's codes to a system-code file\n"
           "  qvproj import DIR SPEC FILE.scn [--any-spec]\n"
           "                                  merge a system-code file into a specialty (a file\n"
           "                                  of another specialty only with --any-spec)\n"
        << ServerCommands::Usage() << "  qvproj --help                   print this\n";
}

// "new DIR --name NAME --floor NAME=FILE … [--server URL]" in any order after DIR;
// false after a wrong call.
bool parseNew(
    const QStringList& args, QString& name, QString& server, QList<FloorSource>& floors, QTextStream& err)
{
    for (qsizetype i = 2; i < args.size(); i += 2) {
        if (i + 1 >= args.size())
            return false;
        if (args[i] == QLatin1String("--name")) {
            name = args[i + 1];
        } else if (args[i] == QLatin1String("--server")) {
            server = args[i + 1];
        } else if (args[i] == QLatin1String("--floor")) {
            FloorSource floor;
            if (!ParseFloorArgument(args[i + 1], floor)) {
                err << "qvproj: --floor takes NAME=FILE.dxf, not \"" << args[i + 1] << "\"\n";
                return false;
            }
            floors.append(floor);
        } else {
            return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    QTextStream out(stdout);
    QTextStream err(stderr);
    const QStringList args = app.arguments().mid(1);
    const QString command = args.value(0);
    int rc = 0;
    if ((command == QLatin1String("--help") || command == QLatin1String("-h")) && args.size() == 1)
        usage(out);
    else if (ServerCommands::Dispatch(args, rc, out, err)) {
        // new --server, move-to-server, move-to-file: rc is set
    } else if (command == QLatin1String("demo") && args.size() == 2)
        rc = ProjectCommands::Demo(args[1], out, err);
    else if (command == QLatin1String("new") && args.size() >= 2) {
        QString name;
        QString server;
        QList<FloorSource> floors;
        if (parseNew(args, name, server, floors, err))
            rc = server.isEmpty() ? ProjectFloors::New(args[1], name, floors, out, err)
                                  : ServerCommands::NewOwnOnServer(args[1], server, name, floors, out, err);
        else {
            usage(err);
            rc = 2;
        }
    } else if (command == QLatin1String("add-floor") && args.size() == 4)
        rc = ProjectFloors::AddFloor(args[1], { args[2], args[3] }, out, err);
    else if (command == QLatin1String("floors") && args.size() == 2)
        rc = ProjectFloors::Floors(args[1], out, err);
    else if (command == QLatin1String("print") && args.size() == 3)
        rc = ProjectCommands::Print(args[1], args[2], out, err);
    else if (command == QLatin1String("export") && args.size() == 4)
        rc = ProjectCommands::Export(args[1], args[2], args[3], out, err);
    else if (command == QLatin1String("import") && args.size() == 4)
        rc = ProjectCommands::Import(args[1], args[2], args[3], false, out, err);
    else if (command == QLatin1String("import") && args.size() == 5 && args[4] == QLatin1String("--any-spec"))
        rc = ProjectCommands::Import(args[1], args[2], args[3], true, out, err);
    else {
        usage(err);
        rc = 2;
    }
    out.flush();
    err.flush();
    return rc;
}
