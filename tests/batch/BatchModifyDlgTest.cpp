// The batch modification dialog driven as a user does.
#include "CBatchModifyDlg.h"
#include "CQvTreeCtrl.h"
#include "CtrlId.h"
#include "MessageBoxRecorder.h"
#include "ModalDriver.h"
#include "QvKsCADColorTool.h"
#include "Resource.h"
#include "TestProject.h"

#include <QTest>
#include <gtest/gtest.h>

namespace {
const char* const kLibrary = R"sql(
INSERT INTO att_category(cat_id, major, middle, small, name) VALUES
  (3, 3, 0, 0, '电气'), (6, 6, 0, 0, '弱电'), (30, 3, 1, 0, '管线'), (31, 3, 1, 1, '导线·导管'),
  (32, 3, 1, 2, '电缆'), (60, 6, 3, 0, '穿管引线'), (62, 6, 3, 2, '配线');
INSERT INTO att_member(cat_id, member_no, name) VALUES
  (31, 1, 'BV-2.5'), (32, 1, 'YJV-5×10'), (62, 1, 'RVS-2×1.0');
)sql";

const QStringList kHorModes = { QStringLiteral("沿顶板暗敷"), QStringLiteral("Cable tray"),
    QStringLiteral("ab"), QStringLiteral("Ac") };

class BatchModifyDlgTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(project.isOpen()); }
    void TearDown() override { QvKsCADColorTool::SetColorDialogHandler({}); }

    static std::unique_ptr<CBatchModifyDlg> open(const QString& horMode, const QString& verMode,
        const QString& remark = QStringLiteral("一般照明"), const QString& spec = QStringLiteral("电气"))
    {
        auto dlg = std::make_unique<CBatchModifyDlg>();
        dlg->SetHorModes(kHorModes);
        dlg->SetVerModes({ QStringLiteral("暗敷在墙内"), QStringLiteral("竖井内敷设") });
        dlg->m_strSpec = spec;
        dlg->m_color = RGB(255, 0, 0);
        dlg->m_strPipeInfo = QStringLiteral("电气\\管线\\导线·导管\\BV-2.5");
        dlg->m_strHorMode = horMode;
        dlg->m_strVerMode = verMode;
        dlg->m_strRemark = remark;
        dlg->OnInitDialog();
        dlg->show();
        QCoreApplication::processEvents();
        return dlg;
    }
    template <class T> static T* control(QWidget* dlg, int id)
    {
        return qobject_cast<T*>(GetDlgItem(dlg, id));
    }
    static bool ticked(QWidget* dlg, int id) { return control<QCheckBox>(dlg, id)->isChecked(); }
    static void click(QWidget* dlg, int id) { QTest::mouseClick(GetDlgItem(dlg, id), Qt::LeftButton); }
    // On the box itself: a check box wider than its text takes clicks only there.
    static void tick(QWidget* dlg, int id)
    {
        QWidget* box = GetDlgItem(dlg, id);
        QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(6, box->height() / 2));
    }
    static QList<bool> ticks(QWidget* dlg)
    {
        QList<bool> result;
        for (int id : { IDC_BATCH_CHK_COLOR, IDC_BATCH_CHK_PIPEINFO, IDC_BATCH_CHK_HORMODE,
                 IDC_BATCH_CHK_VERMODE, IDC_BATCH_CHK_REMARK })
            result << ticked(dlg, id);
        return result;
    }

    TestProject project { QString::fromUtf8(kLibrary) };
};
} // namespace

