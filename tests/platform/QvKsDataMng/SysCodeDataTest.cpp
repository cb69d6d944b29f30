#include "CSysCodeData.h"

#include <gtest/gtest.h>

namespace {

CSysCodeData* addChild(CSysCodeData& parent, const QString& name, int index)
{
    auto* node = new CSysCodeData;
    node->SetNodeName(name);
    node->SetNodeIndex(index);
    int unused = 0;
    parent.AddDataToChild(unused, node, false);
    return node;
}

// 给排水 root: 生活给水 (1) { 一区 (2) { 立管 (3) } }, 雨水 (4)
struct SampleTree
{
    CSysCodeData root;
    CSysCodeData* water;
    CSysCodeData* zone;
    CSysCodeData* riser;
    CSysCodeData* rain;
    SampleTree()
    {
        water = addChild(root, QStringLiteral("生活给水"), 1);
        zone = addChild(*water, QStringLiteral("一区"), 2);
        riser = addChild(*zone, QStringLiteral("立管"), 3);
        rain = addChild(root, QStringLiteral("雨水"), 4);
    }
};

TEST(SysCodeData, FullNameJoinsLevelsWithoutTheRoot)
{
    SampleTree t;
    EXPECT_EQ(t.root.GetFullName(), QString());
    EXPECT_EQ(t.water->GetFullName(), QStringLiteral("生活给水"));
    EXPECT_EQ(t.riser->GetFullName(), QStringLiteral("生活给水\\一区\\立管"));
    t.zone->SetNodeName(QStringLiteral("二区"));
    EXPECT_EQ(t.riser->GetFullName(), QStringLiteral("生活给水\\二区\\立管"));
    EXPECT_EQ(t.root.FindByFullName(QStringLiteral("生活给水\\二区\\立管")), t.riser);
    EXPECT_EQ(t.root.FindByFullName(QStringLiteral("生活给水\\一区")), nullptr);
}

TEST(SysCodeData, FindIsLimitedToTheSubtreeAsked)
{
    SampleTree t;
    EXPECT_EQ(t.water->FindByFullName(QStringLiteral("生活给水\\一区")), t.zone);
    EXPECT_EQ(t.water->FindByFullName(QStringLiteral("雨水")), nullptr);
    EXPECT_EQ(t.root.FindByFullName(QString()), nullptr);
}

TEST(SysCodeData, NewIndicesFollowTheHighestInUse)
{
    SampleTree t;
    int counter = 0;
    auto* branch = new CSysCodeData;
    branch->SetNodeName(QStringLiteral("中水"));
    addChild(*branch, QStringLiteral("A"), 77);
    t.root.AddDataToChild(counter, branch, true);
    EXPECT_EQ(branch->GetNodeIndex(), 5);
    EXPECT_EQ(branch->GetChild(0)->GetNodeIndex(), 6);
    EXPECT_EQ(counter, 6);

    // A counter already past the tree's maximum is kept.
    counter = 40;
    auto* more = new CSysCodeData;
    more->SetNodeName(QStringLiteral("废水"));
    t.root.AddDataToChild(counter, more, true);
    EXPECT_EQ(more->GetNodeIndex(), 41);
    EXPECT_EQ(t.root.GetMaxNodeIndex(), 41);
}

TEST(SysCodeData, AddByFullNameCopiesIntoAnExistingParentOnly)
{
    SampleTree t;
    CSysCodeData source;
    source.SetNodeName(QStringLiteral("X"));
    source.SetMfcColor(RGB(1, 2, 3));
    addChild(source, QStringLiteral("Y"), 9);

    int counter = 0;
    EXPECT_TRUE(t.root.AddNewSysCodeByFullName(counter, &source, QStringLiteral("生活给水\\二区"), true));
    CSysCodeData* added = t.root.FindByFullName(QStringLiteral("生活给水\\二区"));
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(added->GetMfcColor(), RGB(1, 2, 3));
    EXPECT_EQ(added->GetNodeIndex(), 5);
    EXPECT_NE(t.root.FindByFullName(QStringLiteral("生活给水\\二区\\Y")), nullptr);
    EXPECT_EQ(source.GetChildCount(), 1); // the source stays whole

    // Missing parent path, or a code that already exists: nothing changes.
    EXPECT_FALSE(t.root.AddNewSysCodeByFullName(counter, &source, QStringLiteral("无此\\X"), true));
    EXPECT_FALSE(t.root.AddNewSysCodeByFullName(counter, &source, QStringLiteral("雨水"), true));
    EXPECT_FALSE(t.root.AddNewSysCodeByFullName(counter, &source, QStringLiteral("雨水\\"), true));
    EXPECT_EQ(t.root.GetChildCount(), 2);
    EXPECT_EQ(t.rain->GetChildCount(), 0);
}

TEST(SysCodeData, ResetExistNodeTakesAttributesButKeepsIndexAndChildren)
{
    SampleTree t;
    CSysCodeData importRoot;
    CSysCodeData* imported = addChild(importRoot, QStringLiteral("生活给水"), 99);
    imported->SetMfcColor(RGB(10, 20, 30));
    imported->SetLineWidth(0.35);
    imported->SetAlpha(40);
    imported->SetLineStyle(QStringLiteral("虚线"));
    imported->SetLineString(QStringLiteral("J"));
    imported->SetHorLayingMode(QStringLiteral("WC"));
    imported->SetVerLayingMode(QStringLiteral("CC"));
    imported->SetAddedMsg(QStringLiteral("管道\\钢管"));
    imported->SetDescribe(QStringLiteral("备注"));

    EXPECT_TRUE(t.root.ResetExistNodeMsg(imported));
    EXPECT_EQ(t.water->GetNodeIndex(), 1);
    EXPECT_EQ(t.water->GetChildCount(), 1);
    EXPECT_EQ(t.water->GetMfcColor(), RGB(10, 20, 30));
    EXPECT_DOUBLE_EQ(t.water->GetLineWidth(), 0.35);
    EXPECT_EQ(t.water->GetAlpha(), 40);
    EXPECT_EQ(t.water->GetLineStyle(), QStringLiteral("虚线"));
    EXPECT_EQ(t.water->GetLineString(), QStringLiteral("J"));
    EXPECT_EQ(t.water->GetHorLayingMode(), QStringLiteral("WC"));
    EXPECT_EQ(t.water->GetVerLayingMode(), QStringLiteral("CC"));
    EXPECT_EQ(t.water->GetAddedMsg(), QStringLiteral("管道\\钢管"));
    EXPECT_EQ(t.water->GetDescribe(), QStringLiteral("备注"));

    imported->SetNodeName(QStringLiteral("不存在"));
    EXPECT_FALSE(t.root.ResetExistNodeMsg(imported));
}

TEST(SysCodeData, DetachMoveAndDeleteKeepLookupsRight)
{
    SampleTree t;
    EXPECT_NE(t.root.FindByFullName(QStringLiteral("生活给水\\一区")), nullptr);
    t.zone->SetParent(t.rain);
    EXPECT_EQ(t.root.FindByFullName(QStringLiteral("生活给水\\一区")), nullptr);
    EXPECT_EQ(t.root.FindByFullName(QStringLiteral("雨水\\一区\\立管")), t.riser);

    // Moving a node under its own descendant is refused.
    t.rain->SetParent(t.riser);
    EXPECT_EQ(t.rain->GetParent(), &t.root);

    t.zone->SetParent(nullptr);
    EXPECT_EQ(t.rain->GetChildCount(), 0);
    EXPECT_EQ(t.root.FindByFullName(QStringLiteral("雨水\\一区\\立管")), nullptr);
    t.zone->DeleteData();
    EXPECT_EQ(t.zone->GetChildCount(), 0);
    delete t.zone;

    delete t.rain; // destroying a child takes it out of its parent
    EXPECT_EQ(t.root.GetChildCount(), 1);
    EXPECT_EQ(t.root.FindByFullName(QStringLiteral("雨水")), nullptr);
}

TEST(SysCodeData, CopiesAreDeepAndIndependent)
{
    SampleTree t;
    CSysCodeData copy(*t.water);
    EXPECT_EQ(copy.GetParent(), nullptr);
    ASSERT_EQ(copy.GetChildCount(), 1);
    EXPECT_NE(copy.GetChild(0), t.zone);
    EXPECT_EQ(copy.GetChild(0)->GetChild(0)->GetNodeName(), QStringLiteral("立管"));
    copy.GetChild(0)->SetNodeName(QStringLiteral("改"));
    EXPECT_EQ(t.zone->GetNodeName(), QStringLiteral("一区"));

    // Assigning a node from inside its own subtree keeps the data intact.
    CSysCodeData holder(*t.water);
    holder = *holder.GetChild(0);
    EXPECT_EQ(holder.GetNodeName(), QStringLiteral("一区"));
    ASSERT_EQ(holder.GetChildCount(), 1);
    EXPECT_EQ(holder.GetChild(0)->GetParent(), &holder);
}

} // namespace
