// The pipeline-information picker driven as a user does, on a library made for
// the test.
#include "CChangeNameDlg.h"
#include "CProj.h"
#include "CtrlId.h"
#include "MessageBoxRecorder.h"
#include "ModalDriver.h"
#include "Resource.h"
#include "TestProject.h"
#include "ZcApDocManager.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

namespace {
// Electrical and low-voltage lines, with categories the picker leaves out (3\1\7,
// 6\3\3) and one the library lacks (3\1\6).
const char* const kLibrary = R"sql(
INSERT INTO att_category(cat_id, major, middle, small, name) VALUES
  (1, 1, 0, 0, '给排水'), (3, 3, 0, 0, '电气'), (6, 6, 0, 0, '弱电'),
  (10, 1, 1, 0, '管道'), (11, 1, 1, 1, '给水管'),
  (30, 3, 1, 0, '管线'), (31, 3, 1, 1, '导线·导管'), (32, 3, 1, 2, '电缆'), (35, 3, 1, 5, '照明导线'),
  (37, 3, 1, 7, '防雷接地'), (40, 3, 2, 0, '设备'), (42, 3, 2, 2, '配电箱'),
  (60, 6, 3, 0, '穿管引线'), (61, 6, 3, 1, '配管配线'), (62, 6, 3, 2, '配线'), (63, 6, 3, 3, '线槽');
INSERT INTO att_member(cat_id, member_no, name) VALUES
  (11, 1, 'PPR'), (31, 1, 'BV-2.5'), (31, 2, 'BV-4'), (32, 1, 'YJV-5×10'), (35, 1, 'ZR-BV-3×2.5'),
  (37, 1, '镀锌扁钢'), (42, 1, 'AL 照明配电箱'), (61, 1, 'SC20'), (62, 1, 'RVS-2×1.0'), (63, 1, '金属线槽');
INSERT INTO att_relation(cat_id, related_cat_id) VALUES (31, 35), (11, 11);
)sql";

const QString kWires = QStringLiteral("电气\\管线\\导线·导管");
const QString kBv25 = kWires + QStringLiteral("\\BV-2.5");
const QString kBv4 = kWires + QStringLiteral("\\BV-4");

class ChangeNameDlgTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(project.isOpen()); }

    static std::unique_ptr<CChangeNameDlg> open(int mode, const QString& name)
    {
        auto dlg = std::make_unique<CChangeNameDlg>();
        dlg->m_nMode = mode;
        dlg->m_strName = name;
        dlg->m_strOrigName = name;
        dlg->OnInitDialog();
        dlg->show();
        QCoreApplication::processEvents();
        return dlg;
    }
    static CQvTreeCtrl* tree(QWidget* dlg)
    {
        return qobject_cast<CQvTreeCtrl*>(GetDlgItem(dlg, IDC_TREE_NAMES));
    }
    static QStringList leaves(QWidget* dlg)
    {
        QStringList dirs;
        CQvTreeCtrl* t = tree(dlg);
        for (int i = 0; i < t->topLevelItemCount(); ++i)
            CQvTreeCtrl::GetLeafDirs(t, t->topLevelItem(i)->text(0), t->topLevelItem(i), dirs);
        return dirs;
    }
    static QString selected(QWidget* dlg) { return tree(dlg)->GetItemDir(tree(dlg)->GetSelectedItem()); }
    static QPoint itemPoint(QWidget* dlg, const QString& path)
    {
        QTreeWidgetItem* item = tree(dlg)->GetItemByDir(path);
        EXPECT_NE(item, nullptr) << path.toStdString();
        tree(dlg)->scrollToItem(item);
        return tree(dlg)->visualItemRect(item).center();
    }
    static void clickItem(QWidget* dlg, const QString& path, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(tree(dlg)->viewport(), Qt::LeftButton, modifiers, itemPoint(dlg, path));
    }
    static void doubleClickItem(QWidget* dlg, const QString& path)
    {
        QWidget* viewport = tree(dlg)->viewport();
        const QPoint at = viewport->mapTo(viewport->window(), itemPoint(dlg, path));
        QTest::mouseDClick(viewport->window()->windowHandle(), Qt::LeftButton, {}, at);
    }
    static void click(QWidget* dlg, int id) { QTest::mouseClick(GetDlgItem(dlg, id), Qt::LeftButton); }

    TestProject project { QString::fromUtf8(kLibrary) };
};
} // namespace

