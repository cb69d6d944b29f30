#include "SqlStatement.h"

#include "QvKsDataMng.h"
#include "SqlDb.h"

#include <functional>

SqlStatement::SqlStatement(SqlDb* db, const char* sql)
{
    if (db)
        m_cursor = db->Prepare(sql);
    m_rc = m_cursor ? 0 : SqlCursor::kError;
}

SqlStatement::~SqlStatement() = default;

SqlStatement& SqlStatement::Bind(int i, int value)
{
    if (m_cursor)
        m_cursor->BindInt(i, value);
    return *this;
}

SqlStatement& SqlStatement::Bind(int i, qint64 value)
{
    if (m_cursor)
        m_cursor->BindInt(i, value);
    return *this;
}

SqlStatement& SqlStatement::Bind(int i, double value)
{
    if (m_cursor)
        m_cursor->BindDouble(i, value);
    return *this;
}

SqlStatement& SqlStatement::Bind(int i, const QString& value)
{
    if (m_cursor)
        m_cursor->BindText(i, value.toUtf8());
    return *this;
}

SqlStatement& SqlStatement::BindUtf8(int i, const QByteArray& utf8)
{
    if (m_cursor)
        m_cursor->BindText(i, utf8);
    return *this;
}

SqlStatement& SqlStatement::BindNull(int i)
{
    if (m_cursor)
        m_cursor->BindNull(i);
    return *this;
}

bool SqlStatement::Next()
{
    if (!m_cursor)
        return false;
    m_rc = m_cursor->Step();
    return m_rc == SqlCursor::kRow;
}

namespace {
struct WriteCounter
{
    int done = 0;
    int failAt = 0;
    int callAt = 0;
    std::function<void()> call;
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
    if (c.callAt > 0 && c.done == c.callAt) {
        c.callAt = 0;
        const std::function<void()> call = std::move(c.call);
        c.call = nullptr;
        call();
    }
    if (c.failAt > 0 && c.done == c.failAt) {
        c.failAt = 0;
        return false;
    }
    return true;
}

namespace QvKsDataMng {
void FailNthWrite(int n)
{
    WriteCounter& c = writeCounter();
    c.done = 0;
    c.failAt = n > 0 ? n : 0;
}

void BeforeNthWrite(int n, std::function<void()> call)
{
    WriteCounter& c = writeCounter();
    c.done = 0;
    c.callAt = n > 0 && call ? n : 0;
    c.call = c.callAt ? std::move(call) : nullptr;
}

int WritesDone()
{
    return writeCounter().done;
}
} // namespace QvKsDataMng

bool SqlStatement::Exec()
{
    if (!m_cursor)
        return false;
    if (!CountWrite()) {
        m_rc = SqlCursor::kFull;
        return false;
    }
    m_rc = m_cursor->Run();
    return m_rc == SqlCursor::kDone;
}

void SqlStatement::Reset()
{
    if (m_cursor)
        m_cursor->Reset();
}

int SqlStatement::Int(int col) const
{
    return int(m_cursor->Int(col));
}

qint64 SqlStatement::Int64(int col) const
{
    return m_cursor->Int(col);
}

double SqlStatement::Double(int col) const
{
    return m_cursor->Double(col);
}

QString SqlStatement::Text(int col) const
{
    const QByteArrayView text = m_cursor->Utf8(col);
    return QString::fromUtf8(text.data(), text.size());
}

QByteArrayView SqlStatement::Utf8(int col) const
{
    return m_cursor->Utf8(col);
}

bool SqlStatement::IsNull(int col) const
{
    return m_cursor->ColumnKind(col) == SqlCursor::Kind::Null;
}

SqlCursor::Kind SqlStatement::ColumnKind(int col) const
{
    return m_cursor->ColumnKind(col);
}

int SqlStatement::ColumnCount() const
{
    return m_cursor ? m_cursor->ColumnCount() : 0;
}
