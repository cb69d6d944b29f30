// Which codes the drawings use: the working drawing at opening, the other floors'
// drawings once, on the first look-up that misses.
#include "CtrlId.h"
#include "ModalDriver.h"
#include "QvKsEntity.h"
#include "QvProInterface.h"
#include "Resource.h"
#include "ShownDialog.h"
#include "SysCodeDlg.h"
#include "TestProject.h"
#include "ZcDbBlockTable.h"
#include "ZcDbBlockTableRecord.h"
#include "ZcDbBlockTableRecordIterator.h"
#include "ZcDbDatabase.h"
#include "ZcDbHostApplicationServices.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QTest>
#include <QTreeWidget>
#include <gtest/gtest.h>

#include <memory>

namespace {
class UsageScanTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(project.isOpen());
        ASSERT_TRUE(project.writeFloor("B1.dxf", { "3\\4" }));
        ASSERT_TRUE(project.writeFloor("2F.dxf", { "3\\5", "1\\1" }));
        // The current floor's file says more than the working drawing: it must never
        // be read, since the working drawing stands for it.
        ASSERT_TRUE(project.writeFloor("1F.dxf", { "3\\1", "3\\77" }));
        ASSERT_TRUE(project.writeFloor("working.dxf", { "3\\1", "3\\2" }));
        ASSERT_EQ(working.readDwgFile(QDir(project.folder()).filePath("working.dxf")), Zcad::eOk);
        zcdbHostApplicationServices()->setWorkingDatabase(&working);
    }
    void TearDown() override { zcdbHostApplicationServices()->setWorkingDatabase(nullptr); }

    std::unique_ptr<SysCodeDlg> open()
    {
        auto dlg = std::make_unique<SysCodeDlg>();
        dlg->m_strSpec = QStringLiteral("电气");
        dlg->OnInitDialog();
        return dlg;
    }
    bool rewriteFloor(const char* file, const QStringList& paths) { return project.writeFloor(file, paths); }

    TestProject project;
    ZcDbDatabase working { false, true };
};

TEST_F(UsageScanTest, OpeningScansOnlyTheWorkingDrawing)
{
    auto dlg = open();
    EXPECT_EQ(dlg->m_usedCodeIndexes, (std::set<QString> { "3\\1", "3\\2" }));
    EXPECT_TRUE(dlg->IsCodeIndexUsed("3\\2"));
    EXPECT_FALSE(dlg->m_bOtherFloorsScanned);
}

TEST_F(UsageScanTest, OtherFloorsAreReadOnceOnTheFirstMiss)
{
    auto dlg = open();
    EXPECT_TRUE(dlg->IsCodeIndexUsed("3\\4")); // only on B1
    EXPECT_TRUE(dlg->m_bOtherFloorsScanned);
    EXPECT_FALSE(QvProInterface::IsProgressDialogShown());
    EXPECT_TRUE(dlg->IsCodeIndexUsed("1\\1")); // other specialties' paths are kept too
    EXPECT_FALSE(dlg->IsCodeIndexUsed("3\\77")); // the current floor's file is skipped

    // A code that appears on a floor after the scan is not seen: nothing is read again.
    ASSERT_TRUE(rewriteFloor("B1.dxf", { "3\\4", "3\\9" }));
    EXPECT_FALSE(dlg->IsCodeIndexUsed("3\\9"));
    EXPECT_TRUE(open()->IsCodeIndexUsed("3\\9"));
}

// The dialog shows before the working drawing is read; the first question about a
// code's use reads it, and the answers are those of a scan made at opening.
TEST_F(UsageScanTest, TheWorkingDrawingIsReadOnFirstNeedWithTheSameAnswers)
{
    auto dlg = open();
    EXPECT_TRUE(dlg->m_usedCodeIndexes.IsDeferred());
    dlg->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(dlg.get()));
    QApplication::processEvents();
    // The answers are about the drawing that was working when the dialog opened.
    zcdbHostApplicationServices()->setWorkingDatabase(nullptr);
    EXPECT_TRUE(dlg->IsCodeIndexUsed("3\\2")); // found in the working drawing
    EXPECT_FALSE(dlg->m_bOtherFloorsScanned);
    EXPECT_FALSE(dlg->m_usedCodeIndexes.IsDeferred());
    EXPECT_EQ(dlg->m_usedCodeIndexes, (std::set<QString> { "3\\1", "3\\2" }));
    EXPECT_EQ(dlg->DescribeUsage(dlg->FindRowByFullName(QStringLiteral("照明"))),
        (QStringList { "照明：1F 1", "照明\\WL1：1F 1" }));
}

