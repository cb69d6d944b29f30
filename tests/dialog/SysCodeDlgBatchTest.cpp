// "批量修改" and the pipeline-information cell of the management dialog, driven
// as a user does on a project made for the test.
#include "CBatchModifyDlg.h"
#include "CQvTreeCtrl.h"
#include "CTreeListCtrl.h"
#include "CTreeListEditBtn.h"
#include "CtrlId.h"
#include "MessageBoxRecorder.h"
#include "ModalDriver.h"
#include "QvKsCADColorTool.h"
#include "Resource.h"
#include "ShownDialog.h"
#include "SysCodeDlg.h"
#include "TestProject.h"

#include <QLineEdit>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {
// The lighting code's pipeline information is a member of this library.
const char* const kExtra = R"sql(
UPDATE sys_code SET added_msg = '电气\管线\导线·导管\BV-2.5' WHERE spec_id = 3 AND node_index = 1;
UPDATE sys_code SET added_msg = '电气\管线\电缆\YJV-5×10' WHERE spec_id = 3 AND node_index = 4;
INSERT INTO att_category(cat_id, major, middle, small, name) VALUES
  (3, 3, 0, 0, '电气'), (30, 3, 1, 0, '管线'), (31, 3, 1, 1, '导线·导管'), (32, 3, 1, 2, '电缆');
INSERT INTO att_member(cat_id, member_no, name) VALUES (31, 1, 'BV-2.5'), (31, 2, 'BV-4'), (32, 1, 'YJV-5×10');
)sql";

const QString kBv25 = QStringLiteral("电气\\管线\\导线·导管\\BV-2.5");
const QString kBv4 = QStringLiteral("电气\\管线\\导线·导管\\BV-4");
const QString kCable = QStringLiteral("电气\\管线\\电缆\\YJV-5×10");

class SysCodeDlgBatchTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(project.isOpen()); }
    void TearDown() override { QvKsCADColorTool::SetColorDialogHandler({}); }

    std::unique_ptr<SysCodeDlg> open() { return OpenShownDialog(QStringLiteral("电气")); }
    static CTreeListCtrl& grid(SysCodeDlg& dlg) { return GridOf(dlg); }
    static HTREEITEM row(SysCodeDlg& dlg, const QString& name)
    {
        CTreeListCtrl& g = grid(dlg);
        for (int r = 0; r < g.GetItemCount(); ++r) {
            if (g.GetItemText(g.GetItemFromRow(r), 0) == name)
                return g.GetItemFromRow(r);
        }
        return nullptr;
    }
    static void clickRow(SysCodeDlg& dlg, const QString& name, Qt::KeyboardModifiers modifiers = {})
    {
        HTREEITEM item = row(dlg, name);
        ASSERT_NE(item, nullptr) << name.toStdString();
        QTest::mouseClick(
            grid(dlg).viewport(), Qt::LeftButton, modifiers, grid(dlg).GetSubItemRect(item, 5).center());
    }
    static void click(QWidget* parent, int id) { QTest::mouseClick(GetDlgItem(parent, id), Qt::LeftButton); }

    TestProject project { QString::fromUtf8(kExtra) };
};
} // namespace

TEST_F(SysCodeDlgBatchTest, NothingSelectedAsksForASelection)
{
    MessageBoxRecorder boxes;
    auto dlg = open();
    ModalDriver driver([](QDialog* d) { d->reject(); });
    click(dlg.get(), IDC_BTN_BATCH_MODIFY);
    EXPECT_FALSE(driver.acted());
    EXPECT_EQ(boxes.texts(), QStringList({ "请选择至少一项系统编号进行批量修改" }));
    EXPECT_FALSE(dlg->IsModified());
}

