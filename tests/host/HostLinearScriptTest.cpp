// Linear host scripts against the test plug-in's dialogs: the lines after a
// statement that opens a dialog or a menu run inside it, through real input on the
// grid, the menu and the controls; checks fail with their line; file and colour
// dialogs take queued answers; nothing is left open and nothing hangs.
#include "HostFixture.h"

#include "WinTypes.h"

namespace {
// The grid dialog opened, `body` run inside it, then the script's own ending.
QString InGrid(const QString& body, const QString& ending = QStringLiteral("cancel"))
{
    return QStringLiteral("command qvhgrid\n") + body + u'\n' + ending;
}
} // namespace

TEST_F(HostFixture, LinesAfterADialogOpensRunInsideItAndTheScriptGoesOnAfterIt)
{
    EXPECT_EQ(Run(InGrid(QStringLiteral("expect-title 网格测试\n"
                                        "row 公共照明&WL1\n"
                                        "expect-selected 公共照明&WL1\n"
                                        "row-shift 应急照明\n"
                                        "expect-selected 公共照明&WL1 | 公共照明&WL2 | 应急照明\n"
                                        "row-ctrl 公共照明&WL2\n"
                                        "expect-selected 公共照明&WL1 | 应急照明"),
                  QStringLiteral("ok\necho after the dialog"))),
        "");
    const QString history = History();
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhgrid] ok 1.5"))) << history.toStdString();
    EXPECT_LT(history.indexOf(QStringLiteral("[qvhgrid] result 1")),
        history.indexOf(QStringLiteral("after the dialog")));
}

TEST_F(HostFixture, ContextMenuEntriesAreCheckedChosenAndANestedDialogIsDrivenInTurn)
{
    EXPECT_EQ(Run(InGrid(QStringLiteral("rclick 公共照明&WL1\n"
                                        "expect-menu 1000 enabled\n"
                                        "expect-menu 1001 enabled\n"
                                        "expect-menu 1003 absent\n"
                                        "answer no\n"
                                        "menu 1000\n"
                                        "expect-box 新建一个系统\n"
                                        "expect-no-box\n"
                                        "rclick-empty\n"
                                        "expect-menu 1001 disabled\n"
                                        "menu 1002\n"
                                        "expect-title 子对话框\n"
                                        "ok\n"
                                        "expect-title 网格测试\n"
                                        "rclick 公共照明&WL2 线型\n"
                                        "key Escape"))),
        "");
    const QString history = History();
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhgrid] menu on WL1 column 0: 新建")))
        << history.toStdString();
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhgrid] menu on WL2 column 2: none")));
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhgrid] answer %1").arg(IDNO)));
    EXPECT_TRUE(history.contains(QStringLiteral("[0x12024]")));
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhgrid] menu on nothing column 0: 子对话框")));
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhgrid] child 1")));
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhgrid] result 0")));
}

TEST_F(HostFixture, CellsAreEditedByClicksKeysAndTypedChineseText)
{
    EXPECT_EQ(Run(InGrid(QStringLiteral("edit 公共照明&WL1 名称\n"
                                        "key Ctrl+A\n"
                                        "type WL新\n"
                                        "key Enter\n"
                                        "expect-cell 公共照明&WL新 0 WL新\n"
                                        "edit 公共照明&WL2 0\n"
                                        "type 丢弃\n"
                                        "key Escape\n"
                                        "expect-cell 公共照明&WL2 名称 WL2\n"
                                        "edit 公共照明&WL2 名称\n"
                                        "key End\n"
                                        "type 乙\n"
                                        "click-outside\n"
                                        "expect-cell 公共照明&WL2乙 名称 WL2乙\n"
                                        "dblclick 应急照明&EL1 线型\n"
                                        "pick 点线\n"
                                        "key Enter\n"
                                        "expect-cell 应急照明&EL1 线型 点线"))),
        "");
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhgrid] edited WL1 column 0: WL新")))
        << History().toStdString();
}

TEST_F(HostFixture, CellButtonTakesQueuedColoursAsIndexRgbOrCancel)
{
    EXPECT_EQ(Run(InGrid(QStringLiteral("expect-color 公共照明&WL1 颜色 255,0,0\n"
                                        "expect-back 公共照明&WL1 颜色 0xccffcc\n"
                                        "edit 公共照明&WL1 颜色\n"
                                        "color 5\n"
                                        "cell-button 10008\n"
                                        "expect-back 公共照明&WL1 颜色 0,0,255\n"
                                        "color 10,20,30\n"
                                        "cell-button 10008\n"
                                        "expect-back 公共照明&WL1 颜色 0x1e140a\n"
                                        "color cancel\n"
                                        "cell-button 10008\n"
                                        "cell-button 10008\n"
                                        "expect-back 公共照明&WL1 颜色 10,20,30"))),
        "");
    EXPECT_EQ(History().count(QStringLiteral("nothing queued, cancelled")), 1) << History().toStdString();
}

