// The grid as the dialogs drive it: structure refusals, rows and selection, state
// bits set by clicks, notifications, columns and painting suspension.
#include "CTreeListCtrl.h"
#include "CTreeListEdit.h"
#include "CtrlId.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>

namespace {
class TreeListCtrlTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        grid.SetDlgCtrlID(201);
        grid.resize(600, 300);
        grid.InsertColumn(0, "系统编号", LVCFMT_LEFT, 120);
        grid.InsertColumn(1, "颜色", LVCFMT_CENTER, 80);
        grid.InsertColumn(2, "备注", LVCFMT_CENTER, 100);
        a = grid.InsertItem("A");
        a1 = grid.InsertItem("A1", a);
        a11 = grid.InsertItem("A11", a1);
        b = grid.InsertItem("B");
        grid.Expand(a, TVE_EXPAND);
        grid.show();
        QApplication::processEvents();
    }

    QPoint cellCenter(HTREEITEM item, int column) { return grid.GetSubItemRect(item, column).center(); }
    QStringList rowTexts()
    {
        QStringList texts;
        for (int r = 0; r < grid.GetItemCount(); ++r)
            texts << grid.GetItemText(grid.GetItemFromRow(r));
        return texts;
    }

    CTreeListCtrl grid;
    HTREEITEM a = nullptr, a1 = nullptr, a11 = nullptr, b = nullptr;
};

TEST_F(TreeListCtrlTest, RowsAreOnlyItemsUnderExpandedAncestors)
{
    EXPECT_EQ(rowTexts(), QStringList({ "A", "A1", "B" }));
    EXPECT_EQ(grid.GetRowFromItem(a11), -1);
    EXPECT_EQ(grid.GetItemFromRow(-1), grid.GetRootItem());
    grid.Expand(a1, TVE_EXPAND);
    EXPECT_EQ(rowTexts(), QStringList({ "A", "A1", "A11", "B" }));
    grid.Expand(a, TVE_COLLAPSE);
    EXPECT_EQ(rowTexts(), QStringList({ "A", "B" }));
    EXPECT_EQ(grid.GetRowFromItem(a11), -1) << "an expanded item under a collapsed one is no row";
}

TEST_F(TreeListCtrlTest, ARowFilterKeepsMatchesWithTheirParentsAndCountsOnlyThem)
{
    grid.Expand(a1, TVE_EXPAND);
    HTREEITEM b1 = grid.InsertItem("B1", b);
    grid.Expand(b, TVE_EXPAND);
    grid.SetRowFilter([&](HTREEITEM item) { return item == a11 || item == b; });
    EXPECT_TRUE(grid.IsRowFilterOn());
    EXPECT_EQ(rowTexts(), QStringList({ "A", "A1", "A11", "B" }));
    EXPECT_EQ(grid.GetRowFromItem(b1), -1);
    EXPECT_EQ(grid.GetRowFromItem(b), 3);
    QApplication::processEvents();
    EXPECT_FALSE(grid.visualRect(grid.GetModel()->indexFromItem(b1)).isValid()) << "the view hides it too";
    // A filter again from scratch, then none: every row is back.
    grid.SetRowFilter([&](HTREEITEM item) { return item == b1; });
    EXPECT_EQ(rowTexts(), QStringList({ "B", "B1" }));
    grid.SetRowFilter({});
    EXPECT_FALSE(grid.IsRowFilterOn());
    EXPECT_EQ(rowTexts(), QStringList({ "A", "A1", "A11", "B", "B1" }));
}

