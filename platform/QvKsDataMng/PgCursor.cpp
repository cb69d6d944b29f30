#include "PgCursor.h"

#include "PgDb.h"

#include <QLocale>

#include <libpq-fe.h>

#include <charconv>
#include <cstring>

namespace {
// The server's type numbers for the binds this store makes.
constexpr unsigned kInt8 = 20;
constexpr unsigned kText = 25;
constexpr unsigned kFloat8 = 701;
} // namespace

PgCursor::PgCursor(PgDb* db, const char* sql)
    : m_db(db)
{
    int count = 0;
    m_sql = ServerSql(sql, count);
    m_binds.resize(std::size_t(count));
}

PgCursor::~PgCursor()
{
    PQclear(m_result);
}

QByteArray PgCursor::ServerSql(const char* sql, int& count)
{
    QByteArray out;
    count = 0;
    int next = 0;
    char quote = 0;
    for (const char* p = sql; *p; ++p) {
        const char c = *p;
        if (quote) {
            out += c;
            if (c == quote)
                quote = 0;
            continue;
        }
        if (c == '\'' || c == '"') {
            quote = c;
            out += c;
            continue;
        }
        if (c != '?') {
            out += c;
            continue;
        }
        int number = 0;
        while (p[1] >= '0' && p[1] <= '9')
            number = number * 10 + (*++p - '0');
        if (number == 0)
            number = ++next;
        else
            next = number;
        count = std::max(count, number);
        out += '$' + QByteArray::number(number);
    }
    return out;
}

void PgCursor::SetBind(int i, unsigned type, std::optional<QByteArray> text)
{
    // A bind the statement has no place for is ignored, as the store file does.
    if (i < 1 || std::size_t(i) > m_binds.size())
        return;
    m_binds[std::size_t(i - 1)] = { type, std::move(text) };
}

void PgCursor::BindInt(int i, qint64 value)
{
    SetBind(i, kInt8, QByteArray::number(value));
}

void PgCursor::BindDouble(int i, double value)
{
    SetBind(i, kFloat8, QByteArray::number(value, 'g', QLocale::FloatingPointShortest));
}

void PgCursor::BindText(int i, const QByteArray& utf8)
{
    SetBind(i, kText, utf8.isNull() ? QByteArray("") : utf8);
}

void PgCursor::BindNull(int i)
{
    SetBind(i, 0, std::nullopt);
}

pg_result* PgCursor::Execute()
{
    std::vector<unsigned> types;
    std::vector<const char*> values;
    std::vector<int> lengths;
    types.reserve(m_binds.size());
    values.reserve(m_binds.size());
    lengths.reserve(m_binds.size());
    for (const Bound& b : m_binds) {
        types.push_back(b.type);
        values.push_back(b.text ? b.text->constData() : nullptr);
        lengths.push_back(b.text ? int(b.text->size()) : 0);
    }
    return m_db->Run(m_sql, types, values, lengths);
}

int PgCursor::Failure()
{
    const QByteArray state = m_db->LastState();
    // Another writer holds the lock, or the server chose this transaction to give way.
    if (state == "55P03" || state == "40P01" || state == "40001")
        return kBusy;
    if (state == "53100")
        return kFull;
    return kError;
}

void PgCursor::Clear()
{
    PQclear(m_result);
    m_result = nullptr;
    m_row = -1;
    m_rows = 0;
}

int PgCursor::Step()
{
    if (!m_result) {
        pg_result* result = Execute();
        if (!result)
            return Failure(); // the connection noted why
        if (!m_db->Check(result)) {
            PQclear(result);
            return Failure();
        }
        m_result = result;
        m_rows = PQntuples(result);
        m_row = -1;
    }
    if (++m_row < m_rows)
        return kRow;
    Clear();
    return kDone;
}

int PgCursor::Run()
{
    Clear();
    pg_result* result = Execute();
    if (!result)
        return Failure();
    const bool ok = m_db->Check(result);
    PQclear(result);
    return ok ? kDone : Failure();
}

void PgCursor::Reset()
{
    Clear();
    for (Bound& b : m_binds)
        b = Bound {};
}

qint64 PgCursor::Int(int col) const
{
    const char* text = PQgetvalue(m_result, m_row, col);
    qint64 value = 0;
    std::from_chars(text, text + std::strlen(text), value);
    return value;
}

double PgCursor::Double(int col) const
{
    const char* text = PQgetvalue(m_result, m_row, col);
    double value = 0;
    std::from_chars(text, text + std::strlen(text), value);
    return value;
}

QByteArrayView PgCursor::Utf8(int col) const
{
    return QByteArrayView(PQgetvalue(m_result, m_row, col), PQgetlength(m_result, m_row, col));
}

SqlCursor::Kind PgCursor::ColumnKind(int col) const
{
    if (m_result && m_row >= 0 && m_row < m_rows && PQgetisnull(m_result, m_row, col))
        return Kind::Null;
    switch (m_result ? PQftype(m_result, col) : 0) {
    case 20: // int8
    case 21: // int2
    case 23: // int4
        return Kind::Integer;
    case 700: // float4
    case kFloat8:
    case 1700: // numeric
        return Kind::Real;
    default:
        return Kind::Text;
    }
}

int PgCursor::ColumnCount() const
{
    return m_result ? PQnfields(m_result) : 0;
}
