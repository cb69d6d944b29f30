#include "SysCodeDefaults.h"

#include "CSysCodeData.h"

double DefaultSysLineWidth(bool electrical)
{
    return electrical ? 30.0 : 1.0;
}

double EffectiveSysLineWidth(double width, bool electrical)
{
    return width == kUnsetSysLineWidth ? DefaultSysLineWidth(electrical) : width;
}

QString DefaultSysLineStyle()
{
    return QStringLiteral("按字符");
}

void SetBlankSysCodeAttributes(CSysCodeData& code, bool electrical)
{
    code.SetLineStyle(DefaultSysLineStyle());
    code.SetLineWidth(DefaultSysLineWidth(electrical));
    code.SetAlpha(0);
}

void SetBlankSysCodeAttributesUnsetWidth(CSysCodeData& code)
{
    SetBlankSysCodeAttributes(code, false);
    code.SetLineWidth(kUnsetSysLineWidth);
}
