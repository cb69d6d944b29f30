// Entities on the same layer share its name: each still reads back its own layer
// through changes, copies, deletions and other threads (the sanitizer build sees
// a name freed while still in use, or never freed).
#include "ZcDbLine.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <vector>

namespace {
const QString kPipes = QStringLiteral("QV_管线");
const QString kRooms = QStringLiteral("房间名称");
} // namespace

TEST(ZcDbEntityLayer, EachEntityKeepsItsOwnLayerThroughChangesAndCopies)
{
    std::vector<std::unique_ptr<ZcDbLine>> lines;
    for (int n = 0; n < 12; ++n) {
        lines.push_back(std::make_unique<ZcDbLine>());
        EXPECT_EQ(lines.back()->layer(), QStringLiteral("0"));
        // Runs of one layer and switches back and forth, as drawings have them.
        const QString layer = n % 5 < 3 ? kPipes : (n % 2 ? kRooms : QStringLiteral("0"));
        EXPECT_EQ(lines.back()->setLayer(layer), Zcad::eOk);
    }
    std::unique_ptr<ZcDbEntity> copy(lines[0]->clone());
    EXPECT_EQ(lines[1]->setLayer(kRooms), Zcad::eOk);
    EXPECT_EQ(lines[2]->setLayer(QString()), Zcad::eInvalidInput);
    lines[0].reset();
    for (int n = 2; n < 12; ++n) {
        const QString layer = n % 5 < 3 ? kPipes : (n % 2 ? kRooms : QStringLiteral("0"));
        EXPECT_EQ(lines[size_t(n)]->layer(), layer) << n;
    }
    EXPECT_EQ(lines[1]->layer(), kRooms);
    EXPECT_EQ(copy->layer(), kPipes);

    // A name no entity uses any more is gone; setting it again makes it anew.
    for (auto& line : lines)
        if (line)
            line->setLayer(QStringLiteral("其他"));
    copy.reset();
    ZcDbLine again;
    again.setLayer(kPipes);
    EXPECT_EQ(again.layer(), kPipes);
}

TEST(ZcDbEntityLayer, EntitiesMadeOnAnotherThreadOutliveIt)
{
    std::vector<std::unique_ptr<ZcDbLine>> lines;
    std::thread worker([&] {
        for (int n = 0; n < 4; ++n) {
            lines.push_back(std::make_unique<ZcDbLine>());
            lines.back()->setLayer(n % 2 ? kRooms : kPipes);
        }
    });
    worker.join();
    for (int n = 0; n < 4; ++n)
        EXPECT_EQ(lines[size_t(n)]->layer(), n % 2 ? kRooms : kPipes);
    // Shared with this thread's entities, then released here.
    ZcDbLine here;
    here.setLayer(kRooms);
    lines.clear();
    EXPECT_EQ(here.layer(), kRooms);
}

TEST(ZcDbEntityLayer, TakingAnotherEntitysLayerKeepsItWhenThatOneMovesOrGoes)
{
    auto first = std::make_unique<ZcDbLine>();
    first->setLayer(kPipes);
    ZcDbLine second;
    second.setLayerOf(*first);
    second.setLayerOf(second);
    EXPECT_EQ(second.layer(), kPipes);
    first->setLayer(kRooms);
    EXPECT_EQ(second.layer(), kPipes);
    second.setLayerOf(*first);
    first.reset();
    EXPECT_EQ(second.layer(), kRooms);
    ZcDbLine onZero;
    second.setLayerOf(onZero);
    EXPECT_EQ(second.layer(), QStringLiteral("0"));
}
