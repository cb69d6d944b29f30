// The view's painter on an image of 100 × 100 pixels, one pixel per drawing unit,
// the drawing's (50, 50) in the middle (y up): lines in their own colours, what is
// smaller than a pixel as one dot per pixel, the first there, and a highlighted
// entity always over it.
#include "DrawingPainter.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <limits>
#include <utility>
#include <vector>

namespace {
constexpr QRgb kBackground = 0xFF000000;
constexpr QRgb kRed = 0xFFFF0000;
constexpr QRgb kBlue = 0xFF0000FF;
constexpr QRgb kGreen = 0xFF00FF00;

class Canvas
{
public:
    Canvas()
        : m_image(100, 100, QImage::Format_ARGB32)
    {
        m_image.fill(kBackground);
    }

    // Paints the paths, each {points, colour, highlighted}, in order.
    struct Path
    {
        std::vector<QPointF> points;
        QRgb color;
        bool highlighted = false;
    };
    void Paint(const std::vector<Path>& paths)
    {
        QPainter painter(&m_image);
        DrawingPainter drawing(painter, m_image.size(), QPointF(50, 50), 1.0);
        const QColor highlight(kGreen);
        for (const Path& path : paths) {
            DisplayPrimitive primitive;
            primitive.points = path.points;
            primitive.look = { path.color, 0.0f };
            drawing.Paint(primitive, path.highlighted ? &highlight : nullptr);
        }
    }
    // Paints one primitive as the list hands it over.
    void Paint(const DisplayPrimitive& primitive)
    {
        QPainter painter(&m_image);
        DrawingPainter drawing(painter, m_image.size(), QPointF(50, 50), 1.0);
        drawing.Paint(primitive, nullptr);
    }
    // Painted pixels left and right of x = 50.
    std::pair<int, int> PaintedBesideMiddle() const
    {
        std::pair<int, int> count;
        for (int y = 0; y < m_image.height(); ++y)
            for (int x = 0; x < m_image.width(); ++x)
                if (m_image.pixel(x, y) != kBackground)
                    ++(x < 50 ? count.first : count.second);
        return count;
    }
    // The pixel whose top left corner is the drawing point (x, y + 1).
    QRgb At(int x, int y) const { return m_image.pixel(x, 100 - y); }
    int Painted() const
    {
        int count = 0;
        for (int y = 0; y < m_image.height(); ++y)
            for (int x = 0; x < m_image.width(); ++x)
                count += m_image.pixel(x, y) != kBackground;
        return count;
    }

private:
    QImage m_image;
};
} // namespace

TEST(DrawingPainter, LinesShowInTheirOwnColoursOneAfterTheOther)
{
    Canvas canvas;
    canvas.Paint({ { { { 10, 20 }, { 90, 20 } }, kRed }, { { { 10, 40 }, { 90, 40 } }, kBlue },
        { { { 10, 60 }, { 50, 60 }, { 50, 80 } }, kRed } });
    EXPECT_EQ(canvas.At(50, 20), kRed);
    EXPECT_EQ(canvas.At(50, 40), kBlue);
    EXPECT_EQ(canvas.At(30, 60), kRed);
    EXPECT_EQ(canvas.At(50, 70), kRed);
    EXPECT_EQ(canvas.At(50, 50), kBackground);
}

TEST(DrawingPainter, WhatIsSmallerThanAPixelIsOneDotThereTheFirstOneUnlessHighlighted)
{
    Canvas canvas;
    std::vector<Canvas::Path> stacked;
    for (int i = 0; i < 1000; ++i)
        stacked.push_back(
            { { { 30.2, 29.7 + i * 0.0002 }, { 30.4, 29.7 + i * 0.0002 } }, i == 0 ? kRed : kBlue });
    // Apart: a dot each.
    stacked.push_back({ { { 70.3, 69.7 }, { 70.4, 69.6 } }, kBlue });
    stacked.push_back({ { { 72.3, 69.7 } }, kBlue });
    canvas.Paint(stacked);
    EXPECT_EQ(canvas.At(30, 30), kRed);
    EXPECT_EQ(canvas.At(70, 70), kBlue);
    EXPECT_EQ(canvas.At(72, 70), kBlue);
    EXPECT_EQ(canvas.Painted(), 3);

    canvas.Paint({ { { { 30.2, 29.7 }, { 30.3, 29.7 } }, kBlue, true } });
    EXPECT_EQ(canvas.At(30, 30), kGreen);
}

TEST(DrawingPainter, AreasFillInsideTheirOuterRingAndOutsideTheirHoles)
{
    const double none = std::numeric_limits<double>::quiet_NaN();
    const std::vector<QPointF> rings { { 10, 10 }, { 90, 10 }, { 90, 90 }, { 10, 90 }, { none, none },
        { 40, 40 }, { 60, 40 }, { 60, 60 }, { 40, 60 }, { none, none } };
    Canvas canvas;
    DisplayPrimitive area;
    area.kind = DisplayItem::Fill;
    area.points = rings;
    area.look = { kRed, 0.0f };
    canvas.Paint(area);
    EXPECT_EQ(canvas.At(20, 20), kRed);
    EXPECT_EQ(canvas.At(80, 70), kRed);
    EXPECT_EQ(canvas.At(50, 50), kBackground);
    EXPECT_EQ(canvas.At(5, 50), kBackground);
}

TEST(DrawingPainter, TextsFollowTheirFrameMirroredOrNot)
{
    // A text starting in the middle, 20 high, advancing 2 heights: to the right,
    // or to the left when its baseline runs backwards (mirrored in x).
    for (const double direction : { 1.0, -1.0 }) {
        Canvas canvas;
        DisplayText text { { 50, 40 }, QStringLiteral("WW"), 20, 0, { 20 * direction, 0 }, { 0, 20 }, 2 };
        DisplayPrimitive primitive;
        primitive.kind = DisplayItem::Text;
        primitive.points = { &text.at, 1 };
        primitive.look = { kRed, 0.0f };
        primitive.text = &text;
        canvas.Paint(primitive);
        const auto [left, right] = canvas.PaintedBesideMiddle();
        EXPECT_GT(direction > 0 ? right : left, 30) << direction;
        EXPECT_LT(direction > 0 ? left : right, 5) << direction;
    }
}
