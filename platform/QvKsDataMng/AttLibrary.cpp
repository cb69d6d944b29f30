#include "AttLibrary.h"

#include "SqlStatement.h"

namespace AttLibrary {

namespace {
bool readCategory(SqlStatement& stmt, Category& out)
{
    if (!stmt.Next())
        return false;
    out = { stmt.Int64(0), stmt.Int(1), stmt.Int(2), stmt.Int(3) };
    return true;
}
} // namespace

bool FindById(SqlDb* db, int major, int middle, int small, Category& out)
{
    SqlStatement stmt(db,
        "SELECT cat_id, major, middle, small FROM att_category "
        "WHERE major = ? AND middle = ? AND small = ?");
    stmt.Bind(1, major).Bind(2, middle).Bind(3, small);
    return readCategory(stmt, out);
}

bool FindByNames(SqlDb* db, const QStringList& names, Category& out)
{
    if (names.isEmpty() || names.size() > 3)
        return false;
    // Level 1: a major category; level 2: a middle one under it; level 3: a small one.
    static const char* const kLevel[3] = {
        "SELECT cat_id, major, middle, small FROM att_category WHERE name = ?1 AND middle = 0 AND small = 0",
        "SELECT cat_id, major, middle, small FROM att_category WHERE name = ?1 AND major = ?2 AND middle > 0 "
        "AND small = 0",
        "SELECT cat_id, major, middle, small FROM att_category WHERE name = ?1 AND major = ?2 AND middle = "
        "?3 "
        "AND small > 0",
    };
    Category found;
    for (qsizetype level = 0; level < names.size(); ++level) {
        SqlStatement stmt(db, kLevel[level]);
        stmt.Bind(1, names[level]);
        if (level > 0)
            stmt.Bind(2, found.major);
        if (level > 1)
            stmt.Bind(3, found.middle);
        if (!readCategory(stmt, found))
            return false;
    }
    out = found;
    return true;
}

bool FindByKey(SqlDb* db, qint64 catId, Category& out)
{
    SqlStatement stmt(db, "SELECT cat_id, major, middle, small FROM att_category WHERE cat_id = ?");
    stmt.Bind(1, catId);
    return readCategory(stmt, out);
}

QString NamePath(SqlDb* db, const Category& category)
{
    SqlStatement stmt(db, "SELECT name FROM att_category WHERE major = ? AND middle = ? AND small = ?");
    QStringList names;
    const int levels[3][2] = { { 0, 0 }, { category.middle, 0 }, { category.middle, category.small } };
    const int depth = category.small ? 3 : (category.middle ? 2 : 1);
    for (int i = 0; i < depth; ++i) {
        stmt.Reset();
        stmt.Bind(1, category.major).Bind(2, levels[i][0]).Bind(3, levels[i][1]);
        if (!stmt.Next())
            return QString();
        names << stmt.Text(0);
    }
    return names.join(QLatin1Char('\\'));
}

bool ParseIds(const QString& text, int& major, int& middle, int& small)
{
    const QStringList parts = text.split(QLatin1Char('\\'));
    if (parts.isEmpty() || parts.size() > 3)
        return false;
    int values[3] = { 0, 0, 0 };
    for (qsizetype i = 0; i < parts.size(); ++i) {
        bool ok = false;
        values[i] = parts[i].toInt(&ok);
        if (!ok || values[i] <= 0)
            return false;
    }
    major = values[0];
    middle = values[1];
    small = values[2];
    return true;
}

} // namespace AttLibrary
