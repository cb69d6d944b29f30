// The grid's undo history: every kind of recorded change undone to exactly the rows
// before it and redone to exactly the rows after it, with the same handles; groups
// making one command; the clean point; and what forgets the history.
#include "CTreeListCtrl.h"
#include "CTreeListHistory.h"
#include "CTreeListItem.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <gtest/gtest.h>

#include <functional>

namespace {
class TreeListUndoTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        grid.resize(500, 300);
        grid.InsertColumn(0, "系统编号", LVCFMT_LEFT, 120);
        grid.InsertColumn(1, "颜色", LVCFMT_CENTER, 80);
        grid.InsertColumn(2, "备注", LVCFMT_CENTER, 100);
        a = grid.InsertItem("A");
        a1 = grid.InsertItem("A1", a);
        a2 = grid.InsertItem("A2", a);
        a11 = grid.InsertItem("A11", a1);
        b = grid.InsertItem("B");
        grid.SetItemText(a1, "r1", 2);
        grid.SetItemData(a1, 7);
        grid.Expand(a, TVE_EXPAND);
        grid.Expand(a1, TVE_EXPAND);
        grid.ClearUndo();
        grid.show();
        QApplication::processEvents();
    }

    // Every item in tree order: level, handle, texts, colours and data.
    std::string dump() const
    {
        std::string out;
        const auto visit = [&](auto&& self, HTREEITEM parent, int level) -> void {
            for (HTREEITEM c = grid.GetChildItem(parent); c; c = grid.GetNextSiblingItem(c)) {
                out += std::string(size_t(level), '>') + grid.GetItemText(c, 0).toStdString() + "@"
                    + std::to_string(reinterpret_cast<quintptr>(c)) + " "
                    + grid.GetItemText(c, 2).toStdString() + " " + std::to_string(grid.GetItemColor(c, 1))
                    + " " + std::to_string(grid.GetItemData(c)) + (grid.IsItemExpanded(c) ? "+" : "") + "|";
                self(self, c, level + 1);
            }
        };
        visit(visit, grid.GetRootItem(), 0);
        return out;
    }

    CTreeListCtrl grid;
    QAbstractItemModelTester tester { grid.GetModel(),
        QAbstractItemModelTester::FailureReportingMode::Fatal };
    HTREEITEM a = nullptr, a1 = nullptr, a2 = nullptr, a11 = nullptr, b = nullptr;
};

struct RecordedChange
{
    const char* name;
    std::function<void(CTreeListCtrl&, HTREEITEM a, HTREEITEM a1, HTREEITEM b)> change;
};

class EveryChange : public TreeListUndoTest, public ::testing::WithParamInterface<RecordedChange>
{ };

TEST_P(EveryChange, UndoRestoresTheRowsBeforeAndRedoTheRowsAfter)
{
    const std::string before = dump();
    grid.BeginUndoGroup();
    GetParam().change(grid, a, a1, b);
    grid.EndUndoGroup();
    const std::string after = dump();
    ASSERT_NE(before, after);
    ASSERT_TRUE(grid.CanUndo());
    EXPECT_FALSE(grid.IsUndoClean());
    for (int round = 0; round < 2; ++round) {
        grid.Undo();
        EXPECT_EQ(dump(), before) << "round " << round;
        EXPECT_TRUE(grid.IsUndoClean());
        EXPECT_FALSE(grid.CanUndo());
        grid.Redo();
        EXPECT_EQ(dump(), after) << "round " << round;
        EXPECT_FALSE(grid.CanRedo());
    }
}

