// The module file loaded as the host loads it: the command it registers, the
// dialog the command and the attribute bar open, what reaches the bar, the
// exported entry points, and the host's resource stack after every path.
#include "CISysCode.h"
#include "CSysCodeData.h"
#include "CtrlId.h"
#include "ICommonSysUI.h"
#include "IFaceBarCtrl.h"
#include "MessageBoxRecorder.h"
#include "ModuleEntry.h"
#include "Resource.h"
#include "TestProject.h"
#include "ZcApDocManager.h"
#include "ZcEdCommandStack.h"
#include "ZcRxDynamicLinker.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDeadlineTimer>
#include <QDialog>
#include <QFile>
#include <QTest>
#include <QTimer>
#include <QTreeView>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {
// Acts on the next modal dialog once it runs; a dialog the action leaves open is
// closed a little later, so a failing test never hangs.
void onNextModal(std::function<void(QDialog*)> action)
{
    auto* timer = new QTimer;
    const auto deadline = std::make_shared<QDeadlineTimer>(5000);
    QObject::connect(timer, &QTimer::timeout, [=] {
        auto* dlg = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dlg && !deadline->hasExpired())
            return;
        timer->stop();
        timer->deleteLater();
        ASSERT_NE(dlg, nullptr) << "no dialog opened";
        action(dlg);
        QTimer::singleShot(2000, dlg, &QDialog::reject);
    });
    timer->start(20);
}

void click(QDialog* dlg, int id)
{
    QTest::mouseClick(GetDlgItem(dlg, id), Qt::LeftButton);
}

// Clicks the grid row reached by child positions from the top (0,0 = first child
// of the first code); the rows on the way are opened as a user would.
void clickRow(QDialog* dlg, std::initializer_list<int> path)
{
    auto* view = qobject_cast<QTreeView*>(GetDlgItem(dlg, IDC_TREE_SYSCODE));
    ASSERT_NE(view, nullptr);
    QModelIndex index;
    for (int row : path) {
        if (index.isValid())
            view->expand(index);
        index = view->model()->index(row, 0, index);
    }
    view->scrollTo(index);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, view->visualRect(index).center());
}

QString selectedPath(QDialog* dlg)
{
    auto* view = qobject_cast<QTreeView*>(GetDlgItem(dlg, IDC_TREE_SYSCODE));
    QStringList names;
    for (QModelIndex i = view->currentIndex(); i.isValid(); i = i.parent())
        names.prepend(i.data().toString());
    return names.join(QLatin1Char('\\'));
}

class ModuleFrameTest : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        const QString file = QCoreApplication::applicationDirPath() + QStringLiteral("/QvCommonSysUI.zrx");
        ASSERT_TRUE(zcrxDynamicLinker()->loadModule(file)) << zcrxDynamicLinker()->lastError().toStdString();
    }
    void SetUp() override
    {
        ASSERT_TRUE(project.isOpen());
        CSysCodeData root;
        ASSERT_TRUE(CISysCode::GetSpecCodeInfos(root, QStringLiteral("电气")));
        IFaceBarCtrl::SetSysCodes(QStringLiteral("电气"), root);
        zcDocManagerPtr()->resetResourceStack();
    }
    void TearDown() override { EXPECT_TRUE(zcDocManagerPtr()->isResourceStackBalanced()); }

    // While a dialog runs: its resources are the module's, pushed once.
    static void expectModuleResources()
    {
        EXPECT_EQ(zcDocManagerPtr()->resourceHandleDepth(), 1);
        EXPECT_EQ(zcDocManagerPtr()->currentResourceHandle(), ModuleResourceHandle());
    }

    TestProject project;
};

TEST_F(ModuleFrameTest, InitialisationRegistersTheCommandAndNothingElseActs)
{
    EXPECT_EQ(zcrxGetApiVersion(), 0x07E20028);
    const ZcEdCommand* command = zcedRegCmds()->lookupLocalCmd(QStringLiteral("bhgl"));
    ASSERT_NE(command, nullptr);
    EXPECT_EQ(command->groupName(), QStringLiteral("QV"));
    EXPECT_EQ(command->globalName(), QStringLiteral("_bhgl"));
    EXPECT_EQ(command->commandFlags(), 0);
    EXPECT_EQ(zcedRegCmds()->lookupCmd(QStringLiteral("_bhgl")), command);
    const size_t before = zcedRegCmds()->commands().size();
    for (ZcRx::AppMsgCode msg : { ZcRx::kUnloadAppMsg, ZcRx::kLoadDwgMsg, ZcRx::kNullMsg })
        EXPECT_EQ(zcrxEntryPoint(msg, nullptr), kRetOK);
    EXPECT_EQ(zcedRegCmds()->commands().size(), before);
    EXPECT_TRUE(IsModuleInitialised());
    EXPECT_FALSE(RefreshSyscode(QStringLiteral("/nowhere/x.scn"))); // no command dialog open
}

