// "批量修改" of the module worked by a linear script on the demo project: three
// codes get one colour and one remark, the fourth keeps its own, and OK stores them.
#include "HostFixture.h"

#include "CISysCode.h"
#include "CSysCodeData.h"

namespace {
class BatchScript : public HostFixture
{
protected:
    QStringList Plugins() const override { return { QStringLiteral(QV_MODULE_PLUGIN) }; }
};
} // namespace

TEST_F(BatchScript, ThreeCodesGetTheColourAndRemark)
{
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "row 公共照明\n"
                                 "row-ctrl 公共插座\n"
                                 "row-ctrl 区域照明\n"
                                 "click 202\n"
                                 "expect-title 批量修改\n"
                                 "expect-unchecked 3012\n"
                                 "expect-unchecked 209\n"
                                 "expect-text 3006 BV-2.5\n"
                                 "color 0,128,255\n"
                                 "click 3013\n"
                                 "expect-checked 3012\n"
                                 "set-text 3007 统一备注\n"
                                 "expect-checked 209\n"
                                 "ok\n"
                                 "expect-title 系统编号管理\n"
                                 "expect-color 公共照明 1 0,128,255\n"
                                 "expect-back 公共插座 1 0,128,255\n"
                                 "expect-color 区域照明 1 0,128,255\n"
                                 "expect-cell 公共照明 9 统一备注\n"
                                 "expect-cell 区域照明 9 统一备注\n"
                                 "expect-cell 区域照明 2 ZR-BV-3×2.5\n"
                                 "expect-color 机房动力 1 255,0,0\n"
                                 "expect-cell 机房动力 9\n"
                                 "ok\n"
                                 "expect-title ")),
        "");
    // OK stored the batch's values, and only on the three codes.
    CSysCodeData root;
    ASSERT_TRUE(CISysCode::GetSpecCodeInfos(root, QStringLiteral("电气")));
    for (const char* name : { "公共照明", "公共插座", "区域照明" }) {
        const CSysCodeData* code = root.FindByFullName(QString::fromUtf8(name));
        ASSERT_NE(code, nullptr) << name;
        EXPECT_EQ(code->GetMfcColor(), 0xFF8000u) << name; // 0,128,255 as 0x00BBGGRR
        EXPECT_EQ(code->GetDescribe(), QStringLiteral("统一备注")) << name;
    }
    const CSysCodeData* untouched = root.FindByFullName(QStringLiteral("机房动力"));
    ASSERT_NE(untouched, nullptr);
    EXPECT_EQ(untouched->GetMfcColor(), 0x0000FFu);
    EXPECT_TRUE(untouched->GetDescribe().isEmpty());
}

TEST_F(BatchScript, NothingSelectedIsRefused)
{
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "row 公共照明\n"
                                 "row-ctrl 公共照明\n"
                                 "expect-selected\n"
                                 "click 202\n"
                                 "expect-box 请选择至少一项系统编号进行批量修改\n"
                                 "expect-title 系统编号管理\n"
                                 "cancel\n")),
        "");
}
