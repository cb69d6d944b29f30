// The arena that holds the objects a drawing reader makes: where its memory goes,
// which objects land in it, and that delete treats arena and heap objects each
// right (the sanitizer build catches a heap free of arena memory and a heap
// object that is never freed).
#include "ZcDbObjectArena.h"
#include "DxfWriter.h"
#include "QvKsEntity.h"
#include "QvKsModelSpace.h"
#include "ZcSdk.h"

#include <QBuffer>

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <set>

namespace {
std::uintptr_t address(const void* p)
{
    return reinterpret_cast<std::uintptr_t>(p);
}

std::shared_ptr<const std::vector<ZcDbXDataApp>> sampleXData()
{
    return std::make_shared<const std::vector<ZcDbXDataApp>>(std::vector<ZcDbXDataApp> {
        { QStringLiteral("QVKS"), { ZcDbXDataValue::string(QStringLiteral("3\\1")) } } });
}
} // namespace

TEST(ZcDbObjectArena, HandsOutAlignedDisjointMemoryItContains)
{
    ZcDbObjectArena arena;
    std::set<std::pair<std::uintptr_t, std::uintptr_t>> ranges;
    std::size_t asked = 0;
    for (std::size_t size : { 1, 7, 8, 13, 88, 120, 128, 4000, 1, 24 }) {
        void* p = arena.allocate(size);
        asked += size;
        EXPECT_EQ(address(p) % ZcDbObjectArena::kAlignment, 0u) << size;
        EXPECT_TRUE(arena.contains(p));
        EXPECT_TRUE(arena.contains(static_cast<char*>(p) + size - 1));
        const auto range = std::make_pair(address(p), address(p) + size);
        const auto next = ranges.lower_bound(range);
        if (next != ranges.end()) {
            EXPECT_LE(range.second, next->first);
        }
        if (next != ranges.begin()) {
            EXPECT_LE(std::prev(next)->second, range.first);
        }
        ranges.insert(range);
    }
    EXPECT_GE(arena.bytesUsed(), asked);
    EXPECT_LT(arena.bytesUsed(), asked + 10 * ZcDbObjectArena::kAlignment);

    int onStack = 0;
    const auto onHeap = std::make_unique<int>(0);
    EXPECT_FALSE(arena.contains(&onStack));
    EXPECT_FALSE(arena.contains(onHeap.get()));
}

TEST(ZcDbObjectArena, LargeAndManyAllocationsSpanBlocksAndStayContained)
{
    ZcDbObjectArena arena;
    char* small = static_cast<char*>(arena.allocate(64));
    // Larger than half a block: a block of its own, while the current block goes
    // on being filled right after the small piece.
    char* large = static_cast<char*>(arena.allocate(ZcDbObjectArena::kBlockSize * 3 / 2));
    char* after = static_cast<char*>(arena.allocate(64));
    EXPECT_EQ(after, small + 64);
    EXPECT_TRUE(arena.contains(large));
    EXPECT_TRUE(arena.contains(large + ZcDbObjectArena::kBlockSize * 3 / 2 - 1));
    large[0] = large[ZcDbObjectArena::kBlockSize * 3 / 2 - 1] = 'x';

    // Filling several blocks: every piece stays findable, the first ones too.
    std::vector<char*> pieces;
    for (std::size_t used = 0; used < 3 * ZcDbObjectArena::kBlockSize; used += 1000) {
        pieces.push_back(static_cast<char*>(arena.allocate(1000)));
        pieces.back()[999] = 'y';
    }
    for (char* piece : pieces)
        ASSERT_TRUE(arena.contains(piece + 999));
    EXPECT_TRUE(arena.contains(small));
}