// Reading the other floors first reads the working drawing: the current floor
// leads in the floors a code is used on.
TEST_F(UsageScanTest, OtherFloorsReadBeforeAnyLookUpFollowTheWorkingDrawing)
{
    ASSERT_TRUE(rewriteFloor("B1.dxf", { "3\\4", "3\\1" }));
    auto dlg = open();
    dlg->ScanOtherFloors();
    EXPECT_EQ(dlg->DescribeUsage(dlg->FindRowByFullName(QStringLiteral("照明"))),
        (QStringList { "照明：1F 1，B1 1", "照明\\WL1：1F 1" }));
}

// A floor whose drawing is missing or cannot be read is not taken for a floor that
// uses nothing: it is marked, with the reason, and read floors still count.
TEST_F(UsageScanTest, UnreadableFloorsAreMarkedWithTheReason)
{
    const QString b1 = QDir(project.folder()).filePath("B1.dxf");
    QFile broken(b1);
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
    broken.write("0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n"); // cut off
    broken.close();
    const QString twoF = QDir(project.folder()).filePath("2F.dxf");
    QFile::remove(twoF);
    auto dlg = open();
    EXPECT_EQ(dlg->m_usedCodeIndexes.StateOf("B1"), FloorScanState::NotRead);
    EXPECT_EQ(dlg->m_usedCodeIndexes.StateOf("1F"), FloorScanState::Read); // the working drawing
    EXPECT_FALSE(dlg->IsCodeIndexUsed("3\\4"));
    EXPECT_EQ(dlg->m_usedCodeIndexes.StateOf("B1"), FloorScanState::Unreadable);
    EXPECT_EQ(dlg->m_usedCodeIndexes.StateOf("2F"), FloorScanState::Unreadable);
    const QStringList lines = dlg->DescribeUnreadableFloors();
    ASSERT_EQ(lines.size(), 2);
    EXPECT_TRUE(lines[0].startsWith(QStringLiteral("B1：图纸无法读取：%1: ").arg(b1)))
        << lines[0].toStdString();
    EXPECT_EQ(lines[1], QStringLiteral("2F：图纸文件不存在：%1").arg(twoF));

    // A floor with a readable drawing is read as ever.
    ASSERT_TRUE(rewriteFloor("2F.dxf", { "3\\5" }));
    auto again = open();
    EXPECT_TRUE(again->IsCodeIndexUsed("3\\5"));
    EXPECT_EQ(again->DescribeUnreadableFloors().size(), 1);
}

// Without a working drawing nothing stands for the current floor: its own file is
// read with the others.
TEST_F(UsageScanTest, WithoutAWorkingDrawingTheCurrentFloorIsReadFromItsFile)
{
    zcdbHostApplicationServices()->setWorkingDatabase(nullptr);
    auto dlg = open();
    EXPECT_EQ(dlg->m_usedCodeIndexes.StateOf("1F"), FloorScanState::NotRead);
    EXPECT_TRUE(dlg->IsCodeIndexUsed("3\\77")); // only in 1F.dxf
    EXPECT_EQ(dlg->m_usedCodeIndexes.StateOf("1F"), FloorScanState::Read);
    EXPECT_TRUE(dlg->DescribeUnreadableFloors().isEmpty());
}

TEST_F(UsageScanTest, ErasedEntitiesStillCount)
{
    ZcDbBlockTable* table = nullptr;
    ASSERT_EQ(working.getBlockTable(table, ZcDb::kForRead), Zcad::eOk);
    ZcDbBlockTableRecord* space = nullptr;
    ASSERT_EQ(table->getAt(ZCDB_MODEL_SPACE, space, ZcDb::kForRead), Zcad::eOk);
    table->close();
    for (const ZcDbObjectId& id : space->entityIds()) {
        QvKsEntity* entity = nullptr;
        ASSERT_EQ(zcdbOpenObject(entity, id, ZcDb::kForWrite), Zcad::eOk);
        entity->erase();
        entity->close();
    }
    space->close();
    auto dlg = open();
    EXPECT_EQ(dlg->m_usedCodeIndexes.size(), 2u);
    EXPECT_TRUE(dlg->IsCodeIndexUsed("3\\1"));
}

