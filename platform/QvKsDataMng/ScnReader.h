#pragma once

// Parses ".scn" text into a code tree. The tree is filled only when the whole input
// is valid; on any error it is left as it was and the error names the line. Names
// are taken trimmed; values must be ones the dialog's cells accept (SysCodeValueRule).
#include <QString>

class CSysCodeData;
class QIODevice;

namespace ScnReader {

enum class Layout { Unknown, Current, Legacy };

// The layout, from the root element's name only.
Layout DetectLayout(QIODevice& in);

// Reads a file of the current layout into `root` (its children are replaced), and
// into `spec` the specialty the file names (empty when it names none).
bool Read(QIODevice& in, CSysCodeData& root, QString* error, QString* spec = nullptr);
// Reads a file of the older layout.
bool ReadLegacy(QIODevice& in, CSysCodeData& root, QString* error);

} // namespace ScnReader
