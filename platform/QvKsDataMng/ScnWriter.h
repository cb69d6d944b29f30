#pragma once

// Writes a code tree as ".scn" text of the current layout.
#include <QString>

class CSysCodeData;
class QIODevice;

namespace ScnWriter {

bool Write(const CSysCodeData& root, const QString& spec, const QString& version, QIODevice& out);

// Writes to `path` in one step (QvKsAtomicFile): a failure leaves the file that was
// there as it was, and `error` says why; QvKsAtomicFile::LastStatus() tells how.
// Inside the open project's folder the file may not lead out of it.
bool WriteFile(const CSysCodeData& root, const QString& spec, const QString& version, const QString& path,
    QString* error);

} // namespace ScnWriter
