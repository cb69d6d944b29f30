// Two people on one project: while the dialog is open, someone else stores the
// electrical codes (a colleague's save, here as SQL on the store, or qvproj import
// in a second process). OK then merges: changes on one side only are kept from
// both, collisions are settled in "合并", and nothing is written before that.
#include "ModuleScriptFixture.h"

#include "CQtxmMng.h"
#include "QvKsQtxmInfo.h"

#include <QDir>
#include <QFile>

namespace {
const QString kSql = QStringLiteral("sql ");

const CSysCodeData* Stored(const CSysCodeData& root, const QString& fullName)
{
    const CSysCodeData* code = root.FindByFullName(fullName);
    EXPECT_NE(code, nullptr) << fullName.toStdString();
    return code;
}
} // namespace

using MergeScript = ModuleScriptFixture;

TEST_F(MergeScript, ChangesToDifferentCodesAreBothStoredAndTheNoticeSaysWhatCameFromTheStore)
{
    EXPECT_EQ(Run(QStringLiteral(
                  "command bhgl\n"
                  "edit 公共照明&WL2 备注\n"
                  "type 甲的备注\n"
                  "click-outside\n"
                  "sql UPDATE sys_code SET describe = '乙的备注' WHERE spec_id = 3 AND name = '公共插座'\n"
                  "ok\n"
                  "expect-box 公共插座：备注\n"
                  "expect-title ")),
        "");
    const CSysCodeData root = StoredElectrical();
    EXPECT_EQ(Stored(root, QStringLiteral("公共照明\\WL2"))->GetDescribe(), QStringLiteral("甲的备注"));
    EXPECT_EQ(Stored(root, QStringLiteral("公共插座"))->GetDescribe(), QStringLiteral("乙的备注"));
}

TEST_F(MergeScript, OneAttributeChangedTwoWaysIsSettledInTheMergeDialog)
{
    EXPECT_EQ(Run(QStringLiteral(
                  "command bhgl\n"
                  "edit 公共插座 备注\n"
                  "type 甲的备注\n"
                  "click-outside\n"
                  "sql UPDATE sys_code SET describe = '乙的备注' WHERE spec_id = 3 AND name = '公共插座'\n"
                  "ok\n"
                  "expect-title 合并\n"
                  "expect-text 3151 冲突 1 处，未选择 1 处\n"
                  "expect-disabled 1\n"
                  "click 3153\n"
                  "expect-text 3151 冲突 1 处，未选择 0 处\n"
                  "ok\n"
                  "expect-title ")),
        "");
    EXPECT_EQ(
        Stored(StoredElectrical(), QStringLiteral("公共插座"))->GetDescribe(), QStringLiteral("乙的备注"));
}

TEST_F(MergeScript, CancellingTheMergeWritesNothingAndKeepsEditing)
{
    // qvproj print, run while the dialog stays open, shows what the store holds.
    EXPECT_EQ(Run(QStringLiteral(
                  "command bhgl\n"
                  "edit 公共插座 备注\n"
                  "type 甲的备注\n"
                  "click-outside\n"
                  "edit 区域照明 0\n"
                  "type 区域照明甲\n"
                  "click-outside\n"
                  "sql UPDATE sys_code SET describe = '乙的备注' WHERE spec_id = 3 AND name = '公共插座'\n"
                  "ok\n"
                  "expect-title 合并\n"
                  "cancel\n"
                  "expect-title 系统编号管理\n"
                  "expect-cell 公共插座 备注 甲的备注\n"
                  "expect-cell 区域照明甲 0 区域照明甲\n"
                  "run qvproj print \"%1\" 电气\n"
                  "expect remark=\"乙的备注\"\n"
                  "expect-not 区域照明甲\n"
                  // Asked again on the next OK, and settled for mine this time.
                  "ok\n"
                  "expect-title 合并\n"
                  "click 3156\n"
                  "ok\n"
                  "expect-title ")
                      .arg(project.Path())),
        "");
    const CSysCodeData after = StoredElectrical();
    EXPECT_EQ(Stored(after, QStringLiteral("公共插座"))->GetDescribe(), QStringLiteral("甲的备注"));
    EXPECT_NE(after.FindByFullName(QStringLiteral("区域照明甲")), nullptr);
}

