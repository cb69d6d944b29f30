#pragma once

// Every reader of the platform and the module opens its files here: only a regular
// file is read. A folder, a device or a named pipe is refused at once with what it
// is, instead of hanging on a pipe no one writes to or reading a device that never
// ends.
#include <QIODevice>
#include <QString>

class QFile;

namespace ReadableFile {

// Empty when `path` names a regular file (through any symbolic links); otherwise
// why not, naming the path: "/x/f.scn: a named pipe, not a regular file".
QString Problem(const QString& path);

// Opens `path` into `file` for reading (ReadOnly and `extra`) when it is a regular
// file; otherwise false with `error` said as Problem says it. The file is checked
// again once open, so one swapped in between is refused too.
bool Open(QFile& file, const QString& path, QString* error, QIODevice::OpenMode extra = {});

} // namespace ReadableFile