TEST_F(HostFixture, RowsAreDraggedWithAndWithoutCtrlAndOutOfTheGrid)
{
    EXPECT_EQ(Run(InGrid(QStringLiteral("drag 公共照明&WL1 应急照明&EL1\n"
                                        "drag-ctrl 公共照明&WL2 公共照明\n"
                                        "drag-out 应急照明&EL1"))),
        "");
    const QString history = History();
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhgrid] drop WL1 on EL1\n"))) << history.toStdString();
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhgrid] drop WL2 on 公共照明 with ctrl")));
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhgrid] drop EL1 on outside")));
}

TEST_F(HostFixture, RowsCollapseAndExpandByTheirButtons)
{
    EXPECT_EQ(Run(InGrid(QStringLiteral("expect-rows 公共照明 | >WL1 | >WL2 | 应急照明 | >EL1\n"
                                        "collapse 公共照明\n"
                                        "expect-rows 公共照明 | 应急照明 | >EL1\n"
                                        "expect-selected \n"
                                        "expand 公共照明\n"
                                        "rows\n"
                                        "expect-rows 公共照明 | >WL1 | >WL2 | 应急照明 | >EL1"))),
        "");
    EXPECT_TRUE(History().contains(QStringLiteral("    WL1 | 红 | 实线")));
}

TEST_F(HostFixture, ControlsAreWorkedByIdAndChecked)
{
    EXPECT_EQ(Run(InGrid(QStringLiteral("choose 400 给排水\n"
                                        "expect-text 400 给排水\n"
                                        "choose 401 丙\n"
                                        "expect-text 401 丙\n"
                                        "check 402\n"
                                        "expect-checked 402\n"
                                        "uncheck 402\n"
                                        "expect-unchecked 402\n"
                                        "set-text 403 2.5\n"
                                        "expect-text 403 2.5\n"
                                        "expect-visible 403\n"
                                        "expect-enabled 1"),
                  QStringLiteral("ok"))),
        "");
    const QString history = History();
    for (const char* line : { "[qvhgrid] list 给排水", "[qvhgrid] combo 丙", "[qvhgrid] ticked",
             "[qvhgrid] unticked", "[qvhgrid] ok 2.5", "[qvhgrid] result 1" })
        EXPECT_TRUE(history.contains(QString::fromUtf8(line))) << line << history.toStdString();
}

TEST_F(HostFixture, KeysReachMenusAndTheDialogsShortcuts)
{
    EXPECT_EQ(Run(InGrid(QStringLiteral(
                  "rclick-empty\nkey Escape\nexpect-title 网格测试\nrow 公共照明\nkey Ctrl+D"))),
        "");
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhgrid] menu on nothing column 0: none")))
        << History().toStdString();
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhgrid] shortcut")));
}

TEST_F(HostFixture, CloseBoxAndCancelRejectTheDialog)
{
    EXPECT_EQ(Run(InGrid(QString(), QStringLiteral("close"))), "");
    EXPECT_EQ(Run(InGrid(QString(), QStringLiteral("key Escape"))), "");
    EXPECT_EQ(History().count(QStringLiteral("[qvhgrid] result 0")), 2) << History().toStdString();
}

struct FailingCheck
{
    const char* lines; // run inside the grid dialog, from line 2
    const char* found; // in the failure
};

class FailingCheckTest : public HostFixture, public ::testing::WithParamInterface<FailingCheck>
{ };

TEST_P(FailingCheckTest, FailsWithItsLineAndCancelsTheDialog)
{
    const QString lines = QString::fromUtf8(GetParam().lines);
    const std::string failures = Run(InGrid(lines));
    const int failingLine = 1 + int(lines.count(u'\n')) + 1;
    EXPECT_NE(failures.find("line " + std::to_string(failingLine) + ": "), std::string::npos) << failures;
    EXPECT_NE(failures.find(GetParam().found), std::string::npos) << failures;
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhgrid] result 0"))) << "the dialog is cancelled";
}

