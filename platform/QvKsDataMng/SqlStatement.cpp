#include "SqlStatement.h"

#include "QvKsDataMng.h"

#include <sqlite3.h>

SqlStatement::SqlStatement(sqlite3* db, const char* sql)
{
    if (db)
        m_rc = sqlite3_prepare_v2(db, sql, -1, &m_stmt, nullptr);
}

SqlStatement::~SqlStatement()
{
    sqlite3_finalize(m_stmt);
}

SqlStatement& SqlStatement::Bind(int i, int value)
{
    sqlite3_bind_int(m_stmt, i, value);
    return *this;
}

SqlStatement& SqlStatement::Bind(int i, qint64 value)
{
    sqlite3_bind_int64(m_stmt, i, value);
    return *this;
}

SqlStatement& SqlStatement::Bind(int i, double value)
{
    sqlite3_bind_double(m_stmt, i, value);
    return *this;
}

SqlStatement& SqlStatement::Bind(int i, const QString& value)
{
    const QByteArray utf8 = value.toUtf8();
    sqlite3_bind_text(m_stmt, i, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
    return *this;
}

SqlStatement& SqlStatement::BindNull(int i)
{
    sqlite3_bind_null(m_stmt, i);
    return *this;
}

bool SqlStatement::Next()
{
    if (!m_stmt)
        return false;
    m_rc = sqlite3_step(m_stmt);
    return m_rc == SQLITE_ROW;
}

namespace {
struct WriteCounter
{
    int done = 0;
    int failAt = 0;
};

WriteCounter& writeCounter()
{
    static WriteCounter counter;
    return counter;
}
} // namespace

bool SqlStatement::CountWrite()
{
    WriteCounter& c = writeCounter();
    ++c.done;
    if (c.failAt > 0 && c.done == c.failAt) {
        c.failAt = 0;
        return false;
    }
    return true;
}

namespace QvKsDataMng {
void FailNthWrite(int n)
{
    writeCounter() = { 0, n > 0 ? n : 0 };
}

int WritesDone()
{
    return writeCounter().done;
}
} // namespace QvKsDataMng

bool SqlStatement::Exec()
{
    if (!m_stmt)
        return false;
    if (!CountWrite()) {
        m_rc = SQLITE_FULL;
        return false;
    }
    m_rc = sqlite3_step(m_stmt);
    sqlite3_reset(m_stmt);
    return m_rc == SQLITE_DONE;
}

void SqlStatement::Reset()
{
    sqlite3_reset(m_stmt);
    sqlite3_clear_bindings(m_stmt);
}

int SqlStatement::Int(int col) const
{
    return sqlite3_column_int(m_stmt, col);
}

qint64 SqlStatement::Int64(int col) const
{
    return sqlite3_column_int64(m_stmt, col);
}

double SqlStatement::Double(int col) const
{
    return sqlite3_column_double(m_stmt, col);
}

QString SqlStatement::Text(int col) const
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_stmt, col));
    return QString::fromUtf8(text, sqlite3_column_bytes(m_stmt, col));
}

QByteArrayView SqlStatement::Utf8(int col) const
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_stmt, col));
    return QByteArrayView(text, sqlite3_column_bytes(m_stmt, col));
}

bool SqlStatement::IsNull(int col) const
{
    return sqlite3_column_type(m_stmt, col) == SQLITE_NULL;
}
