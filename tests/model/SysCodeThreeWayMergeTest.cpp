// The save-time merge of what the dialog read, what the store holds now and what
// the dialog holds: one table of cases, each tree written as a dump.
#include "SysCodeThreeWayMerge.h"

#include "CSysCodeData.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;
using Choice = SysCodeMergeChoice;

// "1 公共照明 | >2 WL1 r=甲 | >3 WL2 | 4 应急照明 c=255": index, name, then the
// remark (r=) and colour (c=); one ">" a level down; index 0 is a new code.
CSysCodeData Tree(const QString& dump)
{
    CSysCodeData root;
    std::vector<CSysCodeData*> levels { &root };
    int highWater = 0;
    for (const QString& item : dump.split(u'|', Qt::SkipEmptyParts)) {
        QString text = item.trimmed();
        int depth = 0;
        while (text.startsWith(u'>')) {
            text.remove(0, 1);
            ++depth;
        }
        const QStringList parts = text.split(u' ', Qt::SkipEmptyParts);
        auto* node = new CSysCodeData;
        node->SetNodeIndex(parts.at(0).toInt());
        node->SetNodeName(parts.at(1));
        for (const QString& attr : parts.mid(2)) {
            if (attr.startsWith(u"r="))
                node->SetDescribe(attr.mid(2));
            else if (attr.startsWith(u"c="))
                node->SetMfcColor(COLORREF(attr.mid(2).toUInt()));
        }
        highWater = std::max(highWater, node->GetNodeIndex());
        levels.resize(depth + 1);
        node->SetParent(levels.back());
        levels.push_back(node);
    }
    root.SetNodeIndex(highWater);
    return root;
}

QString Dump(const CSysCodeData& root)
{
    QStringList items;
    std::vector<std::pair<const CSysCodeData*, int>> stack;
    for (auto it = root.GetChildren().rbegin(); it != root.GetChildren().rend(); ++it)
        stack.emplace_back(*it, 0);
    while (!stack.empty()) {
        const auto [node, depth] = stack.back();
        stack.pop_back();
        QString item
            = QString(depth, u'>') + QString::number(node->GetNodeIndex()) + u' ' + node->GetNodeName();
        if (!node->GetDescribe().isEmpty())
            item += QStringLiteral(" r=") + node->GetDescribe();
        if (node->GetMfcColor() != 0)
            item += QStringLiteral(" c=") + QString::number(node->GetMfcColor());
        items << item;
        for (auto it = node->GetChildren().rbegin(); it != node->GetChildren().rend(); ++it)
            stack.emplace_back(*it, depth + 1);
    }
    return items.join(u" | ");
}

struct MergeCase
{
    const char* what;
    QString base;
    QString theirs;
    QString mine;
    QList<Choice> choices;
    QString merged; // empty: a collision is left undecided
    QList<SysCodeCollisionKind> collisions;
    int fromTheirs = -1; // lines of the notice; -1: not checked
};

const QString kBase = u"1 公共照明 | >2 WL1 | >3 WL2 | 4 应急照明"_s;

class ThreeWayMerge : public ::testing::TestWithParam<MergeCase>
{ };

TEST_P(ThreeWayMerge, GivesTheTreeAndCollisions)
{
    const MergeCase& c = GetParam();
    const CSysCodeData base = Tree(c.base);
    const SysCodeThreeWayMerge result = MergeSysCodeThreeWay(base, Tree(c.theirs), Tree(c.mine), c.choices);
    QList<SysCodeCollisionKind> kinds;
    for (const SysCodeCollision& collision : result.collisions)
        kinds << collision.kind;
    EXPECT_EQ(kinds, c.collisions) << c.what;
    if (c.merged.isEmpty()) {
        EXPECT_TRUE(result.HasUndecided()) << c.what;
        return;
    }
    ASSERT_FALSE(result.HasUndecided()) << c.what;
    EXPECT_EQ(Dump(*result.merged), c.merged) << c.what;
    if (c.fromTheirs >= 0) {
        EXPECT_EQ(result.fromTheirs.size(), c.fromTheirs)
            << c.what << result.fromTheirs.join(u"; ").toStdString();
    }
}

using K = SysCodeCollisionKind;
const QString kBoth = u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明 r=甲"_s;

