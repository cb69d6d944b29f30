#pragma once

// Writes a code tree as ".scn" text of the current layout.
#include <QString>

class CSysCodeData;
class QIODevice;

namespace ScnWriter {

bool Write(const CSysCodeData& root, const QString& spec, const QString& version, QIODevice& out);

// Writes to `path` through a file beside it that is renamed over it at the end.
bool WriteFile(const CSysCodeData& root, const QString& spec, const QString& version, const QString& path,
    QString* error);

} // namespace ScnWriter
