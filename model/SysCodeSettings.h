#pragma once

// The module's one user setting: whether the attribute bar shows each code's
// pipeline information and remark. It lives in "SysCodeMng.ini" in the application
// profile's folder, which the data service reads and this module writes.
#include <QString>

extern const QString g_strSettingsFileName; // SysCodeMng.ini
extern const QString g_strSettingsSection; // SysCodeConfig
extern const QString g_strDispAddedMsgKey; // DispAddedMsg

// The settings file in `profileFolder`.
QString SysCodeSettingsPath(const QString& profileFolder);

// Stores "1" for a non-zero `value`, else "0", keeping the rest of the file. False
// when the write failed (missing or read-only folder, no folder given); the setting
// then simply keeps its old value.
bool SaveDispAddedMsgSetting(const QString& profileFolder, int value);