// The same filter given as the items to keep: the rows are the same, whatever the
// filter before it kept; a handle no longer the grid's is passed over.
TEST_F(TreeListCtrlTest, ARowFilterGivenAsItemsKeepsThemWithTheirParents)
{
    grid.Expand(a1, TVE_EXPAND);
    HTREEITEM b1 = grid.InsertItem("B1", b);
    HTREEITEM b2 = grid.InsertItem("B2", b);
    grid.Expand(b, TVE_EXPAND);
    grid.DeleteItem(b2);
    const std::vector<std::pair<std::vector<HTREEITEM>, QStringList>> filters = {
        { { a11, b }, { "A", "A1", "A11", "B" } },
        { { b1, b2 }, { "B", "B1" } },
        { { a1 }, { "A", "A1" } },
        { {}, {} },
    };
    for (const auto& [items, rows] : filters) {
        grid.SetRowFilterItems(items);
        EXPECT_TRUE(grid.IsRowFilterOn());
        EXPECT_EQ(rowTexts(), rows);
        QApplication::processEvents();
        EXPECT_EQ(grid.visualRect(grid.GetModel()->indexFromItem(a)).isValid(), rows.contains("A"));
    }
    grid.SetRowFilter({});
    EXPECT_EQ(rowTexts(), QStringList({ "A", "A1", "A11", "B", "B1" }));
}

// What the grid holds is counted as changed by new texts and by items coming and
// going, not by colours, selection or opening.
TEST_F(TreeListCtrlTest, ContentChangesCountTextsAndItemsOnly)
{
    const auto changes = [&](const std::function<void()>& change) {
        const std::uint64_t before = grid.ContentChanges();
        change();
        return grid.ContentChanges() != before;
    };
    EXPECT_TRUE(changes([&] { grid.SetItemText(b, "B+", 2); }));
    EXPECT_TRUE(changes([&] { grid.InsertItem("C"); }));
    EXPECT_TRUE(changes([&] { grid.CopyItem(a1, b, TVI_LAST); }));
    EXPECT_TRUE(changes([&] { grid.DeleteItem(a11); }));
    EXPECT_TRUE(changes([&] {
        grid.BeginUndoGroup();
        grid.DeleteItem(a1);
        grid.EndUndoGroup();
    }));
    EXPECT_TRUE(changes([&] { grid.Undo(); }));
    EXPECT_FALSE(changes([&] { grid.SetItemBackColor(b, 0x00FF00, 1); }));
    EXPECT_FALSE(changes([&] { grid.SelectItem(b); }));
    EXPECT_FALSE(changes([&] { grid.Expand(a, TVE_COLLAPSE); }));
    EXPECT_TRUE(changes([&] { grid.DeleteAllItems(); }));
}

TEST_F(TreeListCtrlTest, SelectedItemUnderCollapsedParentIsNoRow)
{
    grid.SetItemState(a1, LVIS_SELECTED, LVIS_SELECTED);
    grid.SetItemState(b, LVIS_SELECTED, LVIS_SELECTED);
    EXPECT_EQ(grid.GetSelectedCount(), 2);
    grid.Expand(a, TVE_COLLAPSE);
    EXPECT_EQ(grid.GetItemCount(), 2);
    EXPECT_EQ(grid.GetSelectedCount(), 1);
    EXPECT_EQ(grid.GetSelectedItem(), b);
    EXPECT_EQ(grid.GetItemState(a1, LVIS_SELECTED), LVIS_SELECTED) << "the bit itself stays";
    grid.Expand(a, TVE_EXPAND);
    EXPECT_EQ(grid.GetSelectedItem(), a1);
}

TEST_F(TreeListCtrlTest, ClicksSetSelectionAndCaretBits)
{
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, cellCenter(a1, 1));
    EXPECT_EQ(grid.GetItemState(a1, 3), 3u);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ControlModifier, cellCenter(b, 2));
    EXPECT_EQ(grid.GetItemState(a1, LVIS_SELECTED), LVIS_SELECTED);
    EXPECT_EQ(grid.GetItemState(b, 3), 3u);
    EXPECT_EQ(grid.GetItemState(a1, LVIS_FOCUSED), 0u) << "one caret only";
    EXPECT_EQ(grid.GetSelectedCount(), 2);
    // The dialogs clear both bits with mask 3.
    grid.SetItemState(b, 0, 3);
    EXPECT_EQ(grid.GetItemState(b, 3), 0u);
    EXPECT_EQ(grid.GetCaretItem(), nullptr);
    grid.SelectItem(a);
    EXPECT_EQ(grid.GetSelectedCount(), 1);
    EXPECT_EQ(grid.GetSelectedItem(), a);
    EXPECT_EQ(grid.GetCaretItem(), a);
}

