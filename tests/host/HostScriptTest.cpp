// qvhost driven by scripts in the test process: commands of a plug-in, queued
// selections, dialogs and message boxes, the store-driven redraw, the display
// control window and the attribute bar.
#include "HostFixture.h"

#include "DisplayControlWindow.h"
#include "DrawingView.h"
#include "IFaceBarCtrl.h"
#include "WinTypes.h"

#include <QFile>
#include <QImage>
#include <QListWidget>

TEST_F(HostFixture, RegisteredCommandRunsByLocalOrGlobalNameInAnyCase)
{
    for (const QString& name :
        { QStringLiteral("qvhtest"), QStringLiteral("QVHTEST"), QStringLiteral("_QvhTest") }) {
        EXPECT_EQ(Run(QStringLiteral("select-cancel\ncommand %1").arg(name)), "");
    }
    EXPECT_EQ(History().count(QStringLiteral("[qvhtest] cancelled")), 3);
    EXPECT_EQ(Run(QStringLiteral("command nosuchcommand")), "");
    EXPECT_TRUE(History().contains(QStringLiteral("Unknown command \"NOSUCHCOMMAND\"")));
}

TEST_F(HostFixture, QueuedBoxSelectionReachesSsGetAndQueuedStringRunsAfterTheCommand)
{
    const int all = int(window->View()->List().Entities().size());
    ASSERT_GT(all, 10);
    const int regens = window->RegenCount();
    // A window around the whole floor takes everything.
    EXPECT_EQ(Run(QStringLiteral("select -1e6 -1e6 1e6 1e6\ncommand qvhtest")), "");
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhtest] selected %1").arg(all)))
        << History().toStdString();
    // "fredraw " queued by the command ran after it.
    const QStringList& ran = window->Loop().history();
    ASSERT_GE(ran.size(), 2);
    EXPECT_EQ(ran[ran.size() - 2], QStringLiteral("qvhtest"));
    EXPECT_EQ(ran.last(), QStringLiteral("fredraw"));
    EXPECT_EQ(window->RegenCount(), regens);
}

TEST_F(HostFixture, WindowBoxTakesWhatIsInsideCrossingBoxWhatItTouches)
{
    // The corridor band of 1F: runs cross it, the room walls lie outside.
    const auto window_ = window->View()->SelectBox({ 0, 5200 }, { 30000, 6800 });
    const auto crossing = window->View()->SelectBox({ 30000, 5200 }, { 0, 6800 });
    EXPECT_LT(window_.size(), crossing.size());
    for (const auto& id : window_)
        EXPECT_NE(std::find(crossing.begin(), crossing.end(), id), crossing.end());
    EXPECT_TRUE(window->View()->SelectBox({ -9e5, -9e5 }, { -8e5, -8e5 }).empty());
}

TEST_F(HostFixture, RegenAfterColourChangeInStoreRepaintsProductEntities)
{
    // 公共插座 (3\2) runs on 1F; give it a colour nothing else has.
    const QRgb fresh = qRgb(0x12, 0x9a, 0x56);
    window->Fredraw();
    EXPECT_EQ(CountPixels(fresh), 0);
    EXPECT_EQ(Run(QStringLiteral(
                  "sql UPDATE sys_code SET color = 0x00569A12 WHERE spec_id = 3 AND node_index = 2")),
        "");
    window->Fredraw();
    EXPECT_EQ(CountPixels(fresh), 0) << "a redraw alone must not re-read the store";
    EXPECT_EQ(Run(QStringLiteral("command regen\nscreenshot %1")
                      .arg(ArtifactPath(QStringLiteral("host-regen.png")))),
        "");
    EXPECT_GT(CountPixels(fresh), 200);
}

TEST_F(HostFixture, ColourByLayerIgnoresCodeColours)
{
    const QRgb magenta = qRgb(0xFF, 0x00, 0xFF); // 公共插座's colour
    window->Fredraw();
    ASSERT_GT(CountPixels(magenta), 200);
    EXPECT_EQ(
        Run(QStringLiteral("sql UPDATE meta SET value = '0' WHERE key = 'color_show_type'\ncommand regen")),
        "");
    EXPECT_LT(CountPixels(magenta), 20);
}

