// The display list: box selection (window takes what lies wholly inside, crossing
// what the box touches, lines along an axis included), lines and polylines drawn
// from the drawing itself, and two lists joined.
#include "DisplayList.h"

#include "TestDrawing.h"
#include "ZcDbLine.h"
#include "ZcDbPolyline.h"

#include <gtest/gtest.h>

#include <utility>

namespace {
DisplayList MakeList()
{
    DisplayList list;
    const auto add = [&list](quint32 index, std::vector<QPointF> points) {
        list.AddPath(points, false, {});
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

namespace {
std::vector<std::vector<QPointF>> PathsOf(const DisplayList& list, std::size_t entity)
{
    std::vector<std::vector<QPointF>> paths;
    list.ForEachPrimitive(entity, [&paths](const DisplayPrimitive& primitive) {
        paths.emplace_back(primitive.points.begin(), primitive.points.end());
    });
    return paths;
}
} // namespace

// A line or polyline is drawn from the drawing as it is now: moved, it shows and
// is picked where it went; erased, it shows nothing and is never picked.
TEST(DisplayList, ShapesShowTheDrawingAsItIsNow)
{
    ZcDbDatabase drawing;
    auto* polyline = new ZcDbPolyline;
    polyline->appendVertex(0, 0);
    polyline->appendVertex(10, 0);
    polyline->appendVertex(10, 10);
    polyline->setClosed(true);
    const ZcDbObjectId square = AppendTo(drawing, polyline);
    const ZcDbObjectId line = AppendTo(drawing, new ZcDbLine({ 20, 0, 0 }, { 30, 0, 0 }));
    DisplayList list;
    list.AddShape(square, std::vector<QPointF> { { 0, 0 }, { 10, 0 }, { 10, 10 } }, DisplayLook { 1, 0 });
    list.AddShape(line, std::vector<QPointF> { { 20, 0 }, { 30, 0 } }, DisplayLook { 2, 0 });
    ASSERT_EQ(list.Entities().size(), 2u);
    EXPECT_EQ(PathsOf(list, 0),
        (std::vector<std::vector<QPointF>> { { { 0, 0 }, { 10, 0 }, { 10, 10 }, { 0, 0 } } }));
    // The closing side counts for a crossing box.
    EXPECT_EQ(Indexes(list.Select(QRectF(QPointF(4, 4), QPointF(6, 6)), true)),
        (std::vector<quint32> { square.index() }));

    ZcDbLine* opened = nullptr;
    ASSERT_EQ(zcdbOpenObject(opened, line, ZcDb::kForWrite), Zcad::eOk);
    opened->setStartPoint({ 20, 50, 0 });
    opened->setEndPoint({ 30, 50, 0 });
    opened->close();
    EXPECT_EQ(PathsOf(list, 1), (std::vector<std::vector<QPointF>> { { { 20, 50 }, { 30, 50 } } }));
    EXPECT_EQ(Indexes(list.Select(QRectF(QPointF(15, 45), QPointF(35, 55)), false)),
        (std::vector<quint32> { line.index() }));

    ZcDbEntity* erased = nullptr;
    ASSERT_EQ(zcdbOpenObject(erased, square, ZcDb::kForWrite), Zcad::eOk);
    erased->erase();
    erased->close();
    EXPECT_TRUE(PathsOf(list, 0).empty());
    EXPECT_TRUE(list.Select(QRectF(QPointF(-100, -100), QPointF(100, 100)), false)
        == std::vector<ZcDbObjectId> { line });
}

// Two lists of one drawing joined: the second's entities follow in order with
// their own points, texts and looks, and the bounds cover both.
TEST(DisplayList, AppendKeepsOrderPointsTextsAndLooks)
{
    DisplayList first;
    first.AddPath(std::vector<QPointF> { { 0, 0 }, { 1, 1 } }, false, { 10, 1.0f });
    first.EndEntity(ZcDbObjectId(1, 1));
    first.AddText({ 2, 2 }, QStringLiteral("A"), 1, 0, 20);
    first.EndEntity(ZcDbObjectId(1, 2));
    DisplayList second;
    second.AddText({ 50, 50 }, QStringLiteral("B"), 1, 0, 30);
    second.AddPath(std::vector<QPointF> { { 60, 60 }, { 70, 70 } }, true, { 20, 0.0f });
    second.EndEntity(ZcDbObjectId(1, 3));
    second.AddPath(std::vector<QPointF> { { -5, 80 } }, false, { 10, 1.0f });
    second.EndEntity(ZcDbObjectId(1, 4));
    first.Append(std::move(second));

    struct Seen
    {
        quint32 entity;
        QPointF at;
        QString text;
        QRgb color;
        bool closed;
        bool operator==(const Seen&) const = default;
    };
    std::vector<Seen> seen;
    for (std::size_t i = 0; i < first.Entities().size(); ++i)
        first.ForEachPrimitive(i, [&](const DisplayPrimitive& p) {
            seen.push_back({ first.IdOf(first.Entities()[i]).index(), p.points.front(),
                p.text ? p.text->text : QString(), p.look.color, p.closed });
        });
    const std::vector<Seen> expected { { 1, { 0, 0 }, {}, 10, false },
        { 2, { 2, 2 }, QStringLiteral("A"), 20, false }, { 3, { 50, 50 }, QStringLiteral("B"), 30, false },
        { 3, { 60, 60 }, {}, 20, true }, { 4, { -5, 80 }, {}, 10, false } };
    EXPECT_TRUE(seen == expected);
    EXPECT_EQ(first.Bounds(), QRectF(QPointF(-5, 0), QPointF(70, 80)));
}
