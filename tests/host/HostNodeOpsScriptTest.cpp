// Adding, copying, pasting, deleting and dragging codes in the module's grid, worked
// by linear scripts on the demo project with real right clicks, menus and drags,
// and what OK stores. On the demo floors 区域照明 is used on 2F only, 公共照明 on
// every floor, and 机房动力 with its codes nowhere.
#include "ModuleScriptFixture.h"

#include <set>

using NodeOpsScript = ModuleScriptFixture;

TEST_F(NodeOpsScript, AddedPastedAndDeletedCodesAreStoredByOk)
{
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "rclick 弱电通信\n"
                                 "menu 1000\n"
                                 "expect-selected 弱电通信1\n"
                                 "expect-cell 弱电通信1 9 由弱电专业深化\n"
                                 "rclick 弱电通信1\n"
                                 "menu 1001\n"
                                 "expand 机房动力\n"
                                 "expand 机房动力&AP-B1\n"
                                 "rclick 机房动力&AP-B1&WP1\n"
                                 "menu 1001\n"
                                 "expect-box 系统编号不允许超过3级!\n"
                                 "rclick-empty\n"
                                 "menu 1003\n"
                                 "expect-rows 公共照明 | 公共插座 | 区域照明 | 机房动力 | >AP-B1 | >>WP1"
                                 " | 弱电通信 | 弱电通信1 | >弱电通信1 | 弱电通信2\n"
                                 // Copy a code with its child, paste it twice beside another.
                                 "rclick 公共插座\n"
                                 "menu 1004\n"
                                 "rclick 弱电通信\n"
                                 "menu 1005\n"
                                 "rclick 弱电通信\n"
                                 "menu 1005\n"
                                 "expand 公共插座2\n"
                                 "expect-cell 公共插座2&WX1 2 BV-4\n"
                                 "expect-color 公共插座2&WX1 1 255,0,255\n"
                                 // A new leaf goes without a question; a used code stays.
                                 "rclick 弱电通信2\n"
                                 "menu 1002\n"
                                 "expect-no-box\n"
                                 "rclick 区域照明\n"
                                 "answer yes\n"
                                 "menu 1002\n"
                                 "expect-box 该节点或者该节点的子级系统编号已被使用,不能删除!\n"
                                 "rclick 公共插座1\n"
                                 "answer no\n"
                                 "menu 1002\n"
                                 "expect-box 删除所选行将连同其下级一起被删除，是否确定删除?\n"
                                 "collapse 机房动力\n"
                                 "rclick 机房动力\n"
                                 "answer yes\n"
                                 "menu 1002\n"
                                 "expect-rows 公共照明 | 公共插座 | 区域照明 | 弱电通信 | 公共插座2 | >WX1"
                                 " | 公共插座1 | 弱电通信1 | >弱电通信1\n"
                                 "ok\n"
                                 "expect-title ")),
        "");
    const CSysCodeData root = StoredElectrical();
    for (const char* gone : { "机房动力", "弱电通信2" })
        EXPECT_EQ(root.FindByFullName(QString::fromUtf8(gone)), nullptr) << gone;
    std::set<int> indexes;
    for (const char* name :
        { "区域照明", "公共插座1", "公共插座1\\WX1", "公共插座2\\WX1", "弱电通信1\\弱电通信1" }) {
        const CSysCodeData* code = root.FindByFullName(QString::fromUtf8(name));
        ASSERT_NE(code, nullptr) << name;
        EXPECT_TRUE(indexes.insert(code->GetNodeIndex()).second) << name;
    }
    const CSysCodeData* pasted = root.FindByFullName(QStringLiteral("公共插座1"));
    EXPECT_EQ(pasted->GetAddedMsg(), QStringLiteral("电气\\管线\\导线·导管\\BV-4"));
    EXPECT_NE(pasted->GetMfcColor(), 0x00FF00FFu); // a new colour for the pasted code only
    EXPECT_EQ(root.FindByFullName(QStringLiteral("公共插座1\\WX1"))->GetMfcColor(), 0x00FF00FFu);
}

TEST_F(NodeOpsScript, DraggingMovesCopiesAndRefuses)
{
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "drag 弱电通信 公共照明\n"
                                 "expect-rows 公共照明 | 弱电通信 | 公共插座 | 区域照明 | 机房动力\n"
                                 "expand 公共照明\n"
                                 "expand 公共插座\n"
                                 "drag-ctrl 公共照明&WL1 公共插座&WX1\n"
                                 "expect-rows 公共照明 | >WL1 | >WL2 | >应急照明 | 弱电通信 | 公共插座 | >WX1"
                                 " | >WL1 | 区域照明 | 机房动力\n"
                                 "drag 公共插座&WL1 公共照明&WL2\n"
                                 "expect-box  公共照明\\WL1系统编号在该级中已存在!\n"
                                 "expand 机房动力\n"
                                 "expand 机房动力&AP-B1\n"
                                 "drag 公共照明&WL1 机房动力&AP-B1&WP1\n"
                                 "expect-box 系统编号不允许超过3级!\n"
                                 "row 公共插座\n"
                                 "row-ctrl 区域照明\n"
                                 "drag 区域照明 公共照明\n"
                                 "expect-box 一次不能移动超过一行系统编号!\n"
                                 "row 机房动力&AP-B1&WP1\n"
                                 "drag-ctrl 机房动力&AP-B1&WP1 机房动力&AP-B1&WP1\n"
                                 "expect-rows 公共照明 | >WL1 | >WL2 | >应急照明 | 弱电通信 | 公共插座 | >WX1"
                                 " | >WL1 | 区域照明 | 机房动力 | >AP-B1 | >>WP1 | >>WP2\n"
                                 "drag 公共插座&WL1 机房动力\n"
                                 "ok\n"
                                 "expect-title ")),
        "");
    const CSysCodeData root = StoredElectrical();
    const CSysCodeData* moved = root.FindByFullName(QStringLiteral("WL1"));
    ASSERT_NE(moved, nullptr);
    ASSERT_NE(root.FindByFullName(QStringLiteral("WL1\\WL1-1")), nullptr);
    EXPECT_NE(root.FindByFullName(QStringLiteral("公共照明\\WL1"))->GetNodeIndex(), moved->GetNodeIndex());
    EXPECT_EQ(root.FindByFullName(QStringLiteral("公共插座\\WL1")), nullptr);
    EXPECT_NE(root.FindByFullName(QStringLiteral("机房动力\\AP-B1\\WP2")), nullptr);
}

