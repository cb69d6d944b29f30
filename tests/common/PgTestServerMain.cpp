// pg_test_server start|stop FOLDER: the server shared by one ctest run.
#include "PgTestServer.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    if (args.size() == 2 && args[0] == QLatin1String("start"))
        return PgTestServer::StartShared(args[1]) ? 0 : 1;
    if (args.size() == 2 && args[0] == QLatin1String("stop"))
        return PgTestServer::StopShared(args[1]) ? 0 : 1;
    std::fputs("usage: pg_test_server start|stop FOLDER\n", stderr);
    return 2;
}