TEST_F(TreeListCtrlTest, ClickOnExpandButtonOpensTheBranch)
{
    UINT flags = 0;
    const QRect label = grid.GetSubItemRect(a1, 0);
    const QPoint button(label.left() - grid.indentation() / 2, label.center().y());
    EXPECT_EQ(grid.HitTest(button, &flags), a1);
    EXPECT_EQ(flags, TVHT_ONITEMBUTTON);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, button);
    EXPECT_TRUE(grid.IsItemExpanded(a1));
    EXPECT_EQ(grid.GetRowFromItem(a11), 2);
    grid.HitTest(QPoint(5, grid.viewport()->height() - 2), &flags);
    EXPECT_TRUE(flags & TVHT_NOWHERE);
}

TEST_F(TreeListCtrlTest, MoveUnderOwnDescendantIsRefusedAndChangesNothing)
{
    HTREEITEM moved = b;
    EXPECT_EQ(grid.MoveItem(a, a11, TVI_LAST, &moved), FALSE);
    EXPECT_EQ(moved, nullptr);
    EXPECT_EQ(grid.MoveItem(a, a, TVI_LAST), FALSE);
    EXPECT_EQ(grid.GetParentItem(a1), a);
    EXPECT_EQ(grid.GetParentItem(a11), a1);
    EXPECT_EQ(rowTexts(), QStringList({ "A", "A1", "B" }));
    EXPECT_EQ(grid.CopyItem(a, a1, TVI_LAST), nullptr);
}

TEST_F(TreeListCtrlTest, MoveAndCopyCarryTheSubtree)
{
    grid.SetItemText(a1, "note", 2);
    HTREEITEM moved = nullptr;
    ASSERT_EQ(grid.MoveItem(a1, grid.GetRootItem(), b, &moved), TRUE);
    EXPECT_EQ(moved, a1);
    EXPECT_EQ(grid.GetParentItem(a1), grid.GetRootItem());
    EXPECT_EQ(grid.GetChildItem(a1), a11);
    EXPECT_EQ(grid.ItemHasChildren(a), FALSE);
    EXPECT_EQ(rowTexts(), QStringList({ "A", "B", "A1" }));

    HTREEITEM copy = grid.CopyItem(a1, b, TVI_FIRST);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(grid.GetItemText(copy, 2), "note");
    EXPECT_EQ(grid.GetItemText(grid.GetChildItem(copy)), "A11");
    EXPECT_EQ(grid.CopyItem(a1, grid.GetRootItem(), a1), a1) << "copy onto its own place changes nothing";
    EXPECT_EQ(grid.GetNextSiblingItem(a1), nullptr);

    CTreeListCtrl other;
    other.InsertColumn(0, "x");
    other.InsertColumn(1, "y");
    other.InsertColumn(2, "z");
    HTREEITEM foreign = other.CopyItem(a1, nullptr, TVI_LAST, &grid);
    ASSERT_NE(foreign, nullptr);
    EXPECT_EQ(other.GetItemText(foreign, 2), "note");
}

TEST_F(TreeListCtrlTest, DeleteColumnZeroLeavesNoItemsAndNoColumns)
{
    QSignalSpy deleted(&grid, &CTreeListCtrl::itemDeleted);
    grid.SetItemData(a11, 77);
    EXPECT_EQ(grid.DeleteColumn(1), TRUE);
    EXPECT_EQ(grid.GetColumnCount(), 2);
    EXPECT_EQ(grid.GetColumnText(1), "备注");
    EXPECT_EQ(grid.DeleteColumn(0), TRUE);
    EXPECT_EQ(grid.GetColumnCount(), 0);
    EXPECT_EQ(grid.GetItemCount(), 0);
    EXPECT_EQ(grid.GetChildItem(grid.GetRootItem()), nullptr);
    EXPECT_EQ(grid.model()->columnCount(), 0);
    ASSERT_EQ(deleted.count(), 4);
    // Children go before their parents; each carries its item data.
    const auto first = deleted.at(0).at(0).value<NMLISTVIEW>();
    EXPECT_EQ(first.hItem, a11);
    EXPECT_EQ(first.lParam, 77u);
    EXPECT_EQ(first.hdr.idFrom, 201);
    EXPECT_EQ(grid.InsertColumn(0, "again"), 0);
    EXPECT_NE(grid.InsertItem("new"), nullptr);
}

