#include "WriteFailureText.h"

#include <QDir>

QString WriteFailureReason(QvKsWriteStatus::Kind kind)
{
    switch (kind) {
    case QvKsWriteStatus::Kind::Ok:
        return QString();
    case QvKsWriteStatus::Kind::DiskFull:
        return QStringLiteral("磁盘空间已满");
    case QvKsWriteStatus::Kind::Permission:
        return QStringLiteral("没有写入权限");
    case QvKsWriteStatus::Kind::Path:
        return QStringLiteral("路径无效或文件夹不存在");
    case QvKsWriteStatus::Kind::Link:
        return QStringLiteral("该文件是指向别处的链接，不会写入链接或它指向的文件");
    case QvKsWriteStatus::Kind::Outside:
        return QStringLiteral("所在文件夹通向项目文件夹之外");
    case QvKsWriteStatus::Kind::Failed:
        break;
    }
    return QStringLiteral("写入失败");
}

QString WriteFailureText(const QvKsWriteStatus& status)
{
    if (status.IsOk())
        return QString();
    QString reason = WriteFailureReason(status.GetKind());
    // The system's words help whoever looks into it; a link or a folder leading out
    // is said in full already.
    const bool systemWords = status.GetKind() != QvKsWriteStatus::Kind::Link
        && status.GetKind() != QvKsWriteStatus::Kind::Outside;
    if (systemWords && !status.GetDetail().isEmpty())
        reason += QStringLiteral("（%1）").arg(status.GetDetail());
    return QStringLiteral("无法写入文件 %1：%2；原有文件保持不变")
        .arg(QDir::toNativeSeparators(status.GetPath()), reason);
}