TEST_F(BatchModifyDlgTest, OpensWithTheRowsValuesAndEveryBoxClear)
{
    struct Case
    {
        QString horMode;
        QString verMode;
        QString horShown;
        QString verShown;
    };
    const Case cases[] = {
        { QStringLiteral("沿顶板暗敷"), QStringLiteral("竖井内敷设"), QStringLiteral("沿顶板暗敷"),
            QStringLiteral("竖井内敷设") },
        // The combo finds the first entry the text begins, letter case aside.
        { QStringLiteral("CABLE"), QStringLiteral("暗敷"), QStringLiteral("Cable tray"),
            QStringLiteral("暗敷在墙内") },
        { QStringLiteral("a"), QStringLiteral("沿柱敷设"), QStringLiteral("ab"), QString() },
        { QString(), QString(), QString(), QString() },
    };
    for (const Case& c : cases) {
        auto dlg = open(c.horMode, c.verMode);
        EXPECT_EQ(dlg->windowTitle(), QStringLiteral("批量修改"));
        EXPECT_EQ(ticks(dlg.get()), QList<bool>({ false, false, false, false, false }));
        auto* hor = control<QComboBox>(dlg.get(), IDC_BATCH_CMB_HORMODE);
        QStringList items;
        for (int i = 0; i < hor->count(); ++i)
            items << hor->itemText(i);
        EXPECT_EQ(items, QStringList({ "ab", "Ac", "Cable tray", "沿顶板暗敷" }));
        EXPECT_EQ(hor->currentText(), c.horShown) << c.horMode.toStdString();
        EXPECT_EQ(control<QComboBox>(dlg.get(), IDC_BATCH_CMB_VERMODE)->currentText(), c.verShown);
        EXPECT_EQ(control<QPushButton>(dlg.get(), IDC_BATCH_BTN_PIPEINFO)->text(), QStringLiteral("BV-2.5"));
        EXPECT_EQ(control<QPushButton>(dlg.get(), IDC_BATCH_BTN_COLOR)->palette().color(QPalette::Button),
            QColor(255, 0, 0));
        EXPECT_EQ(control<QLineEdit>(dlg.get(), IDC_BATCH_EDIT_REMARK)->text(), QStringLiteral("一般照明"));
    }
}

TEST_F(BatchModifyDlgTest, ChoosingAValueTicksItsBox)
{
    auto dlg = open(QString(), QString());
    QTest::keyClick(control<QComboBox>(dlg.get(), IDC_BATCH_CMB_HORMODE), Qt::Key_Down);
    QTest::keyClick(control<QLineEdit>(dlg.get(), IDC_BATCH_EDIT_REMARK), Qt::Key_X);
    EXPECT_EQ(ticks(dlg.get()), QList<bool>({ false, false, true, false, true }));
    QTest::keyClick(control<QComboBox>(dlg.get(), IDC_BATCH_CMB_VERMODE), Qt::Key_Down);
    EXPECT_TRUE(ticked(dlg.get(), IDC_BATCH_CHK_VERMODE));
    // The user may untick a box again.
    tick(dlg.get(), IDC_BATCH_CHK_REMARK);
    EXPECT_FALSE(ticked(dlg.get(), IDC_BATCH_CHK_REMARK));
}

TEST_F(BatchModifyDlgTest, ColourComesFromTheHostDialog)
{
    auto dlg = open(QString(), QString());
    COLORREF offered = 0;
    QvKsCADColorTool::SetColorDialogHandler([&](COLORREF current, COLORREF&) {
        offered = current;
        return false;
    });
    click(dlg.get(), IDC_BATCH_BTN_COLOR);
    EXPECT_EQ(offered, RGB(255, 0, 0));
    EXPECT_FALSE(ticked(dlg.get(), IDC_BATCH_CHK_COLOR));
    EXPECT_EQ(dlg->GetColor(), RGB(255, 0, 0));

    QvKsCADColorTool::SetColorDialogHandler([](COLORREF, COLORREF& chosen) {
        chosen = RGB(0, 128, 255);
        return true;
    });
    click(dlg.get(), IDC_BATCH_BTN_COLOR);
    EXPECT_TRUE(ticked(dlg.get(), IDC_BATCH_CHK_COLOR));
    EXPECT_EQ(dlg->GetColor(), RGB(0, 128, 255));
    EXPECT_EQ(control<QPushButton>(dlg.get(), IDC_BATCH_BTN_COLOR)->palette().color(QPalette::Button),
        QColor(0, 128, 255));
}

