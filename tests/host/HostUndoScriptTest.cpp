// Undo and redo in the module's dialog, worked by linear scripts on the demo project
// with the keys a drafter presses: each kind of change taken back and made again,
// what OK then stores, and Cancel finding nothing to save once all is undone. Also
// editing from the keyboard alone: Tab from cell to cell, the level limit refusing
// a key, the find field over collapsed parents.
#include "ModuleScriptFixture.h"

using UndoScript = ModuleScriptFixture;

TEST_F(UndoScript, EachChangeIsUndoneAndRedoneAndOkStoresWhatIsShown)
{
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 // A rename taken by Tab, which opens the colour cell.
                                 "edit 公共照明 0\n"
                                 "type 照明A\n"
                                 "key Tab\n"
                                 "expect-cell 照明A 0 照明A\n"
                                 "key Ctrl+Z\n"
                                 "expect-cell 公共照明 0 公共照明\n"
                                 "key Ctrl+Y\n"
                                 "expect-cell 照明A 0 照明A\n"
                                 // A colour from the colour dialog.
                                 "edit 公共插座 1\n"
                                 "color 0,128,255\n"
                                 "cell-button 10008\n"
                                 "expect-color 公共插座 1 0,128,255\n"
                                 "key Ctrl+Z\n"
                                 "expect-color 公共插座 1 255,0,255\n"
                                 // A drag, undone and redone.
                                 "drag 弱电通信 照明A\n"
                                 "expect-rows 照明A | 弱电通信 | 公共插座 | 区域照明 | 机房动力\n"
                                 "key Ctrl+Z\n"
                                 "expect-rows 照明A | 公共插座 | 区域照明 | 机房动力 | 弱电通信\n"
                                 "key Ctrl+Shift+Z\n"
                                 "expect-rows 照明A | 弱电通信 | 公共插座 | 区域照明 | 机房动力\n"
                                 // A new code, then deleted: both undone, one at a time.
                                 "row 机房动力\n"
                                 "key Ins\n"
                                 "expect-selected 机房动力1\n"
                                 "key Del\n"
                                 "expect-rows 照明A | 弱电通信 | 公共插座 | 区域照明 | 机房动力\n"
                                 "key Ctrl+Z\n"
                                 "expect-rows 照明A | 弱电通信 | 公共插座 | 区域照明 | 机房动力 | 机房动力1\n"
                                 "key Ctrl+Z\n"
                                 "expect-rows 照明A | 弱电通信 | 公共插座 | 区域照明 | 机房动力\n"
                                 // A deleted code with its codes below it comes back whole.
                                 "expand 机房动力\n"
                                 "row 机房动力\n"
                                 "answer yes\n"
                                 "key Del\n"
                                 "expect-rows 照明A | 弱电通信 | 公共插座 | 区域照明\n"
                                 "key Ctrl+Z\n"
                                 "expect-rows 照明A | 弱电通信 | 公共插座 | 区域照明 | 机房动力 | >AP-B1\n"
                                 "ok\n"
                                 "expect-title ")),
        "");
    const CSysCodeData root = StoredElectrical();
    EXPECT_EQ(root.FindByFullName(QStringLiteral("公共照明")), nullptr);
    ASSERT_NE(root.FindByFullName(QStringLiteral("照明A")), nullptr);
    EXPECT_EQ(root.GetChild(1)->GetNodeName(), QStringLiteral("弱电通信"));
    const CSysCodeData* sockets = root.FindByFullName(QStringLiteral("公共插座"));
    ASSERT_NE(sockets, nullptr);
    EXPECT_EQ(sockets->GetMfcColor(), 0x00FF00FFu);
    EXPECT_NE(root.FindByFullName(QStringLiteral("机房动力\\AP-B1\\WP1")), nullptr);
    EXPECT_EQ(root.FindByFullName(QStringLiteral("机房动力1")), nullptr);
}