TEST_F(HostFixture, Message7034ReloadsDisplayControl)
{
    DisplayControlWindow* display = window->DisplayControl();
    const int rows = display->List()->count();
    const int reloads = display->ReloadCount();
    EXPECT_EQ(Run(QStringLiteral(
                  "sql INSERT INTO sys_code(spec_id, node_index, parent_index, ord, name, color, line_width, "
                  "alpha, line_style, line_string, hor_laying, ver_laying, added_msg, describe) VALUES "
                  "(3, 99, 0, 9, '新系统', 255, 1, 0, '', '', '', '', '', '')")),
        "");
    EXPECT_EQ(display->List()->count(), rows);
    EXPECT_EQ(Run(QStringLiteral("message 显示控制 7034")), "");
    EXPECT_EQ(display->ReloadCount(), reloads + 1);
    EXPECT_EQ(display->List()->count(), rows + 1);
    EXPECT_FALSE(display->List()->findItems(QStringLiteral("电气\\新系统"), Qt::MatchExactly).isEmpty());
    EXPECT_NE(Run(QStringLiteral("message 没有这个窗口 7034")), "");
}

TEST_F(HostFixture, AttributeBarDoubleClickReachesRegisteredCallback)
{
    EXPECT_EQ(Run(QStringLiteral("bar-dblclick 公共照明&WL1")), "");
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhtest] dblclick 公共照明&WL1")))
        << History().toStdString();
    EXPECT_EQ(Run(QStringLiteral("expect-bar 公共照明&WL1")), "");
    EXPECT_NE(Run(QStringLiteral("bar-dblclick 没有&这个")), "");
}

TEST_F(HostFixture, QueuedDialogStepsAndMessageBoxAnswersWorkModalDialogs)
{
    const QString shot = ArtifactPath(QStringLiteral("host-dialog.png"));
    QFile::remove(shot);
    EXPECT_EQ(Run(QStringLiteral("dialog expect 300\ndialog screenshot %1\ndialog click 300\nanswer no\n"
                                 "command qvhdlg")
                      .arg(shot)),
        "");
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhdlg] result 300 answer %1").arg(IDNO)))
        << History().toStdString();
    EXPECT_TRUE(QFile::exists(shot));
    // Without an answer the box takes its default; OK closes with 1.
    EXPECT_EQ(Run(QStringLiteral("dialog ok\ncommand qvhdlg")), "");
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhdlg] result 1 answer %1").arg(IDYES)));
}

TEST_F(HostFixture, DialogWithoutStepsIsCancelledAndFailsTheScript)
{
    driver->SetTimeout(300);
    const std::string failures = Run(QStringLiteral("dialog expect 999\ncommand qvhdlg"));
    EXPECT_NE(failures.find("no control 999"), std::string::npos) << failures;
    EXPECT_NE(failures.find("waited"), std::string::npos) << failures;
}

TEST_F(HostFixture, ColourDialogScreenshot)
{
    const QString shot = ArtifactPath(QStringLiteral("host-colour-dialog.png"));
    QFile::remove(shot);
    EXPECT_EQ(Run(QStringLiteral("dialog screenshot %1\ndialog cancel\ncommand qvhcolor").arg(shot)), "");
    EXPECT_TRUE(History().contains(QStringLiteral("[qvhcolor] 0")));
    // The command opens the dialog on red: the picture is of that dialog, with the
    // old and the new colour (36 by 18 inside their frames) and the two red cells of
    // the palette (12 by 12) all red.
    const QImage image = QImage(shot).convertToFormat(QImage::Format_RGB32);
    ASSERT_FALSE(image.isNull());
    int red = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            red += (image.pixel(x, y) & 0xFFFFFF) == 0xFF0000;
    EXPECT_GE(red, 2 * 36 * 18 + 2 * 12 * 12);
}

TEST_F(HostFixture, FloorSwitchReadsTheOtherDrawing)
{
    EXPECT_EQ(Run(QStringLiteral("command floor 2F\nexpect 当前楼层: 2F")), "");
    EXPECT_EQ(session.Floor(), QStringLiteral("2F"));
    EXPECT_EQ(Run(QStringLiteral("command floor 9F")), "");
    EXPECT_EQ(session.Floor(), QStringLiteral("2F"));
    EXPECT_TRUE(History().contains(QStringLiteral("no floor \"9F\"")));
}

TEST_F(HostFixture, BadStatementsFailWithTheirLine)
{
    const std::string failures = Run(QStringLiteral("echo ok\n# comment\nfrobnicate\n"));
    EXPECT_NE(failures.find("line 3: unknown statement"), std::string::npos) << failures;
}
