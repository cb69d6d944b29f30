#pragma once

#include <QString>
#include <QStringList>

class SqliteDb;

// The layout of a project store file, its creation and the checks made on opening.
namespace StoreSchema {

// 'QVKS': marks a SQLite file as a project store of this product.
constexpr int kApplicationId = 0x51564B53;
// The layout this build writes and the newest it reads.
constexpr int kSchemaVersion = 1;

// The tables every store holds, parents before children, and the columns of each
// as the store reads and writes them (either engine).
QStringList Tables();
QStringList Columns(const QString& table);

// Creates every table in a new, empty database, in one transaction.
bool Create(SqliteDb* db, QString* error);

// Refuses a file that is not a store of this product, one written by a newer
// version, one that is damaged, or one another program holds locked. Reads only.
bool Check(SqliteDb* db, QString* error);

} // namespace StoreSchema
