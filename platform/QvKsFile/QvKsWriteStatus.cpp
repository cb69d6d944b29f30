#include "QvKsWriteStatus.h"

#include <QDir>

#include <cerrno>
#include <cstring>

QvKsWriteStatus QvKsWriteStatus::Failure(Kind kind, const QString& path, const QString& detail)
{
    QvKsWriteStatus status;
    status.m_kind = kind;
    status.m_path = path;
    status.m_detail = detail;
    return status;
}

QvKsWriteStatus QvKsWriteStatus::FromSystemError(int error, const QString& path)
{
    Kind kind = Kind::Failed;
    switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        kind = Kind::DiskFull;
        break;
    case EACCES:
    case EPERM:
    case EROFS:
    case ETXTBSY:
        kind = Kind::Permission;
        break;
    case ENOENT:
    case ENOTDIR:
    case ENAMETOOLONG:
    case EISDIR:
    case EINVAL:
        kind = Kind::Path;
        break;
    case ELOOP:
        kind = Kind::Link;
        break;
    default:
        break;
    }
    return Failure(kind, path, QString::fromLocal8Bit(std::strerror(error)));
}

QString QvKsWriteStatus::Describe() const
{
    QString reason;
    switch (m_kind) {
    case Kind::Ok:
        return QString();
    case Kind::DiskFull:
        reason = QStringLiteral("the disk is full");
        break;
    case Kind::Permission:
        reason = QStringLiteral("permission denied");
        break;
    case Kind::Path:
        reason = QStringLiteral("the path cannot hold the file");
        break;
    case Kind::Link:
        reason = QStringLiteral("it is a symbolic link");
        break;
    case Kind::Outside:
        reason = QStringLiteral("its folder leads out of ") + QDir::toNativeSeparators(m_detail);
        break;
    case Kind::Failed:
        reason = QStringLiteral("the write failed");
        break;
    }
    QString text = QStringLiteral("%1 cannot be written: %2").arg(QDir::toNativeSeparators(m_path), reason);
    if (m_kind != Kind::Outside && !m_detail.isEmpty())
        text += QStringLiteral(" (%1)").arg(m_detail);
    return text;
}
