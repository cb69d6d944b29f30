// "批量修改" of the module worked by a linear script on the demo project: three
// codes get one colour and one remark, the fourth keeps its own.
#include "HostFixture.h"

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
                                 "cancel\n"
                                 "expect-title ")),
        "");
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
