// Closing the management dialog and switching specialty as a user does: what is
// asked, what the store then holds, which commands reach the drawing, and that a
// refused save loses nothing.
#include "ShownDialog.h"
#include "SysCodeDlg.h"

#include "CISysCode.h"
#include "CProj.h"
#include "CQtxmMng.h"
#include "CTreeListCtrl.h"
#include "CtrlId.h"
#include "IQvKsAppProfile.h"
#include "LineTypeMgr.h"
#include "MessageBoxRecorder.h"
#include "ModuleStrings.h"
#include "QvKsDataMng.h"
#include "QvKsProfile.h"
#include "Resource.h"
#include "TestProject.h"
#include "ZcApDocManager.h"
#include "ZcDbDatabase.h"

#include <QCheckBox>
#include <QFile>
#include <QListWidget>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>

namespace {
const QString kElectrical = QStringLiteral("电气");
const QString kItemsSql = QStringLiteral(R"sql(
INSERT INTO qd_item(qd_id, floor_id, code, idx, name, sys_code) VALUES
  (1, 1, '030411001', 1, '配管', '电气\动力'), (2, 3, '030411004', 1, '配线', '电气\插座');
INSERT INTO de_item(de_id, floor_id, qd_id, code, idx, name, sys_code) VALUES
  (1, 1, 1, '4-12-5', 1, '砖混暗配', '电气\动力');
)sql");

class SysCodeDlgSaveTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(project.isOpen());
        document = zcDocManagerPtr()->createDocument(&database, project.folder() + QStringLiteral("/1F.dxf"));
        takeCommands();
        QvKsDataMng::FailNthWrite(0);
    }
    void TearDown() override
    {
        QvKsDataMng::FailNthWrite(0);
        zcDocManagerPtr()->destroyDocument(document);
    }

    std::unique_ptr<SysCodeDlg> open(const QString& spec = kElectrical) { return OpenShownDialog(spec); }
    static CTreeListCtrl& grid(SysCodeDlg& dlg) { return GridOf(dlg); }
    static HTREEITEM topRow(SysCodeDlg& dlg, const QString& name)
    {
        CTreeListCtrl& g = grid(dlg);
        for (HTREEITEM c = g.GetChildItem(g.GetRootItem()); c; c = g.GetNextSiblingItem(c)) {
            if (g.GetItemText(c, 0) == name)
                return c;
        }
        return nullptr;
    }
    // The edits a user makes in the cells, as the grid holds them after the edit.
    static void rename(SysCodeDlg& dlg, const QString& from, const QString& to)
    {
        HTREEITEM row = topRow(dlg, from);
        ASSERT_NE(row, nullptr);
        grid(dlg).SetItemText(row, to, 0);
    }
    static void click(SysCodeDlg& dlg, int id) { QTest::mouseClick(GetDlgItem(&dlg, id), Qt::LeftButton); }
    static void setScale(SysCodeDlg& dlg, const QString& text)
    {
        QWidget* edit = GetDlgItem(&dlg, IDC_EDIT_LINETYPE_SCALE);
        QTest::mouseDClick(edit, Qt::LeftButton);
        qobject_cast<QvKsUiNumEdit*>(edit)->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
    }
    static void chooseSpec(SysCodeDlg& dlg, const QString& spec)
    {
        auto* list = qobject_cast<QListWidget*>(GetDlgItem(&dlg, IDC_LIST_SPEC));
        QListWidgetItem* item = list->findItems(spec, Qt::MatchExactly).value(0);
        ASSERT_NE(item, nullptr);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(item).center());
    }
    static QStringList storedNames(const QString& spec = kElectrical)
    {
        QStringList names;
        CISysCode::GetFullNameAryBySpec(names, spec);
        return names;
    }
    static QString storedScale()
    {
        QString scale;
        CISysCode::GetLineTypeScale(scale);
        return scale;
    }
    QStringList takeCommands()
    {
        QStringList sent;
        while (zcDocManagerPtr()->hasPendingStrings())
            sent << zcDocManagerPtr()->takePendingString().text;
        return sent;
    }
    static QString qdSysCode(const QString& floor)
    {
        QVector<SQvKsQdInfo> items;
        CQtxmMng::GetAllQdInfos(floor, items);
        return items.value(0).strSysCode;
    }

    TestProject project;
    ZcDbDatabase database;
    ZcApDocument* document = nullptr;
    MessageBoxRecorder boxes;
};

const QStringList kStoredAtStart = { "照明", "照明\\WL1", "照明\\WL1\\一层", "动力", "插座" };

