// The per-floor counts behind "使用情况" and a refused delete.
#include "CodeUsageLedger.h"
#include "CodePathCounter.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace {
CodePathCounter Counted(std::initializer_list<const char*> paths)
{
    CodePathCounter counter;
    for (const char* path : paths)
        counter.Add(QString::fromUtf8(path));
    return counter;
}

TEST(CodeUsageLedger, FloorsAreDescribedInTheOrderFirstScannedWithTheirCounts)
{
    CodeUsageLedger ledger;
    ledger.NoteScanned("2F"); // scanned, nothing counted there
    ledger.Add("1F", Counted({ "3\\1", "3\\2" }));
    ledger.Add("B1", Counted({ "3\\1", "3\\1", "3\\4" }));
    ledger.Add("2F", Counted({ "3\\1" })); // keeps its first place
    ledger.Add("B1", Counted({ "3\\1" })); // scanned again: added to what it had
    struct Case
    {
        const char* path;
        const char* floors;
        int count;
    };
    const Case cases[] = {
        { "3\\1", "2F 1，1F 1，B1 3", 5 },
        { "3\\4", "B1 1", 1 },
        { "3\\2", "1F 1", 1 },
        { "3\\9", "", 0 },
    };
    for (const Case& c : cases) {
        int count = -1;
        EXPECT_EQ(ledger.DescribeFloors(QString::fromUtf8(c.path), count), QString::fromUtf8(c.floors))
            << c.path;
        EXPECT_EQ(count, c.count) << c.path;
    }
}

TEST(CodeUsageLedger, OnlyASavedCodeOfTheSpecialtyIsLookedUp)
{
    CodeUsageLedger ledger;
    ledger.Add("1F", Counted({ "3\\0", "3\\12", "31\\2", "1\\12" }));
    struct Case
    {
        int spec;
        int index;
        const char* floors;
    };
    const Case cases[] = {
        { 3, 12, "1F 1" },
        { 3, 0, "" }, // a code made in the dialog and not saved
        { 3, -1, "" },
        { 31, 2, "1F 1" },
        { 3, 2, "" }, // not "31\2" nor "3\12"
        { 1, 2, "" },
    };
    for (const Case& c : cases) {
        int count = 7;
        EXPECT_EQ(ledger.DescribeCode(c.spec, c.index, count), QString::fromUtf8(c.floors))
            << c.spec << c.index;
        EXPECT_EQ(count, *c.floors ? 1 : 0) << c.spec << c.index;
    }
}

TEST(CodeUsageLedger, UnreadableFloorsAreOneLineEach)
{
    EXPECT_EQ(
        CodeUsageLedger::DescribeUnreadable({ { "2F", "图纸无法读取：坏" }, { "B1", "楼层没有图纸文件" } }),
        (QStringList { "2F：图纸无法读取：坏", "B1：楼层没有图纸文件" }));
    EXPECT_TRUE(CodeUsageLedger::DescribeUnreadable({}).isEmpty());
}
} // namespace
