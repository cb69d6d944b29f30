#include "SysCodeRenames.h"

#include <gtest/gtest.h>

namespace {
TEST(SysCodeRenames, AreOrderedByOldPathKeepingTheOrderOfOneCode)
{
    const SysCodeRenameList made
        = { { "电气\\B", "电气\\B1" }, { "电气\\A", "电气\\A1" }, { "电气\\B", "电气\\B2" } };
    const SysCodeRenameList sorted
        = { { "电气\\A", "电气\\A1" }, { "电气\\B", "电气\\B1" }, { "电气\\B", "电气\\B2" } };
    EXPECT_EQ(SortSysCodeRenames(made), sorted);
}

struct RenameCase
{
    const char* path;
    SysCodeRenameList renames;
    const char* expected;
};

TEST(SysCodeRenames, CarryAnItemsPathThroughEveryRenameInTurn)
{
    const RenameCase cases[] = {
        { "电气\\照明", {}, "电气\\照明" },
        { "电气\\照明", { { "电气\\动力", "电气\\电力" } }, "电气\\照明" },
        { "电气\\动力", { { "电气\\动力", "电气\\电力" } }, "电气\\电力" },
        // Only whole paths match: a child's path is its own rename.
        { "电气\\动力\\一层", { { "电气\\动力", "电气\\电力" } }, "电气\\动力\\一层" },
        // A chain applied in order of old paths: A before B.
        { "电气\\A", { { "电气\\B", "电气\\C" }, { "电气\\A", "电气\\B" } }, "电气\\C" },
        // B is applied before its own earlier name comes back: no loop.
        { "电气\\B", { { "电气\\B", "电气\\A" }, { "电气\\A", "电气\\B" } }, "电气\\A" },
        { "", { { "电气\\A", "电气\\B" } }, "" },
    };
    for (const RenameCase& c : cases) {
        SCOPED_TRACE(c.path);
        EXPECT_EQ(RenamedSysCodePath(SortSysCodeRenames(c.renames), QString::fromUtf8(c.path)),
            QString::fromUtf8(c.expected));
    }
}
} // namespace
