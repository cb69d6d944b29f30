#include "ZcDbBlockTable.h"

#include "ZcDbBlockTableRecord.h"
#include "ZcDbDatabase.h"

ZCRX_DEFINE_MEMBERS(ZcDbBlockTable, ZcDbObject)

Zcad::ErrorStatus ZcDbBlockTable::getAt(
    const ZTCHAR* name, ZcDbBlockTableRecord*& record, ZcDb::OpenMode mode, bool openErased) const
{
    record = nullptr;
    if (!name)
        return Zcad::eInvalidInput;
    return getAt(QString::fromUtf16(name), record, mode, openErased);
}

Zcad::ErrorStatus ZcDbBlockTable::getAt(
    const QString& name, ZcDbBlockTableRecord*& record, ZcDb::OpenMode mode, bool openErased) const
{
    record = nullptr;
    ZcDbObjectId id;
    const Zcad::ErrorStatus status = getAt(name, id, openErased);
    if (status != Zcad::eOk)
        return status;
    return zcdbOpenObject(record, id, mode, openErased);
}

Zcad::ErrorStatus ZcDbBlockTable::getAt(const ZTCHAR* name, ZcDbObjectId& recordId, bool getErased) const
{
    recordId = ZcDbObjectId::kNull;
    if (!name)
        return Zcad::eInvalidInput;
    return getAt(QString::fromUtf16(name), recordId, getErased);
}

Zcad::ErrorStatus ZcDbBlockTable::getAt(const QString& name, ZcDbObjectId& recordId, bool getErased) const
{
    recordId = ZcDbObjectId::kNull;
    const auto it = m_byName.constFind(name.toCaseFolded());
    if (it == m_byName.constEnd())
        return Zcad::eKeyNotFound;
    const ZcDbObjectId id(objectId().databaseSerial(), it.value());
    if (!getErased && id.isErased())
        return Zcad::eWasErased;
    recordId = id;
    return Zcad::eOk;
}

bool ZcDbBlockTable::has(const QString& name) const
{
    return m_byName.contains(name.toCaseFolded());
}

Zcad::ErrorStatus ZcDbBlockTable::add(ZcDbObjectId& recordId, ZcDbBlockTableRecord* record)
{
    recordId = ZcDbObjectId::kNull;
    if (!record)
        return Zcad::eNullObjectPointer;
    if (record->name().isEmpty())
        return Zcad::eInvalidInput;
    if (record->isDatabaseResident())
        return Zcad::eAlreadyInDb;
    if (!isWriteEnabled())
        return Zcad::eNotOpenForWrite;
    if (has(record->name()))
        return Zcad::eDuplicateKey;
    recordId = addOwned(std::unique_ptr<ZcDbBlockTableRecord>(record));
    return recordId.isNull() ? Zcad::eNotInDatabase : Zcad::eOk;
}

ZcDbObjectId ZcDbBlockTable::addOwned(std::unique_ptr<ZcDbBlockTableRecord> record)
{
    ZcDbDatabase* db = database();
    if (!db)
        return ZcDbObjectId::kNull;
    const QString key = record->name().toCaseFolded();
    const ZcDbObjectId id = db->addObject(std::move(record), objectId());
    m_byName.insert(key, id.index());
    m_records.push_back(id.index());
    return id;
}

std::vector<ZcDbObjectId> ZcDbBlockTable::recordIds() const
{
    std::vector<ZcDbObjectId> ids;
    for (quint32 index : m_records)
        ids.emplace_back(objectId().databaseSerial(), index);
    return ids;
}
