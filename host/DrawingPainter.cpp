#include "DrawingPainter.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

DrawingPainter::DrawingPainter(QPainter& painter, const QSize& size, const QPointF& centre, double scale)
    : m_painter(painter)
    , m_size(size)
    , m_centre(centre)
    , m_scale(scale)
    , m_dotted(std::size_t(std::max(0, size.width())) * std::size_t(std::max(0, size.height())), false)
{
    m_painter.setBrush(Qt::NoBrush);
}

QPointF DrawingPainter::ToScreen(const QPointF& world) const
{
    return QPointF(m_size.width() / 2.0 + (world.x() - m_centre.x()) * m_scale,
        m_size.height() / 2.0 - (world.y() - m_centre.y()) * m_scale);
}

void DrawingPainter::UsePen(QRgb color, double width)
{
    if (color == m_penColor && width == m_penWidth)
        return;
    QPen pen(QColor::fromRgba(color), width);
    pen.setCosmetic(true);
    pen.setCapStyle(Qt::FlatCap);
    m_painter.setPen(pen);
    m_penColor = color;
    m_penWidth = width;
}

bool DrawingPainter::TakePixel(int x, int y)
{
    if (x < 0 || y < 0 || x >= m_size.width() || y >= m_size.height())
        return false;
    const std::size_t at = std::size_t(y) * std::size_t(m_size.width()) + std::size_t(x);
    if (m_dotted[at])
        return false;
    m_dotted[at] = true;
    return true;
}

void DrawingPainter::PaintText(const DisplayText& text, const QColor& color)
{
    const double pixels = text.height * m_scale;
    if (pixels < kMinTextPixels || pixels > kMaxTextPixels || text.text.isEmpty())
        return;
    // The characters are drawn in a font of a fixed size, stretched into the
    // text's own frame: one height along its baseline, one up (y down on screen).
    constexpr int kFontPixels = 64;
    QFont font = m_painter.font();
    font.setPixelSize(kFontPixels);
    const double natural = QFontMetricsF(font).horizontalAdvance(text.text);
    if (natural <= 0)
        return;
    const double along = text.advance > 0 ? text.advance / natural : 1.0 / kFontPixels;
    // Capitals fill about seven tenths of a font's pixel size.
    const double up = 1.0 / (0.7 * kFontPixels);
    const QTransform glyphs(along, 0, 0, -up, 0, 0);
    const QTransform frame(
        text.xAxis.x(), text.xAxis.y(), text.yAxis.x(), text.yAxis.y(), text.at.x(), text.at.y());
    const QTransform screen(m_scale, 0, 0, -m_scale, m_size.width() / 2.0 - m_centre.x() * m_scale,
        m_size.height() / 2.0 + m_centre.y() * m_scale);
    m_painter.save();
    m_painter.setFont(font);
    m_painter.setPen(color);
    m_painter.setTransform(glyphs * frame * screen, true);
    m_painter.drawText(QPointF(0, 0), text.text);
    m_painter.restore();
    // restore() gave back the pen in use before, so the pen kept in mind still holds.
}

void DrawingPainter::PaintFill(std::span<const QPointF> points, const QColor& color)
{
    QPainterPath path;
    path.setFillRule(Qt::OddEvenFill);
    QPolygonF ring;
    QRectF covered;
    for (const QPointF& point : points) {
        if (std::isfinite(point.x())) {
            ring.append(ToScreen(point));
            continue;
        }
        covered |= ring.boundingRect();
        path.addPolygon(ring);
        path.closeSubpath();
        ring.clear();
    }
    // An area off the view is not filled; one smaller than a pixel is a dot.
    if (!covered.intersects(QRectF(QPointF(-1, -1), QSizeF(m_size.width() + 2, m_size.height() + 2))))
        return;
    if (covered.width() < 1 && covered.height() < 1) {
        const QPointF centre = covered.center();
        if (TakePixel(int(std::floor(centre.x())), int(std::floor(centre.y())))) {
            UsePen(color.rgba(), 0);
            m_painter.drawPoint(QPointF(std::floor(centre.x()), std::floor(centre.y())));
        }
        return;
    }
    m_painter.save();
    m_painter.setPen(Qt::NoPen);
    m_painter.fillPath(path, color);
    m_painter.restore();
}

void DrawingPainter::Paint(const DisplayPrimitive& primitive, const QColor* highlight)
{
    const QRgb color = highlight ? highlight->rgba() : primitive.look.color;
    if (primitive.kind == DisplayItem::Text) {
        PaintText(*primitive.text, QColor::fromRgba(color));
        return;
    }
    if (primitive.kind == DisplayItem::Fill) {
        PaintFill(primitive.points, QColor::fromRgba(color));
        return;
    }
    const double width
        = highlight ? std::max(2.0, double(primitive.look.width)) : double(primitive.look.width);
    // Where it lies on the view decides how it is drawn, if at all: a floor seen
    // whole is mostly entities off the view or smaller than a pixel.
    const std::span<const QPointF> points = primitive.points;
    const QPointF start = ToScreen(points.front());
    double left = start.x();
    double right = left;
    double top = start.y();
    double bottom = top;
    for (const QPointF& point : points.subspan(1)) {
        const QPointF p = ToScreen(point);
        left = std::min(left, p.x());
        right = std::max(right, p.x());
        top = std::min(top, p.y());
        bottom = std::max(bottom, p.y());
    }
    const double margin = width / 2 + 1;
    if (right < -margin || bottom < -margin || left > m_size.width() + margin
        || top > m_size.height() + margin)
        return;
    if (right - left < 1.0 && bottom - top < 1.0) {
        const int x = int(std::floor((left + right) / 2));
        const int y = int(std::floor((top + bottom) / 2));
        if (TakePixel(x, y) || highlight) {
            UsePen(color, width);
            m_painter.drawPoint(QPointF(x, y));
        }
        return;
    }
    m_screen.resize(qsizetype(points.size()));
    QPointF* screen = m_screen.data();
    for (const QPointF& point : points)
        *screen++ = ToScreen(point);
    UsePen(color, width);
    if (m_screen.size() == 1)
        m_painter.drawPoint(m_screen[0]);
    else if (primitive.closed)
        m_painter.drawPolygon(m_screen);
    else if (m_screen.size() == 2)
        m_painter.drawLine(m_screen[0], m_screen[1]);
    else
        m_painter.drawPolyline(m_screen);
}
