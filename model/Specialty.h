#pragma once

// The specialties the module knows by name, which of them are electrical, and the
// catalogue of default top-level system names. Names compare exactly, untrimmed.
#include <QString>
#include <QStringList>

extern const QString g_strSpecWater; // 给排水
extern const QString g_strSpecElectrical; // 电气
extern const QString g_strSpecHvac; // 暖通
extern const QString g_strSpecFire; // 消防
extern const QString g_strSpecLowVoltage; // 弱电

// True for the electrical specialties, whose codes carry the electrical-only
// attributes.
bool IsElectricalSpec(const QString& spec);

// Clears `out` and fills it with the specialty's default system names in catalogue
// order; a specialty without defaults leaves it empty. Always true.
bool GetDefaultSysNames(QString spec, QStringList& out);
