#include "SysCodeIcon.h"

#include "Resource.h"

#include <QPainter>
#include <QPixmap>

namespace {
// A small tree of coloured code swatches: the dialog's subject at a glance.
QPixmap drawTreeIcon(int size)
{
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    const qreal u = size / 16.0;
    p.setPen(QPen(QColor(80, 80, 80), u));
    p.drawLine(QPointF(3.5 * u, 4 * u), QPointF(3.5 * u, 12.5 * u));
    p.drawLine(QPointF(3.5 * u, 8.5 * u), QPointF(7 * u, 8.5 * u));
    p.drawLine(QPointF(3.5 * u, 12.5 * u), QPointF(7 * u, 12.5 * u));
    const struct
    {
        QRectF rect;
        QColor colour;
    } swatches[] = {
        { QRectF(1 * u, 1 * u, 8 * u, 4 * u), QColor(0, 120, 215) },
        { QRectF(7 * u, 6.5 * u, 8 * u, 4 * u), QColor(0, 170, 80) },
        { QRectF(7 * u, 10.5 * u, 8 * u, 4 * u), QColor(230, 120, 0) },
    };
    for (const auto& s : swatches) {
        p.setPen(QPen(QColor(40, 40, 40), 0.6 * u));
        p.setBrush(s.colour);
        p.drawRect(s.rect);
    }
    return pixmap;
}
} // namespace

QIcon LoadSysCodeIcon(int resourceId)
{
    if (resourceId != IDI_SYSCODE_ICON)
        return QIcon();
    QIcon icon;
    for (int size : { 16, 32, 48 })
        icon.addPixmap(drawTreeIcon(size));
    return icon;
}
