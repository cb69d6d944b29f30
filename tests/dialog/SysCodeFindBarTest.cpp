// The find field over a grid of codes, driven without the management dialog: what a
// typed text keeps, how Enter steps through it, and what closing gives back.
#include "SysCodeFindBar.h"
#include "CTreeListCtrl.h"
#include "CtrlId.h"
#include "Resource.h"
#include "SysCodeCells.h"
#include "SysCodeColumn.h"

#include <QLineEdit>
#include <QStringMatcher>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

#include <cstdint>
#include <unordered_map>

namespace {
TEST(SysCodeFindMatcher, AnyLetterCaseMatchesAndOtherTextMatchesExactly)
{
    struct Case
    {
        const char* typed;
        const char* value;
        bool holds;
    };
    const Case cases[] = {
        { "wl", "WL1", true },
        { "WL", "走道wl2", true },
        { "Wl", "wL", true },
        { "照明", "一般照明", true },
        { "照明", "动力", false },
        { "12", "W12", true },
        { "21", "W12", false },
        { "a照明", "A照明回路", true }, // letters beside Chinese still fold
        { "yjv-", "电缆\\YJV-4", true },
        { "wl3", "WL1", false },
    };
    for (const Case& c : cases) {
        const QString typed = QString::fromUtf8(c.typed);
        EXPECT_EQ(SysCodeFindBar::Holds(SysCodeFindBar::Matcher(typed), QString::fromUtf8(c.value)), c.holds)
            << c.typed << " in " << c.value;
    }
}

class SysCodeFindBarTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        host.resize(500, 300);
        grid.setGeometry(0, 0, 500, 300);
        grid.InsertColumn(0, "系统编号", LVCFMT_LEFT, 120);
        grid.InsertColumn(1, "备注", LVCFMT_CENTER, 100);
        grid.InsertColumn(2, "管线信息", LVCFMT_CENTER, 100);
        grid.SetColumnValueFormat(
            2, [](const QVariant& path) { return SysCodeValueText(kColPipeInfo, path); }, nullptr);
        lighting = grid.InsertItem("照明");
        grid.SetItemText(lighting, "一般", 1);
        wl1 = grid.InsertItem("WL1", lighting);
        grid.SetItemText(wl1, "走道", 1);
        wl2 = grid.InsertItem("WL2", lighting);
        power = grid.InsertItem("动力");
        ap1 = grid.InsertItem("AP1", power);
        grid.InsertItem("插座");
        grid.SetItemValue(ap1, QStringLiteral("电气\\电缆\\YJV"), 2);
        grid.Expand(power, TVE_EXPAND);
        host.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&host));
        field = qobject_cast<QLineEdit*>(GetDlgItem(&host, IDC_FIND_TEXT));
        ASSERT_NE(field, nullptr);
    }

    QStringList shown() const
    {
        QStringList names;
        for (int row = 0; row < grid.GetItemCount(); ++row)
            names << grid.GetItemText(grid.GetItemFromRow(row));
        return names;
    }

    QWidget host;
    CTreeListCtrl grid { &host };
    SysCodeFindBar bar { host, grid, [] { return 1; }, [] { return 2; } };
    QLineEdit* field = nullptr;
    HTREEITEM lighting = nullptr, wl1 = nullptr, wl2 = nullptr, power = nullptr, ap1 = nullptr;
};

TEST_F(SysCodeFindBarTest, TypedTextKeepsTheCodesHoldingItWithTheirParents)
{
    const std::pair<const char*, QStringList> cases[] = {
        { "wl", { "照明", "WL1", "WL2" } }, // a closed parent opens
        { "走道", { "照明", "WL1" } }, // the remark
        { "yjv", { "动力", "AP1" } }, // the pipeline information
        { "一般", { "照明" } }, // a parent kept for itself
        { "无此", {} },
        { "", { "照明", "WL1", "WL2", "动力", "AP1", "插座" } },
    };
    bar.Open();
    ASSERT_TRUE(field->isVisible());
    for (const auto& [typed, expected] : cases) {
        field->setText(QString::fromUtf8(typed));
        EXPECT_EQ(shown(), expected) << typed;
    }
}

TEST_F(SysCodeFindBarTest, PipelineInformationChangedWhileOpenIsFound)
{
    bar.Open();
    field->setText(QStringLiteral("yjv"));
    grid.SetItemValue(wl2, QStringLiteral("电气\\电缆\\YJV"), 2);
    bar.Reapply();
    EXPECT_EQ(shown(), (QStringList { "照明", "WL2", "动力", "AP1" }));
    grid.SetItemValue(ap1, QString(), 2);
    field->setText(QStringLiteral("YJV"));
    EXPECT_EQ(shown(), (QStringList { "照明", "WL2" }));
}

TEST_F(SysCodeFindBarTest, EnterStepsThroughTheMatchesAndClosingGivesBackTheTree)
{
    bar.Open();
    field->setText(QStringLiteral("wl"));
    grid.SelectItem(lighting);
    QStringList visited;
    for (int i = 0; i < 3; ++i) {
        QTest::keyClick(field, Qt::Key_Return);
        visited << grid.GetItemText(grid.GetCaretItem());
    }
    EXPECT_EQ(visited, (QStringList { "WL1", "WL2", "WL1" })); // from the top again after the last
    // The rows open before are open again, the others closed.
    field->setText(QStringLiteral("插座"));
    QTest::keyClick(field, Qt::Key_Return);
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_FALSE(bar.IsOpen());
    EXPECT_FALSE(grid.IsRowFilterOn());
    EXPECT_EQ(grid.GetItemText(grid.GetCaretItem()), "插座");
    EXPECT_FALSE(grid.IsItemExpanded(lighting));
    EXPECT_TRUE(grid.IsItemExpanded(power));
    EXPECT_EQ(shown(), (QStringList { "照明", "动力", "AP1", "插座" }));
    bar.CloseIfOpen(); // closed already: nothing changes
    EXPECT_EQ(shown(), (QStringList { "照明", "动力", "AP1", "插座" }));
    // A code found stays in view: its parents stay open.
    bar.Open();
    field->setText(QStringLiteral("wl2"));
    QTest::keyClick(field, Qt::Key_Return);
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_EQ(shown(), (QStringList { "照明", "WL1", "WL2", "动力", "AP1", "插座" }));
}
} // namespace
