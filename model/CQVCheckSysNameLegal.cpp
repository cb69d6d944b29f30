#include "CQVCheckSysNameLegal.h"

#include "ModuleStrings.h"
#include "WinMessageBox.h"

bool CQVCheckSysNameLegal::CheckSysNameLegal(QString name)
{
    name = name.trimmed();
    if (name.isEmpty() || name.size() > kMaxSysNameLength)
        return false;
    name = name.toUpper();
    for (const QChar forbidden : { u'\'', u'&', u'\\', u'/' }) {
        if (name.contains(forbidden))
            return false;
    }
    return name != QLatin1String("SYS");
}

bool CQVCheckSysNameLegal::OnCheckSysName(const QString& name)
{
    return CheckSysNameLegal(name);
}

bool CQVCheckSysNameLegal::CheckSysCodeLevel(int level)
{
    if (level <= kMaxSysCodeLevel)
        return true;
    MessageBoxExW(
        GetActiveWindow(), QStringLiteral("系统编号不允许超过3级") + g_strExclaim, g_strCaption, kMbWarning);
    return false;
}