TEST_F(SysCodeDlgBatchTest, TickedValuesReachEverySelectedRow)
{
    auto dlg = open();
    CTreeListCtrl& g = grid(*dlg);
    // The laying-mode lists the grid holds for the first selected row.
    HTREEITEM lighting = row(*dlg, QStringLiteral("照明"));
    g.SetEditOptions(lighting, { QStringLiteral("沿顶板暗敷"), QStringLiteral("CC") }, 3);
    g.SetEditOptions(lighting, { QStringLiteral("WC"), QStringLiteral("暗敷在墙内") }, 4);
    clickRow(*dlg, QStringLiteral("照明"));
    clickRow(*dlg, QStringLiteral("插座"), Qt::ControlModifier);

    QvKsCADColorTool::SetColorDialogHandler([](COLORREF, COLORREF& chosen) {
        chosen = RGB(10, 20, 30);
        return true;
    });
    CBatchModifyDlg* seen = nullptr;
    QStringList horModes;
    ModalDriver driver([&](QDialog* d) {
        seen = qobject_cast<CBatchModifyDlg*>(d);
        ASSERT_NE(seen, nullptr);
        auto* hor = qobject_cast<QComboBox*>(GetDlgItem(d, IDC_BATCH_CMB_HORMODE));
        for (int i = 0; i < hor->count(); ++i)
            horModes << hor->itemText(i);
        EXPECT_EQ(hor->currentText(), QStringLiteral("CC"));
        EXPECT_EQ(qobject_cast<QComboBox*>(GetDlgItem(d, IDC_BATCH_CMB_VERMODE))->currentText(),
            QStringLiteral("WC"));
        EXPECT_EQ(seen->m_color, kLightingColour);
        EXPECT_EQ(seen->m_strPipeInfo, kBv25);
        EXPECT_EQ(seen->m_strRemark, QStringLiteral("一般照明"));
        EXPECT_EQ(seen->m_strSpec, QStringLiteral("电气"));
        click(d, IDC_BATCH_BTN_COLOR);
        auto* remark = qobject_cast<QLineEdit*>(GetDlgItem(d, IDC_BATCH_EDIT_REMARK));
        remark->selectAll();
        QTest::keyClicks(remark, "Batch");
        click(d, IDC_BTN_OK);
    });
    click(dlg.get(), IDC_BTN_BATCH_MODIFY);
    ASSERT_TRUE(driver.acted());
    EXPECT_EQ(horModes, QStringList({ "CC", "沿顶板暗敷" }));

    for (const QString& name : { QStringLiteral("照明"), QStringLiteral("插座") }) {
        HTREEITEM r = row(*dlg, name);
        EXPECT_EQ(g.GetItemColor(r, 1), RGB(10, 20, 30)) << name.toStdString();
        EXPECT_EQ(g.GetItemBackColor(r, 1), RGB(10, 20, 30)) << name.toStdString();
        EXPECT_EQ(g.GetItemText(r, 9), QStringLiteral("Batch")) << name.toStdString();
        // The unticked path still travels to every selected row; the cell stays.
        EXPECT_EQ(dlg->GetRowInfo(r), kBv25) << name.toStdString();
    }
    EXPECT_EQ(g.GetItemText(row(*dlg, QStringLiteral("插座")), 2), QString());
    EXPECT_EQ(g.GetItemText(lighting, 3), QStringLiteral("CC"));
    HTREEITEM power = row(*dlg, QStringLiteral("动力"));
    EXPECT_EQ(g.GetItemColor(power, 1), 0x00FF0000u);
    EXPECT_EQ(g.GetItemText(power, 9), QString());
    EXPECT_EQ(dlg->GetRowInfo(power), kCable);
    EXPECT_TRUE(dlg->IsModified());
}

TEST_F(SysCodeDlgBatchTest, CancelChangesNothingAndOkWithNoTickStillCopiesThePath)
{
    auto dlg = open();
    CTreeListCtrl& g = grid(*dlg);
    clickRow(*dlg, QStringLiteral("动力"));
    clickRow(*dlg, QStringLiteral("插座"), Qt::ControlModifier);
    {
        ModalDriver driver([](QDialog* d) { click(d, IDC_BTN_CANCEL); });
        click(dlg.get(), IDC_BTN_BATCH_MODIFY);
        ASSERT_TRUE(driver.acted());
    }
    EXPECT_FALSE(dlg->IsModified());
    EXPECT_EQ(dlg->GetRowInfo(row(*dlg, QStringLiteral("插座"))), QString());

    ModalDriver driver([](QDialog* d) { click(d, IDC_BTN_OK); });
    click(dlg.get(), IDC_BTN_BATCH_MODIFY);
    ASSERT_TRUE(driver.acted());
    EXPECT_TRUE(dlg->IsModified());
    EXPECT_EQ(dlg->GetRowInfo(row(*dlg, QStringLiteral("插座"))), kCable);
    EXPECT_EQ(g.GetItemText(row(*dlg, QStringLiteral("插座")), 2), QString());
}

