#pragma once

// The layout of a project store on a database server: the same tables and columns
// as the store file, in the server's types, with text compared byte by byte as the
// file compares it.
#include <QString>

class PgDb;

namespace PgSchema {

// Creates every table in one transaction. Refuses a database that already holds
// any of them.
bool Create(PgDb* db, QString* error);

// Removes every table of a store, in one transaction: undoes a Create whose
// project could not be finished.
bool Drop(PgDb* db, QString* error);

// Refuses a database that holds no store, one of another shape or a newer layout,
// and a user who may not read and write every table. Reads only.
bool Check(PgDb* db, QString* error);

// Moves the server's own numbering of new rows past every row stored, after rows
// came in with their numbers (a script, a copy from a file).
bool SyncNumbering(PgDb* db, QString* error);

} // namespace PgSchema
