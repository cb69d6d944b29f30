#include "SysCodeValueRange.h"

#include "CSysCodeData.h"

bool IsSysLineWidthInRange(double width)
{
    // NaN fails both comparisons, and so does every infinity.
    return width == kUnsetSysLineWidth || (width >= kMinSysLineWidth && width <= kMaxSysLineWidth);
}

bool IsSysAlphaInRange(qint64 alpha)
{
    return alpha >= kMinSysAlpha && alpha <= kMaxSysAlpha;
}

bool IsSysColorInRange(quint64 color)
{
    return color <= kMaxSysColor;
}

QString SysCodeValueProblem(const CSysCodeData& code)
{
    if (!IsSysLineWidthInRange(code.GetLineWidth()))
        return QStringLiteral("线宽支持范围0-100：%1").arg(code.GetLineWidth(), 0, 'g', 17);
    if (!IsSysAlphaInRange(code.GetAlpha()))
        return QStringLiteral("透明度仅支持0-100的整数：%1").arg(code.GetAlpha());
    if (!IsSysColorInRange(code.GetMfcColor()))
        return QStringLiteral("颜色不是有效的 RGB 颜色：0x%1")
            .arg(code.GetMfcColor(), 8, 16, QLatin1Char('0'));
    return QString();
}
