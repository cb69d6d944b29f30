#include "ScreenshotFile.h"

#include "QvKsAtomicFile.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QWidget>

QvKsWriteStatus SaveScreenshot(QWidget* widget, const QString& path)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    if (!widget->grab().save(&buffer, "PNG"))
        return QvKsWriteStatus::Failure(
            QvKsWriteStatus::Kind::Failed, path, QStringLiteral("the window cannot be put as PNG"));
    return QvKsAtomicFile::Write(path, png);
}
