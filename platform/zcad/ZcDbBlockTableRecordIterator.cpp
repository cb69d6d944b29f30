#include "ZcDbBlockTableRecordIterator.h"

#include "ZcDbBlockTableRecord.h"
#include "ZcDbDatabase.h"
#include "ZcDbEntity.h"

ZcDbBlockTableRecordIterator::ZcDbBlockTableRecordIterator(
    const ZcDbBlockTableRecord* record, bool atBeginning, bool skipDeleted)
    : m_indexes(record->entityIndexes())
    , m_databaseSerial(record->objectId().databaseSerial())
{
    start(atBeginning, skipDeleted);
}

void ZcDbBlockTableRecordIterator::start(bool atBeginning, bool skipDeleted)
{
    m_position = atBeginning ? 0 : qsizetype(m_indexes.size()) - 1;
    if (skipDeleted)
        skipErased(atBeginning);
}

bool ZcDbBlockTableRecordIterator::done() const
{
    return m_position < 0 || m_position >= qsizetype(m_indexes.size());
}

bool ZcDbBlockTableRecordIterator::isErasedAt(qsizetype position) const
{
    return ZcDbObjectId(m_databaseSerial, m_indexes[size_t(position)]).isErased();
}

void ZcDbBlockTableRecordIterator::skipErased(bool forward)
{
    while (!done() && isErasedAt(m_position))
        m_position += forward ? 1 : -1;
}

void ZcDbBlockTableRecordIterator::step(bool forward, bool skipDeleted)
{
    if (done())
        return;
    m_position += forward ? 1 : -1;
    if (skipDeleted)
        skipErased(forward);
}

Zcad::ErrorStatus ZcDbBlockTableRecordIterator::getEntityId(ZcDbObjectId& entityId) const
{
    if (done()) {
        entityId = ZcDbObjectId::kNull;
        return Zcad::eInvalidIndex;
    }
    entityId = ZcDbObjectId(m_databaseSerial, m_indexes[size_t(m_position)]);
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbBlockTableRecordIterator::getEntity(
    ZcDbEntity*& entity, ZcDb::OpenMode mode, bool openErased) const
{
    entity = nullptr;
    ZcDbObjectId id;
    const Zcad::ErrorStatus status = getEntityId(id);
    if (status != Zcad::eOk)
        return status;
    return zcdbOpenObject(entity, id, mode, openErased);
}

Zcad::ErrorStatus ZcDbBlockTableRecordIterator::seek(ZcDbObjectId id)
{
    for (qsizetype i = 0; i < qsizetype(m_indexes.size()); ++i)
        if (id.databaseSerial() == m_databaseSerial && m_indexes[size_t(i)] == id.index()) {
            m_position = i;
            return Zcad::eOk;
        }
    return Zcad::eKeyNotFound;
}
