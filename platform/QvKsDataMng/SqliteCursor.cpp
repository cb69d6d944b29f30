#include "SqliteCursor.h"

#include <sqlite3.h>

SqliteCursor::~SqliteCursor()
{
    sqlite3_finalize(m_stmt);
}

void SqliteCursor::BindInt(int i, qint64 value)
{
    sqlite3_bind_int64(m_stmt, i, value);
}

void SqliteCursor::BindDouble(int i, double value)
{
    sqlite3_bind_double(m_stmt, i, value);
}

void SqliteCursor::BindText(int i, const QByteArray& utf8)
{
    sqlite3_bind_text(m_stmt, i, utf8.constData(), int(utf8.size()), SQLITE_TRANSIENT);
}

void SqliteCursor::BindNull(int i)
{
    sqlite3_bind_null(m_stmt, i);
}

int SqliteCursor::Step()
{
    return sqlite3_step(m_stmt);
}

int SqliteCursor::Run()
{
    const int rc = sqlite3_step(m_stmt);
    sqlite3_reset(m_stmt);
    return rc;
}

void SqliteCursor::Reset()
{
    sqlite3_reset(m_stmt);
    sqlite3_clear_bindings(m_stmt);
}

qint64 SqliteCursor::Int(int col) const
{
    return sqlite3_column_int64(m_stmt, col);
}

double SqliteCursor::Double(int col) const
{
    return sqlite3_column_double(m_stmt, col);
}

QByteArrayView SqliteCursor::Utf8(int col) const
{
    const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(m_stmt, col));
    return QByteArrayView(text, sqlite3_column_bytes(m_stmt, col));
}

SqlCursor::Kind SqliteCursor::ColumnKind(int col) const
{
    switch (sqlite3_column_type(m_stmt, col)) {
    case SQLITE_INTEGER:
        return Kind::Integer;
    case SQLITE_FLOAT:
        return Kind::Real;
    case SQLITE_NULL:
        return Kind::Null;
    default:
        return Kind::Text;
    }
}

int SqliteCursor::ColumnCount() const
{
    return sqlite3_column_count(m_stmt);
}