TEST_F(BatchModifyDlgTest, PipelineInformationComesFromThePickerOfTheSpecialty)
{
    struct Case
    {
        QString spec;
        QString topCategory; // what the picker offers
        QString pick;
        QString shown;
    };
    const Case cases[] = {
        { QStringLiteral("电气"), QStringLiteral("电气"), QStringLiteral("电气\\管线\\电缆\\YJV-5×10"),
            QStringLiteral("YJV-5×10") },
        { QStringLiteral("暖通"), QStringLiteral("弱电"), QStringLiteral("弱电\\穿管引线\\配线\\RVS-2×1.0"),
            QStringLiteral("RVS-2×1.0") },
    };
    for (const Case& c : cases) {
        auto dlg = open(QString(), QString(), QString(), c.spec);
        QString top;
        ModalDriver driver([&](QDialog* picker) {
            auto* tree = qobject_cast<CQvTreeCtrl*>(GetDlgItem(picker, IDC_TREE_NAMES));
            top = tree->GetRootItem() ? tree->GetRootItem()->text(0) : QString();
            QTreeWidgetItem* item = tree->GetItemByDir(c.pick);
            ASSERT_NE(item, nullptr);
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(item).center());
            click(picker, IDC_BTN_OK);
        });
        click(dlg.get(), IDC_BATCH_BTN_PIPEINFO);
        EXPECT_TRUE(driver.acted());
        EXPECT_EQ(top, c.topCategory) << c.spec.toStdString();
        EXPECT_EQ(dlg->GetPipeInfo(), c.pick);
        EXPECT_EQ(control<QPushButton>(dlg.get(), IDC_BATCH_BTN_PIPEINFO)->text(), c.shown);
        EXPECT_TRUE(ticked(dlg.get(), IDC_BATCH_CHK_PIPEINFO));
    }
}

TEST_F(BatchModifyDlgTest, PickerCancelledOrNoSpecialtyChangesNothing)
{
    MessageBoxRecorder boxes;
    auto dlg = open(QString(), QString(), QString(), QString());
    click(dlg.get(), IDC_BATCH_BTN_PIPEINFO);
    EXPECT_EQ(boxes.texts(), QStringList({ "传入信息错误" }));

    dlg->m_strSpec = QStringLiteral("电气");
    ModalDriver driver([](QDialog* picker) { click(picker, IDC_BTN_CANCEL); });
    click(dlg.get(), IDC_BATCH_BTN_PIPEINFO);
    EXPECT_TRUE(driver.acted());
    EXPECT_EQ(dlg->GetPipeInfo(), QStringLiteral("电气\\管线\\导线·导管\\BV-2.5"));
    EXPECT_EQ(control<QPushButton>(dlg.get(), IDC_BATCH_BTN_PIPEINFO)->text(), QStringLiteral("BV-2.5"));
    EXPECT_FALSE(ticked(dlg.get(), IDC_BATCH_CHK_PIPEINFO));
}

TEST_F(BatchModifyDlgTest, OkReadsTheTextsAndTheTicks)
{
    auto dlg = open(QStringLiteral("沿柱敷设"), QStringLiteral("竖井内敷设"));
    tick(dlg.get(), IDC_BATCH_CHK_HORMODE); // ticked with no entry selected
    auto* remark = control<QLineEdit>(dlg.get(), IDC_BATCH_EDIT_REMARK);
    remark->selectAll();
    QTest::keyClicks(remark, "B1-2F");
    click(dlg.get(), IDC_BTN_OK);
    EXPECT_EQ(dlg->result(), QDialog::Accepted);
    const BatchModifyValues values = dlg->GetValues();
    EXPECT_EQ(values.apply, (std::array<bool, kBatchFieldCount> { false, false, true, false, true }));
    EXPECT_EQ(values.strHorMode, QString());
    EXPECT_EQ(values.strVerMode, QStringLiteral("竖井内敷设"));
    EXPECT_EQ(values.strRemark, QStringLiteral("B1-2F"));
    EXPECT_EQ(values.color, RGB(255, 0, 0));
}