INSTANTIATE_TEST_SUITE_P(Grid, EveryChange,
    ::testing::Values(
        RecordedChange {
            "text", [](CTreeListCtrl& g, HTREEITEM, HTREEITEM a1, HTREEITEM) { g.SetItemText(a1, "X"); } },
        RecordedChange { "colours",
            [](CTreeListCtrl& g, HTREEITEM, HTREEITEM a1, HTREEITEM) {
                g.SetItemColor(a1, 0x0000FF, 1);
                g.SetItemBackColor(a1, 0x0000FF, 1);
            } },
        RecordedChange {
            "data", [](CTreeListCtrl& g, HTREEITEM, HTREEITEM a1, HTREEITEM) { g.SetItemData(a1, 0); } },
        RecordedChange { "insert with cells and child",
            [](CTreeListCtrl& g, HTREEITEM a, HTREEITEM a1, HTREEITEM) {
                HTREEITEM n = g.InsertItem("N", a, a1);
                g.SetItemText(n, "new", 2);
                g.InsertItem("N1", n);
                g.Expand(n, TVE_EXPAND);
            } },
        RecordedChange { "delete a subtree",
            [](CTreeListCtrl& g, HTREEITEM, HTREEITEM a1, HTREEITEM) { g.DeleteItem(a1); } },
        RecordedChange { "move under another parent",
            [](CTreeListCtrl& g, HTREEITEM, HTREEITEM a1, HTREEITEM b) { g.MoveItem(a1, b, TVI_LAST); } },
        RecordedChange { "move down among siblings",
            [](CTreeListCtrl& g, HTREEITEM a, HTREEITEM a1, HTREEITEM) {
                g.MoveItem(a1, a, g.GetNextSiblingItem(a1));
            } },
        RecordedChange { "copy then rename and move the copy",
            [](CTreeListCtrl& g, HTREEITEM a, HTREEITEM a1, HTREEITEM b) {
                HTREEITEM copy = g.CopyItem(a1, a, TVI_FIRST);
                g.SetItemText(copy, "A1 copy");
                g.MoveItem(copy, TVI_ROOT, b);
            } },
        RecordedChange { "empty and refill",
            [](CTreeListCtrl& g, HTREEITEM, HTREEITEM, HTREEITEM) {
                g.DeleteAllItems();
                HTREEITEM c = g.InsertItem("C");
                g.InsertItem("C1", c);
            } },
        RecordedChange { "several changes in one group",
            [](CTreeListCtrl& g, HTREEITEM a, HTREEITEM a1, HTREEITEM b) {
                g.SetItemText(b, "B2");
                g.DeleteItem(g.GetNextSiblingItem(a1));
                HTREEITEM n = g.InsertItem("N", a, TVI_FIRST);
                g.DeleteItem(n);
                g.MoveItem(b, TVI_ROOT, TVI_FIRST);
            } },
        RecordedChange { "typed value",
            [](CTreeListCtrl& g, HTREEITEM, HTREEITEM a1, HTREEITEM) {
                g.SetColumnValueFormat(
                    2, [](const QVariant& v) { return QString::asprintf("%g", v.toDouble()); }, nullptr);
                g.SetItemValue(a1, 2.5, 2);
            } },
        RecordedChange { "cell written through the model",
            [](CTreeListCtrl& g, HTREEITEM, HTREEITEM a1, HTREEITEM) {
                QAbstractItemModel* m = g.model();
                m->setData(g.GetModel()->indexFromItem(a1, 2), QStringLiteral("via model"));
            } },
        RecordedChange { "rows put taken and moved through the model",
            [](CTreeListCtrl& g, HTREEITEM a, HTREEITEM, HTREEITEM) {
                QAbstractItemModel* m = g.model();
                const QModelIndex parent = g.GetModel()->indexFromItem(a);
                m->insertRows(0, 2, parent);
                m->setData(m->index(0, 0, parent), QStringLiteral("N0"));
                m->moveRows(parent, 0, 1, QModelIndex(), 1);
                m->removeRows(1, 1, QModelIndex());
            } }),
    [](const ::testing::TestParamInfo<RecordedChange>& info) {
        std::string name = info.param.name;
        for (char& c : name)
            if (c == ' ')
                c = '_';
        return name;
    });

TEST_F(TreeListUndoTest, NestedGroupsMakeOneCommandAndAnEmptyGroupNone)
{
    grid.BeginUndoGroup();
    grid.SetItemText(a, "A*");
    grid.BeginUndoGroup();
    grid.SetItemText(b, "B*");
    grid.EndUndoGroup();
    grid.EndUndoGroup();
    grid.BeginUndoGroup();
    grid.SetItemText(b, "B*"); // the same text: nothing changes
    grid.EndUndoGroup();
    EXPECT_EQ(grid.History().UndoCount(), 1u);
    grid.Undo();
    EXPECT_EQ(grid.GetItemText(a), "A");
    EXPECT_EQ(grid.GetItemText(b), "B");
}

