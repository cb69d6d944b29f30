// Reading a tree view through the item-view classes alone: rows by full name, the
// rows a person sees, colours of either kind, the expand button a click toggles,
// the selection and the open editor, and which view of the open dialog is meant.
#include "TreeViewRows.h"

#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTest>
#include <QTreeView>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {
// A shown tree view over "照明 > WL1 > 回路1, WL2", "插座", "动力 > 泵".
class TreeViewRowsTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        QStandardItem* light = Row(model.invisibleRootItem(), QStringLiteral("照明"));
        QStandardItem* wl1 = Row(light, QStringLiteral("WL1"));
        Row(wl1, QStringLiteral("回路1"));
        Row(light, QStringLiteral("WL2"));
        Row(model.invisibleRootItem(), QStringLiteral("插座"));
        Row(Row(model.invisibleRootItem(), QStringLiteral("动力")), QStringLiteral("泵"));
        model.setHorizontalHeaderLabels({ QStringLiteral("名称"), QStringLiteral("颜色") });
        view.setModel(&model);
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.resize(400, 300);
        view.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));
    }

    static QStandardItem* Row(QStandardItem* parent, const QString& name)
    {
        auto* item = new QStandardItem(name);
        parent->appendRow({ item, new QStandardItem(QStringLiteral("-")) });
        return item;
    }

    QModelIndex At(const QString& name) const { return rows.Find(name); }

    QStandardItemModel model;
    QTreeView view;
    TreeViewRows rows { view };
};
} // namespace

TEST_F(TreeViewRowsTest, ShowsOnlyRowsUnderExpandedRowsAndNotHiddenOnes)
{
    EXPECT_EQ(rows.Dump(), QStringLiteral("照明 | 插座 | 动力"));
    view.expand(At(QStringLiteral("照明")));
    view.expand(At(QStringLiteral("动力")));
    EXPECT_EQ(rows.Dump(), QStringLiteral("照明 | >WL1 | >WL2 | 插座 | 动力 | >泵"));
    view.setRowHidden(1, QModelIndex(), true);
    view.expand(At(QStringLiteral("照明&WL1")));
    EXPECT_EQ(rows.Dump(), QStringLiteral("照明 | >WL1 | >>回路1 | >WL2 | 动力 | >泵"));
    view.collapse(At(QStringLiteral("照明")));
    EXPECT_EQ(rows.Dump(), QStringLiteral("照明 | 动力 | >泵"));
    // Rows not shown are still found by name, but have no place on the screen.
    const QModelIndex deep = At(QStringLiteral("照明&WL1&回路1"));
    ASSERT_TRUE(deep.isValid());
    EXPECT_FALSE(rows.IsShown(deep));
    EXPECT_TRUE(rows.CellRect(deep, 0).isEmpty());
    EXPECT_FALSE(rows.IsShown(At(QStringLiteral("插座"))));
    EXPECT_EQ(TreeViewRows::Level(deep), 3);
    EXPECT_EQ(TreeViewRows::FullName(deep.siblingAtColumn(1)), QStringLiteral("照明&WL1&回路1"));
}

TEST_F(TreeViewRowsTest, RevealOpensEveryClosedAncestor)
{
    const QModelIndex deep = At(QStringLiteral("照明&WL1&回路1"));
    rows.Reveal(deep);
    EXPECT_TRUE(rows.IsShown(deep));
    EXPECT_FALSE(rows.CellRect(deep, 1).isEmpty());
    EXPECT_EQ(rows.Dump(), QStringLiteral("照明 | >WL1 | >>回路1 | >WL2 | 插座 | 动力"));
}

TEST(TreeViewRowsNames, ANameWithTheJoinInItIsTheFirstMatchInTreeOrder)
{
    struct Case
    {
        bool nestedFirst;
        int wantedLevel;
    };
    for (const Case& c : { Case { true, 2 }, Case { false, 1 } }) {
        QStandardItemModel model;
        auto* nested = new QStandardItem(QStringLiteral("A"));
        nested->appendRow(new QStandardItem(QStringLiteral("B")));
        auto* joined = new QStandardItem(QStringLiteral("A&B"));
        model.appendRow(c.nestedFirst ? nested : joined);
        model.appendRow(c.nestedFirst ? joined : nested);
        QTreeView view;
        view.setModel(&model);
        const QModelIndex found = TreeViewRows(view).Find(QStringLiteral("A&B"));
        ASSERT_TRUE(found.isValid());
        EXPECT_EQ(TreeViewRows::Level(found), c.wantedLevel) << "nested first: " << c.nestedFirst;
        EXPECT_FALSE(TreeViewRows(view).Find(QStringLiteral("A&C")).isValid());
        EXPECT_FALSE(TreeViewRows(view).Find(QStringLiteral("A&")).isValid());
    }
}

