#include "ZcDbObjectId.h"

#include "ZcDbDatabase.h"
#include "ZcDbObject.h"

ZcDbDatabase* ZcDbObjectId::database() const
{
    return m_database ? ZcDbDatabase::fromSerial(m_database) : nullptr;
}

ZcDbObject* ZcDbObjectId::object() const
{
    const ZcDbDatabase* db = database();
    return db ? db->objectAt(m_index) : nullptr;
}

bool ZcDbObjectId::isErased() const
{
    const ZcDbObject* obj = object();
    return obj && obj->isErased();
}

Zcad::ErrorStatus zcdbGetObjectId(ZcDbObjectId& id, const zds_name name)
{
    id = ZcDbObjectId::kNull;
    if (name[0] <= 0 || name[0] > 0xFFFFFFFFLL || name[1] <= 0 || name[1] > 0xFFFFFFFFLL)
        return Zcad::eInvalidInput;
    id = ZcDbObjectId(quint32(name[0]), quint32(name[1]));
    return Zcad::eOk;
}

Zcad::ErrorStatus zcdbGetZdsName(zds_name name, ZcDbObjectId id)
{
    name[0] = id.databaseSerial();
    name[1] = id.index();
    return id.isNull() ? Zcad::eNullObjectId : Zcad::eOk;
}
