// Box selection on the display list: window takes what lies wholly inside,
// crossing what the box touches, lines along an axis included.
#include "DisplayList.h"

#include <gtest/gtest.h>

namespace {
DisplayList MakeList()
{
    DisplayList list;
    const auto add = [&list](quint32 index, std::vector<QPointF> points) {
        list.AddPath(points, false, 0, 0.0f);
        list.EndEntity(ZcDbObjectId(1, index));
    };
    add(1, { { 0, 0 }, { 10, 0 } }); // horizontal line
    add(2, { { 5, -5 }, { 5, 5 } }); // vertical line
    add(3, { { 20, 20 }, { 30, 20 }, { 30, 30 } }); // polyline far off
    add(4, { { -10, -10 }, { 40, -10 }, { 40, 40 } }); // L around everything
    list.AddText({ 2, 2 }, QStringLiteral("WS"), 1, 0, 0);
    list.EndEntity(ZcDbObjectId(1, 5));
    return list;
}

std::vector<quint32> Indexes(const std::vector<ZcDbObjectId>& ids)
{
    std::vector<quint32> out;
    for (const ZcDbObjectId& id : ids)
        out.push_back(id.index());
    return out;
}
} // namespace

TEST(DisplayList, WindowAndCrossingSelection)
{
    const DisplayList list = MakeList();
    struct Case
    {
        QRectF box;
        bool crossing;
        std::vector<quint32> expected;
    } cases[] = {
        { QRectF(QPointF(-1, -6), QPointF(11, 6)), false, { 1, 2, 5 } },
        { QRectF(QPointF(-1, -1), QPointF(11, 1)), false, { 1 } },
        { QRectF(QPointF(-1, -1), QPointF(11, 1)), true, { 1, 2 } },
        // A box inside the L's corner touches no segment of it.
        { QRectF(QPointF(19, 19), QPointF(31, 31)), true, { 3 } },
        { QRectF(QPointF(35, -15), QPointF(45, 0)), true, { 4 } },
        { QRectF(QPointF(100, 100), QPointF(200, 200)), true, {} },
    };
    for (const Case& c : cases)
        EXPECT_EQ(Indexes(list.Select(c.box, c.crossing)), c.expected)
            << c.box.left() << "," << c.box.top() << " crossing " << c.crossing;
    EXPECT_EQ(list.Bounds(), QRectF(QPointF(-10, -10), QPointF(40, 40)));
}