TEST_F(TreeViewRowsTest, ColoursComeAsBgrFromColoursAndBrushesAndUnsetReadsBlack)
{
    const QModelIndex wl = At(QStringLiteral("插座"));
    model.setData(wl.siblingAtColumn(1), QColor(0x12, 0x34, 0x56), Qt::ForegroundRole);
    model.itemFromIndex(wl.siblingAtColumn(1))->setBackground(QBrush(QColor(0xAB, 0xCD, 0xEF)));
    EXPECT_EQ(rows.Colour(wl, 1, Qt::ForegroundRole), 0x563412u);
    EXPECT_EQ(rows.Colour(wl, 1, Qt::BackgroundRole), 0xEFCDABu);
    EXPECT_EQ(rows.Colour(wl, 0, Qt::ForegroundRole), 0u);
    EXPECT_EQ(rows.ColumnCount(), 2);
    EXPECT_EQ(rows.ColumnTitle(1), QStringLiteral("颜色"));
    EXPECT_EQ(rows.Text(wl, 1), QStringLiteral("-"));
}

TEST_F(TreeViewRowsTest, AClickOnTheExpandButtonTogglesTheRowAtEveryLevel)
{
    for (const QString& name : { QStringLiteral("照明"), QStringLiteral("照明&WL1") }) {
        const QModelIndex row = At(name);
        for (bool open : { true, false }) {
            const std::optional<QPoint> button = rows.ExpandButton(row);
            ASSERT_TRUE(button) << name.toStdString();
            QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, *button);
            EXPECT_EQ(view.isExpanded(row), open) << name.toStdString();
            if (open && name == QStringLiteral("照明"))
                break; // stays open for its child
        }
    }
    EXPECT_FALSE(rows.ExpandButton(At(QStringLiteral("插座"))));
    view.setRootIsDecorated(false);
    EXPECT_FALSE(rows.ExpandButton(At(QStringLiteral("动力"))));
}

TEST_F(TreeViewRowsTest, SelectionCountsShownRowsWithAnySelectedCell)
{
    view.setSelectionBehavior(QAbstractItemView::SelectItems);
    view.expand(At(QStringLiteral("照明")));
    const QModelIndex wl2 = At(QStringLiteral("照明&WL2"));
    view.selectionModel()->setCurrentIndex(wl2.siblingAtColumn(1), QItemSelectionModel::ClearAndSelect);
    EXPECT_TRUE(rows.IsOnlySelectedCurrent(wl2));
    view.selectionModel()->select(At(QStringLiteral("动力")), QItemSelectionModel::Select);
    EXPECT_FALSE(rows.IsOnlySelectedCurrent(wl2));
    view.selectionModel()->select(At(QStringLiteral("动力&泵")), QItemSelectionModel::Select);
    QStringList names;
    for (const QModelIndex& row : rows.SelectedRows())
        names.append(TreeViewRows::FullName(row));
    EXPECT_EQ(names.join(u','), QStringLiteral("照明&WL2,动力"));
}

TEST_F(TreeViewRowsTest, TheOpenEditorIsTheViewportsChildWithTheKeyboard)
{
    EXPECT_EQ(rows.OpenEditor(), nullptr);
    const QModelIndex cell = At(QStringLiteral("插座")).siblingAtColumn(1);
    view.setIndexWidget(At(QStringLiteral("动力")).siblingAtColumn(1), new QPushButton(QStringLiteral("…")));
    view.setCurrentIndex(cell);
    view.edit(cell);
    QWidget* editor = rows.OpenEditor();
    ASSERT_NE(editor, nullptr);
    EXPECT_TRUE(qobject_cast<QLineEdit*>(editor) || editor->findChild<QLineEdit*>());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTRY_VERIFY(!rows.OpenEditor() || qobject_cast<QPushButton*>(rows.OpenEditor()));
}

TEST(TreeViewRowsActiveView, TheDialogsOwnVisibleViewNotOneOfAWindowInsideIt)
{
    EXPECT_EQ(TreeViewRows::ActiveView(), nullptr);
    QStandardItemModel model;
    QDialog dialog;
    QDialog inner(&dialog); // a window of its own, made first
    auto* innerView = new QTreeView(&inner);
    innerView->setModel(&model);
    inner.show();
    auto* layout = new QVBoxLayout(&dialog);
    auto* hidden = new QTreeView(&dialog);
    hidden->setModel(&model);
    hidden->hide();
    auto* own = new QTreeView(&dialog);
    own->setModel(&model);
    layout->addWidget(own);
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    QTRY_COMPARE(QApplication::activeModalWidget(), &dialog);
    EXPECT_EQ(TreeViewRows::ActiveView(), own);
}