TEST_F(TreeListCtrlTest, DeletedHandlesAreRefusedAfterwards)
{
    grid.DeleteItem(a);
    EXPECT_EQ(grid.GetItemCount(), 1);
    EXPECT_EQ(grid.SetItemText(a1, "x"), FALSE);
    EXPECT_EQ(grid.GetRowFromItem(a11), -1);
    EXPECT_EQ(grid.InsertItem("x", a), nullptr);
}

TEST_F(TreeListCtrlTest, ExpandSuspendsPaintingUntilOutermostChangeEnds)
{
    std::vector<bool> suspendedDuring;
    QObject::connect(&grid, &CTreeListCtrl::itemExpanded, &grid, [&](HTREEITEM item, bool) {
        suspendedDuring.push_back(!grid.updatesEnabled());
        if (item == a1)
            grid.Expand(a, TVE_COLLAPSE); // a nested change inside the first
        suspendedDuring.push_back(!grid.updatesEnabled());
    });
    grid.Expand(a1, TVE_EXPAND);
    ASSERT_EQ(suspendedDuring.size(), 4u);
    for (bool suspended : suspendedDuring)
        EXPECT_TRUE(suspended);
    EXPECT_TRUE(grid.updatesEnabled());
    EXPECT_FALSE(grid.IsPaintingSuspended());
    EXPECT_EQ(rowTexts(), QStringList({ "A", "B" }));
}

TEST_F(TreeListCtrlTest, UnsetColoursReadAsButtonTextAndSetOnesComeBack)
{
    EXPECT_EQ(grid.GetItemColor(a, 1), 0x000000u);
    EXPECT_EQ(grid.GetItemBackColor(a, 1), 0x000000u);
    grid.SetItemColor(a, RGB(255, 0, 0), 1);
    grid.SetItemBackColor(a, 0x00CCFFCC, 1);
    EXPECT_EQ(grid.GetItemColor(a, 1), 0x0000FFu);
    EXPECT_EQ(grid.GetItemBackColor(a, 1), 0xCCFFCCu);
    EXPECT_EQ(grid.model()->data(grid.GetModel()->indexFromItem(a, 1), Qt::BackgroundRole).value<QColor>(),
        QColor(0xCC, 0xFF, 0xCC));
}

// What a cell shows: its background, or the selection over it, and its text in its
// colour, also after the same text was drawn once before.
TEST_F(TreeListCtrlTest, CellsArePaintedInTheirColours)
{
    grid.SetItemBackColor(b, RGB(0, 255, 0), 1);
    grid.SetItemBackColor(b, RGB(255, 255, 255), 2);
    grid.SetItemColor(b, RGB(255, 0, 0), 2);
    grid.SetItemText(a, "WWWW", 2);
    grid.SetItemText(b, "WWWW", 2);
    grid.SelectItem(a);
    grid.clearFocus();
    QApplication::processEvents();
    const QImage shot = grid.viewport()->grab().toImage();
    const auto count = [&](HTREEITEM item, int column, auto&& test) {
        int n = 0;
        const QRect cell = grid.GetSubItemRect(item, column);
        for (int y = cell.top(); y <= cell.bottom(); ++y)
            for (int x = cell.left(); x <= cell.right(); ++x)
                n += test(shot.pixelColor(x, y)) ? 1 : 0;
        return n;
    };
    EXPECT_EQ(shot.pixelColor(cellCenter(b, 1)), QColor(0, 255, 0));
    EXPECT_GT(count(b, 2, [](QColor c) { return c.red() > 150 && c.green() < 100 && c.blue() < 100; }), 10)
        << "the text in its own colour";
    const QColor highlight = shot.pixelColor(cellCenter(a, 1));
    EXPECT_TRUE(highlight == grid.palette().color(QPalette::Active, QPalette::Highlight)
        || highlight == grid.palette().color(QPalette::Inactive, QPalette::Highlight));
    EXPECT_GT(count(a, 2, [&](QColor c) { return c != highlight; }), 10) << "the selected row's text";
}

