#include "ZcDbBlockReference.h"

#include "ZcDbAttribute.h"
#include "ZcDbBlockTableRecord.h"
#include "ZcDbBlockTableRecordIterator.h"
#include "ZcDbDatabase.h"

ZCRX_DEFINE_MEMBERS(ZcDbBlockReference, ZcDbEntity)

ZcDbBlockReference::ZcDbBlockReference(const ZcDbBlockReference& other)
    : ZcDbEntity(other)
    , m_position(other.m_position)
    , m_scale(other.m_scale)
    , m_rotation(other.m_rotation)
    , m_normal(other.m_normal)
    , m_columnSpacing(other.m_columnSpacing)
    , m_rowSpacing(other.m_rowSpacing)
    , m_columns(other.m_columns)
    , m_rows(other.m_rows)
    , m_block(other.m_block)
{
    // A copy owns copies of every attribute, whether the original's were in a
    // database or its own.
    for (const ZcDbAttribute* attribute : other.attributes())
        m_ownedAttributes.push_back(static_cast<ZcDbAttribute*>(attribute->clone()));
}

ZcDbBlockReference::~ZcDbBlockReference()
{
    for (ZcDbAttribute* attribute : m_ownedAttributes)
        delete attribute;
}

ZcDbEntity* ZcDbBlockReference::clone() const
{
    return new ZcDbBlockReference(*this);
}

ZcGeMatrix3d ZcDbBlockReference::blockTransform() const
{
    ZcGePoint3d base;
    if (const auto* record = ZcDbBlockTableRecord::cast(m_block.object()))
        base = record->origin();
    return ZcGeMatrix3d::translation(m_position - ZcGePoint3d::kOrigin) * ZcGeMatrix3d::rotationZ(m_rotation)
        * ZcGeMatrix3d::scaling(m_scale.x, m_scale.y, m_scale.z)
        * ZcGeMatrix3d::translation(ZcGePoint3d::kOrigin - base);
}

Zcad::ErrorStatus ZcDbBlockReference::appendAttribute(ZcDbObjectId& attributeId, ZcDbAttribute* attribute)
{
    attributeId = ZcDbObjectId::kNull;
    if (!attribute)
        return Zcad::eNullObjectPointer;
    ZcDbDatabase* db = database();
    if (!db) {
        m_ownedAttributes.push_back(attribute);
        return Zcad::eOk;
    }
    if (!isWriteEnabled())
        return Zcad::eNotOpenForWrite;
    attributeId = db->addObject(std::unique_ptr<ZcDbObject>(attribute), objectId());
    m_attributeIndexes.push_back(attributeId.index());
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbBlockReference::appendAttribute(ZcDbAttribute* attribute)
{
    ZcDbObjectId ignored;
    return appendAttribute(ignored, attribute);
}

std::vector<ZcDbObjectId> ZcDbBlockReference::attributeIds() const
{
    std::vector<ZcDbObjectId> ids;
    const quint32 serial = objectId().databaseSerial();
    for (quint32 index : m_attributeIndexes)
        ids.emplace_back(serial, index);
    return ids;
}

ZcDbObjectIterator* ZcDbBlockReference::attributeIterator() const
{
    return new ZcDbObjectIterator(attributeIds());
}

std::vector<const ZcDbAttribute*> ZcDbBlockReference::attributes() const
{
    std::vector<const ZcDbAttribute*> list;
    for (const ZcDbObjectId& id : attributeIds())
        if (const auto* attribute = ZcDbAttribute::cast(id.object()))
            list.push_back(attribute);
    for (const ZcDbAttribute* attribute : m_ownedAttributes)
        list.push_back(attribute);
    return list;
}

Zcad::ErrorStatus ZcDbBlockReference::explode(ZcDbVoidPtrArray& entitySet) const
{
    const auto* record = ZcDbBlockTableRecord::cast(m_block.object());
    if (record) {
        const ZcGeMatrix3d transform = blockTransform();
        for (const ZcDbObjectId& id : record->entityIds()) {
            const auto* entity = ZcDbEntity::cast(id.object());
            if (!entity || entity->isErased())
                continue;
            ZcDbEntity* piece = entity->clone();
            piece->transformBy(transform);
            entitySet.append(piece);
        }
    }
    for (const ZcDbAttribute* attribute : attributes())
        if (!attribute->isErased())
            entitySet.append(attribute->clone());
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbBlockReference::transformBy(const ZcGeMatrix3d& transform)
{
    const double scale = transform.scaleXY();
    m_position = transform.apply(m_position);
    m_rotation += transform.rotationAngleZ();
    m_scale = { m_scale.x * scale, m_scale.y * scale, m_scale.z * scale };
    for (ZcDbAttribute* attribute : m_ownedAttributes)
        attribute->transformBy(transform);
    for (const ZcDbObjectId& id : attributeIds())
        if (auto* attribute = ZcDbAttribute::cast(id.object()))
            attribute->transformBy(transform);
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbBlockReference::getGeomExtents(ZcDbExtents& extents) const
{
    // A block that holds a reference to itself must not recurse for ever.
    static int depth = 0;
    extents.addPoint(m_position);
    if (depth >= 8)
        return Zcad::eOk;
    ++depth;
    ZcDbVoidPtrArray pieces;
    explode(pieces);
    for (void* piece : pieces) {
        auto* entity = static_cast<ZcDbEntity*>(piece);
        entity->getGeomExtents(extents);
        delete entity;
    }
    --depth;
    return Zcad::eOk;
}
