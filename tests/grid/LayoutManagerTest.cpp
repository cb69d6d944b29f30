// Controls anchored to a dialog's edges while it is resized, and the conversion of
// dialog units to pixels.
#include "CDialogUnits.h"
#include "CLayoutManager.h"
#include "CtrlId.h"

#include <QFont>
#include <QPushButton>
#include <QWidget>
#include <gtest/gtest.h>

namespace {
struct AnchorCase
{
    UINT anchors;
    QRect after; // for a 100x60 control at (50, 40) when the dialog grows by (200, 100)
};

class AnchorTest : public ::testing::TestWithParam<AnchorCase>
{ };

TEST_P(AnchorTest, KeepsDistancesToAnchoredEdges)
{
    QWidget dialog;
    dialog.resize(400, 300);
    auto* control = new QPushButton(&dialog);
    SetDlgCtrlID(control, 201);
    control->setGeometry(50, 40, 100, 60);
    CLayoutManager layout;
    layout.Attach(&dialog);
    dialog.show();
    ASSERT_TRUE(layout.AddAnchor(201, GetParam().anchors));
    dialog.resize(600, 400);
    EXPECT_EQ(control->geometry(), GetParam().after);
    dialog.resize(400, 300);
    EXPECT_EQ(control->geometry(), QRect(50, 40, 100, 60)) << "back to the start size";
}

// The anchors of the management dialog: list 7, grid 15, OK/Cancel 10, import/export
// 6, the scale fields 9.
INSTANTIATE_TEST_SUITE_P(DialogAnchors, AnchorTest,
    ::testing::Values(AnchorCase { 7, QRect(50, 40, 100, 160) }, AnchorCase { 15, QRect(50, 40, 300, 160) },
        AnchorCase { 10, QRect(250, 140, 100, 60) }, AnchorCase { 6, QRect(50, 140, 100, 60) },
        AnchorCase { 9, QRect(250, 40, 100, 60) }, AnchorCase { 0, QRect(50, 40, 100, 60) }));

TEST(LayoutManagerTest, ShrinkingNeverGivesNegativeSizesAndMinimumHolds)
{
    QWidget dialog;
    dialog.resize(400, 300);
    auto* grid = new QWidget(&dialog);
    grid->setGeometry(10, 10, 100, 50);
    CLayoutManager layout;
    layout.Attach(&dialog);
    dialog.show();
    layout.AddAnchor(grid, 15);
    layout.SetMinTrackSize(QSize(350, 280));
    EXPECT_EQ(dialog.minimumSize(), QSize(350, 280));
    dialog.setMinimumSize(0, 0);
    dialog.resize(200, 200);
    EXPECT_EQ(grid->geometry().size(), QSize(0, 0));
    EXPECT_FALSE(layout.AddAnchor(new QWidget, 15)) << "only the dialog's own controls";
    EXPECT_FALSE(layout.AddAnchor(999, 15));
}

TEST(DialogUnitsTest, ConvertsWithTheFontsBaseUnits)
{
    EXPECT_EQ(CDialogUnits::ToPixels(QRect(612, 221, 50, 14), QSize(6, 13)), QRect(918, 359, 75, 23));
    EXPECT_EQ(CDialogUnits::ToPixels(QRect(0, 0, 4, 8), QSize(7, 16)), QRect(0, 0, 7, 16));
    QFont font;
    font.setPixelSize(12);
    const QSize base = CDialogUnits::BaseUnits(font);
    EXPECT_GT(base.width(), 3);
    EXPECT_LT(base.width(), 12);
    EXPECT_GE(base.height(), 12);
}
} // namespace
