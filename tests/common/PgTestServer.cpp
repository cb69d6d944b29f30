#include "PgTestServer.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrl>

#include <vector>

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <libpq-fe.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

struct State
{
    std::unique_ptr<QTemporaryDir> dir;
    std::unique_ptr<PgTestServer> server;
    QString skip;
    bool tried = false;
};

State& state()
{
    static State s;
    return s;
}

// Stops the server when the test program ends.
class StopAtEnd : public ::testing::Environment
{
public:
    void TearDown() override
    {
        state().server.reset();
        state().dir.reset();
    }
};
[[maybe_unused]] ::testing::Environment* const kStopAtEnd
    = ::testing::AddGlobalTestEnvironment(new StopAtEnd);

// The newest installed server's programs, or empty.
QString findBin()
{
    const QString given = qEnvironmentVariable("QV_PG_BINDIR");
    if (!given.isEmpty())
        return given;
    QDir versions(QStringLiteral("/usr/lib/postgresql"));
    QStringList names = versions.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    std::sort(
        names.begin(), names.end(), [](const QString& a, const QString& b) { return a.toInt() > b.toInt(); });
    for (const QString& v : names) {
        const QString bin = versions.filePath(v + QStringLiteral("/bin"));
        if (QFileInfo(bin + QStringLiteral("/initdb")).isExecutable()
            && QFileInfo(bin + QStringLiteral("/pg_ctl")).isExecutable())
            return bin;
    }
    return QString();
}

int freePort()
{
    const int fd = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in addr {};
    addr.sin_family = AF_INET;
    addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t len = sizeof addr;
    int port = 0;
    if (fd >= 0 && ::bind(fd, reinterpret_cast<sockaddr*>(&addr), sizeof addr) == 0
        && ::getsockname(fd, reinterpret_cast<sockaddr*>(&addr), &len) == 0)
        port = ntohs(addr.sin_port);
    if (fd >= 0)
        ::close(fd);
    return port;
}

} // namespace

PgTestServer* PgTestServer::Get()
{
    State& s = state();
    if (!s.tried) {
        s.tried = true;
        std::unique_ptr<PgTestServer> server(new PgTestServer);
        QString why;
        const QString shared = qEnvironmentVariable("QV_PG_SHARED_DIR");
        if (!shared.isEmpty()) {
            if (server->Attach(shared, why))
                s.server = std::move(server);
        } else {
            s.dir = std::make_unique<QTemporaryDir>();
            if (server->Init(s.dir->path(), why))
                s.server = std::move(server);
        }
        s.skip = why;
    }
    return s.server.get();
}

std::unique_ptr<PgTestServer> PgTestServer::StartPrivate(QString& why)
{
    static std::vector<std::unique_ptr<QTemporaryDir>> dirs; // outlive their servers
    dirs.push_back(std::make_unique<QTemporaryDir>());
    std::unique_ptr<PgTestServer> server(new PgTestServer);
    if (!server->Init(dirs.back()->path(), why))
        return nullptr;
    return server;
}

bool PgTestServer::StartShared(const QString& folder)
{
    QDir(folder).removeRecursively();
    QDir().mkpath(folder);
    PgTestServer server;
    QString why;
    const bool ok = server.Init(folder, why);
    QFile out(folder + (ok ? QStringLiteral("/port") : QStringLiteral("/skip")));
    out.open(QIODevice::WriteOnly);
    out.write(ok ? QByteArray::number(server.m_port) : why.toUtf8());
    server.m_owned = false;
    return true; // a machine without the server skips the tests that need it
}

bool PgTestServer::StopShared(const QString& folder)
{
    PgTestServer server;
    QString why;
    if (!server.Attach(folder, why))
        return true;
    server.m_owned = true;
    server.Stop();
    QDir(folder).removeRecursively();
    return true;
}

bool PgTestServer::Attach(const QString& folder, QString& why)
{
    m_owned = false;
    QFile skip(folder + QStringLiteral("/skip"));
    if (skip.open(QIODevice::ReadOnly)) {
        why = QString::fromUtf8(skip.readAll());
        return false;
    }
    QFile port(folder + QStringLiteral("/port"));
    if (!port.open(QIODevice::ReadOnly)) {
        why = QStringLiteral("the shared test server in %1 was not started").arg(folder);
        return false;
    }
    m_port = port.readAll().toInt();
    m_bin = findBin();
    m_root = folder + QStringLiteral("/pg");
    m_data = m_root + QStringLiteral("/data");
    m_user = ::geteuid() == 0 ? QFileInfo(m_data).owner() : QString();
    m_running = true;
    return m_port > 0;
}

QString PgTestServer::SkipReason()
{
    return state().skip;
}

bool PgTestServer::RunTool(const QString& tool, const QStringList& args, QString* output) const
{
    QProcess p;
    p.setProcessChannelMode(QProcess::MergedChannels);
    const QString program = m_bin + QLatin1Char('/') + tool;
    if (m_user.isEmpty())
        p.start(program, args);
    else
        p.start(QStringLiteral("runuser"),
            QStringList { QStringLiteral("-u"), m_user, QStringLiteral("--"), program } + args);
    const bool ok = p.waitForFinished(120000) && p.exitStatus() == QProcess::NormalExit && p.exitCode() == 0;
    if (output)
        *output = QString::fromLocal8Bit(p.readAll()).trimmed();
    return ok;
}

