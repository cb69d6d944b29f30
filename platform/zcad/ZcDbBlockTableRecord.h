#pragma once

// A block: model space, paper space or a block definition, holding entities in
// the order they were added.
#include "ZcDbEntity.h"
#include "ZcDbObject.h"

#include <vector>

class ZcDbBlockTableRecordIterator;

class ZcDbBlockTableRecord : public ZcDbObject
{
    ZCRX_DECLARE_MEMBERS(ZcDbBlockTableRecord)
public:
    explicit ZcDbBlockTableRecord(const QString& name = QString())
        : m_name(name)
    { }

    Zcad::ErrorStatus getName(QString& name) const;
    QString name() const { return m_name; }
    Zcad::ErrorStatus setName(const QString& name);
    ZcGePoint3d origin() const { return m_origin; }
    void setOrigin(const ZcGePoint3d& origin) { m_origin = origin; }
    bool isLayout() const;
    bool hasAttributeDefinitions() const;

    // The record keeps its place in the database while the iterator lives.
    Zcad::ErrorStatus newIterator(
        ZcDbBlockTableRecordIterator*& iterator, bool atBeginning = true, bool skipDeleted = true) const;

    // Adds `entity` to the database and to this block (open for write); the database
    // then owns it.
    Zcad::ErrorStatus appendZcDbEntity(ZcDbObjectId& entityId, ZcDbEntity* entity);
    Zcad::ErrorStatus appendZcDbEntity(ZcDbEntity* entity);

    std::vector<ZcDbObjectId> entityIds() const;
    const std::vector<quint32>& entityIndexes() const { return m_entities; }
    // Used by the database while it builds a drawing: no open check.
    ZcDbObjectId appendOwned(std::unique_ptr<ZcDbEntity> entity);

private:
    QString m_name;
    ZcGePoint3d m_origin;
    std::vector<quint32> m_entities;
};
