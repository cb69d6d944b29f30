#include "SysCodeSettings.h"

#include "IniFile.h"

#include <QDir>

const QString g_strSettingsFileName = QStringLiteral("SysCodeMng.ini");
const QString g_strSettingsSection = QStringLiteral("SysCodeConfig");
const QString g_strDispAddedMsgKey = QStringLiteral("DispAddedMsg");

QString SysCodeSettingsPath(const QString& profileFolder)
{
    return QDir(profileFolder).filePath(g_strSettingsFileName);
}

bool SaveDispAddedMsgSetting(const QString& profileFolder, int value)
{
    // An empty folder would mean the working directory: never write there.
    if (profileFolder.isEmpty())
        return false;
    return WriteProfileString(g_strSettingsSection, g_strDispAddedMsgKey,
        value != 0 ? QStringLiteral("1") : QStringLiteral("0"), SysCodeSettingsPath(profileFolder));
}
