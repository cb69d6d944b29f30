#pragma once

// The module's INI writer: sets one key of one section and keeps every other byte
// of the file as it was (other sections and keys, comments, blank lines, order,
// CRLF or LF line ends, a UTF-8 BOM). A file with a UTF-16 BOM stays UTF-16 in the
// same byte order; any other file is read as UTF-8. Section and key names match
// ignoring letter case and surrounding blanks, as Windows profile files do.
#include "QvKsWriteStatus.h"

#include <QByteArray>
#include <QString>

// The content of an INI file after setting `key` of `section` to `value`: the value
// replaced in place when the key exists (the first one, in the first section of
// that name), else the key added after the section's last key, else the section
// added at the end. False, with `result` untouched, for a section or key that is
// empty or could not be read back as written (line breaks, "]" in a section, "=" in
// a key, a key that would read as a section or comment) and for a value with a line
// break.
bool SetIniValue(const QByteArray& content, const QString& section, const QString& key, const QString& value,
    QByteArray& result);

// Writes `key`=`value` into `section` of the INI file `filePath`, creating the file,
// the section and the key as needed. The file is replaced in one step
// (QvKsAtomicFile), so a failed write leaves the old file whole; a file that is a
// link is neither read nor written, and inside `confineTo` the file may not lead out
// of it. The status says why a write failed (missing or read-only folder or file, a
// full disk, names that cannot be written); nothing is shown.
QvKsWriteStatus WriteProfileString(const QString& section, const QString& key, const QString& value,
    const QString& filePath, const QString& confineTo = QString());