bool PgTestServer::Init(const QString& folder, QString& why)
{
    m_bin = findBin();
    if (m_bin.isEmpty()) {
        why = QStringLiteral("the PostgreSQL server programs (initdb, pg_ctl) are not installed; "
                             "scripts/setup.sh installs them");
        return false;
    }
    m_root = folder + QStringLiteral("/pg");
    m_data = m_root + QStringLiteral("/data");
    QDir().mkpath(m_root);
    if (::geteuid() == 0) {
        // The server refuses root: it runs as the server's own account, or nobody.
        const passwd* pw = ::getpwnam("postgres");
        if (!pw)
            pw = ::getpwnam("nobody");
        if (!pw) {
            why = QStringLiteral(
                "running as root and no unprivileged user (postgres, nobody) to run the server");
            return false;
        }
        m_user = QString::fromLocal8Bit(pw->pw_name);
        QFile::setPermissions(folder,
            QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup | QFile::ExeGroup
                | QFile::ReadOther | QFile::ExeOther);
        if (::chown(m_root.toLocal8Bit().constData(), pw->pw_uid, pw->pw_gid) != 0) {
            why = QStringLiteral("the server's folder cannot be given to %1").arg(m_user);
            return false;
        }
    }
    QString out;
    if (!RunTool(QStringLiteral("initdb"),
            { QStringLiteral("-D"), m_data, QStringLiteral("-U"), QStringLiteral("qvtest"),
                QStringLiteral("--auth=trust"), QStringLiteral("-E"), QStringLiteral("UTF8"),
                QStringLiteral("--no-locale"), QStringLiteral("--no-sync"),
                QStringLiteral("--no-instructions") },
            &out)) {
        why = QStringLiteral("initdb failed: %1").arg(out.right(400));
        return false;
    }
    for (int attempt = 0; attempt < 3 && !m_running; ++attempt) {
        m_port = freePort();
        m_running = Start();
    }
    if (!m_running) {
        QFile log(m_root + QStringLiteral("/log"));
        log.open(QIODevice::ReadOnly);
        why = QStringLiteral("the test server did not start: %1")
                  .arg(QString::fromUtf8(log.readAll().right(400)));
    }
    return m_running;
}

bool PgTestServer::Start()
{
    const QString options = QStringLiteral("-p %1 -k %2 -c listen_addresses=127.0.0.1 -c fsync=off "
                                           "-c full_page_writes=off "
                                           "-c shared_buffers=16MB -c max_connections=40")
                                .arg(m_port)
                                .arg(m_root);
    m_running = RunTool(QStringLiteral("pg_ctl"),
        { QStringLiteral("-D"), m_data, QStringLiteral("-l"), m_root + QStringLiteral("/log"),
            QStringLiteral("-w"), QStringLiteral("-t"), QStringLiteral("60"), QStringLiteral("-o"), options,
            QStringLiteral("start") });
    return m_running;
}

bool PgTestServer::Stop()
{
    const bool ok = RunTool(QStringLiteral("pg_ctl"),
        { QStringLiteral("-D"), m_data, QStringLiteral("-m"), QStringLiteral("immediate"),
            QStringLiteral("-w"), QStringLiteral("stop") });
    m_running = !ok;
    return ok;
}

PgTestServer::~PgTestServer()
{
    if (m_running && m_owned)
        Stop();
}

QString PgTestServer::Sql(const QString& database, const QString& sql) const
{
    const QByteArray port = QByteArray::number(m_port);
    const QByteArray db = database.toUtf8();
    const char* const keys[] = { "host", "port", "dbname", "user", nullptr };
    const char* const values[] = { "127.0.0.1", port.constData(), db.constData(), "qvtest", nullptr };
    PGconn* conn = PQconnectdbParams(keys, values, 0);
    QString error;
    if (PQstatus(conn) != CONNECTION_OK) {
        error = QString::fromUtf8(PQerrorMessage(conn));
    } else {
        PGresult* result = PQexec(conn, sql.toUtf8().constData());
        const ExecStatusType status = PQresultStatus(result);
        if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK)
            error = QString::fromUtf8(PQresultErrorMessage(result));
        PQclear(result);
    }
    PQfinish(conn);
    return error.trimmed();
}

QString PgTestServer::NewDatabase()
{
    const QString name = QStringLiteral("qv_%1_%2").arg(::getpid()).arg(++m_databases);
    const QString error = Sql(QStringLiteral("postgres"), QStringLiteral("CREATE DATABASE %1").arg(name));
    EXPECT_TRUE(error.isEmpty()) << error.toStdString();
    return QStringLiteral("postgresql://qvtest@127.0.0.1:%1/%2").arg(m_port).arg(name);
}

QString PgTestServer::DatabaseOf(const QString& url)
{
    return QUrl(url).path().mid(1);
}
