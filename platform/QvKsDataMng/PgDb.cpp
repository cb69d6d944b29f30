#include "PgDb.h"

#include "PgCursor.h"

#include <libpq-fe.h>

#include <cstring>

namespace {

// libpq's words on one line: its messages end in a newline and may carry a hint
// on a second, tab-indented line.
QString oneLine(const char* text)
{
    return QString::fromUtf8(text).simplified();
}

QString serverName(const PgDb::Params& p)
{
    return QStringLiteral("%1:%2").arg(p.host.isEmpty() ? QStringLiteral("localhost") : p.host).arg(p.port);
}

// Whether a statement's tag names rows it inserted, changed or deleted: what the
// store file counts as changes (a SELECT's rows or a CREATE's are none).
bool changesRows(const char* tag)
{
    for (const char* verb : { "INSERT ", "UPDATE ", "DELETE ", "MERGE " }) {
        if (std::strncmp(tag, verb, std::strlen(verb)) == 0)
            return true;
    }
    return false;
}

} // namespace

std::unique_ptr<PgDb> PgDb::Connect(const Params& params, QString* error)
{
    const QByteArray host = params.host.toUtf8();
    const QByteArray port = QByteArray::number(params.port);
    const QByteArray database = params.database.toUtf8();
    const QByteArray user = params.user.toUtf8();
    const char* const keys[] = { "host", "port", "dbname", "user", "application_name", "connect_timeout",
        "client_encoding", nullptr };
    const char* const values[] = { host.constData(), port.constData(), database.constData(), user.constData(),
        "qvks", "5", "UTF8", nullptr };
    pg_conn* conn = PQconnectdbParams(keys, values, 0);
    if (!conn || PQstatus(conn) != CONNECTION_OK) {
        if (error)
            *error = QStringLiteral("the database server %1 (database \"%2\") cannot be reached: %3")
                         .arg(serverName(params), params.database,
                             conn ? oneLine(PQerrorMessage(conn)) : QStringLiteral("out of memory"));
        PQfinish(conn);
        return nullptr;
    }
    std::unique_ptr<PgDb> db(new PgDb(conn, params));
    db->SetBusyTimeout(db->m_busyTimeout);
    return db;
}

PgDb::~PgDb()
{
    PQfinish(m_conn);
}

bool PgDb::IsConnected() const
{
    return PQstatus(m_conn) == CONNECTION_OK;
}

bool PgDb::Usable()
{
    if (PQstatus(m_conn) == CONNECTION_OK)
        return true;
    if (m_inTransaction) {
        // What the lost transaction wrote is gone with it; carrying on in a new
        // session would store the rest of it on its own.
        m_message = QStringLiteral("the connection to the database server %1 was lost; nothing of the "
                                   "unfinished change was stored")
                        .arg(serverName(m_params));
        return false;
    }
    PQreset(m_conn);
    m_prepared.clear();
    if (PQstatus(m_conn) != CONNECTION_OK) {
        m_message = QStringLiteral("the database server %1 cannot be reached: %2")
                        .arg(serverName(m_params), oneLine(PQerrorMessage(m_conn)));
        m_state.clear();
        return false;
    }
    SetBusyTimeout(m_busyTimeout);
    return true;
}

void PgDb::NoteFailure(pg_result* result)
{
    const char* state = result ? PQresultErrorField(result, PG_DIAG_SQLSTATE) : nullptr;
    m_state = state ? QByteArray(state) : QByteArray();
    const char* primary = result ? PQresultErrorField(result, PG_DIAG_MESSAGE_PRIMARY) : nullptr;
    const QString why = oneLine(primary ? primary : PQerrorMessage(m_conn));
    if (PQstatus(m_conn) != CONNECTION_OK) {
        m_state.clear();
        m_message = QStringLiteral("the connection to the database server %1 was lost: %2")
                        .arg(serverName(m_params), why);
    } else {
        m_message = why;
    }
}

bool PgDb::Check(pg_result* result)
{
    const ExecStatusType status = result ? PQresultStatus(result) : PGRES_FATAL_ERROR;
    if (status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK) {
        if (changesRows(PQcmdStatus(result)))
            m_changes += std::strtoll(PQcmdTuples(result), nullptr, 10);
        return true;
    }
    NoteFailure(result);
    return false;
}

void PgDb::AfterCommand(const char* sql)
{
    if (PQstatus(m_conn) == CONNECTION_OK)
        m_inTransaction = PQtransactionStatus(m_conn) != PQTRANS_IDLE;
    else if (sql && std::strcmp(sql, "ROLLBACK") == 0)
        m_inTransaction = false;
}

bool PgDb::Execute(const char* sql)
{
    if (!Usable()) {
        AfterCommand(sql);
        return false;
    }
    // Text of several statements answers with a result for each: every one's rows
    // count as changes, and the first failure is the text's.
    const bool sent = PQsendQuery(m_conn, sql) == 1;
    bool ok = sent;
    if (!sent)
        NoteFailure(nullptr);
    const bool commit = std::strcmp(sql, "COMMIT") == 0;
    while (pg_result* result = sent ? PQgetResult(m_conn) : nullptr) {
        if (ok && !Check(result))
            ok = false;
        // A commit after a failed statement ends the transaction as a rollback and
        // still answers "done": here it is a failure.
        if (ok && commit && std::strcmp(PQcmdStatus(result), "ROLLBACK") == 0) {
            m_message = QStringLiteral("the server rolled the change back after an earlier failure");
            ok = false;
        }
        PQclear(result);
    }
    AfterCommand(sql);
    return ok;
}

pg_result* PgDb::Run(const QByteArray& sql, const std::vector<unsigned>& types,
    const std::vector<const char*>& values, const std::vector<int>& lengths)
{
    if (!Usable())
        return nullptr;
    QByteArray key = sql;
    for (unsigned type : types)
        key += ',' + QByteArray::number(type);
    auto it = m_prepared.constFind(key);
    if (it == m_prepared.cend()) {
        const QByteArray name = "qv" + QByteArray::number(m_prepared.size() + 1);
        pg_result* prepared
            = PQprepare(m_conn, name.constData(), sql.constData(), int(types.size()), types.data());
        const bool ok = Check(prepared);
        PQclear(prepared);
        if (!ok) {
            AfterCommand(nullptr);
            return nullptr;
        }
        it = m_prepared.insert(key, name);
    }
    pg_result* result = PQexecPrepared(
        m_conn, it->constData(), int(values.size()), values.data(), lengths.data(), nullptr, 0);
    AfterCommand(nullptr);
    if (!result)
        NoteFailure(nullptr);
    return result;
}

std::unique_ptr<SqlCursor> PgDb::Prepare(const char* sql)
{
    return std::make_unique<PgCursor>(this, sql);
}

void PgDb::SetBusyTimeout(int milliseconds)
{
    m_busyTimeout = milliseconds < 0 ? 0 : milliseconds;
    if (PQstatus(m_conn) != CONNECTION_OK)
        return;
    const QByteArray sql = "SET lock_timeout = " + QByteArray::number(m_busyTimeout);
    PQclear(PQexec(m_conn, sql.constData()));
}
