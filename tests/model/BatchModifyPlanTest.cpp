// The batch modification's plan: which rows, and which cells of each.
#include "BatchModifyPlan.h"

#include <gtest/gtest.h>

TEST(BatchModifyPlan, SelectedRowsFromTheLastUp)
{
    struct Case
    {
        QList<bool> selected;
        QList<int> rows;
    };
    const Case cases[] = {
        { {}, {} },
        { { false, false }, {} },
        { { true }, { 0 } },
        { { true, false, true, true, false }, { 3, 2, 0 } },
    };
    for (const Case& c : cases)
        EXPECT_EQ(BatchTargetRows(c.selected), c.rows);
}

TEST(BatchModifyPlan, OnlyTickedValuesAreWrittenButThePathAlwaysTravels)
{
    BatchModifyValues values;
    values.color = 0x00123456;
    values.strPipeInfo = QStringLiteral("电气\\管线\\电缆\\YJV-5×10");
    values.strHorMode = QStringLiteral("沿桥架敷设");
    values.strVerMode = QStringLiteral("竖井内敷设");
    values.strRemark = QStringLiteral("备用");

    const BatchRowChange none = BatchRowChangeFor(values);
    EXPECT_EQ(none.strRowInfo, values.strPipeInfo);
    EXPECT_FALSE(none.bSetColor);
    EXPECT_TRUE(none.texts.isEmpty());

    values.apply = { true, true, false, true, true };
    const BatchRowChange some = BatchRowChangeFor(values);
    EXPECT_TRUE(some.bSetColor);
    EXPECT_EQ(some.color, 0x00123456u);
    ASSERT_EQ(some.texts.size(), 3);
    EXPECT_EQ(some.texts.at(0).field, kBatchPipeInfo);
    EXPECT_EQ(some.texts.at(0).text, QStringLiteral("YJV-5×10"));
    EXPECT_EQ(some.texts.at(1).field, kBatchVerMode);
    EXPECT_EQ(some.texts.at(1).text, values.strVerMode);
    EXPECT_EQ(some.texts.at(2).field, kBatchRemark);
    EXPECT_EQ(some.texts.at(2).text, values.strRemark);
}
