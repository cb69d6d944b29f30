#pragma once

// The writes of a code-tree save to one specialty's rows, inside the save's
// transaction. The store file takes a statement per row; a server takes each kind
// of write in one statement, the rows given as one array per column, so a save
// costs a few round trips however many codes it writes. Each is false when a
// statement fails (the connection's message says why); `failedAt`, when given,
// receives the first row of the statement that failed.
#include <vector>

class SqlDb;
struct CodeRow;

namespace CodeRowWrites {

// Deletes the rows of `indexes`; every row of the specialty with `all`.
bool Delete(SqlDb* db, int specId, const std::vector<int>& indexes, bool all);
// Writes every column but the index, the parent and the name of rows stored in
// their place.
bool Update(SqlDb* db, int specId, const std::vector<const CodeRow*>& rows, const CodeRow** failedAt);
bool Insert(SqlDb* db, int specId, const std::vector<const CodeRow*>& rows, const CodeRow** failedAt);

} // namespace CodeRowWrites