TEST_F(ChangeNameDlgTest, ModesLoadTheirCategoriesAndSelectTheNameOrTheFallback)
{
    struct Case
    {
        int mode;
        QString name;
        QStringList leaves;
        QString selected;
    };
    const QStringList electrical = { kBv25, kBv4, QStringLiteral("电气\\管线\\电缆\\YJV-5×10"),
        QStringLiteral("电气\\管线\\照明导线\\ZR-BV-3×2.5"),
        QStringLiteral("电气\\设备\\配电箱\\AL 照明配电箱") };
    const QStringList lowVoltage = { QStringLiteral("弱电\\穿管引线\\配管配线\\SC20"),
        QStringLiteral("弱电\\穿管引线\\配线\\RVS-2×1.0") };
    const Case cases[] = {
        { 2, kBv4, electrical, kBv4 },
        { 2, QStringLiteral("电气\\管线\\导线·导管\\BV-99"), electrical, kWires },
        { 1, QString(), lowVoltage, QStringLiteral("弱电\\穿管引线\\配管配线") },
        { 1, kBv4, lowVoltage, QStringLiteral("弱电\\穿管引线\\配管配线") },
        // Names that stand for one another: the name's category and its related ones.
        { 0, kBv4, { kBv25, kBv4, QStringLiteral("电气\\管线\\照明导线\\ZR-BV-3×2.5") }, kBv4 },
        { 0, QStringLiteral("电气\\管线\\导线·导管\\BV-99"), {}, QString() },
        { 5, kBv4, {}, QString() },
    };
    for (const Case& c : cases) {
        auto dlg = open(c.mode, c.name);
        EXPECT_EQ(dlg->windowTitle(), QStringLiteral("选构件"));
        EXPECT_EQ(leaves(dlg.get()), c.leaves) << c.mode << " " << c.name.toStdString();
        EXPECT_EQ(selected(dlg.get()), c.selected) << c.mode << " " << c.name.toStdString();
        EXPECT_EQ(dlg->m_strName, c.name); // a category never becomes the name
    }
}

TEST_F(ChangeNameDlgTest, OnlyAChangedConfirmedNameIsReported)
{
    struct Case
    {
        const char* what;
        std::function<void(QDialog*)> act;
        int result;
        QString name;
    };
    const Case cases[] = {
        { "other leaf, OK",
            [](QDialog* d) {
                clickItem(d, kBv25);
                click(d, IDC_BTN_OK);
            },
            1, kBv25 },
        { "same leaf, OK", [](QDialog* d) { click(d, IDC_BTN_OK); }, 0, kBv4 },
        { "other leaf, cancel",
            [](QDialog* d) {
                clickItem(d, kBv25);
                click(d, IDC_BTN_CANCEL);
            },
            0, kBv4 },
        { "double click on a leaf", [](QDialog* d) { doubleClickItem(d, kBv25); }, 1, kBv25 },
        { "Enter on a leaf",
            [](QDialog* d) {
                clickItem(d, kBv25);
                QTest::keyClick(tree(d), Qt::Key_Return);
            },
            1, kBv25 },
    };
    for (const Case& c : cases) {
        int depthWhileOpen = -1;
        ModalDriver driver([&](QDialog* d) {
            depthWhileOpen = zcDocManagerPtr()->resourceHandleDepth();
            c.act(d);
        });
        QString name = kBv4;
        EXPECT_EQ(RunChangeNameDlg(name, 2), c.result) << c.what;
        EXPECT_EQ(name, c.name) << c.what;
        EXPECT_TRUE(driver.acted()) << c.what;
        EXPECT_EQ(depthWhileOpen, 1) << c.what;
        EXPECT_EQ(zcDocManagerPtr()->resourceHandleDepth(), 0) << c.what;
        EXPECT_EQ(g_pChangeNameDlg, nullptr);
    }
}

