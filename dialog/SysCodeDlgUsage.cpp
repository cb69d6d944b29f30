// Which codes the product entities of the drawings use: the working drawing is
// scanned when the dialog opens, the other floors only when a look-up first misses.
#include "SysCodeDlg.h"

#include "CProj.h"
#include "IFloorMng.h"
#include "QvKsEntity.h"
#include "QvProInterface.h"
#include "ZcDbBlockTable.h"
#include "ZcDbBlockTableRecord.h"
#include "ZcDbBlockTableRecordIterator.h"
#include "ZcDbDatabase.h"

#include <QSet>

#include <memory>

namespace {
constexpr qsizetype kMaxSeenPaths = 1 << 14;
} // namespace

void SysCodeDlg::ScanModelSpace(ZcDbDatabase* database)
{
    if (!database)
        return;
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
    // A floor's pipes repeat a few codes many times: each path is lowered and
    // kept once, the repeats only looked up. Pipes read alike share the text
    // itself, so its address answers most look-ups.
    QSet<QString> seen;
    QSet<const QChar*> seenTexts;
    for (; !iterator->done(); iterator->step(true, false)) {
        ZcDbEntity* entity = nullptr;
        if (iterator->getEntity(entity, ZcDb::kForRead, true) != Zcad::eOk || !entity)
            continue;
        if (const QvKsEntity* product = QvKsEntity::cast(entity)) {
            const QString indexPath = product->GetSysCodeIndex();
            // Paths all different (a generated floor) would only fill the sets.
            if (!seenTexts.contains(indexPath.constData())) {
                if (seenTexts.size() < kMaxSeenPaths)
                    seenTexts.insert(indexPath.constData());
                if (!seen.contains(indexPath)) {
                    if (seen.size() < kMaxSeenPaths)
                        seen.insert(indexPath);
                    m_usedCodeIndexes.insert(indexPath.toLower());
                }
            }
        }
        entity->close();
    }
}

void SysCodeDlg::ScanOtherFloors()
{
    QVector<SQvKsFloorData> floors;
    CProj project;
    project.GetAllFloorData(floors);
    QvProInterface::ShowProgressDialog(true, QStringLiteral("检查非当前层是否引用该系统编号..."), nullptr);
    for (const SQvKsFloorData& floor : floors) {
        if (floor.strName == project.GetCurFloorName())
            continue;
        ZcDbDatabase side(false, false);
        const QString file = IFloorMng::GetDwgFullNameByFloorName(floor.strName);
        if (side.readDwgFile(file, _SH_DENYWR, false, nullptr) == Zcad::eOk)
            ScanModelSpace(&side);
    }
    QvProInterface::ShowProgressDialog(false);
}

bool SysCodeDlg::IsCodeIndexUsed(const QString& indexPath)
{
    if (m_usedCodeIndexes.count(indexPath) > 0)
        return true;
    if (m_bOtherFloorsScanned)
        return false;
    ScanOtherFloors();
    m_bOtherFloorsScanned = true;
    return m_usedCodeIndexes.count(indexPath) > 0;
}