TEST_F(SysCodeDlgSaveTest, OkWithNothingChangedWritesAndSendsNothing)
{
    auto dlg = open();
    click(*dlg, IDC_BTN_OK);
    EXPECT_EQ(dlg->result(), QDialog::Accepted);
    EXPECT_EQ(QvKsDataMng::WritesDone(), 0);
    EXPECT_TRUE(takeCommands().isEmpty());
    EXPECT_TRUE(boxes.texts().isEmpty());
    EXPECT_FALSE(QFile::exists(LineTypeMgr::FilePath()));
}

// Colours shown by system: layers and "fredraw " then "regen "; by layer: nothing.
TEST_F(SysCodeDlgSaveTest, OkStoresTheGridKeepingIndexesAndRedrawsByColourDisplay)
{
    for (const auto& [showType, commands] :
        { std::pair { 1, QStringList { "fredraw ", "regen " } }, std::pair { 0, QStringList {} } }) {
        SCOPED_TRACE(showType);
        ASSERT_TRUE(CProj().SetColorShowType(showType));
        auto dlg = open();
        rename(*dlg, showType ? "动力" : "动力A", showType ? "动力A" : "动力");
        const QString added = showType ? QStringLiteral("新增1") : QStringLiteral("新增2");
        grid(*dlg).InsertItem(added, TVI_ROOT, TVI_LAST);
        grid(*dlg).SelectItem(topRow(*dlg, "插座"));
        click(*dlg, IDC_BTN_OK);
        ASSERT_EQ(dlg->result(), QDialog::Accepted);
        EXPECT_EQ(takeCommands(), commands);
        EXPECT_FALSE(dlg->IsModified());
        EXPECT_TRUE(dlg->m_bColorChanged);
        EXPECT_EQ(dlg->m_strSelCode, QStringLiteral("插座")); // 电气 is the current specialty
        const QString renamed = showType ? "动力A" : "动力";
        EXPECT_EQ(CISysCode::GetIndexPath(kElectrical + "\\" + renamed), QStringLiteral("3\\4"));
        // New codes are numbered after the highest index the specialty ever gave.
        EXPECT_EQ(CISysCode::GetIndexPath(kElectrical + "\\" + added), showType ? "3\\6" : "3\\7");
        EXPECT_TRUE(boxes.texts().isEmpty());
    }
}

TEST_F(SysCodeDlgSaveTest, RenamesReachTheBillAndQuotaItemsOfEveryFloor)
{
    ASSERT_TRUE(QvKsDataMng::RunScript(kItemsSql));
    auto dlg = open();
    rename(*dlg, "动力", "电力");
    dlg->m_renames.push_back({ QStringLiteral("电气\\动力"), QStringLiteral("电气\\电力") });
    click(*dlg, IDC_BTN_OK);
    EXPECT_EQ(qdSysCode("B1"), QStringLiteral("电气\\电力"));
    EXPECT_EQ(qdSysCode("2F"), QStringLiteral("电气\\插座"));
    QVector<SQvKsDeInfo> de;
    ASSERT_TRUE(CQtxmMng::GetAllDeInfos("B1", de));
    EXPECT_EQ(de.value(0).strSysCode, QStringLiteral("电气\\电力"));
    EXPECT_TRUE(dlg->m_renames.empty());
    // Stored, not only queued: a reopened project sees them.
    QvKsDataMng::CloseProject();
    ASSERT_TRUE(QvKsDataMng::OpenProject(project.folder()));
    EXPECT_EQ(qdSysCode("B1"), QStringLiteral("电气\\电力"));
}

TEST_F(SysCodeDlgSaveTest, RenamesAloneAreStoredOnOk)
{
    ASSERT_TRUE(QvKsDataMng::RunScript(kItemsSql));
    auto dlg = open();
    dlg->m_renames.push_back({ QStringLiteral("电气\\插座"), QStringLiteral("电气\\插座2") });
    dlg->m_bRenamesOnly = true;
    click(*dlg, IDC_BTN_OK);
    EXPECT_EQ(qdSysCode("2F"), QStringLiteral("电气\\插座2"));
    EXPECT_EQ(storedNames(), kStoredAtStart);
}

struct Refusal
{
    const char* what;
    const char* from;
    const char* to;
    int button;
    QString message;
};

