#include "QvKsAciPalette.h"
#include "QvKsCADColorDlg.h"
#include "QvKsCADColorTool.h"
#include "QvKsColorSwatch.h"

#include <QApplication>
#include <QColorDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QFontDatabase>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <functional>
#include <string>

namespace {

// Acts on the next modal dialog once exec() has shown it; a dialog the action left
// open is rejected after a while so a failing test never hangs.
void WhenModal(std::function<void(QDialog*)> act)
{
    auto* timer = new QTimer;
    auto* clock = new QElapsedTimer;
    clock->start();
    timer->setInterval(10);
    QObject::connect(timer, &QTimer::timeout, [timer, clock, act] {
        auto* dlg = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (!dlg && clock->elapsed() < 5000)
            return;
        timer->stop();
        timer->deleteLater();
        delete clock;
        if (!dlg)
            return;
        act(dlg);
        if (dlg->isVisible()) {
            ADD_FAILURE() << "the dialog was left open";
            dlg->reject();
        }
    });
    timer->start();
}

template <typename T> T* Find(QWidget* dlg, const QString& name)
{
    T* w = dlg->findChild<T*>(name);
    EXPECT_NE(w, nullptr) << name.toStdString();
    return w;
}

void Click(QWidget* dlg, const QString& name)
{
    if (auto* w = Find<QWidget>(dlg, name))
        QTest::mouseClick(w, Qt::LeftButton, {}, w->rect().center());
}

COLORREF Rgb(int r, int g, int b)
{
    return RGB(BYTE(r), BYTE(g), BYTE(b));
}

struct AciCase
{
    int index;
    COLORREF color;
};

void PrintTo(const AciCase& c, std::ostream* os)
{
    *os << c.index;
}

class AciTable : public ::testing::TestWithParam<AciCase>
{ };

TEST_P(AciTable, IndexHasTheClassicColour)
{
    EXPECT_EQ(QvKsAciPalette::ColorOf(GetParam().index), GetParam().color) << "index " << GetParam().index;
}

INSTANTIATE_TEST_SUITE_P(NamedHuesAndGreys, AciTable,
    ::testing::Values(AciCase { 1, Rgb(255, 0, 0) }, AciCase { 2, Rgb(255, 255, 0) },
        AciCase { 3, Rgb(0, 255, 0) }, AciCase { 4, Rgb(0, 255, 255) }, AciCase { 5, Rgb(0, 0, 255) },
        AciCase { 6, Rgb(255, 0, 255) }, AciCase { 7, Rgb(255, 255, 255) }, AciCase { 8, Rgb(128, 128, 128) },
        AciCase { 9, Rgb(192, 192, 192) }, AciCase { 10, Rgb(255, 0, 0) }, AciCase { 11, Rgb(255, 127, 127) },
        AciCase { 12, Rgb(165, 0, 0) }, AciCase { 13, Rgb(165, 82, 82) }, AciCase { 18, Rgb(38, 0, 0) },
        AciCase { 19, Rgb(38, 19, 19) }, AciCase { 20, Rgb(255, 63, 0) }, AciCase { 21, Rgb(255, 159, 127) },
        AciCase { 30, Rgb(255, 127, 0) }, AciCase { 40, Rgb(255, 191, 0) }, AciCase { 90, Rgb(0, 255, 0) },
        AciCase { 130, Rgb(0, 255, 255) }, AciCase { 170, Rgb(0, 0, 255) }, AciCase { 174, Rgb(0, 0, 127) },
        AciCase { 210, Rgb(255, 0, 255) }, AciCase { 240, Rgb(255, 0, 63) },
        AciCase { 241, Rgb(255, 127, 159) }, AciCase { 250, Rgb(51, 51, 51) },
        AciCase { 251, Rgb(91, 91, 91) }, AciCase { 252, Rgb(132, 132, 132) },
        AciCase { 253, Rgb(173, 173, 173) }, AciCase { 254, Rgb(214, 214, 214) },
        AciCase { 255, Rgb(255, 255, 255) }, AciCase { 0, 0 }, AciCase { 256, 0 }, AciCase { -1, 0 }),
    [](const auto& info) {
        const int index = info.param.index;
        return index < 0 ? std::string("minus1") : "index" + std::to_string(index);
    });

TEST(AciPalette, IndexOfFindsTheLowestIndexAndIgnoresTheHighByte)
{
    EXPECT_EQ(QvKsAciPalette::IndexOf(Rgb(255, 0, 0)), 1);
    EXPECT_EQ(QvKsAciPalette::IndexOf(Rgb(255, 255, 255)), 7);
    EXPECT_EQ(QvKsAciPalette::IndexOf(Rgb(51, 51, 51) | 0xFF000000u), 250);
    EXPECT_EQ(QvKsAciPalette::IndexOf(Rgb(1, 2, 3)), 0);
}

TEST(CadColorDlg, EveryIndexHasACellPaintedInItsColour)
{
    QvKsCADColorDlg dlg(Rgb(255, 0, 0));
    dlg.show();
    for (int i = 1; i <= 255; ++i) {
        auto* cell = dlg.findChild<QvKsColorSwatch*>(QStringLiteral("aci_%1").arg(i));
        ASSERT_NE(cell, nullptr) << i;
        ASSERT_TRUE(cell->isVisible()) << i;
        const QColor painted = cell->grab().toImage().pixelColor(cell->width() / 2, cell->height() / 2);
        const COLORREF expected = QvKsAciPalette::ColorOf(i);
        EXPECT_EQ(RGB(BYTE(painted.red()), BYTE(painted.green()), BYTE(painted.blue())), expected) << i;
    }
}

class ClickedIndex : public ::testing::TestWithParam<int>
{ };

TEST_P(ClickedIndex, OkReturnsTheClickedIndexColour)
{
    const int index = GetParam();
    COLORREF chosen = 0x00ABCDEF;
    WhenModal([index](QDialog* dlg) {
        Click(dlg, QStringLiteral("aci_%1").arg(index));
        EXPECT_EQ(Find<QLineEdit>(dlg, QStringLiteral("indexEdit"))->text(), QString::number(index));
        Click(dlg, QStringLiteral("okButton"));
    });
    EXPECT_TRUE(QvKsCADColorTool::InvokeCADColorDlg(Rgb(0, 0, 255), chosen));
    EXPECT_EQ(chosen, QvKsAciPalette::ColorOf(index));
}

INSTANTIATE_TEST_SUITE_P(GridNamedAndGreys, ClickedIndex, ::testing::Values(3, 30, 137, 249, 254));

TEST(CadColorDlg, CancelReturnsFalseAndKeepsTheOutValue)
{
    COLORREF chosen = 0x00ABCDEF;
    WhenModal([](QDialog* dlg) {
        Click(dlg, QStringLiteral("aci_40"));
        Click(dlg, QStringLiteral("cancelButton"));
    });
    EXPECT_FALSE(QvKsCADColorTool::InvokeCADColorDlg(Rgb(255, 0, 0), chosen));
    EXPECT_EQ(chosen, 0x00ABCDEFu);
}

TEST(CadColorDlg, DoubleClickChoosesAndCloses)
{
    COLORREF chosen = 0;
    WhenModal([](QDialog* dlg) {
        auto* cell = Find<QWidget>(dlg, QStringLiteral("aci_52"));
        QTest::mouseDClick(cell->window()->windowHandle(), Qt::LeftButton, {},
            cell->mapTo(cell->window(), cell->rect().center()));
    });
    EXPECT_TRUE(QvKsCADColorTool::InvokeCADColorDlg(Rgb(255, 0, 0), chosen));
    EXPECT_EQ(chosen, QvKsAciPalette::ColorOf(52));
}

TEST(CadColorDlg, OpensOnTheCurrentColour)
{
    QvKsCADColorDlg indexed(QvKsAciPalette::ColorOf(30));
    EXPECT_TRUE(Find<QvKsColorSwatch>(&indexed, QStringLiteral("aci_30"))->isChecked());
    EXPECT_EQ(Find<QTabWidget>(&indexed, QStringLiteral("colorTabs"))->currentIndex(), 0);
    EXPECT_EQ(indexed.ChosenColor(), QvKsAciPalette::ColorOf(30));

    QvKsCADColorDlg trueColour(Rgb(12, 34, 56));
    EXPECT_EQ(Find<QTabWidget>(&trueColour, QStringLiteral("colorTabs"))->currentIndex(), 1);
    EXPECT_EQ(trueColour.ChosenIndex(), 0);
    EXPECT_EQ(trueColour.ChosenColor(), Rgb(12, 34, 56));
    EXPECT_EQ(
        Find<QColorDialog>(&trueColour, QStringLiteral("trueColor"))->currentColor(), QColor(12, 34, 56));
}

TEST(CadColorDlg, TrueColourChoiceIsReturned)
{
    COLORREF chosen = 0;
    WhenModal([](QDialog* dlg) {
        auto* tabs = Find<QTabWidget>(dlg, QStringLiteral("colorTabs"));
        tabs->setCurrentIndex(1);
        // What the chooser reports when the user picks a colour in it.
        Find<QColorDialog>(dlg, QStringLiteral("trueColor"))->setCurrentColor(QColor(10, 200, 30));
        Click(dlg, QStringLiteral("okButton"));
    });
    EXPECT_TRUE(QvKsCADColorTool::InvokeCADColorDlg(Rgb(255, 0, 0), chosen));
    EXPECT_EQ(chosen, Rgb(10, 200, 30));
}

TEST(CadColorDlg, LastChoiceWinsBetweenPages)
{
    QvKsCADColorDlg dlg(Rgb(255, 0, 0));
    dlg.show();
    Find<QColorDialog>(&dlg, QStringLiteral("trueColor"))->setCurrentColor(QColor(1, 2, 3));
    EXPECT_EQ(dlg.ChosenIndex(), 0);
    EXPECT_FALSE(Find<QvKsColorSwatch>(&dlg, QStringLiteral("aci_1"))->isChecked());
    Click(&dlg, QStringLiteral("aci_10"));
    // Index 10 has the same colour as index 1; the clicked index is what counts.
    EXPECT_EQ(dlg.ChosenIndex(), 10);
    EXPECT_EQ(dlg.ChosenColor(), Rgb(255, 0, 0));
}

// The dialog's picture as the user sees it: saved for a look, and read pixel by pixel.
QImage Shot(QWidget& dlg, const char* file)
{
    const QImage shot = dlg.grab().toImage();
    const QString dir = qEnvironmentVariable("QV_TEST_ARTIFACTS", QDir::tempPath());
    QDir().mkpath(dir);
    EXPECT_TRUE(shot.save(dir + u'/' + QLatin1String(file)));
    return shot;
}

// The colour at a point of a named control, as the dialog's picture shows it.
COLORREF ShownAt(const QImage& shot, QWidget& dlg, const QString& name, QPoint point)
{
    QWidget* w = Find<QWidget>(&dlg, name);
    if (!w)
        return 0xFFFFFFFF;
    const QColor c = shot.pixelColor(w->mapTo(&dlg, point));
    return Rgb(c.red(), c.green(), c.blue());
}

COLORREF ShownAtCentre(const QImage& shot, QWidget& dlg, const QString& name)
{
    QWidget* w = Find<QWidget>(&dlg, name);
    return w ? ShownAt(shot, dlg, name, w->rect().center()) : 0xFFFFFFFF;
}

TEST(CadColorDlg, ScreenshotShowsTheHueGridTheChosenCellAndBothColours)
{
    ASSERT_FALSE(QFontDatabase::families(QFontDatabase::SimplifiedChinese).isEmpty());
    QvKsCADColorDlg dlg(QvKsAciPalette::ColorOf(30));
    dlg.show();
    Click(&dlg, QStringLiteral("aci_92"));
    const QImage shot = Shot(dlg, "cad_color_dialog.png");

    // The hue grid read by place, not by name: 24 hues spread across, rows of
    // 16-pixel cells packed down; the pure shades bright to dark down the top half,
    // the pale ones dark to bright up the bottom half.
    QRect grid;
    for (int i = 10; i <= 249; ++i) {
        QWidget* cell = Find<QWidget>(&dlg, QStringLiteral("aci_%1").arg(i));
        grid |= QRect(cell->mapTo(&dlg, QPoint(0, 0)), cell->size());
    }
    ASSERT_EQ(grid.height(), 10 * 16);
    ASSERT_GE(grid.width(), 24 * 16);
    const int firstHue[10] = { 10, 12, 14, 16, 18, 19, 17, 15, 13, 11 };
    for (int row = 0; row < 10; ++row) {
        for (const int hue : { 0, 7, 23 }) {
            const QPoint centre(hue * (grid.width() - 16) / 23 + 8, row * 16 + 8);
            const QColor c = shot.pixelColor(grid.topLeft() + centre);
            EXPECT_EQ(Rgb(c.red(), c.green(), c.blue()), QvKsAciPalette::ColorOf(firstHue[row] + hue * 10))
                << "row " << row << ", hue " << hue;
        }
    }

    // Only the clicked cell wears the white-and-black frame; the one the dialog
    // opened on is back to the thin grey edge.
    EXPECT_EQ(ShownAt(shot, dlg, QStringLiteral("aci_92"), QPoint(0, 0)), Rgb(255, 255, 255));
    EXPECT_EQ(ShownAt(shot, dlg, QStringLiteral("aci_92"), QPoint(1, 1)), Rgb(0, 0, 0));
    EXPECT_EQ(ShownAtCentre(shot, dlg, QStringLiteral("aci_92")), QvKsAciPalette::ColorOf(92));
    EXPECT_EQ(ShownAt(shot, dlg, QStringLiteral("aci_30"), QPoint(1, 1)), Rgb(96, 96, 96));
    EXPECT_EQ(ShownAtCentre(shot, dlg, QStringLiteral("aci_30")), Rgb(255, 127, 0));

    // The old colour and the new one side by side, on either page.
    auto* tabs = Find<QTabWidget>(&dlg, QStringLiteral("colorTabs"));
    tabs->setCurrentIndex(1);
    const QImage truePage = Shot(dlg, "cad_color_dialog_true.png");
    for (const QImage* picture : { &shot, &truePage }) {
        EXPECT_EQ(ShownAtCentre(*picture, dlg, QStringLiteral("oldColor")), Rgb(255, 127, 0));
        EXPECT_EQ(ShownAtCentre(*picture, dlg, QStringLiteral("newColor")), QvKsAciPalette::ColorOf(92));
    }
    EXPECT_NE(ShownAtCentre(truePage, dlg, QStringLiteral("aci_92")), QvKsAciPalette::ColorOf(92))
        << "the index page is hidden behind the true-colour page";
}

} // namespace
