// The grid's node operations driven as a user does: right clicks, the menus' entries
// clicked, rows dragged with the mouse; on a project made for the test, whose floor
// drawings say which codes are in use.
#include "CTreeListCtrl.h"
#include "CtrlId.h"
#include "MessageBoxRecorder.h"
#include "QvKsColorTool.h"
#include "Resource.h"
#include "ShownDialog.h"
#include "SysCodeDlg.h"
#include "TestProject.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QMenu>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <memory>

namespace {
class SysCodeDlgNodeOpsTest : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE(project.isOpen()); }

    std::unique_ptr<SysCodeDlg> open(const QString& spec = QStringLiteral("电气"))
    {
        auto dlg = OpenShownDialog(spec);
        GridOf(*dlg).Expand(GridOf(*dlg).GetRootItem(), TVE_EXPAND);
        for (HTREEITEM r = GridOf(*dlg).GetChildItem(GridOf(*dlg).GetRootItem()); r;
             r = GridOf(*dlg).GetNextSiblingItem(r))
            expandAll(GridOf(*dlg), r);
        QCoreApplication::processEvents();
        return dlg;
    }
    static void expandAll(CTreeListCtrl& grid, HTREEITEM row)
    {
        grid.Expand(row, TVE_EXPAND);
        for (HTREEITEM c = grid.GetChildItem(row); c; c = grid.GetNextSiblingItem(c))
            expandAll(grid, c);
    }
    // The rows shown, one ">" a level down.
    static QString dump(const CTreeListCtrl& grid)
    {
        QStringList rows;
        for (int r = 0; r < grid.GetItemCount(); ++r) {
            HTREEITEM row = grid.GetItemFromRow(r);
            rows << QString(grid.GetItemLevel(row) - 1, QLatin1Char('>')) + grid.GetItemText(row, 0);
        }
        return rows.join(QStringLiteral(" | "));
    }
    static HTREEITEM find(SysCodeDlg& dlg, const QString& fullName)
    {
        return dlg.FindRowByFullName(fullName);
    }
    static QPoint centre(SysCodeDlg& dlg, HTREEITEM row)
    {
        return GridOf(dlg).GetSubItemRect(row, 0).center();
    }

    // Right-clicks the row (null: the empty grid below the rows) and clicks the
    // entry `commandId` of the menu that opens; false when the entry is missing or
    // grayed (the menu is then closed with Escape).
    static bool menu(SysCodeDlg& dlg, HTREEITEM row, int commandId)
    {
        QWidget* viewport = GridOf(dlg).viewport();
        const QPoint at = row ? centre(dlg, row) : QPoint(viewport->width() / 2, viewport->height() - 4);
        bool chosen = false;
        int ticks = 300;
        QTimer timer;
        timer.setInterval(10);
        QObject::connect(&timer, &QTimer::timeout, [&] {
            auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            if (!popup) {
                if (--ticks <= 0)
                    timer.stop();
                return;
            }
            timer.stop();
            for (QAction* action : popup->actions()) {
                if (action->data().toInt() == commandId && action->isEnabled()) {
                    chosen = true;
                    QTest::mouseClick(popup, Qt::LeftButton, {}, popup->actionGeometry(action).center());
                    return;
                }
            }
            QTest::keyClick(popup, Qt::Key_Escape);
        });
        timer.start();
        QTest::mouseClick(dlg.windowHandle(), Qt::RightButton, {}, viewport->mapTo(&dlg, at));
        return chosen;
    }
    static void clickRow(SysCodeDlg& dlg, HTREEITEM row, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(dlg.windowHandle(), Qt::LeftButton, modifiers,
            GridOf(dlg).viewport()->mapTo(&dlg, centre(dlg, row)));
    }

    TestProject project;
};

TEST_F(SysCodeDlgNodeOpsTest, AnEmptySpecialtyStartsWithRowAThenNewRowsStepLettersAndColours)
{
    for (const auto& [spec, width] : { std::pair { "暖通", "1" }, std::pair { "弱电", "30" } }) {
        auto dlg = open(QString::fromUtf8(spec));
        CTreeListCtrl& grid = GridOf(*dlg);
        ASSERT_EQ(grid.GetItemCount(), 0);
        ASSERT_TRUE(menu(*dlg, nullptr, ID_MENU_INSERT));
        ASSERT_EQ(dump(grid), QStringLiteral("A"));
        HTREEITEM a = grid.GetItemFromRow(0);
        const int colour = 1;
        EXPECT_EQ(grid.GetItemBackColor(a, colour), 0xFFFF00u);
        const int pipe = dlg->IsElectrical() ? 3 : 0;
        EXPECT_EQ(grid.GetItemText(a, 2 + pipe), QStringLiteral("按字符")) << spec;
        EXPECT_EQ(grid.GetItemText(a, 4 + pipe), QString::fromUtf8(width)) << spec;
        EXPECT_EQ(grid.GetItemText(a, 5 + pipe), QStringLiteral("0")) << spec;
        EXPECT_TRUE(dlg->IsModified());

        ASSERT_TRUE(menu(*dlg, nullptr, ID_MENU_INSERT));
        ASSERT_TRUE(menu(*dlg, a, ID_MENU_ADD_SIBLING));
        EXPECT_EQ(dump(grid), QStringLiteral("A | C | B")) << spec;
        const COLORREF b = grid.GetItemBackColor(grid.GetItemFromRow(2), colour);
        const COLORREF c = grid.GetItemBackColor(grid.GetItemFromRow(1), colour);
        EXPECT_EQ(c, QvKsColorTool::RandomColor(b, 0x555555));
        EXPECT_EQ(grid.GetSelectedItem(), grid.GetItemFromRow(1));
        EXPECT_EQ(grid.GetSelectedCount(), 1);
    }
}

