// A code's row values: every attribute goes into its column's value and comes back
// unchanged, the texts shown are made from the values, texts typed into a cell read
// back as values, and one default width per kind of specialty wherever a blank code
// is made.
#include "SysCodeCells.h"
#include "CSysCodeData.h"
#include "SysCodeColumn.h"
#include "SysCodeDefaults.h"
#include "SysCodeEditChecks.h"
#include "SysCodePath.h"

#include <gtest/gtest.h>

namespace {
CSysCodeData SampleCode()
{
    CSysCodeData code;
    code.SetNodeName(QStringLiteral("照明"));
    code.SetAddedMsg(QStringLiteral("电气\\配管\\SC20"));
    code.SetHorLayingMode(QStringLiteral("沿墙明敷"));
    code.SetVerLayingMode(QStringLiteral("暗敷"));
    code.SetLineStyle(QStringLiteral("按字符"));
    code.SetLineString(QStringLiteral("WL"));
    code.SetLineWidth(0.35);
    code.SetAlpha(40);
    code.SetDescribe(QStringLiteral("一般照明"));
    return code;
}

TEST(SysCodeCells, EveryAttributeComesBackFromItsColumnsValues)
{
    const CSysCodeData code = SampleCode();
    CSysCodeData back;
    for (int logical = 0; logical < kSysCodeColumnCount; ++logical)
        if (logical != kColColor)
            SetSysCodeField(back, logical, SysCodeCellValue(code, logical, true));
    EXPECT_EQ(back.GetNodeName(), code.GetNodeName());
    EXPECT_EQ(back.GetAddedMsg(), code.GetAddedMsg());
    EXPECT_EQ(back.GetHorLayingMode(), code.GetHorLayingMode());
    EXPECT_EQ(back.GetVerLayingMode(), code.GetVerLayingMode());
    EXPECT_EQ(back.GetLineStyle(), code.GetLineStyle());
    EXPECT_EQ(back.GetLineString(), code.GetLineString());
    EXPECT_EQ(back.GetLineWidth(), code.GetLineWidth());
    EXPECT_EQ(back.GetAlpha(), code.GetAlpha());
    EXPECT_EQ(back.GetDescribe(), code.GetDescribe());
}

TEST(SysCodeCells, TextsShownAreMadeFromTheValues)
{
    const CSysCodeData code = SampleCode();
    const auto shown
        = [&](int logical) { return SysCodeValueText(logical, SysCodeCellValue(code, logical, true)); };
    EXPECT_EQ(shown(kColPipeInfo), QStringLiteral("SC20"));
    EXPECT_EQ(shown(kColLineWidth), QStringLiteral("0.35"));
    EXPECT_EQ(shown(kColAlpha), QStringLiteral("40"));
    EXPECT_EQ(shown(kColRemark), QStringLiteral("一般照明"));
}

TEST(SysCodeCells, AnUnsetWidthHoldsItsSpecialtysDefault)
{
    CSysCodeData code;
    code.SetLineWidth(-1);
    EXPECT_EQ(SysCodeCellValue(code, kColLineWidth, true).toDouble(), 30.0);
    EXPECT_EQ(SysCodeCellValue(code, kColLineWidth, false).toDouble(), 1.0);
}

TEST(SysCodeCells, TypedTextsReadAsValuesOrAsNone)
{
    struct Case
    {
        int logical;
        const char* text;
        QVariant value;
    };
    const Case cases[] = {
        { kColLineWidth, "2.5", 2.5 },
        { kColLineWidth, "30", 30.0 },
        { kColLineWidth, "宽", QVariant() },
        { kColAlpha, "80", 80 },
        { kColAlpha, "8.5", QVariant() },
        { kColPipeInfo, "电气\\配管\\SC20", QStringLiteral("电气\\配管\\SC20") },
        { kColRemark, "备注", QStringLiteral("备注") },
    };
    for (const Case& c : cases)
        EXPECT_EQ(SysCodeTextValue(c.logical, QString::fromUtf8(c.text)), c.value) << c.text;
}

TEST(SysCodeDefaults, ABlankCodeIsDrawnByCharactersOpaqueAtItsSpecialtysWidth)
{
    for (const bool electrical : { true, false }) {
        CSysCodeData code;
        code.SetAlpha(50);
        SetBlankSysCodeAttributes(code, electrical);
        EXPECT_EQ(code.GetLineStyle(), QStringLiteral("按字符"));
        EXPECT_EQ(code.GetLineWidth(), electrical ? 30.0 : 1.0);
        EXPECT_EQ(code.GetAlpha(), 0);
    }
}

TEST(SysCodePath, TheTwoSpellingsConvertOneToOne)
{
    const QString path
        = JoinSysCodePath(JoinSysCodePath(QString(), QStringLiteral("照明")), QStringLiteral("WL1"));
    EXPECT_EQ(path, QStringLiteral("照明\\WL1"));
    EXPECT_EQ(AmpersandSysCodePath(path), QStringLiteral("照明&WL1"));
    EXPECT_EQ(BackslashSysCodePath(AmpersandSysCodePath(path)), path);
    EXPECT_EQ(SpecSysCodePath(QStringLiteral("电气"), path), QStringLiteral("电气\\照明\\WL1"));
    EXPECT_EQ(SplitSysCodePath(path), QStringList({ "照明", "WL1" }));
}

TEST(ShortSysCode, AtMostThreeAsciiLettersOrDigits)
{
    for (const char* code : { "", "A", "A1b", "999" })
        EXPECT_TRUE(IsShortSysCode(QString::fromUtf8(code))) << code;
    for (const char* code : { "ABCD", "A-1", "A中", "Ａ1", "a b" })
        EXPECT_FALSE(IsShortSysCode(QString::fromUtf8(code))) << code;
}
} // namespace
