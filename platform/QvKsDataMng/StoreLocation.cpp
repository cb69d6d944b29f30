#include "StoreLocation.h"

#include "QvKsDataMng.h"

#include <QFile>
#include <QFileInfo>
#include <QUrl>

namespace {

bool fail(QString* error, const QString& message)
{
    if (error)
        *error = message;
    return false;
}

// The entry's "key=value" lines under "[server]"; other lines are refused.
bool parseEntry(const QByteArray& text, PgDb::Params& server, QString* error)
{
    bool portSeen = false;
    for (const QByteArray& raw : text.split('\n')) {
        const QString line = QString::fromUtf8(raw).trimmed();
        if (line.isEmpty() || line.startsWith(u';') || line.startsWith(u'#')
            || line == QLatin1String("[server]"))
            continue;
        const qsizetype eq = line.indexOf(u'=');
        const QString key = line.left(eq).trimmed();
        const QString value = line.mid(eq + 1).trimmed();
        if (eq <= 0)
            return fail(error, QStringLiteral("the line \"%1\" is not \"key=value\"").arg(line));
        if (key == QLatin1String("host"))
            server.host = value;
        else if (key == QLatin1String("database"))
            server.database = value;
        else if (key == QLatin1String("user"))
            server.user = value;
        else if (key == QLatin1String("port")) {
            bool ok = false;
            server.port = value.toInt(&ok);
            if (!ok || server.port <= 0 || server.port > 65535)
                return fail(error, QStringLiteral("the port \"%1\" is not a port number").arg(value));
            portSeen = true;
        } else
            return fail(
                error, QStringLiteral("the key \"%1\" is not known (host, port, database, user)").arg(key));
    }
    if (!portSeen)
        server.port = 5432;
    if (server.database.isEmpty())
        return fail(error, QStringLiteral("it names no database"));
    return true;
}

// Whether the project's entry keeps `value` as it is: on one line, with nothing at
// its ends that reading the entry trims.
bool entryKeeps(const QString& value)
{
    return value == value.trimmed() && !value.contains(u'\n');
}

} // namespace

QString StoreLocation::EntryFileName()
{
    return QStringLiteral("project.qvserver");
}

bool StoreLocation::FromUrl(const QString& url, StoreLocation& out, QString* error)
{
    const QUrl parsed(url, QUrl::StrictMode);
    const QString scheme = parsed.scheme();
    if (!parsed.isValid() || (scheme != QLatin1String("postgresql") && scheme != QLatin1String("postgres")))
        return fail(error,
            QStringLiteral("\"%1\" is not a server address (postgresql://user@host:port/database)").arg(url));
    if (!parsed.password().isEmpty())
        return fail(error,
            QStringLiteral("the address holds a password; the project never keeps one: put it in the "
                           "PostgreSQL password file (~/.pgpass) or PGPASSWORD"));
    if (parsed.hasQuery() || parsed.hasFragment())
        return fail(error, QStringLiteral("the address may name host, port, database and user only"));
    StoreLocation location;
    location.engine = SqlEngine::Server;
    location.server.host = parsed.host();
    location.server.port = parsed.port(5432);
    location.server.user = parsed.userName();
    location.server.database = parsed.path().mid(1);
    if (location.server.database.isEmpty() || location.server.database.contains(u'/'))
        return fail(error, QStringLiteral("the address \"%1\" names no database").arg(url));
    if (location.server.port <= 0)
        return fail(error, QStringLiteral("the address \"%1\" names no port a server listens on").arg(url));
    if (!entryKeeps(location.server.user) || !entryKeeps(location.server.database)
        || !entryKeeps(location.server.host))
        return fail(error,
            QStringLiteral("the address \"%1\" holds a name with a line break or with spaces at its ends, "
                           "which the project's server entry cannot keep")
                .arg(url));
    out = location;
    return true;
}

bool StoreLocation::ForFolder(const QString& dir, StoreLocation& out, QString* error)
{
    const QString file = dir + QLatin1Char('/') + QvKsDataMng::StoreFileName();
    const QString entry = dir + QLatin1Char('/') + EntryFileName();
    StoreLocation location;
    location.file = file;
    if (!QFileInfo::exists(entry)) {
        out = location;
        return true;
    }
    if (QFileInfo::exists(file))
        return fail(error,
            QStringLiteral("the project folder %1 names two stores, the file %2 and the server entry %3; "
                           "remove the one no longer used")
                .arg(dir, QvKsDataMng::StoreFileName(), EntryFileName()));
    QFile in(entry);
    if (!QFileInfo(entry).isFile() || !in.open(QIODevice::ReadOnly))
        return fail(error, QStringLiteral("the server entry %1 cannot be read").arg(entry));
    QString why;
    if (!parseEntry(in.read(64 * 1024), location.server, &why))
        return fail(error, QStringLiteral("the server entry %1 cannot be used: %2").arg(entry, why));
    location.engine = SqlEngine::Server;
    out = location;
    return true;
}

QString StoreLocation::Describe() const
{
    if (engine == SqlEngine::File)
        return file;
    const QString user = server.user.isEmpty() ? QString() : server.user + QLatin1Char('@');
    return QStringLiteral("postgresql://%1%2:%3/%4")
        .arg(user, server.host, QString::number(server.port), server.database);
}

QByteArray StoreLocation::EntryText() const
{
    // One pass: a value holding "%2" must stay as it is, not take the next value.
    return QStringLiteral("[server]\nhost=%1\nport=%2\ndatabase=%3\nuser=%4\n")
        .arg(server.host, QString::number(server.port), server.database, server.user)
        .toUtf8();
}
