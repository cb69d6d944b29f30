// Cell editing of the module worked by a linear script on the demo project: a
// rename, a refused duplicate, a colour from the colour dialog and a name picked
// from a room's text in the drawing, all stored by OK.
#include "HostFixture.h"

#include "CISysCode.h"
#include "CSysCodeData.h"

namespace {
class CellEditScript : public HostFixture
{
protected:
    QStringList Plugins() const override { return { QStringLiteral(QV_MODULE_PLUGIN) }; }
};
} // namespace

TEST_F(CellEditScript, RenameColourAndPickedNameAreStored)
{
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "expect-title 系统编号管理\n"
                                 "edit 公共照明 0\n"
                                 "type 照明A\n"
                                 "click-outside\n"
                                 "expect-no-box\n"
                                 "expect-cell 照明A 0 照明A\n"
                                 "edit 照明A 0\n"
                                 "type 机房动力\n"
                                 "key Return\n"
                                 "expect-box 机房动力系统编号在该级中已存在\n"
                                 "key Escape\n"
                                 "expect-cell 照明A 0 照明A\n"
                                 "edit 照明A 1\n"
                                 "color 0,128,255\n"
                                 "cell-button 10008\n"
                                 "expect-color 照明A 1 0,128,255\n"
                                 "edit 区域照明 0\n"
                                 "select 550 2450 1800 2900\n"
                                 "cell-button 10002\n"
                                 "expect-no-box\n"
                                 "expect-cell 办公室 0 办公室\n"
                                 "ok\n"
                                 "expect-title \n"
                                 "expect 请选择文字对象:\n")),
        "");
    CSysCodeData root;
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(root, QStringLiteral("电气")));
    const CSysCodeData* renamed = root.FindByFullName(QStringLiteral("照明A"));
    ASSERT_NE(renamed, nullptr);
    EXPECT_EQ(renamed->GetMfcColor(), 0xFF8000u); // 0,128,255 as 0x00BBGGRR
    EXPECT_NE(root.FindByFullName(QStringLiteral("办公室")), nullptr);
    EXPECT_EQ(root.FindByFullName(QStringLiteral("公共照明")), nullptr);
    EXPECT_EQ(root.FindByFullName(QStringLiteral("区域照明")), nullptr);
    EXPECT_NE(root.FindByFullName(QStringLiteral("机房动力")), nullptr);
}
