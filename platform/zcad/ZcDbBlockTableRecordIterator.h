#pragma once

// Steps through the entities of a block in order, erased ones included or not.
#include "ZcDbObjectId.h"
#include "ZcadTypes.h"

#include <QtGlobal>

#include <vector>

class ZcDbBlockTableRecord;
class ZcDbEntity;

class ZcDbBlockTableRecordIterator
{
public:
    ZcDbBlockTableRecordIterator(const ZcDbBlockTableRecord* record, bool atBeginning, bool skipDeleted);

    void start(bool atBeginning = true, bool skipDeleted = true);
    bool done() const;
    void step(bool forward = true, bool skipDeleted = true);
    Zcad::ErrorStatus getEntityId(ZcDbObjectId& entityId) const;
    Zcad::ErrorStatus getEntity(ZcDbEntity*& entity, ZcDb::OpenMode mode, bool openErased = false) const;
    Zcad::ErrorStatus seek(ZcDbObjectId id);

private:
    bool isErasedAt(qsizetype position) const;
    void skipErased(bool forward);

    const std::vector<quint32>& m_indexes;
    quint32 m_databaseSerial;
    qsizetype m_position = 0;
};
