#pragma once

// Paints the display list's primitives on the drawing view, in drawing order. A
// floor seen whole puts many entities on one pixel: what lies off the view is
// skipped, an entity smaller than a pixel is drawn as a dot, once per pixel (the
// first one there, or a highlighted one over it), and the pen is set only when the
// look changes.
#include "DisplayList.h"

#include <QColor>
#include <QPointF>
#include <QPolygonF>
#include <QSize>

#include <span>
#include <vector>

class QPainter;

class DrawingPainter
{
public:
    // `centre` is the drawing point shown in the middle of a view of `size` pixels,
    // at `scale` pixels per drawing unit (y up).
    DrawingPainter(QPainter& painter, const QSize& size, const QPointF& centre, double scale);

    void Paint(const DisplayPrimitive& primitive, const QColor* highlight);

    static constexpr double kMinTextPixels = 2.0;
    static constexpr double kMaxTextPixels = 4000.0;

private:
    QPointF ToScreen(const QPointF& world) const;
    void PaintText(const DisplayText& text, const QColor& color);
    void PaintFill(std::span<const QPointF> points, const QColor& color);
    void UsePen(QRgb color, double width);
    // Marks the pixel; false when it was marked already or lies off the view.
    bool TakePixel(int x, int y);

    QPainter& m_painter;
    QSize m_size;
    QPointF m_centre;
    double m_scale;
    QPolygonF m_screen;
    std::vector<bool> m_dotted;
    QRgb m_penColor = 0;
    double m_penWidth = -1.0; // none set yet
};
