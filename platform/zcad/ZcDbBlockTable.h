#pragma once

// The blocks of a drawing by name (names compare without regard to case).
#include "ZcDbObject.h"

#include <QHash>
#include <QString>

#include <vector>

class ZcDbBlockTableRecord;

class ZcDbBlockTable : public ZcDbObject
{
    ZCRX_DECLARE_MEMBERS(ZcDbBlockTable)
public:
    Zcad::ErrorStatus getAt(const ZTCHAR* name, ZcDbBlockTableRecord*& record, ZcDb::OpenMode mode,
        bool openErased = false) const;
    Zcad::ErrorStatus getAt(const QString& name, ZcDbBlockTableRecord*& record, ZcDb::OpenMode mode,
        bool openErased = false) const;
    Zcad::ErrorStatus getAt(const ZTCHAR* name, ZcDbObjectId& recordId, bool getErased = false) const;
    Zcad::ErrorStatus getAt(const QString& name, ZcDbObjectId& recordId, bool getErased = false) const;
    bool has(const QString& name) const;

    // Adds `record` (a new one, with a name not used yet) to the database; the table
    // must be open for write.
    Zcad::ErrorStatus add(ZcDbObjectId& recordId, ZcDbBlockTableRecord* record);
    std::vector<ZcDbObjectId> recordIds() const;

    // Used by the database while it builds a drawing: no open check.
    ZcDbObjectId addOwned(std::unique_ptr<ZcDbBlockTableRecord> record);

private:
    QHash<QString, quint32> m_byName;
    std::vector<quint32> m_records;
};
