#include "SysCodePath.h"

namespace {
constexpr QLatin1Char kStoreSep('\\');
constexpr QLatin1Char kAmpersandSep('&');
} // namespace

QString JoinSysCodePath(const QString& parent, const QString& name)
{
    return parent.isEmpty() ? name : parent + kStoreSep + name;
}

QStringList SplitSysCodePath(const QString& path)
{
    return path.split(kStoreSep);
}

QString SpecSysCodePath(const QString& spec, const QString& fullName)
{
    return spec + kStoreSep + fullName;
}

QString AmpersandSysCodePath(QString path)
{
    return path.replace(kStoreSep, kAmpersandSep);
}

QString BackslashSysCodePath(QString ampersandPath)
{
    return ampersandPath.replace(kAmpersandSep, kStoreSep);
}
