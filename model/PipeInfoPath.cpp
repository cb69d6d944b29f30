#include "PipeInfoPath.h"

namespace {
const QString kElectrical = QStringLiteral("电气");
const QString kLowVoltage = QStringLiteral("弱电");
const QChar kSep = QLatin1Char('\\');
} // namespace

QString PipeInfoDisplayName(const QString& path)
{
    const qsizetype sep = path.lastIndexOf(kSep);
    return sep < 0 ? path : path.mid(sep + 1);
}

int PipeInfoPickerMode(const QString& spec)
{
    return spec == kElectrical ? 2 : 1;
}

int PickerModeAfterAttDef(const QString& spec)
{
    if (spec == kElectrical)
        return 2;
    return spec == kLowVoltage ? 1 : 0;
}

QStringList PickerCategoryIds(int mode)
{
    // Small category 7 of the electrical lines and 3 of the low-voltage ones hold
    // no names a code carries as its pipeline.
    if (mode == 2)
        return { QStringLiteral("3\\1\\1"), QStringLiteral("3\\1\\2"), QStringLiteral("3\\1\\3"),
            QStringLiteral("3\\1\\4"), QStringLiteral("3\\1\\5"), QStringLiteral("3\\1\\6"),
            QStringLiteral("3\\1\\8"), QStringLiteral("3\\1\\9"), QStringLiteral("3\\2\\2") };
    if (mode == 1)
        return { QStringLiteral("6\\3\\1"), QStringLiteral("6\\3\\2"), QStringLiteral("6\\3\\4"),
            QStringLiteral("6\\3\\5") };
    return {};
}

QString PickerFallbackPath(int mode)
{
    if (mode == 2)
        return QStringLiteral("电气\\管线\\导线·导管\\");
    if (mode == 1)
        return QStringLiteral("弱电\\穿管引线\\配管配线\\");
    return QString();
}

AttDefTarget CompleteAttDefPath(const QString& selectedPath, int mode)
{
    AttDefTarget target;
    QString path = selectedPath;
    if (path.trimmed().isEmpty()) {
        if (mode == 2)
            path = kElectrical;
        else if (mode == 1)
            path = kLowVoltage;
    }
    if (!path.startsWith(kElectrical) && !path.startsWith(kLowVoltage))
        return target;
    // Only the two specialties' own names are taken down a level; a longer name
    // that merely starts like one of them opens where it is.
    const qsizetype separators = path.count(kSep);
    target.strSpec = path.section(kSep, 0, 0);
    if (separators == 0) {
        if (target.strSpec == kElectrical)
            path += QStringLiteral("\\管线\\照明导线");
        else if (target.strSpec == kLowVoltage)
            path += QStringLiteral("\\穿管引线\\配线");
    } else if (separators == 1) {
        if (target.strSpec == kElectrical)
            path += QStringLiteral("\\照明导线");
        else if (target.strSpec == kLowVoltage)
            path += QStringLiteral("\\配线");
    }
    target.bOpen = true;
    target.strPath = path;
    return target;
}