TEST_F(MergeScript, ACodeDeletedInTheStoreButChangedHereIsKeptWhenMineIsChosen)
{
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "edit 公共插座&WX1 备注\n"
                                 "type 保留\n"
                                 "click-outside\n"
                                 "sql DELETE FROM sys_code WHERE spec_id = 3 AND name = 'WX1'\n"
                                 "ok\n"
                                 "expect-title 合并\n"
                                 "expect-text 3151 冲突 1 处，未选择 1 处\n"
                                 "click 3156\n"
                                 "ok\n"
                                 "expect-title ")),
        "");
    const CSysCodeData root = StoredElectrical();
    const CSysCodeData* kept = Stored(root, QStringLiteral("公共插座\\WX1"));
    ASSERT_NE(kept, nullptr);
    EXPECT_EQ(kept->GetDescribe(), QStringLiteral("保留"));
    EXPECT_EQ(kept->GetNodeIndex(), 10); // the index its entities carry
}

TEST_F(MergeScript, ACodeDeletedHereButChangedInTheStoreIsKeptWhenTheirsIsChosen)
{
    EXPECT_EQ(Run(QStringLiteral(
                  "command bhgl\n"
                  "row 弱电通信\n"
                  "answer yes\n"
                  "key Del\n"
                  "sql UPDATE sys_code SET describe = '乙的备注' WHERE spec_id = 3 AND name = '弱电通信'\n"
                  "ok\n"
                  "expect-title 合并\n"
                  "click 3155\n"
                  "ok\n"
                  "expect-title ")),
        "");
    EXPECT_EQ(
        Stored(StoredElectrical(), QStringLiteral("弱电通信"))->GetDescribe(), QStringLiteral("乙的备注"));
}

TEST_F(MergeScript, TwoNewCodesOfOneNameBecomeOneUnderTheStoresIndex)
{
    EXPECT_EQ(Run(QStringLiteral(
                  "command bhgl\n"
                  "row 弱电通信\n"
                  "key Ins\n"
                  "edit 弱电通信1 0\n"
                  "type 广播\n"
                  "click-outside\n"
                  "edit 广播 备注\n"
                  "type 甲的广播\n"
                  "click-outside\n"
                  "sql INSERT INTO sys_code(spec_id, node_index, parent_index, ord, name, color, "
                  "line_width, alpha, line_style, line_string, hor_laying, ver_laying, added_msg, "
                  "describe) VALUES (3, 20, 0, 9, '广播', 255, 30, 0, '', '', '', '', '', '乙的广播'); "
                  "UPDATE spec SET max_index = 20 WHERE spec_id = 3\n"
                  "ok\n"
                  "expect-title 合并\n"
                  "click 3154\n"
                  "ok\n"
                  "expect-title ")),
        "");
    const CSysCodeData root = StoredElectrical();
    const CSysCodeData* code = Stored(root, QStringLiteral("广播"));
    ASSERT_NE(code, nullptr);
    EXPECT_EQ(code->GetNodeIndex(), 20);
    EXPECT_EQ(code->GetDescribe(), QStringLiteral("甲的广播"));
    EXPECT_EQ(root.GetChildCount(), 6);
}

