#pragma once

// What became of a file write: done, or why not, with the file it was for.
#include <QString>

class QvKsWriteStatus
{
public:
    enum class Kind {
        Ok,
        DiskFull, // no space left (or over quota, or the file would grow too large)
        Permission, // the folder or the file may not be written (read-only, immutable)
        Path, // no such folder, a name too long, not a regular file, no path at all
        Link, // the file is a symbolic link: neither it nor what it points to is written
        Outside, // the folder leads out of the folder the write is kept to
        Failed, // anything else the system reported, or a check after writing
    };

    QvKsWriteStatus() = default;
    static QvKsWriteStatus Failure(Kind kind, const QString& path, const QString& detail = QString());
    // The failure a system error number stands for.
    static QvKsWriteStatus FromSystemError(int error, const QString& path);

    bool IsOk() const { return m_kind == Kind::Ok; }
    explicit operator bool() const { return IsOk(); }
    Kind GetKind() const { return m_kind; }
    QString GetPath() const { return m_path; }
    // The system's own words (strerror) or what a check found; may be empty.
    QString GetDetail() const { return m_detail; }
    // One line for logs and the tools: "PATH cannot be written: the disk is full
    // (No space left on device)"; empty when the write was done.
    QString Describe() const;

private:
    Kind m_kind = Kind::Ok;
    QString m_path;
    QString m_detail;
};