TEST_F(SysCodeDlgNodeOpsTest, ChildrenStopAtTheThirdLevel)
{
    MessageBoxRecorder boxes;
    auto dlg = open();
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("照明\\WL1\\一层")), ID_MENU_ADD_CHILD));
    EXPECT_EQ(boxes.texts(), QStringList { QStringLiteral("系统编号不允许超过3级!") });
    EXPECT_FALSE(dlg->IsModified());
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("照明\\WL1")), ID_MENU_ADD_CHILD));
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("动力")), ID_MENU_ADD_CHILD));
    EXPECT_EQ(dump(GridOf(*dlg)), QStringLiteral("照明 | >WL1 | >>一层 | >>WL1 | 动力 | >动力1 | 插座"));
    EXPECT_TRUE(dlg->IsModified());
    EXPECT_EQ(dlg->GetRowNodeIndex(find(*dlg, QStringLiteral("动力\\动力1"))), 0);
}

TEST_F(SysCodeDlgNodeOpsTest, PasteChecksTheDeepestLevelTheCopyWouldReach)
{
    MessageBoxRecorder boxes;
    auto dlg = open();
    ASSERT_FALSE(menu(*dlg, find(*dlg, QStringLiteral("动力")), ID_MENU_PASTE)); // nothing copied yet
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("照明\\WL1")), ID_MENU_COPY));
    EXPECT_FALSE(dlg->IsModified());
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("照明\\WL1\\一层")), ID_MENU_PASTE));
    EXPECT_EQ(boxes.texts(), QStringList { QStringLiteral("系统编号不允许超过3级!") });
    EXPECT_FALSE(dlg->IsModified());
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("照明\\WL1")), ID_MENU_PASTE));
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("插座")), ID_MENU_PASTE));
    expandAll(GridOf(*dlg), GridOf(*dlg).GetRootItem());
    EXPECT_EQ(dump(GridOf(*dlg)),
        QStringLiteral("照明 | >WL1 | >>一层 | >WL2 | >>一层 | 动力 | 插座 | WL1 | >一层"));
    EXPECT_TRUE(dlg->IsModified());
    // The pasted codes are new ones: attributes copied, no stored index.
    HTREEITEM pasted = find(*dlg, QStringLiteral("照明\\WL2"));
    EXPECT_EQ(GridOf(*dlg).GetItemText(pasted, 7), QStringLiteral("2.5"));
    EXPECT_EQ(dlg->GetRowNodeIndex(pasted), 0);
    EXPECT_EQ(dlg->GetRowNodeIndex(find(*dlg, QStringLiteral("WL1\\一层"))), 0);
    EXPECT_EQ(GridOf(*dlg).GetItemBackColor(find(*dlg, QStringLiteral("WL1\\一层")), 1), 255u);
}

TEST_F(SysCodeDlgNodeOpsTest, DeleteKeepsCodesUsedOnAnotherFloorAndSaysSoOnce)
{
    // 动力 (4) is drawn on 2F, 一层 (3) on B1; the working drawing is empty.
    ASSERT_TRUE(project.writeFloor("2F.dxf", { "3\\4" }));
    ASSERT_TRUE(project.writeFloor("B1.dxf", { "3\\3" }));
    MessageBoxRecorder boxes;
    auto dlg = open();
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("插座")), ID_MENU_ADD_SIBLING));
    clickRow(*dlg, find(*dlg, QStringLiteral("照明")));
    for (const char* name : { "动力", "插座", "插座1" })
        clickRow(*dlg, find(*dlg, QString::fromUtf8(name)), Qt::ControlModifier);
    GridOf(*dlg).ClearUndo(); // the rows as they are now count as saved
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("插座")), ID_MENU_DELETE));
    EXPECT_EQ(dump(GridOf(*dlg)), QStringLiteral("照明 | >WL1 | >>一层 | 动力"));
    EXPECT_EQ(boxes.texts(),
        (QStringList { QStringLiteral("删除所选行将连同其下级一起被删除，是否确定删除?"),
            QStringLiteral(
                "该节点或者该节点的子级系统编号已被使用,不能删除!\n照明\\WL1\\一层：B1 1\n动力：2F 1") }));
    EXPECT_EQ(boxes.boxes().at(0).type, 0x12034u);
    EXPECT_EQ(boxes.boxes().at(1).type, 0x12030u);
    EXPECT_TRUE(dlg->IsModified());
    EXPECT_TRUE(dlg->m_bOtherFloorsScanned);

    // Answering "否" keeps a row with children and asks nothing else.
    boxes.clear();
    boxes.queueAnswer(IDNO);
    GridOf(*dlg).ClearUndo(); // the rows as they are now count as saved
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("照明\\WL1")), ID_MENU_DELETE));
    EXPECT_EQ(boxes.texts().size(), 1);
    EXPECT_EQ(dump(GridOf(*dlg)), QStringLiteral("照明 | >WL1 | >>一层 | 动力"));
    EXPECT_FALSE(dlg->IsModified());
}

