#include "CQvTreeCtrl.h"

#include <gtest/gtest.h>

namespace {

const QStringList kLibrary = {
    QStringLiteral("电气\\管线\\导线·导管\\BV-2.5"), QStringLiteral("电气\\管线\\导线·导管\\BV-4"),
    QStringLiteral("电气\\管线\\照明导线\\RVS"), QStringLiteral("弱电\\穿管引线\\配线\\RVVP"),
    QStringLiteral("电气\\管线\\导线·导管\\BV-2.5"), // repeated: no second item
};

// The tree as indented text, one item a line, for whole-shape comparisons.
QString Outline(const QTreeWidgetItem* item, int depth = 0)
{
    QString text = QString(depth * 2, QLatin1Char(' ')) + item->text(0) + QLatin1Char('\n');
    for (int i = 0; i < item->childCount(); ++i)
        text += Outline(item->child(i), depth + 1);
    return text;
}

QString Outline(const CQvTreeCtrl& tree)
{
    QString text;
    for (int i = 0; i < tree.topLevelItemCount(); ++i)
        text += Outline(tree.topLevelItem(i));
    return text;
}

TEST(QvTreeCtrl, ImpByPathsSharesPrefixesAndKeepsFirstSeenOrder)
{
    CQvTreeCtrl tree;
    EXPECT_EQ(tree.ImpByPaths(kLibrary, 0, true), 11);
    EXPECT_EQ(Outline(tree),
        QStringLiteral("电气\n  管线\n    导线·导管\n      BV-2.5\n      BV-4\n"
                       "    照明导线\n      RVS\n弱电\n  穿管引线\n    配线\n      RVVP\n"));
}

TEST(QvTreeCtrl, ImpByPathsIgnoresStraySeparatorsAndEmptyPaths)
{
    CQvTreeCtrl tree;
    tree.ImpByPaths(
        { QStringLiteral("\\A\\\\B\\"), QString(), QStringLiteral("\\"), QStringLiteral("A\\B\\C") });
    EXPECT_EQ(Outline(tree), QStringLiteral("A\n  B\n    C\n"));
}

TEST(QvTreeCtrl, ImpByPathsClearsOrMerges)
{
    CQvTreeCtrl tree;
    tree.ImpByPaths({ QStringLiteral("A\\x") });
    EXPECT_EQ(tree.ImpByPaths({ QStringLiteral("A\\y"), QStringLiteral("B") }, 0, false), 2);
    EXPECT_EQ(Outline(tree), QStringLiteral("A\n  x\n  y\nB\n"));
    tree.ImpByPaths({ QStringLiteral("C") }, 0, true);
    EXPECT_EQ(Outline(tree), QStringLiteral("C\n"));
}

TEST(QvTreeCtrl, ImpByPathsSortsWhenAsked)
{
    CQvTreeCtrl tree;
    tree.ImpByPaths(
        { QStringLiteral("b\\2"), QStringLiteral("b\\1"), QStringLiteral("a") }, CQvTreeCtrl::kImpSortNames);
    EXPECT_EQ(Outline(tree), QStringLiteral("a\nb\n  1\n  2\n"));
}

TEST(QvTreeCtrl, GetItemDirAndGetItemByDirAreInverse)
{
    CQvTreeCtrl tree;
    tree.ImpByPaths(kLibrary);
    int visited = 0;
    for (QTreeWidgetItemIterator it(&tree); *it; ++it, ++visited) {
        const QString dir = tree.GetItemDir(*it);
        EXPECT_FALSE(dir.startsWith(QLatin1Char('\\')) || dir.endsWith(QLatin1Char('\\')))
            << dir.toStdString();
        EXPECT_EQ(tree.GetItemByDir(dir), *it) << dir.toStdString();
    }
    EXPECT_EQ(visited, 11);
    EXPECT_EQ(tree.GetItemDir(nullptr), QString());
}

TEST(QvTreeCtrl, GetItemByDirFindsCategoriesAndRejectsMissingPaths)
{
    CQvTreeCtrl tree;
    tree.ImpByPaths(kLibrary);
    QTreeWidgetItem* category = tree.GetItemByDir(QStringLiteral("电气\\管线\\导线·导管\\"));
    ASSERT_NE(category, nullptr);
    EXPECT_EQ(category->text(0), QStringLiteral("导线·导管"));
    EXPECT_EQ(category->childCount(), 2);
    EXPECT_EQ(tree.GetItemByDir(QStringLiteral("电气")), tree.GetRootItem());
    EXPECT_EQ(tree.GetItemByDir(QStringLiteral("电气\\管线\\导线·导管\\BV-6")), nullptr);
    EXPECT_EQ(tree.GetItemByDir(QStringLiteral("管线")), nullptr); // not a top-level name
    EXPECT_EQ(tree.GetItemByDir(QStringLiteral("电气\\管线\\导线·导管\\BV-2.5\\更深")), nullptr);
    EXPECT_EQ(tree.GetItemByDir(QString()), nullptr);
}

TEST(QvTreeCtrl, GetLeafDirsListsLeavesUnderAnItemInTreeOrder)
{
    CQvTreeCtrl tree;
    tree.ImpByPaths(kLibrary);
    QStringList leaves;
    CQvTreeCtrl::GetLeafDirs(&tree, tree.GetRootItem()->text(0), tree.GetRootItem(), leaves);
    EXPECT_EQ(leaves,
        QStringList({ QStringLiteral("电气\\管线\\导线·导管\\BV-2.5"),
            QStringLiteral("电气\\管线\\导线·导管\\BV-4"), QStringLiteral("电气\\管线\\照明导线\\RVS") }));

    // Appends, and a leaf on its own is its own list.
    QTreeWidgetItem* leaf = tree.GetItemByDir(QStringLiteral("弱电\\穿管引线\\配线\\RVVP"));
    CQvTreeCtrl::GetLeafDirs(&tree, tree.GetItemDir(leaf), leaf, leaves);
    EXPECT_EQ(leaves.size(), 4);
    EXPECT_EQ(leaves.last(), QStringLiteral("弱电\\穿管引线\\配线\\RVVP"));

    CQvTreeCtrl::GetLeafDirs(&tree, QString(), nullptr, leaves);
    EXPECT_EQ(leaves.size(), 4);
}

TEST(QvTreeCtrl, SelectItemShowsItAndNullClears)
{
    CQvTreeCtrl tree;
    tree.ImpByPaths(kLibrary);
    tree.show();
    QTreeWidgetItem* item = tree.GetItemByDir(QStringLiteral("电气\\管线\\照明导线\\RVS"));
    tree.SelectItem(item);
    EXPECT_EQ(tree.GetSelectedItem(), item);
    EXPECT_TRUE(item->parent()->isExpanded());
    EXPECT_TRUE(tree.GetRootItem()->isExpanded());
    tree.SelectItem(nullptr);
    EXPECT_EQ(tree.GetSelectedItem(), nullptr);
}

} // namespace
