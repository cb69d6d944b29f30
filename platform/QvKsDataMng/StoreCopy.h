#pragma once

// Copies every row of one project store into another, of either engine.
#include <QString>

class SqlDb;

namespace StoreCopy {

// Replaces everything in `to` with the rows of `from`, in one transaction of `to`,
// while `from` is held still (its writers wait, or it is read as of one moment).
// Every table's row count is compared before the copy is committed; on any failure
// `to` is left as it was.
bool Copy(SqlDb* from, SqlDb* to, QString* error);

} // namespace StoreCopy