INSTANTIATE_TEST_SUITE_P(Cases, ThreeWayMerge,
    ::testing::Values(MergeCase { "a change in the store only is taken", kBase,
                          u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明"_s, kBase, {},
                          u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明"_s, {}, 1 },
        MergeCase { "changes to different codes are both kept", kBase,
            u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明"_s,
            u"1 公共照明 | >2 WL1 | >3 WL2 | 4 应急照明 r=甲"_s, {}, kBoth, {}, 1 },
        MergeCase { "different attributes of one code are both kept", kBase,
            u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明"_s,
            u"1 公共照明 | >2 WL1 | >3 WL2 c=255 | 4 应急照明"_s, {},
            u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 c=255 | 4 应急照明"_s, {}, 1 },
        MergeCase { "one attribute changed alike on both sides is no collision", kBase,
            u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明"_s,
            u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明"_s, {},
            u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明"_s, {}, 0 },
        MergeCase { "one attribute changed two ways waits for a choice", kBase,
            u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明"_s,
            u"1 公共照明 | >2 WL1 | >3 WL2 r=甲 | 4 应急照明"_s, {}, QString(), { K::BothChanged } },
        MergeCase { "theirs chosen for one attribute", kBase,
            u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明"_s,
            u"1 公共照明 | >2 WL1 | >3 WL2 r=甲 | 4 应急照明"_s, { Choice::Theirs },
            u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明"_s, { K::BothChanged } },
        MergeCase { "mine chosen for one attribute", kBase,
            u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明"_s,
            u"1 公共照明 | >2 WL1 | >3 WL2 r=甲 | 4 应急照明"_s, { Choice::Mine },
            u"1 公共照明 | >2 WL1 | >3 WL2 r=甲 | 4 应急照明"_s, { K::BothChanged }, 0 },
        MergeCase { "a rename on both sides is a collision", kBase,
            u"1 公共照明 | >2 WL1X | >3 WL2 | 4 应急照明"_s, u"1 公共照明 | >2 WL1Y | >3 WL2 | 4 应急照明"_s,
            { Choice::Mine }, u"1 公共照明 | >2 WL1Y | >3 WL2 | 4 应急照明"_s, { K::BothChanged } },
        MergeCase { "deleted in the store, untouched here: gone", kBase,
            u"1 公共照明 | >2 WL1 | 4 应急照明"_s, kBase, {}, u"1 公共照明 | >2 WL1 | 4 应急照明"_s, {}, 1 },
        MergeCase { "deleted here, untouched in the store: gone", kBase, kBase,
            u"1 公共照明 | >3 WL2 | 4 应急照明"_s, {}, u"1 公共照明 | >3 WL2 | 4 应急照明"_s, {}, 0 },
        MergeCase { "deleted in the store, changed here: kept when mine is chosen", kBase,
            u"1 公共照明 | >2 WL1 | 4 应急照明"_s, u"1 公共照明 | >2 WL1 | >3 WL2 r=甲 | 4 应急照明"_s,
            { Choice::Mine }, u"1 公共照明 | >2 WL1 | >3 WL2 r=甲 | 4 应急照明"_s, { K::DeletedByThem } },
        MergeCase { "deleted in the store, changed here: gone when theirs is chosen", kBase,
            u"1 公共照明 | >2 WL1 | 4 应急照明"_s, u"1 公共照明 | >2 WL1 | >3 WL2 r=甲 | 4 应急照明"_s,
            { Choice::Theirs }, u"1 公共照明 | >2 WL1 | 4 应急照明"_s, { K::DeletedByThem } },
        MergeCase { "deleted here, changed in the store", kBase,
            u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明"_s, u"1 公共照明 | >2 WL1 | 4 应急照明"_s,
            { Choice::Theirs }, u"1 公共照明 | >2 WL1 | >3 WL2 r=乙 | 4 应急照明"_s, { K::DeletedByMe } },
        MergeCase { "a parent deleted here that the store gave a new code keeps it on theirs", kBase,
            u"1 公共照明 | >2 WL1 | >3 WL2 | 4 应急照明 | >14 E1"_s, u"1 公共照明 | >2 WL1 | >3 WL2"_s,
            { Choice::Theirs }, u"1 公共照明 | >2 WL1 | >3 WL2 | 4 应急照明 | >14 E1"_s, { K::DeletedByMe } },
        MergeCase { "a parent deleted in the store keeps a code of mine beneath it only by choice", kBase,
            u"4 应急照明"_s, u"1 公共照明 | >2 WL1 | >3 WL2 | >0 WL3 | 4 应急照明"_s, { Choice::Theirs },
            u"4 应急照明"_s, { K::DeletedByThem } },
        MergeCase { "new codes on both sides are all kept; mine are numbered by the store", kBase,
            u"1 公共照明 | >2 WL1 | >3 WL2 | 4 应急照明 | 14 弱电通信"_s,
            u"1 公共照明 | >2 WL1 | >3 WL2 | 4 应急照明 | 15 广播"_s, {},
            u"1 公共照明 | >2 WL1 | >3 WL2 | 4 应急照明 | 0 广播 | 14 弱电通信"_s, {}, 1 },
        MergeCase { "two new codes of one name become one under the store's index", kBase,
            u"1 公共照明 | >2 WL1 | >3 WL2 | 4 应急照明 | 14 广播 r=乙"_s,
            u"1 公共照明 | >2 WL1 | >3 WL2 | 4 应急照明 | 0 广播 r=甲 | >0 GB1"_s, { Choice::Mine },
            u"1 公共照明 | >2 WL1 | >3 WL2 | 4 应急照明 | 14 广播 r=甲 | >0 GB1"_s, { K::SameName } },
        MergeCase { "the store's order is taken when only the store reordered", kBase,
            u"4 应急照明 | 1 公共照明 | >3 WL2 | >2 WL1"_s,
            u"1 公共照明 | >2 WL1 | >3 WL2 | >0 WL3 | 4 应急照明"_s, {},
            u"4 应急照明 | 1 公共照明 | >3 WL2 | >2 WL1 | >0 WL3"_s, {} },
        MergeCase { "a move here and a remark in the store", kBase,
            u"1 公共照明 | >2 WL1 r=乙 | >3 WL2 | 4 应急照明"_s,
            u"1 公共照明 | >3 WL2 | 4 应急照明 | >2 WL1"_s, {},
            u"1 公共照明 | >3 WL2 | 4 应急照明 | >2 WL1 r=乙"_s, {} },
        MergeCase { "moves to two places are a collision", kBase,
            u"1 公共照明 | >3 WL2 | >>2 WL1 | 4 应急照明"_s, u"1 公共照明 | >3 WL2 | 4 应急照明 | >2 WL1"_s,
            { Choice::Theirs }, u"1 公共照明 | >3 WL2 | >>2 WL1 | 4 应急照明"_s, { K::BothChanged } },
        MergeCase { "two stored codes renamed to one name: the one renamed here takes a free name", kBase,
            u"1 公共照明 | >2 WLX | >3 WL2 | 4 应急照明"_s, u"1 公共照明 | >2 WL1 | >3 WLX | 4 应急照明"_s,
            {}, u"1 公共照明 | >2 WLX | >3 WLX1 | 4 应急照明"_s, {} }));

TEST(ThreeWayMergeRenames, CarryItemsFromStoredPathsToMergedOnes)
{
    const CSysCodeData base = Tree(kBase);
    // The store renamed WL1; here WL2 was renamed and 应急照明 moved under 公共照明.
    const SysCodeThreeWayMerge result
        = MergeSysCodeThreeWay(base, Tree(u"1 公共照明 | >2 WL1X | >3 WL2 | 4 应急照明"_s),
            Tree(u"1 公共照明 | >2 WL1 | >3 WL2A | >4 应急照明"_s));
    ASSERT_FALSE(result.HasUndecided());
    const std::vector<std::pair<QString, QString>> expected { { u"公共照明\\WL2"_s, u"公共照明\\WL2A"_s },
        { u"应急照明"_s, u"公共照明\\应急照明"_s } };
    EXPECT_EQ(result.renames, expected);
    EXPECT_EQ(Dump(*result.merged), u"1 公共照明 | >2 WL1X | >3 WL2A | >4 应急照明"_s);
}

TEST(ThreeWayMergeCollisions, NameTheCodeAndTheThreeValues)
{
    const SysCodeThreeWayMerge result
        = MergeSysCodeThreeWay(Tree(kBase), Tree(u"1 公共照明 | >2 WL1 | >3 WL2 c=255 | 4 应急照明"_s),
            Tree(u"1 公共照明 | >2 WL1 | >3 WL2 c=65280 | 4 应急照明"_s));
    ASSERT_EQ(result.collisions.size(), 1);
    const SysCodeCollision& c = result.collisions.first();
    EXPECT_EQ(c.field, SysCodeField::Color);
    EXPECT_EQ(c.code, u"公共照明\\WL2"_s);
    EXPECT_EQ(c.base, u"0,0,0"_s);
    EXPECT_EQ(c.theirs, u"255,0,0"_s);
    EXPECT_EQ(c.mine, u"0,255,0"_s);
}

TEST(ThreeWayMergeSize, TenThousandCodesWithAThousandChangesEachSide)
{
    QStringList dump;
    for (int i = 1; i <= 10000; ++i)
        dump << QStringLiteral("%1 C%1").arg(i);
    const CSysCodeData base = Tree(dump.join(u'|'));
    CSysCodeData theirs = base;
    CSysCodeData mine = base;
    for (int i = 0; i < 1000; ++i) {
        theirs.GetChild(i * 10)->SetDescribe(u"乙"_s);
        mine.GetChild(i * 10 + 5)->SetDescribe(u"甲"_s);
    }
    const SysCodeThreeWayMerge result = MergeSysCodeThreeWay(base, theirs, mine);
    ASSERT_FALSE(result.HasUndecided());
    EXPECT_EQ(result.merged->GetChildCount(), 10000);
    EXPECT_EQ(result.merged->GetChild(10)->GetDescribe(), u"乙"_s);
    EXPECT_EQ(result.merged->GetChild(15)->GetDescribe(), u"甲"_s);
    EXPECT_EQ(result.fromTheirs.size(), 1000);
}

} // namespace
