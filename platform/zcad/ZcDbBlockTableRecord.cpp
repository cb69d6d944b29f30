#include "ZcDbBlockTableRecord.h"

#include "ZcDbAttributeDefinition.h"
#include "ZcDbBlockTableRecordIterator.h"
#include "ZcDbDatabase.h"

ZCRX_DEFINE_MEMBERS(ZcDbBlockTableRecord, ZcDbObject)

Zcad::ErrorStatus ZcDbBlockTableRecord::getName(QString& name) const
{
    name = m_name;
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbBlockTableRecord::setName(const QString& name)
{
    if (name.isEmpty())
        return Zcad::eInvalidInput;
    m_name = name;
    return Zcad::eOk;
}

bool ZcDbBlockTableRecord::isLayout() const
{
    return m_name.compare(QString::fromUtf16(ZCDB_MODEL_SPACE), Qt::CaseInsensitive) == 0
        || m_name.startsWith(QString::fromUtf16(ZCDB_PAPER_SPACE), Qt::CaseInsensitive);
}

bool ZcDbBlockTableRecord::hasAttributeDefinitions() const
{
    for (const ZcDbObjectId& id : entityIds())
        if (ZcDbAttributeDefinition::cast(id.object()))
            return true;
    return false;
}

Zcad::ErrorStatus ZcDbBlockTableRecord::newIterator(
    ZcDbBlockTableRecordIterator*& iterator, bool atBeginning, bool skipDeleted) const
{
    iterator = new ZcDbBlockTableRecordIterator(this, atBeginning, skipDeleted);
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbBlockTableRecord::appendZcDbEntity(ZcDbObjectId& entityId, ZcDbEntity* entity)
{
    entityId = ZcDbObjectId::kNull;
    if (!entity)
        return Zcad::eNullObjectPointer;
    if (entity->isDatabaseResident())
        return Zcad::eAlreadyInDb;
    if (!isDatabaseResident())
        return Zcad::eNotInDatabase;
    if (!isWriteEnabled())
        return Zcad::eNotOpenForWrite;
    entityId = appendOwned(std::unique_ptr<ZcDbEntity>(entity));
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbBlockTableRecord::appendZcDbEntity(ZcDbEntity* entity)
{
    ZcDbObjectId ignored;
    return appendZcDbEntity(ignored, entity);
}

ZcDbObjectId ZcDbBlockTableRecord::appendOwned(std::unique_ptr<ZcDbEntity> entity)
{
    ZcDbDatabase* db = database();
    if (!db)
        return ZcDbObjectId::kNull;
    const ZcDbObjectId id = db->addObject(std::move(entity), objectId());
    m_entities.push_back(id.index());
    return id;
}

std::vector<ZcDbObjectId> ZcDbBlockTableRecord::entityIds() const
{
    std::vector<ZcDbObjectId> ids;
    ids.reserve(m_entities.size());
    const quint32 serial = objectId().databaseSerial();
    for (quint32 index : m_entities)
        ids.emplace_back(serial, index);
    return ids;
}