// A floor whose drawing cannot be read may use any code: deleting a saved code asks
// first, once for the command, naming the floor and why, with No the default. Rows
// never saved go without a question.
TEST_F(SysCodeDlgNodeOpsTest, DeleteAsksFirstWhenAFloorsDrawingCannotBeRead)
{
    ASSERT_TRUE(project.writeFloor("2F.dxf", { "3\\4", "3\\5", "3\\1" }));
    const QString twoF = project.folder() + QStringLiteral("/2F.dxf");
    QFile drawing(twoF);
    ASSERT_TRUE(drawing.open(QIODevice::ReadWrite));
    ASSERT_TRUE(drawing.resize(drawing.size() / 2)); // cut off: 动力, 插座 and 照明 unseen
    drawing.close();
    MessageBoxRecorder boxes;
    auto dlg = open();
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("插座")), ID_MENU_ADD_SIBLING)); // 插座1, never saved
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("插座1")), ID_MENU_DELETE));
    EXPECT_TRUE(boxes.texts().isEmpty()) << boxes.texts().join('|').toStdString();
    EXPECT_EQ(dump(GridOf(*dlg)), QStringLiteral("照明 | >WL1 | >>一层 | 动力 | 插座"));

    clickRow(*dlg, find(*dlg, QStringLiteral("动力")));
    clickRow(*dlg, find(*dlg, QStringLiteral("插座")), Qt::ControlModifier);
    GridOf(*dlg).ClearUndo(); // the rows as they are now count as saved
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("插座")), ID_MENU_DELETE));
    ASSERT_EQ(boxes.boxes().size(), 1); // one question for both rows
    const QString question = boxes.boxes()[0].text;
    EXPECT_TRUE(question.startsWith(QStringLiteral(
        "以下楼层的图纸缺失或无法读取，无法确认所选系统编号是否已被使用：\n2F：图纸无法读取：%1: ")
                                        .arg(twoF)))
        << question.toStdString();
    EXPECT_TRUE(question.endsWith(QStringLiteral("\n是否仍然删除?")));
    EXPECT_EQ(boxes.boxes()[0].type, 0x12134u);
    EXPECT_EQ(dump(GridOf(*dlg)), QStringLiteral("照明 | >WL1 | >>一层 | 动力 | 插座")); // No, the default
    EXPECT_FALSE(dlg->IsModified());

    boxes.clear();
    boxes.queueAnswer(IDYES);
    ASSERT_TRUE(menu(*dlg, find(*dlg, QStringLiteral("插座")), ID_MENU_DELETE));
    EXPECT_EQ(boxes.boxes().size(), 1);
    EXPECT_EQ(dump(GridOf(*dlg)), QStringLiteral("照明 | >WL1 | >>一层"));
    EXPECT_TRUE(dlg->IsModified());
}

TEST_F(SysCodeDlgNodeOpsTest, ADraggedRowShowsItsPictureAndTheDropTargetThenLandsAfterIt)
{
    auto dlg = open();
    QWindow* window = dlg->windowHandle();
    const auto at = [&](const QString& name) {
        return GridOf(*dlg).viewport()->mapTo(dlg.get(), centre(*dlg, find(*dlg, name)));
    };
    const QPoint from = at(QStringLiteral("插座"));
    const QPoint to = at(QStringLiteral("照明"));
    QTest::mousePress(window, Qt::LeftButton, {}, from);
    QTest::mouseMove(window, from - QPoint(0, QApplication::startDragDistance() + 2));
    QTest::mouseMove(window, to);
    EXPECT_EQ(GridOf(*dlg).GetDropHilightItem(), find(*dlg, QStringLiteral("照明")));
    EXPECT_TRUE(dlg->m_bDragging);
    bool pictureShown = false;
    for (QWidget* top : QApplication::topLevelWidgets()) {
        auto* label = qobject_cast<QLabel*>(top);
        pictureShown |= label && label->isVisible() && !label->pixmap().isNull();
    }
    EXPECT_TRUE(pictureShown);
    QTest::mouseRelease(window, Qt::LeftButton, {}, to);
    EXPECT_EQ(dump(GridOf(*dlg)), QStringLiteral("照明 | >WL1 | >>一层 | 插座 | 动力"));
    EXPECT_EQ(GridOf(*dlg).GetDropHilightItem(), nullptr);
    EXPECT_FALSE(dlg->m_bDragging);
    EXPECT_TRUE(dlg->IsModified());
    // The moved code keeps its stored index: it is the same code at a new place.
    EXPECT_EQ(dlg->GetRowNodeIndex(find(*dlg, QStringLiteral("插座"))), 5);
}
} // namespace
