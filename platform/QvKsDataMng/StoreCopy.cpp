#include "StoreCopy.h"

#include "PgDb.h"
#include "PgSchema.h"
#include "SqlDb.h"
#include "SqlStatement.h"
#include "SqlTransaction.h"
#include "StoreSchema.h"

namespace StoreCopy {

namespace {

bool fail(QString* error, const QString& message)
{
    if (error)
        *error = message;
    return false;
}

void bindColumn(SqlStatement& insert, int i, const SqlStatement& row, int col)
{
    switch (row.ColumnKind(col)) {
    case SqlCursor::Kind::Null:
        insert.BindNull(i);
        break;
    case SqlCursor::Kind::Integer:
        insert.Bind(i, row.Int64(col));
        break;
    case SqlCursor::Kind::Real:
        insert.Bind(i, row.Double(col));
        break;
    case SqlCursor::Kind::Text:
        insert.Bind(i, row.Text(col));
        break;
    }
}

qint64 rowCount(SqlDb* db, const QString& table)
{
    SqlStatement count(db, ("SELECT count(*) FROM " + table.toUtf8()).constData());
    return count.Next() ? count.Int64(0) : -1;
}

bool copyTable(SqlDb* from, SqlDb* to, const QString& table, QString* error)
{
    const QStringList columns = StoreSchema::Columns(table);
    const QByteArray list = columns.join(QStringLiteral(", ")).toUtf8();
    QByteArray marks = "?";
    for (qsizetype i = 1; i < columns.size(); ++i)
        marks += ", ?";
    SqlStatement read(from, ("SELECT " + list + " FROM " + table.toUtf8()).constData());
    SqlStatement write(
        to, ("INSERT INTO " + table.toUtf8() + "(" + list + ") VALUES(" + marks + ")").constData());
    qint64 copied = 0;
    while (read.Next()) {
        for (int col = 0; col < int(columns.size()); ++col)
            bindColumn(write, col + 1, read, col);
        if (!write.Exec())
            return fail(error, QStringLiteral("a row of %1 cannot be stored: %2").arg(table, to->Message()));
        ++copied;
    }
    if (!read.Done())
        return fail(error, QStringLiteral("the table %1 cannot be read: %2").arg(table, from->Message()));
    if (rowCount(to, table) != copied)
        return fail(error, QStringLiteral("the table %1 did not arrive whole").arg(table));
    return true;
}

// Holds the source still for the copy: a store file's writers wait; a server's
// tables are read as of one moment.
bool holdStill(SqlDb* from, QString* error)
{
    const char* begin = from->Engine() == SqlEngine::Server
        ? "BEGIN ISOLATION LEVEL REPEATABLE READ READ ONLY"
        : "BEGIN IMMEDIATE";
    if (!from->Execute(begin))
        return fail(
            error, QStringLiteral("the project store cannot be read as a whole: %1").arg(from->Message()));
    return true;
}

} // namespace

bool Copy(SqlDb* from, SqlDb* to, QString* error)
{
    if (!holdStill(from, error))
        return false;
    bool ok = false;
    {
        SqlTransaction tx(to);
        ok = tx.IsActive();
        if (!ok)
            fail(error, QStringLiteral("the new store cannot be written: %1").arg(to->Message()));
        const QStringList tables = StoreSchema::Tables();
        for (auto it = tables.rbegin(); ok && it != tables.rend(); ++it) {
            SqlStatement clear(to, ("DELETE FROM " + it->toUtf8()).constData());
            ok = clear.Exec();
            if (!ok)
                fail(error, QStringLiteral("the new store cannot be emptied: %1").arg(to->Message()));
        }
        for (const QString& table : tables) {
            if (ok)
                ok = copyTable(from, to, table, error);
        }
        if (ok && to->Engine() == SqlEngine::Server)
            ok = PgSchema::SyncNumbering(static_cast<PgDb*>(to), error);
        if (ok && !tx.Commit())
            ok = fail(error, QStringLiteral("the new store cannot be written: %1").arg(to->Message()));
    }
    from->Execute("ROLLBACK");
    return ok;
}

} // namespace StoreCopy