TEST_F(SysCodeDlgSaveTest, ClashesAndBadNamesKeepTheDialogOpenAndTheStoreAsItWas)
{
    const Refusal refusals[] = {
        { "clash on OK", "插座", "动力", IDC_BTN_OK, QStringLiteral("动力系统编号在该同级中已存在!") },
        { "clash on Cancel", "插座", "动力", IDC_BTN_CANCEL, QStringLiteral("动力系统编号在同级中已存在!") },
        { "bad name on OK", "插座", "a/b", IDC_BTN_OK, g_strIllegalNameMsg + "!" },
        { "bad name on Cancel", "插座", "SYS", IDC_BTN_CANCEL, g_strIllegalNameMsg + "!" },
    };
    for (const Refusal& r : refusals) {
        SCOPED_TRACE(r.what);
        boxes.clear();
        auto dlg = open();
        rename(*dlg, r.from, r.to);
        if (r.button == IDC_BTN_CANCEL)
            boxes.queueAnswer(IDYES);
        click(*dlg, r.button);
        EXPECT_TRUE(dlg->isVisible());
        EXPECT_EQ(boxes.texts().last(), r.message);
        EXPECT_EQ(boxes.boxes().last().type, kMbWarning);
        EXPECT_TRUE(dlg->IsModified());
        EXPECT_EQ(storedNames(), kStoredAtStart);
        EXPECT_TRUE(takeCommands().isEmpty());
    }
}

// Cancel, Escape and the close box ask the same question; Yes saves, No drops.
TEST_F(SysCodeDlgSaveTest, EveryWayOfCancellingAsksAndSavesOnlyOnYes)
{
    ASSERT_TRUE(CProj().SetColorShowType(1));
    const std::function<void(SysCodeDlg&)> ways[] = {
        [](SysCodeDlg& d) { click(d, IDC_BTN_CANCEL); },
        [](SysCodeDlg& d) { QTest::keyClick(&d, Qt::Key_Escape); },
        [](SysCodeDlg& d) { d.close(); },
    };
    int n = 0;
    for (const auto& cancel : ways) {
        for (const int answer : { IDNO, IDYES }) {
            SCOPED_TRACE(testing::Message() << "way " << n << " answer " << answer);
            boxes.clear();
            const QString name = QStringLiteral("动力%1").arg(++n);
            auto dlg = open();
            const QString before = storedNames().at(3);
            rename(*dlg, before, name);
            boxes.queueAnswer(answer);
            cancel(*dlg);
            EXPECT_FALSE(dlg->isVisible());
            EXPECT_EQ(dlg->result(), QDialog::Rejected);
            ASSERT_EQ(boxes.texts(), QStringList({ "是否保存设置修改?" }));
            EXPECT_EQ(boxes.boxes().first().type, kMbQuestion);
            EXPECT_EQ(storedNames().at(3), answer == IDYES ? name : before);
            // Only a save changes colours; then the drawing is regenerated once.
            EXPECT_EQ(takeCommands(), answer == IDYES ? QStringList { "regen " } : QStringList {});
        }
    }
}

TEST_F(SysCodeDlgSaveTest, ANewScaleIsKeptEvenWhenCancelIsAnsweredNo)
{
    auto dlg = open();
    setScale(*dlg, "2.5");
    boxes.queueAnswer(IDNO);
    click(*dlg, IDC_BTN_CANCEL);
    EXPECT_EQ(boxes.texts(), QStringList({ "是否保存设置修改?" }));
    EXPECT_EQ(storedScale(), QStringLiteral("2.5"));
    EXPECT_EQ(takeCommands(), QStringList({ "regen " }));
}

// A scale change alone saves the tree too, so colours are refreshed: by system
// that means "fredraw " and "regen ", by layer one "regen " for the scale.
TEST_F(SysCodeDlgSaveTest, AScaleChangeOnOkSavesAndRegeneratesOnce)
{
    for (const auto& [showType, commands] : { std::pair { 1, QStringList { "fredraw ", "regen " } },
             std::pair { 0, QStringList { "regen " } } }) {
        SCOPED_TRACE(showType);
        ASSERT_TRUE(CProj().SetColorShowType(showType));
        auto dlg = open();
        setScale(*dlg, showType ? "3" : "4");
        click(*dlg, IDC_BTN_OK);
        EXPECT_EQ(dlg->result(), QDialog::Accepted);
        EXPECT_EQ(storedScale(), showType ? "3" : "4");
        EXPECT_TRUE(dlg->m_bColorChanged);
        EXPECT_EQ(takeCommands(), commands);
    }
}

TEST_F(SysCodeDlgSaveTest, TheSettingIsWrittenOnlyWhenItChanged)
{
    const QString ini = QvKsProfile::GetAppProfile()->GetPath() + QStringLiteral("/SysCodeMng.ini");
    auto dlg = open();
    auto* box = qobject_cast<QCheckBox*>(GetDlgItem(dlg.get(), IDC_CHECK_DISP_ADDEDMSG));
    QTest::mouseClick(box, Qt::LeftButton);
    QTest::mouseClick(box, Qt::LeftButton); // back to the value at opening
    click(*dlg, IDC_BTN_CANCEL);
    EXPECT_TRUE(boxes.texts().isEmpty());
    EXPECT_FALSE(QFile::exists(ini));

    const int atOpen = CISysCode::ReadSysCodeConfigFile(QvKsProfile::GetAppProfile()->GetPath());
    dlg = open();
    box = qobject_cast<QCheckBox*>(GetDlgItem(dlg.get(), IDC_CHECK_DISP_ADDEDMSG));
    QTest::mouseClick(box, Qt::LeftButton);
    boxes.queueAnswer(IDYES);
    click(*dlg, IDC_BTN_CANCEL);
    EXPECT_EQ(CISysCode::ReadSysCodeConfigFile(QvKsProfile::GetAppProfile()->GetPath()), atOpen ? 0 : 1);
    EXPECT_EQ(storedNames(), kStoredAtStart); // nothing else was modified
}

