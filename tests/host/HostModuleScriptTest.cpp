// Linear scripts against the management dialog of the module loaded in the test
// process: its specialty list, expand and collapse buttons, check box, scale edit
// and rows, driven as a user does.
#include "HostFixture.h"

namespace {
class ModuleScript : public HostFixture
{
protected:
    QStringList Plugins() const override { return { QStringLiteral(QV_MODULE_PLUGIN) }; }
};

const QString kWaterRows = QStringLiteral("生活给水 | 生活排水 | 生活污水 | 消防水 | 喷淋水 | 雨水 | 空调水");
} // namespace

TEST_F(ModuleScript, ManagementDialogControlsAreWorkedLineByLine)
{
    EXPECT_EQ(Run(QStringLiteral(
                  "command bhgl\n"
                  "expect-title 系统编号管理\n"
                  "expect-text 200 电气\n"
                  "expect-rows 公共照明 | 公共插座 | 区域照明 | 机房动力 | 弱电通信\n"
                  "choose 200 给排水\n"
                  "expect-rows %1\n"
                  "click 207\n"
                  "expect-rows 生活给水 | >低区给水 | >高区给水 | 生活排水 | 生活污水 | >WL-1 | 消防水 | "
                  "喷淋水 | 雨水 | >重力流 | >虹吸 | 空调水 | >冷冻水供水 | >冷冻水回水 | >冷凝水\n"
                  "row 生活给水&高区给水\n"
                  "expect-selected 生活给水&高区给水\n"
                  "click 208\n"
                  "expect-rows %1\n"
                  "check 206\n"
                  "expect-checked 206\n"
                  "uncheck 206\n"
                  "expect-unchecked 206\n"
                  "expect-text 3001 1.0\n"
                  "set-text 3001 2\n"
                  "expect-text 3001 2\n"
                  "answer no\n"
                  "cancel\n"
                  "expect-box 是否保存设置修改\n"
                  "expect-title ")
                      .arg(kWaterRows)),
        "");
}

TEST_F(ModuleScript, ManagementDialogChecksFailWithTheirLine)
{
    const std::string failures
        = Run(QStringLiteral("command bhgl\nchoose 200 给排水\nexpect-rows 生活给水\ncancel"));
    EXPECT_NE(failures.find(QStringLiteral("line 3: expected the rows \"生活给水\", found \"%1\"")
                                .arg(kWaterRows)
                                .toStdString()),
        std::string::npos)
        << failures;
}
