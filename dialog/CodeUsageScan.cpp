#include "CodeUsageScan.h"

#include "CProj.h"
#include "CodePathCounter.h"
#include "CodeUsageLedger.h"
#include "IFloorMng.h"
#include "QvKsDataMng.h"
#include "QvKsEntity.h"
#include "QvProInterface.h"
#include "UsedCodeIndexes.h"
#include "ZcDbBlockTable.h"
#include "ZcDbBlockTableRecord.h"
#include "ZcDbBlockTableRecordIterator.h"
#include "ZcDbDatabase.h"

#include <QDir>
#include <QHash>

#include <memory>

CodeUsageScan::CodeUsageScan(UsedCodeIndexes& used, CodeUsageLedger& ledger)
    : m_used(used)
    , m_ledger(ledger)
{ }

void CodeUsageScan::ScanDrawing(ZcDbDatabase* database, const QString& floor)
{
    if (!database)
        return;
    m_ledger.NoteScanned(floor);
    m_used.MarkRead(floor);
    ZcDbBlockTable* table = nullptr;
    if (database->getBlockTable(table, ZcDb::kForRead) != Zcad::eOk || !table)
        return;
    ZcDbBlockTableRecord* modelSpace = nullptr;
    const Zcad::ErrorStatus status = table->getAt(ZCDB_MODEL_SPACE, modelSpace, ZcDb::kForRead);
    table->close();
    if (status != Zcad::eOk || !modelSpace)
        return;
    modelSpace->close();
    ZcDbBlockTableRecordIterator* iterator = nullptr;
    if (modelSpace->newIterator(iterator, true, false) != Zcad::eOk || !iterator)
        return;
    const std::unique_ptr<ZcDbBlockTableRecordIterator> owner(iterator);
    CodePathCounter counter;
    for (; !iterator->done(); iterator->step(true, false)) {
        ZcDbEntity* entity = nullptr;
        if (iterator->getEntity(entity, ZcDb::kForRead, true) != Zcad::eOk || !entity)
            continue;
        if (const QvKsEntity* product = QvKsEntity::cast(entity))
            counter.Add(product->GetSysCodeIndex());
        entity->close();
    }
    const QHash<QString, int>& usage = m_ledger.Add(floor, counter);
    m_used.reserve(m_used.size() + std::size_t(usage.size()));
    for (auto it = usage.keyBegin(); it != usage.keyEnd(); ++it)
        m_used.insert(*it);
}

void CodeUsageScan::ScanFloorFile(const QString& floor)
{
    const QString file = IFloorMng::GetDwgFullNameByFloorName(floor);
    if (file.isEmpty()) {
        m_used.MarkUnreadable(floor, QStringLiteral("楼层没有图纸文件"));
        return;
    }
    ZcDbDatabase side(false, false);
    const Zcad::ErrorStatus status = side.readDwgFile(file, _SH_DENYWR, false, nullptr);
    if (status == Zcad::eOk)
        ScanDrawing(&side, floor);
    else if (status == Zcad::eFileNotFound)
        m_used.MarkUnreadable(
            floor, QStringLiteral("图纸文件不存在：%1").arg(QDir::toNativeSeparators(file)));
    else
        m_used.MarkUnreadable(floor, QStringLiteral("图纸无法读取：%1").arg(side.readError()));
}

// The other floors, and the current one too when no working drawing stood for it.
void CodeUsageScan::ScanUnreadFloors()
{
    // The current floor comes first among the scanned floors.
    m_used.Settle();
    QVector<SQvKsFloorData> floors;
    const bool listed = CProj().GetAllFloorData(floors);
    QvProInterface::ShowProgressDialog(true, QStringLiteral("检查非当前层是否引用该系统编号..."), nullptr);
    if (!listed)
        m_used.MarkUnreadable(QStringLiteral("楼层列表"), QvKsDataMng::LastError());
    for (const SQvKsFloorData& floor : floors) {
        if (m_used.StateOf(floor.strName) == FloorScanState::NotRead)
            ScanFloorFile(floor.strName);
    }
    QvProInterface::ShowProgressDialog(false);
}