TEST(ZcDbObjectArena, ObjectsMadeInAScopeLiveInTheArenaAndDeleteRunsTheirDestructor)
{
    const auto xdata = sampleXData();
    ZcDbObjectArena arena;
    ZcDbLine* inArena = nullptr;
    QvKsEntity* product = nullptr;
    {
        const ZcDbObjectArena::Scope scope(arena);
        EXPECT_EQ(ZcDbObjectArena::current(), &arena);
        inArena = new ZcDbLine({ 0, 0, 0 }, { 1, 0, 0 });
        inArena->setXDataAll(xdata);
        // The shape is made while the product entity's memory is already taken.
        product
            = new QvKsEntity(std::make_unique<ZcDbLine>(ZcGePoint3d { 0, 0, 0 }, ZcGePoint3d { 2, 0, 0 }));
    }
    EXPECT_EQ(ZcDbObjectArena::current(), nullptr);
    EXPECT_TRUE(arena.contains(inArena));
    EXPECT_TRUE(arena.contains(product));
    EXPECT_TRUE(arena.contains(product->shape()));
    EXPECT_EQ(xdata.use_count(), 2);
    const std::size_t used = arena.bytesUsed();

    // Made outside any scope: the heap's, and deleted there.
    auto* onHeap = new ZcDbLine({ 0, 0, 0 }, { 1, 0, 0 });
    EXPECT_FALSE(arena.contains(onHeap));
    EXPECT_EQ(arena.bytesUsed(), used);
    ZcDbEntity* copy = inArena->clone();
    EXPECT_FALSE(arena.contains(copy));
    delete copy;

    delete inArena;
    EXPECT_EQ(xdata.use_count(), 1);
    delete product;
    {
        // A heap object deleted while a scope is active is still freed.
        const ZcDbObjectArena::Scope scope(arena);
        delete onHeap;
    }
}

TEST(ZcDbObjectArena, ScopesNestAndRestoreTheOuterArena)
{
    ZcDbObjectArena outer;
    ZcDbObjectArena inner;
    const ZcDbObjectArena::Scope outerScope(outer);
    {
        const ZcDbObjectArena::Scope innerScope(inner);
        std::unique_ptr<ZcDbObject> line = std::make_unique<ZcDbLine>();
        EXPECT_TRUE(inner.contains(line.get()));
        EXPECT_FALSE(outer.contains(line.get()));
    }
    EXPECT_EQ(ZcDbObjectArena::current(), &outer);
    std::unique_ptr<ZcDbObject> line = std::make_unique<ZcDbLine>();
    EXPECT_TRUE(outer.contains(line.get()));
}

TEST(ZcDbObjectArena, ADrawingReadKeepsItsObjectsInItsOwnArena)
{
    QvKsEntity::rxInit();
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    DxfWriter writer(&buffer, DxfWriter::Version::R2000);
    writer.addLayer(QStringLiteral("QV_管线"), 1);
    for (int n = 0; n < 200; ++n)
        writer.addProductEntity(QStringLiteral("3\\%1").arg(n % 5), { { 0, 0, 0 }, { 1.0 + n, 0, 0 } },
            { QStringLiteral("QV_管线"), 1 });
    ASSERT_TRUE(writer.finish());

    ZcDbDatabase db(false, true);
    ASSERT_EQ(
        db.readDxfData(std::string_view(buffer.data().constData(), size_t(buffer.data().size()))), Zcad::eOk);
    EXPECT_EQ(ZcDbObjectArena::current(), nullptr);
    const std::vector<ZcDbObjectId> ids = QvKsModelSpace::EntityIds(&db);
    ASSERT_EQ(ids.size(), 200u);
    for (const ZcDbObjectId& id : ids) {
        const auto* product = QvKsEntity::cast(id.object());
        ASSERT_NE(product, nullptr);
        EXPECT_TRUE(db.objectArena().contains(product));
        EXPECT_TRUE(db.objectArena().contains(product->shape()));
    }
    // Entities the host adds later are the heap's and go on working alike.
    ZcDbBlockTableRecord* model = nullptr;
    ASSERT_EQ(zcdbOpenObject(model, db.modelSpaceId(), ZcDb::kForWrite), Zcad::eOk);
    auto* added = new ZcDbLine({ 0, 0, 0 }, { 5, 5, 0 });
    ZcDbObjectId addedId;
    EXPECT_EQ(model->appendZcDbEntity(addedId, added), Zcad::eOk);
    model->close();
    EXPECT_FALSE(db.objectArena().contains(added));
    EXPECT_EQ(addedId.object(), added);
}