TEST_F(UndoScript, AllUndoneLeavesNothingToSave)
{
    EXPECT_EQ(
        Run(QStringLiteral("command bhgl\n"
                           "row 公共插座\n"
                           "key Ctrl+C\n"
                           "row 弱电通信\n"
                           "key Ctrl+V\n"
                           "key Alt+Up\n"
                           "expect-rows 公共照明 | 公共插座 | 区域照明 | 机房动力 | 公共插座1 | 弱电通信\n"
                           "key Ctrl+Z\n"
                           "key Ctrl+Z\n"
                           "expect-rows 公共照明 | 公共插座 | 区域照明 | 机房动力 | 弱电通信\n"
                           "cancel\n"
                           "expect-no-box\n"
                           "expect-title ")),
        "");
}

TEST_F(UndoScript, KeysRefusedByTheLevelLimitChangeNothingToUndo)
{
    EXPECT_EQ(Run(QStringLiteral(
                  "command bhgl\n"
                  "expand 机房动力\n"
                  "expand 机房动力&AP-B1\n"
                  "row 机房动力&AP-B1&WP1\n"
                  "key Ctrl+Ins\n"
                  "expect-box 系统编号不允许超过3级!\n"
                  "row 机房动力\n"
                  "key Ctrl+C\n"
                  "row 机房动力&AP-B1\n"
                  "key Ctrl+V\n"
                  "expect-box 系统编号不允许超过3级!\n"
                  "key Ctrl+Z\n"
                  "expect-rows 公共照明 | 公共插座 | 区域照明 | 机房动力 | >AP-B1 | >>WP1 | 弱电通信\n"
                  "cancel\n"
                  "expect-no-box\n"
                  "expect-title ")),
        "");
}

TEST_F(UndoScript, ADeleteUnderTheFindFieldIsUndoneAndTheCodeMatchedAgain)
{
    EXPECT_EQ(Run(QStringLiteral(
                  "command bhgl\n"
                  "expect-rows 公共照明 | 公共插座 | 区域照明 | 机房动力 | 弱电通信\n"
                  "key Ctrl+F\n"
                  "type WP\n"
                  "expect-rows 机房动力 | >AP-B1 | >>WP1\n"
                  "row 机房动力&AP-B1&WP1\n"
                  "key Del\n"
                  "expect-rows 机房动力 | >AP-B1\n"
                  "key Ctrl+Z\n"
                  "expect-rows 机房动力 | >AP-B1 | >>WP1\n"
                  "key Ctrl+F\n"
                  "key Escape\n"
                  // Every code again; the current one, back from the undo, in sight.
                  "expect-rows 公共照明 | 公共插座 | 区域照明 | 机房动力 | >AP-B1 | >>WP1 | 弱电通信\n"
                  "expect-selected 机房动力&AP-B1&WP1\n"
                  "cancel\n"
                  "expect-no-box\n"
                  "expect-title ")),
        "");
}

TEST_F(UndoScript, ABatchAndAClearedPipelineInformationAreUndoneOneAtATime)
{
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "row 公共照明\n"
                                 "row-ctrl 公共插座\n"
                                 "click 202\n"
                                 "expect-title 批量修改\n"
                                 "set-text 3007 统一备注\n"
                                 "ok\n"
                                 "expect-cell 公共插座 9 统一备注\n"
                                 "row 区域照明\n"
                                 "click 203\n"
                                 "expect-cell 区域照明 2\n"
                                 "key Ctrl+Z\n"
                                 "expect-cell 区域照明 2 ZR-BV-3×2.5\n"
                                 "expect-cell 公共插座 9 统一备注\n"
                                 "key Ctrl+Z\n"
                                 "expect-cell 公共照明 9\n"
                                 "expect-cell 公共插座 9\n"
                                 "key Ctrl+Y\n"
                                 "expect-cell 公共照明 9 统一备注\n"
                                 "ok\n"
                                 "expect-title ")),
        "");
    const CSysCodeData root = StoredElectrical();
    EXPECT_EQ(root.FindByFullName(QStringLiteral("公共插座"))->GetDescribe(), QStringLiteral("统一备注"));
    // The batch gives every selected code the first one's pipeline information, ticked
    // or not; the redone batch did so again.
    EXPECT_EQ(root.FindByFullName(QStringLiteral("公共插座"))->GetAddedMsg(),
        QStringLiteral("电气\\管线\\导线·导管\\BV-2.5"));
    EXPECT_FALSE(root.FindByFullName(QStringLiteral("区域照明"))->GetAddedMsg().isEmpty());
}