TEST_F(ChangeNameDlgTest, ACategoryNeverConfirms)
{
    MessageBoxRecorder boxes;
    auto dlg = open(2, kBv4);
    doubleClickItem(dlg.get(), kWires);
    EXPECT_TRUE(dlg->isVisible());
    EXPECT_EQ(dlg->m_strName, kBv4);
    clickItem(dlg.get(), QStringLiteral("电气\\管线"));
    click(dlg.get(), IDC_BTN_OK);
    EXPECT_TRUE(dlg->isVisible());
    EXPECT_EQ(dlg->m_strName, kBv4);
    ASSERT_EQ(boxes.boxes().size(), 1);
    EXPECT_EQ(boxes.boxes().at(0).text, QStringLiteral("没有正确选择名称!"));
    EXPECT_EQ(boxes.boxes().at(0).caption, QStringLiteral("Quorvatek"));
    EXPECT_EQ(boxes.boxes().at(0).type, 0x12030u);
    // The name it was opened with is gone, but the tree offers others: Cancel closes.
    dlg->m_strOrigName = QStringLiteral("电气\\管线\\导线·导管\\BV-99");
    click(dlg.get(), IDC_BTN_CANCEL);
    EXPECT_FALSE(dlg->isVisible());
    EXPECT_EQ(boxes.boxes().size(), 1);
}

TEST_F(ChangeNameDlgTest, AttributeDefinitionOpensAtTheCompletedPathAndNewNamesAppear)
{
    struct Case
    {
        int mode;
        QString openedAt;
        QString addedAs;
    };
    const Case cases[] = {
        { 2, QStringLiteral("电气\\管线\\照明导线"), QStringLiteral("电气\\管线\\照明导线\\NEW-1") },
        { 1, QStringLiteral("弱电\\穿管引线\\配线"), QStringLiteral("弱电\\穿管引线\\配线\\NEW-1") },
    };
    for (const Case& c : cases) {
        ASSERT_TRUE(CProj().SetCurrentSpec(QStringLiteral("给排水")));
        auto dlg = open(c.mode, QString());
        // Nothing selected: the specialty alone is completed.
        clickItem(dlg.get(), selected(dlg.get()), Qt::ControlModifier);
        ASSERT_TRUE(selected(dlg.get()).isEmpty());
        QString openedAt;
        QString specWhileOpen;
        ModalDriver driver([&](QDialog* attDef) {
            specWhileOpen = CProj().GetCurrentSpec();
            auto* attTree = qobject_cast<CQvTreeCtrl*>(GetDlgItem(attDef, 1001));
            openedAt = attTree->GetItemDir(attTree->GetSelectedItem());
            QTest::keyClicks(qobject_cast<QLineEdit*>(GetDlgItem(attDef, 1002)), "NEW-1");
            click(attDef, 1003);
            click(attDef, 2);
        });
        click(dlg.get(), IDC_BTN_ATT_DEFINE);
        EXPECT_TRUE(driver.acted());
        EXPECT_EQ(openedAt, c.openedAt);
        EXPECT_EQ(specWhileOpen, c.openedAt.section(u'\\', 0, 0));
        EXPECT_EQ(CProj().GetCurrentSpec(), QStringLiteral("给排水"));
        EXPECT_TRUE(leaves(dlg.get()).contains(c.addedAs)) << c.addedAs.toStdString();
        EXPECT_FALSE(g_bAttDefOpened);
    }
}