TEST_F(NodeOpsScript, ReleasingBesideTheGridChangesNothing)
{
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "drag-out 区域照明\n"
                                 "expect-rows 公共照明 | 公共插座 | 区域照明 | 机房动力 | 弱电通信\n"
                                 "cancel\n"
                                 "expect-no-box\n"
                                 "expect-title ")),
        "");
}

TEST_F(NodeOpsScript, KeysRunTheNodeOperationsOnTheCurrentRow)
{
    EXPECT_EQ(
        Run(QStringLiteral("command bhgl\n"
                           "row 弱电通信\n"
                           "key Ins\n"
                           "key Ctrl+Ins\n"
                           "expect-selected 弱电通信1&弱电通信1\n"
                           "key Del\n"
                           "expect-no-box\n"
                           "row 公共插座\n"
                           "key Ctrl+C\n"
                           "row 弱电通信1\n"
                           "key Ctrl+V\n"
                           "key Alt+Up\n"
                           "key Alt+Up\n"
                           "expect-selected 公共插座1\n"
                           "expect-rows 公共照明 | 公共插座 | 区域照明 | 机房动力 | 公共插座1 | 弱电通信"
                           " | 弱电通信1\n"
                           "key Alt+Down\n"
                           "key Alt+Down\n"
                           "key Alt+Down\n"
                           "expect-rows 公共照明 | 公共插座 | 区域照明 | 机房动力 | 弱电通信 | 弱电通信1"
                           " | 公共插座1\n"
                           "row 区域照明\n"
                           "row-ctrl 机房动力\n"
                           "key Alt+Down\n"
                           "expect-box 一次不能移动超过一行系统编号!\n"
                           "key Ctrl+C\n"
                           "answer yes\n"
                           "key Del\n"
                           "expect-box 该节点或者该节点的子级系统编号已被使用,不能删除!\n"
                           "expect-rows 公共照明 | 公共插座 | 区域照明 | 弱电通信 | 弱电通信1 | 公共插座1\n"
                           "answer no\n"
                           "cancel\n"
                           "expect-box 是否保存设置修改?\n"
                           "expect-title ")),
        "");
}

TEST_F(NodeOpsScript, TheUsageViewAndTheDeleteRefusalNameTheFloors)
{
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "key Ctrl+U\n"
                                 "expect-title 使用情况\n"
                                 "expect-text 3203 已使用 5 个，未使用 8 个，仅扫描当前楼层\n"
                                 "click 3202\n"
                                 "expect-text 3203 已使用 9 个，未使用 4 个，已扫描全部楼层\n"
                                 "expect-disabled 3202\n"
                                 "cancel\n"
                                 "expect-title 系统编号管理\n"
                                 "rclick 区域照明\n"
                                 "answer yes\n"
                                 "menu 1002\n"
                                 "expect-box 区域照明\\车库照明：2F\n"
                                 "cancel\n"
                                 "expect-title ")),
        "");
}

TEST_F(NodeOpsScript, FindKeepsMatchingCodesStepsThroughThemAndEscapeRestoresTheRows)
{
    EXPECT_EQ(
        Run(QStringLiteral(
            "command bhgl\n"
            "expand 公共照明\n"
            "key Ctrl+F\n"
            "type wl\n"
            "expect-rows 公共照明 | >WL1 | >>WL1-1 | >WL2\n"
            "key Return\n"
            "expect-selected 公共照明&WL1\n"
            "key Return\n"
            "expect-selected 公共照明&WL1&WL1-1\n"
            "key F3\n"
            "expect-selected 公共照明&WL2\n"
            "key Escape\n"
            "expect-rows 公共照明 | >WL1 | >WL2 | >应急照明 | 公共插座 | 区域照明 | 机房动力 | 弱电通信\n"
            "expect-selected 公共照明&WL2\n"
            // Remarks and pipeline information are searched too.
            "key Ctrl+F\n"
            "type 消防\n"
            "expect-rows 公共照明 | >应急照明\n"
            "key Ctrl+A\n"
            "key Del\n"
            "type BV-4\n"
            "expect-rows 公共插座 | >WX1\n"
            "key Escape\n"
            "cancel\n"
            "expect-no-box\n"
            "expect-title ")),
        "");
}