TEST_F(SysCodeDlgSaveTest, SwitchingSpecialtyAsksWithNoAsDefaultAndSavesOnYes)
{
    for (const int answer : { IDNO, IDYES }) {
        SCOPED_TRACE(answer);
        boxes.clear();
        auto dlg = open();
        rename(*dlg, "插座", answer == IDYES ? "插座Y" : "插座N");
        boxes.queueAnswer(answer);
        chooseSpec(*dlg, QStringLiteral("给排水"));
        ASSERT_EQ(boxes.texts(), QStringList({ " 电气 设置已发生改变,是否保存修改?" }));
        EXPECT_EQ(boxes.boxes().first().type, kMbQuestionDefaultNo);
        EXPECT_EQ(dlg->m_strSpec, QStringLiteral("给排水"));
        EXPECT_EQ(dlg->m_strPrevSpec, kElectrical);
        EXPECT_FALSE(dlg->IsModified());
        EXPECT_EQ(grid(*dlg).GetItemText(grid(*dlg).GetItemFromRow(0), 0), QStringLiteral("给水"));
        EXPECT_EQ(storedNames().last(), answer == IDYES ? "插座Y" : "插座");
    }
}

TEST_F(SysCodeDlgSaveTest, AClashStopsTheSwitchAndKeepsTheOldSpecialty)
{
    auto dlg = open();
    rename(*dlg, "插座", "动力");
    boxes.queueAnswer(IDYES);
    chooseSpec(*dlg, QStringLiteral("给排水"));
    EXPECT_EQ(boxes.texts().last(), QStringLiteral("动力系统编号在同级中已存在!"));
    EXPECT_EQ(dlg->m_strSpec, kElectrical);
    EXPECT_EQ(
        qobject_cast<QListWidget*>(GetDlgItem(dlg.get(), IDC_LIST_SPEC))->currentItem()->text(), kElectrical);
    EXPECT_TRUE(topRow(*dlg, "照明"));
    EXPECT_TRUE(dlg->IsModified());
}

// Each write of a save in turn fails as a full disk would: the user is told, the
// dialog keeps every edit, and the store holds the previous tree and items whole.
TEST_F(SysCodeDlgSaveTest, AFailureAtAnyWriteOfASaveLosesNothing)
{
    ASSERT_TRUE(QvKsDataMng::RunScript(kItemsSql));
    int failAt = 1;
    for (; failAt < 60; ++failAt) {
        SCOPED_TRACE(failAt);
        boxes.clear();
        auto dlg = open();
        rename(*dlg, "动力", "电力");
        grid(*dlg).InsertItem(QStringLiteral("新增"), TVI_ROOT, TVI_LAST);
        dlg->m_renames.push_back({ QStringLiteral("电气\\动力"), QStringLiteral("电气\\电力") });
        setScale(*dlg, "7");
        QvKsDataMng::FailNthWrite(failAt);
        click(*dlg, IDC_BTN_OK);
        if (dlg->result() == QDialog::Accepted)
            break; // every write of the save has failed once
        EXPECT_TRUE(dlg->isVisible());
        ASSERT_EQ(boxes.texts().size(), 1);
        EXPECT_TRUE(boxes.texts().first().startsWith(QStringLiteral("系统编号未能保存")))
            << boxes.texts().first().toStdString();
        EXPECT_TRUE(dlg->IsModified());
        EXPECT_EQ(dlg->m_renames.size(), 1u);
        EXPECT_TRUE(topRow(*dlg, "电力"));
        EXPECT_EQ(storedNames(), kStoredAtStart);
        EXPECT_EQ(storedScale(), QStringLiteral("1.0"));
        EXPECT_EQ(qdSysCode("B1"), QStringLiteral("电气\\动力"));
        EXPECT_TRUE(takeCommands().isEmpty());
    }
    EXPECT_GT(failAt, 5); // scale, items, tree rows and the commit were all tried
    EXPECT_LT(failAt, 60);
    EXPECT_EQ(qdSysCode("B1"), QStringLiteral("电气\\电力"));
    EXPECT_EQ(storedScale(), QStringLiteral("7"));
}
} // namespace
