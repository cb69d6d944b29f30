#pragma once

// Look-ups in the attribute-library tables shared by the library's classes.
#include <QString>
#include <QStringList>

class SqlDb;

namespace AttLibrary {

struct Category
{
    qint64 catId = 0;
    int major = 0;
    int middle = 0;
    int small = 0;
};

// The category of one, two or three numbers (missing ones are 0).
bool FindById(SqlDb* db, int major, int middle, int small, Category& out);
// The category a name path of one to three levels names.
bool FindByNames(SqlDb* db, const QStringList& names, Category& out);
bool FindByKey(SqlDb* db, qint64 catId, Category& out);
// Names from the major category down to this one joined by "\".
QString NamePath(SqlDb* db, const Category& category);
// Parses "3\1\1" (one to three numbers).
bool ParseIds(const QString& text, int& major, int& middle, int& small);

} // namespace AttLibrary
