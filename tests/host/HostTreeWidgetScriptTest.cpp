// The grid statements on a dialog whose tree is a plain QTreeWidget: the host reads
// rows, cells, colours and the selection through the item-view classes alone, and
// opens, types into and picks in the view's own editors with real input.
#include "HostFixture.h"

namespace {
QString InTree(const QString& body, const QString& ending = QStringLiteral("ok"))
{
    return QStringLiteral("command qvhtree\n") + body + u'\n' + ending;
}
} // namespace

TEST_F(HostFixture, APlainTreeWidgetIsExpandedCheckedAndSelectedByTheGridStatements)
{
    EXPECT_EQ(Run(InTree(QStringLiteral("expect-title 树测试\n"
                                        "expect-rows 水箱 | 水泵\n"
                                        "expand 水箱\n"
                                        "expect-rows 水箱 | >进水 | >出水 | 水泵\n"
                                        "expect-cell 水箱&出水 数量 3\n"
                                        "expect-color 水箱&出水 1 255,0,0\n"
                                        "expect-back 水箱&出水 1 0,0,255\n"
                                        "expect-back 水箱&进水 1 0,0,0\n"
                                        "row 水箱&进水\n"
                                        "row-ctrl 水泵 规格\n"
                                        "expect-selected 水箱&进水 | 水泵\n"
                                        "collapse 水箱\n"
                                        "expect-rows 水箱 | 水泵\n"
                                        "expect-selected 水泵"))),
        "");
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhtree] result 1"))) << History().toStdString();
}

TEST_F(HostFixture, APlainTreeWidgetsOwnEditorsTakeTypedTextAndAPickedEntry)
{
    EXPECT_EQ(Run(InTree(QStringLiteral("dblclick 水箱&进水 数量\n"
                                        "key Ctrl+A\n"
                                        "type 25\n"
                                        "key Enter\n"
                                        "expect-cell 水箱&进水 数量 25\n"
                                        "dblclick 水泵 规格\n"
                                        "pick 大\n"
                                        "key Enter\n"
                                        "expect-cell 水泵 规格 大"))),
        "");
    const QString history = History();
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhtree] 水箱&进水: 25 | 小"))) << history.toStdString();
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhtree] 水泵: 1 | 大"))) << history.toStdString();
}

TEST_F(HostFixture, APlainTreeWidgetsRowsInsideACollapsedRowAreRefusedByName)
{
    const std::string failures = Run(InTree(QStringLiteral("row 水箱&出水"), QStringLiteral("cancel")));
    EXPECT_NE(failures.find("expected the row \"水箱&出水\" shown, found it inside a collapsed row"),
        std::string::npos)
        << failures;
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhtree] result 0")));
}
