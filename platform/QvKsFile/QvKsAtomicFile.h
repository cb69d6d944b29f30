#pragma once

// The one way the product writes a file. The new content goes to a file of its own
// beside the old one; every write's result is checked, the data is synced to the
// disk, its size checked, and only then is it renamed over the old file. Any
// failure removes the new file and leaves the old one byte for byte as it was.
//
// A symbolic link at the path is never written through nor replaced: the write is
// refused. When `confineTo` is given and the path lies inside that folder (as
// written, before any ".." is taken away), the file's folder must still lie inside
// it with every link resolved: a link planted in a shared project folder cannot
// steer a write out of it. Paths outside `confineTo` are written as they are.
#include "QvKsWriteStatus.h"

#include <QByteArray>
#include <QString>

class QvKsAtomicFile
{
public:
    static QvKsWriteStatus Write(
        const QString& path, const QByteArray& bytes, const QString& confineTo = QString());
    // The checks Write makes before it writes anything, for callers that read the
    // old file first and must not read through a link either.
    static QvKsWriteStatus CheckTarget(const QString& path, const QString& confineTo = QString());
    // What the calling thread's last Write or CheckTarget came to.
    static QvKsWriteStatus LastStatus();
};
