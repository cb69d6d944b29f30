// The vertices of a polyline in their own storage: growth, insertion and copies
// keep them in order, on the heap or in a reader's arena alike.
#include "ZcDbPolyline.h"
#include "ZcDbObjectArena.h"

#include <gtest/gtest.h>

#include <memory>
#include <vector>

namespace {
using Vertex = ZcDbPolyline::Vertex;

void expectVertices(const ZcDbPolyline& polyline, const std::vector<Vertex>& expected)
{
    const auto vertices = polyline.vertices();
    ASSERT_EQ(vertices.size(), expected.size());
    ASSERT_EQ(polyline.numVerts(), int(expected.size()));
    for (size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(vertices[i].x, expected[i].x) << i;
        EXPECT_EQ(vertices[i].y, expected[i].y) << i;
        EXPECT_EQ(vertices[i].bulge, expected[i].bulge) << i;
    }
}

// Appends and inserts the same vertices into the polyline and a plain list.
void buildAlike(ZcDbPolyline& polyline, std::vector<Vertex>& model, int count)
{
    for (int n = 0; n < count; ++n) {
        const Vertex v { double(n), double(-n), n * 0.125 };
        if (n % 3 == 2) {
            const int at = n % 2 ? 0 : int(model.size() / 2);
            ASSERT_EQ(polyline.addVertexAt(at, { v.x, v.y, 0 }, v.bulge), Zcad::eOk);
            model.insert(model.begin() + at, v);
        } else {
            polyline.appendVertex(v.x, v.y, v.bulge);
            model.push_back(v);
        }
    }
}
} // namespace

TEST(ZcDbPolyline, VerticesKeepTheirOrderThroughGrowthInsertionAndCopies)
{
    ZcDbPolyline polyline;
    std::vector<Vertex> model;
    expectVertices(polyline, model);
    buildAlike(polyline, model, 100);
    expectVertices(polyline, model);
    EXPECT_EQ(polyline.addVertexAt(int(model.size()), { 7, 7, 0 }, 0.5), Zcad::eOk);
    model.push_back({ 7, 7, 0.5 });
    EXPECT_EQ(polyline.addVertexAt(int(model.size()) + 1, { 8, 8, 0 }), Zcad::eInvalidIndex);
    EXPECT_EQ(polyline.addVertexAt(-1, { 8, 8, 0 }), Zcad::eInvalidIndex);
    expectVertices(polyline, model);

    std::unique_ptr<ZcDbEntity> copy(polyline.clone());
    auto* copied = ZcDbPolyline::cast(copy.get());
    ASSERT_NE(copied, nullptr);
    polyline.appendVertex(1, 2);
    expectVertices(*copied, model);
    EXPECT_NE(copied->vertices().data(), polyline.vertices().data());

    ZcDbPolyline empty;
    std::unique_ptr<ZcDbEntity> emptyCopy(empty.clone());
    EXPECT_EQ(ZcDbPolyline::cast(emptyCopy.get())->numVerts(), 0);
}

TEST(ZcDbPolyline, APolylineMadeInAnArenaKeepsItsVerticesThereUntilItGrowsOutside)
{
    ZcDbObjectArena arena;
    std::unique_ptr<ZcDbPolyline> polyline;
    std::vector<Vertex> model;
    {
        const ZcDbObjectArena::Scope scope(arena);
        polyline = std::make_unique<ZcDbPolyline>();
        polyline->reserveVertices(3);
        buildAlike(*polyline, model, 3);
        EXPECT_TRUE(arena.contains(polyline.get()));
        EXPECT_TRUE(arena.contains(polyline->vertices().data()));
    }
    // Copies and growth outside the scope take heap memory; the contents stay.
    std::unique_ptr<ZcDbEntity> copy(polyline->clone());
    EXPECT_FALSE(arena.contains(ZcDbPolyline::cast(copy.get())->vertices().data()));
    expectVertices(*ZcDbPolyline::cast(copy.get()), model);
    buildAlike(*polyline, model, 40);
    EXPECT_FALSE(arena.contains(polyline->vertices().data()));
    expectVertices(*polyline, model);
}