TEST_F(MergeScript, RenamesOfBothSidesLandOnTheCodesThatSurvive)
{
    // The other side renames WL1 and carries its items along, as its save does.
    EXPECT_EQ(
        Run(QStringLiteral(
            "command bhgl\n"
            "edit 公共照明&WL2 0\n"
            "type WL2A\n"
            "click-outside\n"
            "row 弱电通信\n"
            "key Ins\n"
            "sql UPDATE sys_code SET name = 'WL1X' WHERE spec_id = 3 AND name = 'WL1'; "
            "UPDATE qd_item SET sys_code = '电气\\公共照明\\WL1X' WHERE sys_code = '电气\\公共照明\\WL1'; "
            "UPDATE de_item SET sys_code = '电气\\公共照明\\WL1X' WHERE sys_code = '电气\\公共照明\\WL1'; "
            "INSERT INTO sys_code(spec_id, node_index, parent_index, ord, name, color, "
            "line_width, alpha, line_style, line_string, hor_laying, ver_laying, added_msg, "
            "describe) VALUES (3, 14, 0, 9, '广播', 255, 30, 0, '', '', '', '', '', ''); "
            "UPDATE spec SET max_index = 14 WHERE spec_id = 3\n"
            "ok\n"
            "expect-box 新增 广播\n"
            "expect-title ")),
        "");
    const CSysCodeData root = StoredElectrical();
    EXPECT_EQ(Stored(root, QStringLiteral("公共照明\\WL1X"))->GetNodeIndex(), 6);
    EXPECT_EQ(Stored(root, QStringLiteral("公共照明\\WL2A"))->GetNodeIndex(), 7);
    EXPECT_EQ(Stored(root, QStringLiteral("广播"))->GetNodeIndex(), 14);
    // The code added here is numbered by the store, past its high-water mark.
    const CSysCodeData* added = Stored(root, QStringLiteral("弱电通信1"));
    ASSERT_NE(added, nullptr);
    EXPECT_EQ(added->GetNodeIndex(), 15);
    QVector<SQvKsQdInfo> items;
    ASSERT_TRUE(CQtxmMng::GetAllQdInfos(QStringLiteral("1F"), items));
    QStringList codes;
    for (const SQvKsQdInfo& item : items)
        codes << item.strSysCode;
    EXPECT_TRUE(codes.contains(QStringLiteral("电气\\公共照明\\WL1X"))) << codes.join(u' ').toStdString();
    EXPECT_FALSE(codes.contains(QStringLiteral("电气\\公共照明\\WL1")));
}

TEST_F(MergeScript, AnImportByQvprojInAnotherProcessIsKeptBesideTheDialogsEdit)
{
    const QString file = project.Path() + QStringLiteral("/recolour.scn");
    // Written by qvproj itself from a tree with a new code, then imported by it
    // again while the dialog is open.
    EXPECT_EQ(
        Run(QStringLiteral("command bhgl\n"
                           "edit 公共照明&WL2 备注\n"
                           "type 甲的备注\n"
                           "click-outside\n"
                           "sql UPDATE sys_code SET color = 255 WHERE spec_id = 3 AND name = '公共照明'; "
                           "UPDATE sys_code SET name = '消防广播' WHERE spec_id = 3 AND name = '弱电通信'\n"
                           "run qvproj export \"%1\" 电气 \"%2\"\n"
                           "sql UPDATE sys_code SET color = 65535 WHERE spec_id = 3 AND name = '公共照明'; "
                           "UPDATE sys_code SET name = '弱电通信' WHERE spec_id = 3 AND name = '消防广播'\n"
                           "run qvproj import \"%1\" 电气 \"%2\"\n"
                           "ok\n"
                           "expect-box 新增 消防广播\n"
                           "expect-title ")
                .arg(project.Path(), file)),
        "");
    const CSysCodeData root = StoredElectrical();
    EXPECT_EQ(Stored(root, QStringLiteral("公共照明\\WL2"))->GetDescribe(), QStringLiteral("甲的备注"));
    EXPECT_EQ(Stored(root, QStringLiteral("公共照明"))->GetMfcColor(), 255u);
    EXPECT_NE(root.FindByFullName(QStringLiteral("消防广播")), nullptr);
    EXPECT_NE(root.FindByFullName(QStringLiteral("弱电通信")), nullptr);
}
