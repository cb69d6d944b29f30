// Which codes the drawings use: the working drawing at opening, the other floors'
// drawings once, on the first look-up that misses.
#include "QvKsEntity.h"
#include "QvProInterface.h"
#include "SysCodeDlg.h"
#include "TestProject.h"
#include "ZcDbBlockTable.h"
#include "ZcDbBlockTableRecord.h"
#include "ZcDbBlockTableRecordIterator.h"
#include "ZcDbDatabase.h"
#include "ZcDbHostApplicationServices.h"

#include <QDir>
#include <QFile>
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

TEST_F(UsageScanTest, UnreadableFloorsAreSkipped)
{
    QFile broken(QDir(project.folder()).filePath("B1.dxf"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
    broken.write("0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n"); // cut off
    broken.close();
    QFile::remove(QDir(project.folder()).filePath("2F.dxf"));
    ASSERT_TRUE(rewriteFloor("2F.dxf", { "3\\5" }));
    auto dlg = open();
    EXPECT_FALSE(dlg->IsCodeIndexUsed("3\\4"));
    EXPECT_TRUE(dlg->IsCodeIndexUsed("3\\5"));
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

} // namespace