// Deleting the caret's row with a tall subtree, outright or by undoing its insert,
// moves the caret to the next row and leaves the view where the user had it: the
// rows after the deleted ones move up into it.
TEST_F(TreeListCtrlTest, DeletingTheCaretRowLeavesTheViewWhereItIs)
{
    for (const bool byUndo : { false, true }) {
        SCOPED_TRACE(byUndo ? "undo" : "delete");
        grid.DeleteAllItems();
        std::vector<HTREEITEM> after;
        for (int i = 0; i < 300; ++i)
            after.push_back(grid.InsertItem(QStringLiteral("after%1").arg(i)));
        grid.BeginUndoGroup();
        HTREEITEM tall = grid.InsertItem("tall", TVI_ROOT, TVI_FIRST);
        for (int i = 0; i < 300; ++i)
            grid.InsertItem(QString::number(i), tall);
        grid.EndUndoGroup();
        grid.Expand(tall, TVE_EXPAND);
        grid.SelectItem(tall);
        grid.SelectSetFirstVisible(tall);
        QApplication::processEvents();
        const int scrolled = grid.verticalScrollBar()->value();
        ASSERT_TRUE(grid.CanUndo());
        if (byUndo)
            grid.Undo();
        else
            grid.DeleteItem(tall);
        QApplication::processEvents();
        EXPECT_EQ(grid.verticalScrollBar()->value(), scrolled);
        EXPECT_EQ(grid.GetCaretItem(), after[0]);
        EXPECT_TRUE(grid.hasAutoScroll());
    }
}

TEST_F(TreeListCtrlTest, TreeTextIsReadUpTo300Characters)
{
    grid.SetItemText(b, QString(310, u'x'));
    EXPECT_EQ(grid.GetItemText(b).size(), 300);
    grid.SetItemText(b, QString(310, u'y'), 2);
    EXPECT_EQ(grid.GetItemText(b, 2).size(), 310);
}

TEST_F(TreeListCtrlTest, RightClickReportsRowOrMinusOne)
{
    QSignalSpy clicks(&grid, &CTreeListCtrl::rightClick);
    QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, cellCenter(b, 1));
    QTest::mouseClick(grid.viewport(), Qt::RightButton, {}, QPoint(30, grid.viewport()->height() - 5));
    ASSERT_EQ(clicks.count(), 2);
    const auto onRow = clicks.at(0).at(0).value<NMITEMACTIVATE>();
    EXPECT_EQ(onRow.hdr.code, NM_RCLICK);
    EXPECT_EQ(onRow.hdr.idFrom, 201);
    EXPECT_EQ(onRow.iItem, 2);
    EXPECT_EQ(onRow.hItem, b);
    EXPECT_EQ(clicks.at(1).at(0).value<NMITEMACTIVATE>().iItem, -1);
}

