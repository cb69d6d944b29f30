#include "BenchStoreEngine.h"

#include "QvKsDataMng.h"

#include <QCoreApplication>
#include <QStringList>

#ifdef QV_BENCH_TEST_SERVER
#include "PgTestServer.h"

#include <memory>
#endif

namespace {
const QLatin1String kPrefix("--engine=");

#ifdef QV_BENCH_TEST_SERVER
std::unique_ptr<PgTestServer>& ownServer()
{
    static std::unique_ptr<PgTestServer> server;
    return server;
}

// The server goes while the application still stands: stopping it runs its tools.
void stopOwnServer()
{
    QvKsDataMng::CloseProject();
    ownServer().reset();
}

// A new database of the run's own server, started on first use.
QString ownDatabase(QString& why)
{
    std::unique_ptr<PgTestServer>& server = ownServer();
    if (!server) {
        server = PgTestServer::StartPrivate(why);
        if (!server)
            return QString();
        qAddPostRoutine(stopOwnServer);
    }
    return server->NewDatabase();
}
#else
QString ownDatabase(QString& why)
{
    why = QStringLiteral("this build has no test server (GoogleTest was not found)");
    return QString();
}
#endif
} // namespace

QString BenchEngineArgument()
{
    for (const QString& arg : QCoreApplication::arguments()) {
        if (arg.startsWith(kPrefix))
            return arg.mid(kPrefix.size());
    }
    return QString();
}

bool BenchOnServer()
{
    const QString engine = BenchEngineArgument();
    return !engine.isEmpty() && engine != QLatin1String("file");
}

bool CreateBenchProject(const QString& folder, const QString& name, QString& why)
{
    const QString engine = BenchEngineArgument();
    if (!BenchOnServer()) {
        if (QvKsDataMng::CreateProject(folder, name, &why))
            return true;
        why = QStringLiteral("the project cannot be made: %1").arg(why);
        return false;
    }
    const QString url = engine == QLatin1String("server") ? ownDatabase(why) : engine;
    if (url.isEmpty()) {
        why = QStringLiteral("no server for the benchmark: %1").arg(why);
        return false;
    }
    if (QvKsDataMng::CreateServerProject(folder, url, name, &why))
        return true;
    why = QStringLiteral("the project cannot be made on %1: %2").arg(url, why);
    return false;
}
