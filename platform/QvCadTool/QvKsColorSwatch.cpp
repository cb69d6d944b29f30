#include "QvKsColorSwatch.h"

#include <QMouseEvent>
#include <QPainter>

QvKsColorSwatch::QvKsColorSwatch(int index, COLORREF color, QWidget* parent)
    : QAbstractButton(parent)
    , m_index(index)
    , m_color(color)
{
    setCheckable(true);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_Hover);
    UpdateToolTip();
}

void QvKsColorSwatch::SetColor(int index, COLORREF color)
{
    m_index = index;
    m_color = color;
    UpdateToolTip();
    update();
}

QSize QvKsColorSwatch::sizeHint() const
{
    return { 14, 14 };
}

void QvKsColorSwatch::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect r = rect().adjusted(1, 1, -1, -1);
    painter.fillRect(r, QColor(GetRValue(m_color), GetGValue(m_color), GetBValue(m_color)));
    painter.setPen(QColor(96, 96, 96));
    painter.drawRect(r.adjusted(0, 0, -1, -1));
    if (isChecked() || underMouse()) {
        // The chosen cell gets a frame visible on every colour: black inside white.
        QPen outer(isChecked() ? Qt::white : QColor(200, 200, 200), 1);
        painter.setPen(outer);
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
        painter.setPen(QPen(Qt::black, 1));
        painter.drawRect(rect().adjusted(1, 1, -2, -2));
    }
}

void QvKsColorSwatch::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) {
        setChecked(true);
        Q_EMIT clicked(true);
        Q_EMIT doubleClicked();
        return;
    }
    QAbstractButton::mouseDoubleClickEvent(event);
}

void QvKsColorSwatch::UpdateToolTip()
{
    const QString rgb
        = QStringLiteral("%1,%2,%3").arg(GetRValue(m_color)).arg(GetGValue(m_color)).arg(GetBValue(m_color));
    setToolTip(m_index > 0 ? QStringLiteral("索引颜色：%1\n红,绿,蓝：%2").arg(m_index).arg(rgb)
                           : QStringLiteral("真彩色\n红,绿,蓝：%1").arg(rgb));
}