TEST_F(TreeListCtrlTest, DraggingARowReportsStartMovesAndDrop)
{
    QSignalSpy begin(&grid, &CTreeListCtrl::beginDrag);
    QSignalSpy drop(&grid, &CTreeListCtrl::dragDrop);
    const QPoint from = cellCenter(a1, 0);
    const QPoint to = cellCenter(b, 0);
    QTest::mousePress(grid.viewport(), Qt::LeftButton, {}, from);
    QMouseEvent move(QEvent::MouseMove, QPointF(to), grid.viewport()->mapToGlobal(QPointF(to)), Qt::NoButton,
        Qt::LeftButton, {});
    QApplication::sendEvent(grid.viewport(), &move);
    ASSERT_EQ(begin.count(), 1);
    const auto info = begin.at(0).at(0).value<NMITEMACTIVATE>();
    EXPECT_EQ(info.hdr.code, LVN_BEGINDRAG);
    EXPECT_EQ(info.iItem, 1);
    EXPECT_EQ(info.hItem, a1);
    EXPECT_TRUE(grid.IsDragging());
    // The dialog tracks the drop target while the drag runs.
    EXPECT_EQ(grid.HitTest(to), b);
    grid.SelectDropTarget(b);
    EXPECT_EQ(grid.GetDropHilightItem(), b);
    QTest::mouseRelease(grid.viewport(), Qt::LeftButton, Qt::ControlModifier, to);
    ASSERT_EQ(drop.count(), 1);
    EXPECT_EQ(drop.at(0).at(1).value<Qt::KeyboardModifiers>(), Qt::ControlModifier);
    EXPECT_FALSE(grid.IsDragging());
    const QPixmap image = grid.CreateDragImage(a1);
    EXPECT_EQ(image.width(), 300);
    EXPECT_GT(image.height(), 0);
}

TEST_F(TreeListCtrlTest, EnsureVisibleOpensAncestorsAndRefusesRoot)
{
    grid.Expand(a, TVE_COLLAPSE);
    EXPECT_EQ(grid.EnsureVisible(grid.GetRootItem()), FALSE);
    EXPECT_EQ(grid.EnsureVisible(a11), TRUE);
    EXPECT_EQ(rowTexts(), QStringList({ "A", "A1", "A11", "B" }));
    EXPECT_EQ(grid.GetFirstVisibleRowItem(), a);
}

TEST_F(TreeListCtrlTest, CutOffCellShowsItsFullTextAsTip)
{
    grid.SetItemText(b, "short", 1);
    EXPECT_EQ(grid.GetCellTipText(cellCenter(b, 1)), "");
    const QString longText = "一段很长很长很长很长很长很长很长的备注文字";
    grid.SetItemText(b, longText, 2);
    EXPECT_EQ(grid.GetCellTipText(cellCenter(b, 2)), longText);
}

TEST_F(TreeListCtrlTest, StyleWordsAreKept)
{
    grid.ModifyStyle(TVS_LINESATROOT, TVS_SHOWSELALWAYS);
    EXPECT_EQ(grid.GetStyle(), TVS_HASBUTTONS | TVS_HASLINES | TVS_SHOWSELALWAYS);
    EXPECT_FALSE(grid.rootIsDecorated());
    grid.ModifyExtendedStyle(0, LVS_EX_GRIDLINES | LVS_EX_FULLROWSELECT);
    grid.ModifyExtendedStyle(LVS_EX_FULLROWSELECT, 0);
    EXPECT_EQ(grid.GetExtendedStyle(), LVS_EX_GRIDLINES);
}

TEST_F(TreeListCtrlTest, ModelStaysConsistentThroughEveryChange)
{
    QAbstractItemModelTester tester(grid.model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    HTREEITEM c = grid.InsertItem("C", a, TVI_FIRST);
    grid.MoveItem(c, b, TVI_LAST);
    grid.CopyItem(a, b, c);
    grid.SetItemText(c, "C2", 1);
    grid.InsertColumn(1, "mid");
    grid.DeleteItem(a1);
    grid.DeleteColumn(2);
    grid.DeleteAllItems();
    EXPECT_EQ(grid.model()->rowCount(), 0);
}

TEST(CtrlIdTest, ControlsAreFoundById)
{
    QWidget dialog;
    auto* grid = new CTreeListCtrl(&dialog);
    grid->SetDlgCtrlID(201);
    EXPECT_EQ(GetDlgItem(&dialog, 201), grid);
    EXPECT_EQ(GetDlgItem(&dialog, 202), nullptr);
    EXPECT_EQ(GetDlgCtrlID(grid->GetEditCtrl()), 10000);
}
} // namespace
