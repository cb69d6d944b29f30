// qvproj: the project tool.
#include "ProjectCommands.h"
#include "ServerCommands.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTextStream>

#include <cstdio>

namespace {

// The usage on `stream`: standard output when asked for, standard error after a
// wrong call.
void usage(QTextStream& stream)
{
    stream
        << "usage:\n"
           "  qvproj demo DIR                 make the demo project in DIR (a new folder or an empty one)\n"
           "  qvproj print DIR SPEC           print the system codes of a specialty, one line each\n"
           "  qvproj export DIR SPEC FILE.scn write a specialty's codes to a system-code file\n"
           "  qvproj import DIR SPEC FILE.scn [--any-spec]\n"
           "                                  merge a system-code file into a specialty (a file\n"
           "                                  of another specialty only with --any-spec)\n"
        << ServerCommands::Usage() << "  qvproj --help                   print this\n";
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
