// Pipeline-information paths: their display form, the picker's modes and where
// "进入属性" opens the attribute definition.
#include "PipeInfoPath.h"

#include <gtest/gtest.h>

namespace {
struct DisplayCase
{
    const char* path;
    const char* shown;
};

struct CompletionCase
{
    const char* selected;
    int mode;
    bool open;
    const char* path;
    const char* spec;
};

QString u(const char* text)
{
    return QString::fromUtf8(text);
}
} // namespace

TEST(PipeInfoPath, DisplayNameIsThePartAfterTheLastSeparator)
{
    const DisplayCase cases[] = {
        { "电气\\管线\\导线·导管\\BV-2.5", "BV-2.5" },
        { "BV-2.5", "BV-2.5" },
        { "", "" },
        { "电气\\管线\\", "" },
        { "\\SC20", "SC20" },
    };
    for (const DisplayCase& c : cases)
        EXPECT_EQ(PipeInfoDisplayName(u(c.path)), u(c.shown)) << c.path;
}

TEST(PipeInfoPath, AttDefOpensAtTheCompletedCategory)
{
    const CompletionCase cases[] = {
        { "", 2, true, "电气\\管线\\照明导线", "电气" },
        { "  ", 1, true, "弱电\\穿管引线\\配线", "弱电" },
        { "", 0, false, "", "" },
        { "电气", 1, true, "电气\\管线\\照明导线", "电气" },
        { "弱电", 2, true, "弱电\\穿管引线\\配线", "弱电" },
        { "电气\\设备", 2, true, "电气\\设备\\照明导线", "电气" },
        { "弱电\\穿管引线", 1, true, "弱电\\穿管引线\\配线", "弱电" },
        { "电气\\管线\\电缆", 2, true, "电气\\管线\\电缆", "电气" },
        { "弱电\\穿管引线\\配线\\RVS-2×1.0", 1, true, "弱电\\穿管引线\\配线\\RVS-2×1.0", "弱电" },
        { "给排水\\管道\\给水管", 2, false, "", "" },
        { "给排水", 1, false, "", "" },
        // Starts like a specialty but is another name: opened where it is.
        { "电气设备", 2, true, "电气设备", "电气设备" },
        { "电气设备\\灯具", 2, true, "电气设备\\灯具", "电气设备" },
    };
    for (const CompletionCase& c : cases) {
        const AttDefTarget target = CompleteAttDefPath(u(c.selected), c.mode);
        EXPECT_EQ(target.bOpen, c.open) << c.selected << " mode " << c.mode;
        EXPECT_EQ(target.strPath, u(c.path)) << c.selected << " mode " << c.mode;
        EXPECT_EQ(target.strSpec, u(c.spec)) << c.selected << " mode " << c.mode;
    }
}
