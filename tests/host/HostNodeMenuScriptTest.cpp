// The grid's right-click menus and "删除管线信息" of the module, worked by linear
// scripts on the demo project with real right clicks and keys.
#include "HostFixture.h"

namespace {
class NodeMenuScript : public HostFixture
{
protected:
    QStringList Plugins() const override { return { QStringLiteral(QV_MODULE_PLUGIN) }; }
};
} // namespace

TEST_F(NodeMenuScript, RowMenuGraysPasteUntilACopyAndSingleRowEntriesForSeveralRows)
{
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "rclick 公共照明\n"
                                 "expect-menu 1000 enabled\n"
                                 "expect-menu 1001 enabled\n"
                                 "expect-menu 1002 enabled\n"
                                 "expect-menu 1003 absent\n"
                                 "expect-menu 1004 enabled\n"
                                 "expect-menu 1005 disabled\n"
                                 "menu 1004\n"
                                 "rclick 公共插座\n"
                                 "expect-menu 1005 enabled\n"
                                 "key Escape\n"
                                 "row 公共照明\n"
                                 "row-ctrl 区域照明\n"
                                 "rclick 区域照明\n"
                                 "expect-menu 1000 disabled\n"
                                 "expect-menu 1001 disabled\n"
                                 "expect-menu 1002 enabled\n"
                                 "expect-menu 1004 disabled\n"
                                 "expect-menu 1005 disabled\n"
                                 "key Escape\n"
                                 "rclick-empty\n"
                                 "expect-menu 1003 enabled\n"
                                 "expect-menu 1000 absent\n"
                                 "key Escape\n"
                                 "expect-no-box\n"
                                 "cancel\n"
                                 "expect-no-box\n"
                                 "expect-title ")),
        "");
}

TEST_F(NodeMenuScript, ClearingPipelineInformationEmptiesTheSelectedRowsOnly)
{
    EXPECT_EQ(Run(QStringLiteral("command bhgl\n"
                                 "expect-cell 公共照明 2 BV-2.5\n"
                                 "expect-cell 区域照明 2 ZR-BV-3×2.5\n"
                                 "row 公共照明\n"
                                 "click 203\n"
                                 "expect-cell 公共照明 2\n"
                                 "expect-cell 区域照明 2 ZR-BV-3×2.5\n"
                                 "answer no\n"
                                 "cancel\n"
                                 "expect-box 是否保存设置修改\n"
                                 "expect-title ")),
        "");
}
