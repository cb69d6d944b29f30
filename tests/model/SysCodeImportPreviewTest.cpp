#include "SysCodeImportPreview.h"

#include "CSysCodeData.h"
#include "SysCodeMerge.h"

#include <gtest/gtest.h>

namespace {
using namespace Qt::StringLiterals;

CSysCodeData* add(CSysCodeData& parent, const QString& name, COLORREF colour = 0xFF, double width = 1.0)
{
    auto* node = new CSysCodeData;
    node->SetNodeName(name);
    node->SetMfcColor(colour);
    node->SetLineWidth(width);
    int counter = 0;
    parent.AddDataToChild(counter, node, false);
    return node;
}

// 照明 > WL1, WL2; 动力 — against a file with 照明 recoloured, WL1 as it is, WL2
// widened and remarked, a new WL3 with a child, a new top code, and 动力's name in
// other letters, which is another code.
TEST(ImportPreview, SortsTheFilesCodesIntoAddedChangedAndUnchanged)
{
    CSysCodeData target;
    CSysCodeData* lighting = add(target, u"照明"_s);
    add(*lighting, u"WL1"_s);
    add(*lighting, u"WL2"_s);
    add(target, u"PW"_s);

    CSysCodeData imported;
    CSysCodeData* lighting2 = add(imported, u"照明"_s, 0x0000FF00);
    add(*lighting2, u"WL1"_s);
    CSysCodeData* wl2 = add(*lighting2, u"WL2"_s, 0xFF, 2.5);
    wl2->SetDescribe(u"走道"_s);
    CSysCodeData* wl3 = add(*lighting2, u"WL3"_s);
    add(*wl3, u"一层"_s);
    add(imported, u"pw"_s);
    add(imported, QString()); // nameless: the merge cannot place it

    const SysCodeImportPreview preview = PreviewSysCodeImport(target, imported);
    EXPECT_EQ(preview.added, (QStringList { u"照明\\WL3"_s, u"照明\\WL3\\一层"_s, u"pw"_s }));
    EXPECT_EQ(preview.unchanged, QStringList { u"照明\\WL1"_s });
    ASSERT_EQ(preview.changed.size(), 2);
    EXPECT_EQ(preview.changed[0].fullName, u"照明"_s);
    ASSERT_EQ(preview.changed[0].changes.size(), 1);
    EXPECT_EQ(preview.changed[0].changes[0].attribute, u"颜色"_s);
    EXPECT_EQ(preview.changed[0].changes[0].before, u"255,0,0"_s);
    EXPECT_EQ(preview.changed[0].changes[0].after, u"0,255,0"_s);
    EXPECT_EQ(preview.changed[1].fullName, u"照明\\WL2"_s);
    ASSERT_EQ(preview.changed[1].changes.size(), 2);
    EXPECT_EQ(preview.changed[1].changes[0].attribute, u"线宽"_s);
    EXPECT_EQ(preview.changed[1].changes[0].after, u"2.5"_s);
    EXPECT_EQ(preview.changed[1].changes[1].attribute, u"备注"_s);

    // The preview tells what the merge then does.
    int counter = 10;
    ASSERT_FALSE(MergeSysCodeTree(counter, &target, &imported, true)); // the nameless one
    for (const QString& name : preview.added)
        EXPECT_NE(target.FindByFullName(name), nullptr) << name.toStdString();
    EXPECT_EQ(target.FindByFullName(u"照明"_s)->GetMfcColor(), 0x0000FF00u);
    EXPECT_EQ(target.FindByFullName(u"照明\\WL2"_s)->GetLineWidth(), 2.5);
    EXPECT_TRUE(PreviewSysCodeImport(target, imported).added.isEmpty());
    EXPECT_TRUE(PreviewSysCodeImport(target, imported).changed.isEmpty());
}
} // namespace