INSTANTIATE_TEST_SUITE_P(EveryCheck, FailingCheckTest,
    ::testing::Values(FailingCheck { "expect-cell 公共照明&WL1 0 WL9", "found \"WL1\"" },
        FailingCheck { "expect-cell 公共照明&WL1 深度 x", "expected a column \"深度\"" },
        FailingCheck { "expect-color 公共照明&WL1 1 0,255,0", "found 0x0000ff" },
        FailingCheck { "expect-back 公共照明&WL1 1 0,255,0", "found 0xccffcc" },
        FailingCheck { "expect-rows 公共照明", "found \"公共照明 | >WL1" },
        FailingCheck { "row 公共照明&WL1\nexpect-selected 公共照明&WL2", "found \"公共照明&WL1\"" },
        FailingCheck { "row 公共照明&WL9", "expected a row \"公共照明&WL9\"" },
        FailingCheck { "collapse 公共照明\nrow 公共照明&WL1", "inside a collapsed row" },
        FailingCheck { "expect-title 系统编号管理", "found \"网格测试\"" },
        FailingCheck { "expect-hidden 400", "expected the control 400 hidden, found it visible" },
        FailingCheck { "expect-disabled 1", "expected the control 1 disabled, found it enabled" },
        FailingCheck { "expect-checked 402", "expected the control 402 checked, found it unchecked" },
        FailingCheck { "expect-text 403 9", "found \"1.5\"" },
        FailingCheck { "click 999", "expected a control 999" },
        FailingCheck { "choose 401 丁", "expected an entry \"丁\"" },
        FailingCheck { "expect-box 新建", "found none" },
        FailingCheck { "rclick-empty\nanswer yes\nmenu 1000\nexpect-no-box", "found \"新建一个系统吗?\"" },
        FailingCheck { "rclick-empty\nexpect-menu 1001 enabled", "found it disabled" },
        FailingCheck { "rclick-empty\nmenu 1001", "found it disabled" },
        FailingCheck { "rclick-empty\nmenu 1009", "found none" },
        FailingCheck { "pick 虚线", "expected an open drop-down editor" },
        FailingCheck { "cell-button 10008", "no open editor" },
        FailingCheck { "key Ctrl+Shift+Alt+Meta+Nope", "expected one key" }));

TEST_F(HostFixture, ADialogLeftOpenAtTheEndIsCancelledAndFailsTheScript)
{
    const std::string failures = Run(QStringLiteral("command qvhgrid\nrow 公共照明&WL1\n"));
    EXPECT_NE(failures.find("\"网格测试\" waited with no line left to run"), std::string::npos) << failures;
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhgrid] result 0")));
}

TEST_F(HostFixture, AFailingLineInsideADialogStopsTheScript)
{
    const std::string failures
        = Run(QStringLiteral("command qvhgrid\nrow 没有\necho 不该出现\ncancel\necho 也不该"));
    EXPECT_NE(failures.find("line 2: expected a row \"没有\""), std::string::npos) << failures;
    EXPECT_FALSE(History().contains(QStringLiteral("不该出现")));
    EXPECT_FALSE(History().contains(QStringLiteral("也不该")));
}

TEST_F(HostFixture, FileDialogsTakeQueuedPathsOrCancelAndAreLogged)
{
    EXPECT_EQ(Run(QStringLiteral(
                  "file 导出/照明.scn\ncommand qvhfile\nfile cancel\ncommand qvhfile\ncommand qvhfile")),
        "");
    const QString history = History();
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhfile] %1")
                                     .arg(QDir::current().absoluteFilePath(QStringLiteral("导出/照明.scn")))))
        << history.toStdString();
    EXPECT_EQ(history.count(QStringLiteral("[qvhfile] cancelled")), 2);
    EXPECT_TRUE(history.contains(QStringLiteral("open file dialog \"导入系统编号\"")));
    EXPECT_TRUE(history.contains(QStringLiteral("name \"照明.scn\"): nothing queued, cancelled")));
}

TEST_F(HostFixture, ColourDialogTakesQueuedIndexRgbOrCancel)
{
    EXPECT_EQ(Run(QStringLiteral("color 1\ncommand qvhcolor\ncolor 10,20,30\ncommand qvhcolor\n"
                                 "color cancel\ncommand qvhcolor\ncommand qvhcolor")),
        "");
    const QString history = History();
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhcolor] 1 000000ff"))) << history.toStdString();
    EXPECT_TRUE(history.contains(QStringLiteral("[qvhcolor] 1 001e140a")));
    EXPECT_EQ(history.count(QStringLiteral("[qvhcolor] 0")), 2);
    for (const char* bad : { "color 0", "color 256", "color 1,2", "color red" })
        EXPECT_NE(Run(QString::fromUtf8(bad)), "") << bad;
}

TEST_F(HostFixture, CommandsSentToTheDocumentAreCheckedInOrderSinceTheLastCheck)
{
    EXPECT_EQ(Run(QStringLiteral("expect-commands\nselect -1e6 -1e6 1e6 1e6\ncommand qvhtest\n"
                                 "expect-commands fredraw\nexpect-commands")),
        "");
    const std::string failures
        = Run(QStringLiteral("select -1e6 -1e6 1e6 1e6\ncommand qvhtest\nexpect-commands regen"));
    EXPECT_NE(
        failures.find("line 3: expected the commands \"regen\" sent to the document, found \"fredraw\""),
        std::string::npos)
        << failures;
}