TEST_F(SysCodeDlgBatchTest, RowsUnderACollapsedParentKeepTheirValues)
{
    auto dlg = open();
    CTreeListCtrl& g = grid(*dlg);
    click(dlg.get(), IDC_BTN_EXPAND_LEVEL);
    clickRow(*dlg, QStringLiteral("WL1"));
    clickRow(*dlg, QStringLiteral("动力"), Qt::ControlModifier);
    HTREEITEM wl1 = row(*dlg, QStringLiteral("WL1"));
    click(dlg.get(), IDC_BTN_COLLAPSE_LEVEL);
    ASSERT_LT(g.GetRowFromItem(wl1), 0);
    ModalDriver driver([](QDialog* d) {
        auto* remark = qobject_cast<QLineEdit*>(GetDlgItem(d, IDC_BATCH_EDIT_REMARK));
        QTest::keyClicks(remark, "X");
        click(d, IDC_BTN_OK);
    });
    click(dlg.get(), IDC_BTN_BATCH_MODIFY);
    ASSERT_TRUE(driver.acted());
    EXPECT_EQ(g.GetItemText(wl1, 9), QString());
    EXPECT_EQ(dlg->GetRowInfo(wl1), QString());
    EXPECT_FALSE(g.GetItemText(row(*dlg, QStringLiteral("动力")), 9).isEmpty());
}

TEST_F(SysCodeDlgBatchTest, PipelineCellButtonPicksANameForItsRow)
{
    struct Case
    {
        const char* what;
        bool choose;
        QString path;
        QString shown;
        bool modified;
    };
    const Case cases[] = {
        { "picked", true, kBv4, QStringLiteral("BV-4"), true },
        { "cancelled", false, kBv25, QStringLiteral("BV-2.5"), false },
    };
    for (const Case& c : cases) {
        auto dlg = open();
        CTreeListCtrl& g = grid(*dlg);
        HTREEITEM lighting = row(*dlg, QStringLiteral("照明"));
        // The cell's button editor, as the cell editing gives it to the column.
        g.SetEditMode(lighting, TLEM_BUTTON, {}, 2);
        ASSERT_TRUE(g.EditSubItem(lighting, 2));
        CTreeListEditBtn* cell = g.GetEditBtnCtrl();
        ASSERT_EQ(cell->GetButtonId(), IDC_BTN_PIPEINFO_CELL);
        QString offered;
        ModalDriver driver([&](QDialog* picker) {
            auto* tree = qobject_cast<CQvTreeCtrl*>(GetDlgItem(picker, IDC_TREE_NAMES));
            offered = tree->GetItemDir(tree->GetSelectedItem());
            if (!c.choose) {
                click(picker, IDC_BTN_CANCEL);
                return;
            }
            QTreeWidgetItem* item = tree->GetItemByDir(kBv4);
            ASSERT_NE(item, nullptr);
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(item).center());
            click(picker, IDC_BTN_OK);
        });
        QTest::mouseClick(cell->GetButton(), Qt::LeftButton);
        ASSERT_TRUE(driver.acted()) << c.what;
        EXPECT_EQ(offered, kBv25) << c.what;
        EXPECT_EQ(dlg->GetRowInfo(lighting), c.path) << c.what;
        EXPECT_EQ(g.GetItemText(lighting, 2), c.shown) << c.what;
        EXPECT_EQ(cell->GetWindowText(), c.shown) << c.what;
        EXPECT_EQ(dlg->IsModified(), c.modified) << c.what;
        EXPECT_TRUE(cell->GetButton()->isEnabled());
    }
}
