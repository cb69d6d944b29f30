#include "CQVSpecTypeInfoGet.h"

namespace {
struct SpecName
{
    ESysCodeSpecType type;
    const char16_t* name;
};
constexpr SpecName kSpecs[] = {
    { eSpecWaterSupply, u"给排水" },
    { eSpecHvac, u"暖通" },
    { eSpecElectric, u"电气" },
    { eSpecFire, u"消防" },
    { eSpecWeakElectric, u"弱电" },
};
} // namespace

ESysCodeSpecType CQVSpecTypeInfoGet::GetSpecTypeByName(const QString& spec)
{
    for (const SpecName& s : kSpecs) {
        if (spec == QString::fromUtf16(s.name))
            return s.type;
    }
    return eSpecNone;
}

ESysCodeSpecType CQVSpecTypeInfoGet::GetSpecTypeByName(const wchar_t* spec)
{
    return spec ? GetSpecTypeByName(QString::fromWCharArray(spec)) : eSpecNone;
}

QString CQVSpecTypeInfoGet::GetSpecNameByType(int type)
{
    for (const SpecName& s : kSpecs) {
        if (s.type == type)
            return QString::fromUtf16(s.name);
    }
    return QString();
}