TEST_F(TreeListUndoTest, OwnerStepsReplayInOrderWithTheGridsSteps)
{
    std::vector<std::string> log;
    grid.BeginUndoGroup();
    grid.SetItemText(a, "A*");
    grid.RecordUndo([&] { log.push_back("undo owner"); }, [&] { log.push_back("redo owner"); });
    grid.EndUndoGroup();
    grid.RecordUndo([&] { log.push_back("outside"); }, [&] { log.push_back("outside"); });
    grid.Undo();
    grid.Redo();
    EXPECT_EQ(log, (std::vector<std::string> { "undo owner", "redo owner" }));
}

TEST_F(TreeListUndoTest, ANewChangeAfterUndoDropsTheRedoneAndItsDeletedItems)
{
    grid.BeginUndoGroup();
    HTREEITEM n = grid.InsertItem("N", b);
    grid.EndUndoGroup();
    grid.BeginUndoGroup();
    grid.DeleteItem(a);
    grid.EndUndoGroup();
    grid.Undo();
    grid.Undo();
    EXPECT_EQ(grid.GetItemLevel(n), -1) << "an undone insert is no item of the grid";
    grid.BeginUndoGroup();
    grid.SetItemText(b, "B*");
    grid.EndUndoGroup();
    EXPECT_FALSE(grid.CanRedo());
    EXPECT_EQ(grid.History().UndoCount(), 1u);
    grid.Undo();
    EXPECT_TRUE(grid.IsUndoClean());
    EXPECT_EQ(grid.GetItemText(a1), "A1");
}

TEST_F(TreeListUndoTest, DeletedItemsComeBackAsTheSameHandlesUnselected)
{
    grid.SelectItem(a1);
    grid.BeginUndoGroup();
    grid.DeleteItem(a1);
    grid.EndUndoGroup();
    EXPECT_EQ(grid.GetItemLevel(a11), -1);
    EXPECT_EQ(grid.Undo(), a1) << "the row that came back is the one to show";
    EXPECT_EQ(grid.GetItemLevel(a11), 3);
    EXPECT_EQ(grid.GetParentItem(a1), a);
    EXPECT_EQ(grid.GetItemData(a1), 7u);
    EXPECT_EQ(grid.GetItemState(a1, LVIS_SELECTED), 0u);
    EXPECT_EQ(grid.GetRowFromItem(a11), 2) << "expanded as it was";
}

TEST_F(TreeListUndoTest, AChangeToTheRowsOutsideAGroupForgetsTheHistoryAndTheCleanPoint)
{
    grid.BeginUndoGroup();
    grid.SetItemText(a, "A*");
    grid.EndUndoGroup();
    grid.SetItemText(b, "B*"); // a cell outside a group is kept out of the history
    EXPECT_TRUE(grid.CanUndo());
    grid.InsertItem("C");
    EXPECT_FALSE(grid.CanUndo());
    grid.BeginUndoGroup();
    grid.SetItemText(a, "A", 2);
    grid.EndUndoGroup();
    grid.InsertColumn(1, "线型", LVCFMT_LEFT, 60);
    EXPECT_FALSE(grid.CanUndo()) << "recorded cells name columns that moved";
    grid.BeginUndoGroup();
    grid.SetItemText(a, "A**");
    grid.EndUndoGroup();
    grid.Undo();
    EXPECT_FALSE(grid.IsUndoClean()) << "the rows never were as after a fill or save";
    grid.ClearUndo();
    EXPECT_TRUE(grid.IsUndoClean());
}

TEST_F(TreeListUndoTest, NothingIsUndoneWhileAGroupIsOpen)
{
    grid.BeginUndoGroup();
    grid.SetItemText(a, "A*");
    grid.EndUndoGroup();
    grid.BeginUndoGroup();
    EXPECT_FALSE(grid.CanUndo());
    EXPECT_EQ(grid.Undo(), nullptr);
    grid.EndUndoGroup();
    EXPECT_EQ(grid.GetItemText(a), "A*");
}
} // namespace
