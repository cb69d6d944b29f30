#include "Specialty.h"

const QString g_strSpecWater = QStringLiteral("给排水");
const QString g_strSpecElectrical = QStringLiteral("电气");
const QString g_strSpecHvac = QStringLiteral("暖通");
const QString g_strSpecFire = QStringLiteral("消防");
const QString g_strSpecLowVoltage = QStringLiteral("弱电");

bool IsElectricalSpec(const QString& spec)
{
    return spec == g_strSpecElectrical || spec == g_strSpecLowVoltage;
}

bool GetDefaultSysNames(QString spec, QStringList& out)
{
    out.clear();
    if (spec == g_strSpecWater) {
        out = { QStringLiteral("生活给水"), QStringLiteral("生活排水"), QStringLiteral("生活污水"),
            QStringLiteral("消防水"), QStringLiteral("喷淋水"), QStringLiteral("雨水"),
            QStringLiteral("空调水") };
    } else if (spec == g_strSpecElectrical) {
        out = { QStringLiteral("公共照明"), QStringLiteral("公共插座"), QStringLiteral("区域照明"),
            QStringLiteral("机房动力"), QStringLiteral("弱电通信") };
    } else if (spec == g_strSpecHvac) {
        out = { QStringLiteral("供暖系统"), QStringLiteral("送风系统"), QStringLiteral("冷水系统"),
            QStringLiteral("热水系统") };
    } else if (spec == g_strSpecFire) {
        out = { QStringLiteral("喷淋水"), QStringLiteral("消防水"), QStringLiteral("气体灭火系统"),
            QStringLiteral("泡沫灭火系统") };
    }
    return true;
}
