#include "QvKsColorTool.h"

#include <QSet>
#include <gtest/gtest.h>

#include <cstdlib>

namespace {
int distance(COLORREF a, COLORREF b)
{
    return std::abs(int(GetRValue(a)) - int(GetRValue(b))) + std::abs(int(GetGValue(a)) - int(GetGValue(b)))
        + std::abs(int(GetBValue(a)) - int(GetBValue(b)));
}

TEST(RandomColorTest, SameInputGivesSameColour)
{
    EXPECT_EQ(QvKsColorTool::RandomColor(0xCCFFCC, 0x555555), QvKsColorTool::RandomColor(0xCCFFCC, 0x555555));
    EXPECT_NE(QvKsColorTool::RandomColor(0xCCFFCC, 0x555555), QvKsColorTool::RandomColor(0xCCFFCE, 0x555555));
}

TEST(RandomColorTest, ChainOfNewRowColoursStaysVisibleAndVaried)
{
    COLORREF colour = 0xCCFFCC;
    QSet<COLORREF> seen;
    for (int i = 0; i < 500; ++i) {
        const COLORREF next = QvKsColorTool::RandomColor(colour, 0x555555);
        EXPECT_EQ(next & 0xFF000000u, 0u);
        EXPECT_EQ(next & 0x555555u, 0x555555u) << "mask bits must stay set";
        EXPECT_GE(distance(next, colour), 96) << "each new colour must differ clearly from the last";
        seen.insert(next);
        colour = next;
    }
    EXPECT_GT(seen.size(), 400) << "the chain must not fall into a short cycle";
}

TEST(RandomColorTest, ZeroMaskAndFullMaskStillAnswer)
{
    const COLORREF free = QvKsColorTool::RandomColor(0, 0);
    EXPECT_GE(distance(free, 0), 96);
    // A full mask leaves one possible colour; the call still ends with it.
    EXPECT_EQ(QvKsColorTool::RandomColor(0x123456, 0xFFFFFF), 0xFFFFFFu);
}
} // namespace