TEST_F(ModuleFrameTest, CommandOpensOnTheBarsCodeAndSendsTheChosenOneBack)
{
    IFaceBarCtrl::SetTreeItem(QStringLiteral("照明&WL1"));
    bool ran = false;
    onNextModal([&](QDialog* dlg) {
        ran = true;
        expectModuleResources();
        EXPECT_EQ(static_cast<QObject*>(dlg), reinterpret_cast<QObject*>(g_pCommandDlg));
        EXPECT_EQ(selectedPath(dlg), QStringLiteral("照明\\WL1"));
        EXPECT_TRUE(GetDlgItem(dlg, IDC_BTN_IMPORT)->isVisible());
        EXPECT_TRUE(GetDlgItem(dlg, IDC_BTN_EXPORT)->isVisible());
        clickRow(dlg, { 0, 0, 0 });
        click(dlg, IDC_BTN_OK);
    });
    ASSERT_TRUE(zcedRegCmds()->invoke(QStringLiteral("bhgl")));
    EXPECT_TRUE(ran);
    EXPECT_EQ(IFaceBarCtrl::CurSysCode(), QStringLiteral("照明&WL1&一层"));
    EXPECT_EQ(g_pCommandDlg, nullptr);
}

TEST_F(ModuleFrameTest, WithNothingSelectedTheSpecialtysFirstCodeReachesTheBar)
{
    IFaceBarCtrl::SetTreeItem(QString());
    onNextModal([&](QDialog* dlg) {
        EXPECT_TRUE(selectedPath(dlg).isEmpty());
        click(dlg, IDC_BTN_OK);
    });
    ASSERT_TRUE(zcedRegCmds()->invoke(QStringLiteral("_bhgl")));
    EXPECT_EQ(IFaceBarCtrl::CurSysCode(), QStringLiteral("照明"));
}

TEST_F(ModuleFrameTest, DoubleClickOnTheBarOpensWithoutImportAndExport)
{
    bool ran = false;
    onNextModal([&](QDialog* dlg) {
        ran = true;
        expectModuleResources();
        EXPECT_EQ(g_pCommandDlg, nullptr);
        EXPECT_FALSE(RefreshSyscode(QStringLiteral("any.scn")));
        EXPECT_EQ(selectedPath(dlg), QStringLiteral("动力"));
        EXPECT_FALSE(GetDlgItem(dlg, IDC_BTN_IMPORT)->isVisible());
        EXPECT_FALSE(GetDlgItem(dlg, IDC_BTN_EXPORT)->isVisible());
        clickRow(dlg, { 2 });
        click(dlg, IDC_BTN_OK);
    });
    IFaceBarCtrl::OnBarDbClick(QStringLiteral("动力"));
    EXPECT_TRUE(ran);
    EXPECT_EQ(IFaceBarCtrl::CurSysCode(), QStringLiteral("插座"));
}

TEST_F(ModuleFrameTest, SysCodeMngReturnsOneOnlyForOk)
{
    struct Case
    {
        std::function<void(QDialog*)> close;
        int expected;
    };
    const Case cases[] = {
        { [](QDialog* d) { click(d, IDC_BTN_OK); }, 1 },
        { [](QDialog* d) { click(d, IDC_BTN_CANCEL); }, 0 },
        { [](QDialog* d) { d->close(); }, 0 },
    };
    for (const Case& c : cases) {
        onNextModal([&](QDialog* dlg) {
            expectModuleResources();
            EXPECT_EQ(selectedPath(dlg), QStringLiteral("给水"));
            EXPECT_FALSE(GetDlgItem(dlg, IDC_BTN_IMPORT)->isVisible());
            c.close(dlg);
        });
        EXPECT_EQ(ICommonSysUI::SysCodeMng(QStringLiteral("给排水"), QStringLiteral("给水")), c.expected);
        EXPECT_TRUE(zcDocManagerPtr()->isResourceStackBalanced());
    }
}

// Another module hands the open "bhgl" dialog a file: its codes join the grid, and
// no file dialog or notice appears. A newer file is refused.
TEST_F(ModuleFrameTest, RefreshSyscodeReloadsTheCommandsDialogFromAFile)
{
    MessageBoxRecorder boxes;
    const QString file = project.folder() + QStringLiteral("/外部.scn");
    const auto write = [&](const QString& version) {
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly | QIODevice::Truncate));
        out.write(
            QStringLiteral("<SysCodeFile Version=\"%1\"><Code Name=\"应急照明\" Index=\"1\"/></SysCodeFile>")
                .arg(version)
                .toUtf8());
    };
    bool ran = false;
    onNextModal([&](QDialog* dlg) {
        ran = true;
        write(QStringLiteral("999.0.0"));
        EXPECT_FALSE(RefreshSyscode(file));
        EXPECT_EQ(boxes.texts(), QStringList({ "不支持导入高版本的系统编号!" }));
        write(QStringLiteral("1.0.0"));
        EXPECT_TRUE(RefreshSyscode(file));
        auto* view = qobject_cast<QTreeView*>(GetDlgItem(dlg, IDC_TREE_SYSCODE));
        const QModelIndex last = view->model()->index(view->model()->rowCount() - 1, 0);
        EXPECT_EQ(last.data().toString(), QStringLiteral("应急照明"));
        EXPECT_EQ(boxes.texts().size(), 1);
        click(dlg, IDC_BTN_OK);
    });
    ASSERT_TRUE(zcedRegCmds()->invoke(QStringLiteral("bhgl")));
    EXPECT_TRUE(ran);
    QStringList names;
    CISysCode::GetFullNameAryBySpec(names, QStringLiteral("电气"));
    EXPECT_TRUE(names.contains(QStringLiteral("应急照明")));
    EXPECT_FALSE(RefreshSyscode(file)); // closed again
}

} // namespace
