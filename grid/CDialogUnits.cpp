#include "CDialogUnits.h"

#include <QFont>
#include <QFontMetrics>

namespace {
// a·b/c rounded to the nearest integer, halves away from zero.
int mulDiv(int a, int b, int c)
{
    const long long product = static_cast<long long>(a) * b;
    const long long half = c / 2;
    return static_cast<int>(product >= 0 ? (product + half) / c : (product - half) / c);
}
} // namespace

QSize CDialogUnits::BaseUnits(const QFont& font)
{
    const QFontMetrics metrics(font);
    const QString letters = QStringLiteral("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz");
    const int cx = (metrics.horizontalAdvance(letters) / 26 + 1) / 2;
    return QSize(std::max(1, cx), std::max(1, metrics.height()));
}

QRect CDialogUnits::ToPixels(const QRect& du, const QSize& base)
{
    const int left = mulDiv(du.x(), base.width(), 4);
    const int top = mulDiv(du.y(), base.height(), 8);
    const int right = mulDiv(du.x() + du.width(), base.width(), 4);
    const int bottom = mulDiv(du.y() + du.height(), base.height(), 8);
    return QRect(left, top, right - left, bottom - top);
}

QRect CDialogUnits::ToPixels(const QRect& dialogUnits, const QFont& font)
{
    return ToPixels(dialogUnits, BaseUnits(font));
}
