#pragma once

// The module's one user setting: whether the attribute bar shows each code's
// pipeline information and remark. It lives in "SysCodeMng.ini" in the application
// profile's folder, which the data service reads and this module writes.
#include "QvKsWriteStatus.h"

#include <QString>

extern const QString g_strSettingsFileName; // SysCodeMng.ini
extern const QString g_strSettingsSection; // SysCodeConfig
extern const QString g_strDispAddedMsgKey; // DispAddedMsg

// The settings file in `profileFolder`.
QString SysCodeSettingsPath(const QString& profileFolder);

// Stores "1" for a non-zero `value`, else "0", keeping the rest of the file. A
// failed write (missing or read-only folder, a full disk, no folder given, a link in
// place of the file, a folder leading out of `projectFolder`) leaves the file as it
// was and says why; the setting then keeps its old value.
QvKsWriteStatus SaveDispAddedMsgSetting(
    const QString& profileFolder, int value, const QString& projectFolder = QString());
