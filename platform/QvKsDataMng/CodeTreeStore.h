#pragma once

// Reads and writes one specialty's code tree in the store's sys_code table.
#include <QString>
#include <QtGlobal>

class CSysCodeData;
class SqlDb;

namespace CodeTreeStore {

// The spec row's id and high-water mark; false when the specialty is unknown or,
// with `error` set, when the store cannot be read.
bool FindSpec(SqlDb* db, const QString& spec, int& specId, int& maxIndex, QString* error = nullptr);

// Fills `root` (cleared first). False, with `error` set, for a damaged tree
// (orphans, cycles); `root` is then left empty. `stamp`, when given, receives the
// stamp of the rows read.
bool Load(SqlDb* db, int specId, CSysCodeData& root, QString* error, quint64* stamp = nullptr);

// The stamp of the specialty's stored rows: a fingerprint of every row with all its
// columns, whoever wrote them. Two reads give the same stamp exactly when the
// specialty's codes are the same, so a writer learns whether anyone changed them
// since it read them.
bool Stamp(SqlDb* db, int specId, quint64& stamp, QString* error);

enum class SaveResult {
    Failed,
    Saved,
    ChangedSinceRead, // nothing written: the stored rows are not those stamped
};

// Replaces the tree in one transaction (see CISysCode::SetSpecCodeInfos). With
// `expected`, the rows are first checked, inside that transaction, against the
// stamp the writer read them with. `written`, when given, receives the stamp of
// the rows stored.
SaveResult Save(SqlDb* db, int specId, CSysCodeData& root, QString* error, const quint64* expected = nullptr,
    quint64* written = nullptr);

} // namespace CodeTreeStore
