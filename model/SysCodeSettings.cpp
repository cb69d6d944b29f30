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

QvKsWriteStatus SaveDispAddedMsgSetting(const QString& profileFolder, int value, const QString& projectFolder)
{
    // An empty folder would mean the working directory: never write there.
    if (profileFolder.isEmpty())
        return QvKsWriteStatus::Failure(
            QvKsWriteStatus::Kind::Path, g_strSettingsFileName, QStringLiteral("no profile folder"));
    return WriteProfileString(g_strSettingsSection, g_strDispAddedMsgKey,
        value != 0 ? QStringLiteral("1") : QStringLiteral("0"), SysCodeSettingsPath(profileFolder),
        projectFolder);
}