// "使用情况": counts of the current floor first; the other floors on request, once.
TEST_F(UsageScanTest, TheUsageViewCountsEachCodePerFloorAndScansTheOthersOnRequest)
{
    ASSERT_TRUE(rewriteFloor("B1.dxf", { "3\\4", "3\\4", "3\\1" }));
    auto dlg = open();
    dlg->show();
    dlg->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dlg.get())); // a shortcut answers in the active window
    const auto read = [](QDialog* view) {
        QStringList rows { qobject_cast<QLabel*>(GetDlgItem(view, IDC_USAGE_SUMMARY))->text() };
        auto* list = qobject_cast<QTreeWidget*>(GetDlgItem(view, IDC_USAGE_LIST));
        for (int i = 0; i < list->topLevelItemCount(); ++i) {
            const QTreeWidgetItem* item = list->topLevelItem(i);
            rows << item->text(0).trimmed() + QLatin1Char('|') + item->text(1) + QLatin1Char('|')
                    + item->text(2);
        }
        return rows;
    };
    GridOf(*dlg).SelectItem(dlg->FindRowByFullName(QStringLiteral("动力")));
    QStringList before;
    QStringList after;
    QString current;
    ModalDriver driver([&](QDialog* view) {
        before = read(view);
        const QTreeWidgetItem* item
            = qobject_cast<QTreeWidget*>(GetDlgItem(view, IDC_USAGE_LIST))->currentItem();
        current = item ? item->text(0).trimmed() : QString();
        QTest::mouseClick(GetDlgItem(view, IDC_USAGE_SCAN_ALL), Qt::LeftButton);
        after = read(view);
        EXPECT_FALSE(GetDlgItem(view, IDC_USAGE_SCAN_ALL)->isEnabled());
        view->reject();
    });
    QTest::keyClick(dlg.get(), Qt::Key_U, Qt::ControlModifier);
    ASSERT_TRUE(driver.acted());
    EXPECT_EQ(before,
        (QStringList { "已使用 2 个，未使用 3 个，仅扫描当前楼层", "照明|1|1F 1", "WL1|1|1F 1",
            "一层|0|未使用", "动力|0|未使用", "插座|0|未使用" }));
    EXPECT_EQ(after,
        (QStringList { "已使用 4 个，未使用 1 个，已扫描全部楼层", "照明|2|1F 1，B1 1", "WL1|1|1F 1",
            "一层|0|未使用", "动力|2|B1 2", "插座|1|2F 1" }));
    EXPECT_TRUE(dlg->m_bOtherFloorsScanned);
    EXPECT_EQ(current, QStringLiteral("动力")); // the grid's current code
}

} // namespace

namespace {
// "使用情况" marks a floor whose drawing cannot be read, and a code no readable floor
// uses says which floors it may still be used on.
TEST_F(UsageScanTest, TheUsageViewMarksFloorsThatCannotBeRead)
{
    const QString b1 = QDir(project.folder()).filePath("B1.dxf");
    QFile::remove(b1);
    ASSERT_TRUE(QDir().mkdir(b1)); // a folder where the drawing should be
    auto dlg = open();
    dlg->show();
    dlg->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dlg.get()));
    QString summary;
    QString floors;
    bool floorsShownBefore = true;
    QStringList floorsColumn;
    ModalDriver driver([&](QDialog* view) {
        auto* floorsLabel = qobject_cast<QLabel*>(GetDlgItem(view, IDC_USAGE_FLOORS));
        floorsShownBefore = floorsLabel->isVisible();
        QTest::mouseClick(GetDlgItem(view, IDC_USAGE_SCAN_ALL), Qt::LeftButton);
        summary = qobject_cast<QLabel*>(GetDlgItem(view, IDC_USAGE_SUMMARY))->text();
        floors = floorsLabel->isVisible() ? floorsLabel->text() : QString();
        auto* list = qobject_cast<QTreeWidget*>(GetDlgItem(view, IDC_USAGE_LIST));
        for (int i = 0; i < list->topLevelItemCount(); ++i)
            floorsColumn << list->topLevelItem(i)->text(2);
        view->reject();
    });
    QTest::keyClick(dlg.get(), Qt::Key_U, Qt::ControlModifier);
    ASSERT_TRUE(driver.acted());
    EXPECT_FALSE(floorsShownBefore); // nothing was tried yet
    EXPECT_EQ(summary, QStringLiteral("已使用 3 个，未使用 2 个，已扫描全部楼层"));
    EXPECT_EQ(floors, QStringLiteral("B1 无法读取：图纸无法读取：%1: a folder, not a file").arg(b1));
    EXPECT_EQ(floorsColumn,
        (QStringList { "1F 1", "1F 1", "未使用（B1 无法读取）", "未使用（B1 无法读取）", "2F 1" }));
}
} // namespace
