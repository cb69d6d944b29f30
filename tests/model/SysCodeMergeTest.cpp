#include "SysCodeMerge.h"

#include "CSysCodeData.h"

#include <QSet>
#include <QStringList>
#include <gtest/gtest.h>

namespace {

CSysCodeData* AddCode(CSysCodeData* parent, const QString& name, int index, COLORREF color)
{
    auto* node = new CSysCodeData;
    node->SetNodeName(name);
    node->SetNodeIndex(index);
    node->SetMfcColor(color);
    node->SetParent(parent);
    return node;
}

QStringList Names(const CSysCodeData* node)
{
    QStringList names;
    for (const CSysCodeData* child : node->GetChildren())
        names << child->GetNodeName();
    return names;
}

void CollectIndices(const CSysCodeData* node, QList<int>& out)
{
    for (const CSysCodeData* child : node->GetChildren()) {
        out << child->GetNodeIndex();
        CollectIndices(child, out);
    }
}

// Target: 给水(1) > 一区(2) > 1层(3); 排水(4).
class MergeTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        CSysCodeData* water = AddCode(&target, QStringLiteral("给水"), 1, 0x10);
        CSysCodeData* zone = AddCode(water, QStringLiteral("一区"), 2, 0x20);
        AddCode(zone, QStringLiteral("1层"), 3, 0x30);
        AddCode(&target, QStringLiteral("排水"), 4, 0x40);
    }
    CSysCodeData target;
};

TEST_F(MergeTest, ExistingCodesTakeAttributesAndNewOnesAreAppendedWithNewIndices)
{
    CSysCodeData import;
    CSysCodeData* water = AddCode(&import, QStringLiteral("给水"), 900, 0xA1);
    CSysCodeData* zone = AddCode(water, QStringLiteral("一区"), 901, 0xA2);
    AddCode(zone, QStringLiteral("2层"), 902, 0xA3);
    CSysCodeData* zone2 = AddCode(water, QStringLiteral("二区"), 903, 0xA4);
    AddCode(zone2, QStringLiteral("1层"), 904, 0xA5);
    AddCode(&import, QStringLiteral("雨水"), 905, 0xA6);

    int counter = 0;
    EXPECT_TRUE(MergeSysCodeTree(counter, &target, &import, true));

    EXPECT_EQ(Names(&target),
        QStringList({ QStringLiteral("给水"), QStringLiteral("排水"), QStringLiteral("雨水") }));
    const CSysCodeData* merged = target.FindByFullName(QStringLiteral("给水\\一区"));
    ASSERT_NE(merged, nullptr);
    EXPECT_EQ(merged->GetNodeIndex(), 2);
    EXPECT_EQ(merged->GetMfcColor(), 0xA2u);
    EXPECT_EQ(Names(merged), QStringList({ QStringLiteral("1层"), QStringLiteral("2层") }));
    EXPECT_EQ(target.FindByFullName(QStringLiteral("给水\\一区\\1层"))->GetMfcColor(), 0x30u);
    EXPECT_EQ(target.FindByFullName(QStringLiteral("给水\\二区\\1层"))->GetMfcColor(), 0xA5u);
    EXPECT_EQ(target.FindByFullName(QStringLiteral("排水"))->GetMfcColor(), 0x40u);

    QList<int> indices;
    CollectIndices(&target, indices);
    EXPECT_EQ(indices.size(), 8);
    EXPECT_EQ(QSet<int>(indices.begin(), indices.end()).size(), indices.size());
    for (const char16_t* added : { u"给水\\一区\\2层", u"给水\\二区", u"给水\\二区\\1层", u"雨水" })
        EXPECT_GT(target.FindByFullName(QString::fromUtf16(added))->GetNodeIndex(), 4);
    EXPECT_EQ(target.FindByFullName(QStringLiteral("雨水"))->GetNodeIndex(), counter);
    EXPECT_EQ(import.FindByFullName(QStringLiteral("雨水"))->GetNodeIndex(), 905); // source untouched
}

TEST_F(MergeTest, MergingTheSameImportTwiceAddsNothingMore)
{
    CSysCodeData import;
    AddCode(AddCode(&import, QStringLiteral("排水"), 1, 0xB0), QStringLiteral("污水"), 2, 0xB1);
    int counter = 0;
    ASSERT_TRUE(MergeSysCodeTree(counter, &target, &import, true));
    const int afterFirst = counter;
    ASSERT_TRUE(MergeSysCodeTree(counter, &target, &import, true));
    EXPECT_EQ(counter, afterFirst);
    EXPECT_EQ(Names(target.FindByFullName(QStringLiteral("排水"))), QStringList({ QStringLiteral("污水") }));
}

TEST_F(MergeTest, NonRootSourceIsPlacedByItsFullName)
{
    CSysCodeData import;
    CSysCodeData* water = AddCode(&import, QStringLiteral("给水"), 1, 0xC0);
    CSysCodeData* zone = AddCode(water, QStringLiteral("三区"), 2, 0xC1);
    int counter = 0;
    EXPECT_TRUE(MergeSysCodeTree(counter, &target, zone, false));
    EXPECT_EQ(Names(target.GetChild(0)), QStringList({ QStringLiteral("一区"), QStringLiteral("三区") }));
    EXPECT_EQ(target.GetChild(0)->GetMfcColor(), 0x10u); // the parent was not part of the merge
}

TEST_F(MergeTest, ANamelessCodeFailsWithoutStoppingTheRest)
{
    CSysCodeData import;
    AddCode(&import, QString(), 1, 0xD0);
    AddCode(&import, QStringLiteral("中水"), 2, 0xD1);
    int counter = 0;
    EXPECT_FALSE(MergeSysCodeTree(counter, &target, &import, true));
    EXPECT_NE(target.FindByFullName(QStringLiteral("中水")), nullptr);
    EXPECT_FALSE(MergeSysCodeTree(counter, nullptr, &import, true));
    EXPECT_FALSE(MergeSysCodeTree(counter, &target, nullptr, true));
}

} // namespace
