#include "SysCodeValueRule.h"

namespace SysCodeValueRule {

QString LineWidthProblem(double width)
{
    // NaN and the infinities fail both comparisons.
    if (width == kUnsetLineWidth || (width >= kMinLineWidth && width <= kMaxLineWidth))
        return QString();
    return QStringLiteral("the line width %1 is outside %2 to %3 mm")
        .arg(width, 0, 'g', 17)
        .arg(kMinLineWidth)
        .arg(kMaxLineWidth);
}

QString AlphaProblem(qint64 alpha)
{
    if (alpha >= kMinAlpha && alpha <= kMaxAlpha)
        return QString();
    return QStringLiteral("the transparency %1 is outside %2 to %3").arg(alpha).arg(kMinAlpha).arg(kMaxAlpha);
}

QString ColorProblem(quint64 color)
{
    if (color <= kMaxColor)
        return QString();
    return QStringLiteral("the colour %1 is not an RGB colour (at most %2)").arg(color).arg(kMaxColor);
}

} // namespace SysCodeValueRule
