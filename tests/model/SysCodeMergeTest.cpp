#include "SysCodeMerge.h"

#include "CSysCodeData.h"

#include <QStringList>
#include <gtest/gtest.h>

namespace {

using namespace Qt::StringLiterals;

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

// Target: 给水(1) > 一区(2) > 1层(3); 排水(4).
class Merge : public ::testing::Test
{
protected:
    void SetUp() override
    {
        AddCode(AddCode(AddCode(&target, u"给水"_s, 1, 0x10), u"一区"_s, 2, 0x20), u"1层"_s, 3, 0x30);
        AddCode(&target, u"排水"_s, 4, 0x40);
    }
    const CSysCodeData* Find(const QString& fullName) const { return target.FindByFullName(fullName); }
    CSysCodeData target;
};

TEST_F(Merge, ExistingCodesTakeAttributesAndNewOnesAreAppendedWithNewIndices)
{
    CSysCodeData import;
    CSysCodeData* water = AddCode(&import, u"给水"_s, 900, 0xA1);
    AddCode(AddCode(water, u"一区"_s, 901, 0xA2), u"2层"_s, 902, 0xA3);
    AddCode(AddCode(water, u"二区"_s, 903, 0xA4), u"1层"_s, 904, 0xA5);
    AddCode(&import, u"雨水"_s, 905, 0xA6);

    int counter = 0;
    EXPECT_TRUE(MergeSysCodeTree(counter, &target, &import, true));
    EXPECT_EQ(Names(&target), QStringList({ u"给水"_s, u"排水"_s, u"雨水"_s }));
    EXPECT_EQ(Names(Find(u"给水\\一区"_s)), QStringList({ u"1层"_s, u"2层"_s }));
    EXPECT_EQ(Find(u"给水\\一区"_s)->GetNodeIndex(), 2);
    EXPECT_EQ(Find(u"给水\\一区"_s)->GetMfcColor(), 0xA2u);
    EXPECT_EQ(Find(u"给水\\一区\\1层"_s)->GetMfcColor(), 0x30u);
    EXPECT_EQ(Find(u"给水\\二区\\1层"_s)->GetMfcColor(), 0xA5u);
    EXPECT_EQ(Find(u"排水"_s)->GetMfcColor(), 0x40u);
    QList<int> added;
    for (const QString& name : { u"给水\\一区\\2层"_s, u"给水\\二区"_s, u"给水\\二区\\1层"_s, u"雨水"_s })
        added << Find(name)->GetNodeIndex();
    EXPECT_EQ(added, QList<int>({ 5, 6, 7, 8 }));
    EXPECT_EQ(import.FindByFullName(u"雨水"_s)->GetNodeIndex(), 905); // the import stays as it was

    ASSERT_TRUE(MergeSysCodeTree(counter, &target, &import, true)); // again: nothing more to add
    EXPECT_EQ(counter, 8);
    EXPECT_EQ(Names(Find(u"给水"_s)), QStringList({ u"一区"_s, u"二区"_s }));
}

TEST_F(Merge, NonRootSourceIsPlacedByItsFullNameAndNamelessCodesFail)
{
    CSysCodeData import;
    CSysCodeData* zone = AddCode(AddCode(&import, u"给水"_s, 1, 0xC0), u"三区"_s, 2, 0xC1);
    AddCode(&import, QString(), 3, 0xD0);
    AddCode(&import, u"中水"_s, 4, 0xD1);
    int counter = 0;
    EXPECT_TRUE(MergeSysCodeTree(counter, &target, zone, false));
    EXPECT_EQ(Names(Find(u"给水"_s)), QStringList({ u"一区"_s, u"三区"_s }));
    EXPECT_EQ(Find(u"给水"_s)->GetMfcColor(), 0x10u); // the parent took no part
    EXPECT_FALSE(MergeSysCodeTree(counter, &target, &import, true));
    EXPECT_NE(Find(u"中水"_s), nullptr);
}

} // namespace
