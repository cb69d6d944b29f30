#pragma once

// Reads and writes one specialty's code tree in the store's sys_code table.
#include <QString>

class CSysCodeData;
struct sqlite3;

namespace CodeTreeStore {

// The spec row's id and high-water mark; false when the specialty is unknown.
bool FindSpec(sqlite3* db, const QString& spec, int& specId, int& maxIndex);

// Fills `root` (cleared first). False, with `error` set, for a damaged tree
// (orphans, cycles); `root` is then left empty.
bool Load(sqlite3* db, int specId, CSysCodeData& root, QString* error);

// Replaces the tree in one transaction (see CISysCode::SetSpecCodeInfos).
bool Save(sqlite3* db, int specId, CSysCodeData& root, QString* error);

} // namespace CodeTreeStore
