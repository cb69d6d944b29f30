// The grid's plain item tree: insert positions, cells following their columns, and
// the shown-row index checked against a full walk on random trees.
#include "CTreeListItemTree.h"

#include <gtest/gtest.h>

#include <random>

namespace {
// The rows as a brute-force walk sees them: pre-order through expanded items.
void walkShown(HTREEITEM item, std::vector<HTREEITEM>& rows)
{
    for (HTREEITEM child : item->children()) {
        rows.push_back(child);
        if (child->isExpanded())
            walkShown(child, rows);
    }
}

void collectAll(HTREEITEM item, std::vector<HTREEITEM>& all)
{
    for (HTREEITEM child : item->children()) {
        all.push_back(child);
        collectAll(child, all);
    }
}

void expectIndexMatchesWalk(const CTreeListItemTree& tree)
{
    std::vector<HTREEITEM> rows;
    walkShown(tree.root(), rows);
    ASSERT_EQ(tree.rowCount(), int(rows.size()));
    for (size_t i = 0; i < rows.size(); ++i) {
        ASSERT_EQ(tree.itemFromRow(int(i)), rows[i]) << "row " << i;
        ASSERT_EQ(tree.rowFromItem(rows[i]), int(i));
    }
    std::vector<HTREEITEM> all;
    collectAll(tree.root(), all);
    for (HTREEITEM item : all) {
        const bool shown = std::find(rows.begin(), rows.end(), item) != rows.end();
        if (!shown) {
            ASSERT_EQ(tree.rowFromItem(item), -1);
        }
    }
    EXPECT_EQ(tree.itemFromRow(int(rows.size())), nullptr);
    EXPECT_EQ(tree.itemFromRow(-2), nullptr);
}

QStringList childTexts(HTREEITEM parent)
{
    QStringList texts;
    for (HTREEITEM child : parent->children())
        texts << child->cell(0).text;
    return texts;
}

TEST(ItemTreeTest, InsertPositionsFollowTheirMeaning)
{
    CTreeListItemTree tree;
    tree.insertColumn(0, {});
    HTREEITEM root = tree.root();
    HTREEITEM b = tree.insertAt(root, tree.insertPosition(root, TVI_LAST, "B"), "B");
    tree.insertAt(root, tree.insertPosition(root, TVI_FIRST, "A"), "A");
    tree.insertAt(root, tree.insertPosition(root, b, "B2"), "B2");
    tree.insertAt(root, tree.insertPosition(root, TVI_SORT, "AB"), "AB");
    tree.insertAt(root, tree.insertPosition(root, TVI_SORT, "z"), "z");
    EXPECT_EQ(childTexts(root), QStringList({ "A", "AB", "B", "B2", "z" }));
    // A handle that is no child of the parent gives no position.
    HTREEITEM child = tree.insertAt(b, 0, "child");
    EXPECT_EQ(tree.insertPosition(root, child, "x"), -1);
}

TEST(ItemTreeTest, SortUsesTheColumnComparison)
{
    CTreeListItemTree tree;
    tree.insertColumn(0, {});
    // Longest text first.
    tree.setColumnCompare(
        0, [](HTREEITEM a, HTREEITEM b) { return int(b->cell(0).text.size() - a->cell(0).text.size()); });
    HTREEITEM root = tree.root();
    for (const char* text : { "aa", "a", "aaaa", "aaa" })
        tree.insertAt(root, tree.insertPosition(root, TVI_SORT, text), text);
    EXPECT_EQ(childTexts(root), QStringList({ "aaaa", "aaa", "aa", "a" }));
}

TEST(ItemTreeTest, CellsFollowTheirColumnWhenColumnsChange)
{
    CTreeListItemTree tree;
    for (int c = 0; c < 3; ++c)
        tree.insertColumn(c, { QString::number(c), LVCFMT_LEFT, 50 });
    HTREEITEM item = tree.insertAt(tree.root(), 0, "name");
    tree.setText(item, 1, "one");
    tree.setText(item, 2, "two");
    tree.insertColumn(1, { "new", LVCFMT_CENTER, 50 });
    EXPECT_EQ(item->cell(1).text, "");
    EXPECT_EQ(item->cell(2).text, "one");
    EXPECT_EQ(item->cell(3).text, "two");
    tree.removeColumn(2);
    EXPECT_EQ(item->cell(2).text, "two");
    EXPECT_EQ(tree.column(2).title, "2");
}

TEST(ItemTreeTest, CopyInsideOwnSubtreeCopiesTheOriginalOnly)
{
    CTreeListItemTree tree;
    tree.insertColumn(0, {});
    HTREEITEM a = tree.insertAt(tree.root(), 0, "A");
    tree.insertAt(a, 0, "A1");
    tree.copyAt(a, tree.root(), 1);
    ASSERT_EQ(tree.root()->children().size(), 2u);
    EXPECT_EQ(childTexts(tree.root()->children()[1]), QStringList({ "A1" }));
    EXPECT_EQ(tree.itemCount(), 4u);
}

TEST(ItemTreeTest, RowIndexMatchesWalkOnRandomTrees)
{
    std::mt19937 random(20240601);
    for (int round = 0; round < 20; ++round) {
        CTreeListItemTree tree;
        tree.insertColumn(0, {});
        std::vector<HTREEITEM> items;
        for (int step = 0; step < 400; ++step) {
            const int action = int(random() % 10);
            HTREEITEM pick = items.empty() ? tree.root() : items[random() % items.size()];
            if (action < 5 || items.empty()) {
                HTREEITEM parent = (random() % 4 == 0) ? tree.root() : pick;
                const int pos = int(random() % (parent->children().size() + 1));
                items.push_back(tree.insertAt(parent, pos, QString::number(step)));
            } else if (action < 8) {
                tree.setExpanded(pick, !pick->isExpanded());
            } else if (action == 8 && items.size() > 1) {
                HTREEITEM target = items[random() % items.size()];
                if (!tree.isAncestorOrSelf(pick, target))
                    tree.moveTo(pick, target, int(random() % (target->children().size() + 1)));
            } else if (pick != tree.root()) {
                std::vector<HTREEITEM> gone { pick };
                collectAll(pick, gone);
                tree.remove(pick);
                std::erase_if(
                    items, [&](HTREEITEM i) { return std::find(gone.begin(), gone.end(), i) != gone.end(); });
            }
            // Look-ups between changes, so stale numbers would be caught.
            if (step % 7 == 0)
                expectIndexMatchesWalk(tree);
        }
        expectIndexMatchesWalk(tree);
        EXPECT_EQ(tree.itemCount(), items.size());
    }
}
} // namespace
