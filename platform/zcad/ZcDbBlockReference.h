#pragma once

// A placed block: the block record it shows, where, how scaled and turned, and the
// attributes it owns.
#include "ZcDbEntity.h"
#include "ZcDbObjectIterator.h"

#include <vector>

class ZcDbAttribute;

class ZcDbBlockReference : public ZcDbEntity
{
    ZCRX_DECLARE_MEMBERS(ZcDbBlockReference)
public:
    ZcDbBlockReference() = default;
    ZcDbBlockReference(const ZcGePoint3d& position, ZcDbObjectId blockTableRecord)
        : m_position(position)
        , m_block(blockTableRecord)
    { }
    ~ZcDbBlockReference() override;
    ZcDbEntity* clone() const override;

    ZcDbObjectId blockTableRecord() const { return m_block; }
    void setBlockTableRecord(ZcDbObjectId id) { m_block = id; }
    ZcGePoint3d position() const { return m_position; }
    void setPosition(const ZcGePoint3d& p) { m_position = p; }
    ZcGeVector3d scaleFactors() const { return m_scale; }
    void setScaleFactors(const ZcGeVector3d& scale) { m_scale = scale; }
    double rotation() const { return m_rotation; }
    void setRotation(double radians) { m_rotation = radians; }
    // The extrusion direction: the z axis of the entity's own coordinate system.
    ZcGeVector3d normal() const { return m_normal; }
    void setNormal(const ZcGeVector3d& normal) { m_normal = normal; }
    // A block placed as a grid (columns along the reference's x axis, rows along
    // its y axis, spacing in block units before scaling); 1 by 1 for one copy.
    int columns() const { return m_columns; }
    int rows() const { return m_rows; }
    double columnSpacing() const { return m_columnSpacing; }
    double rowSpacing() const { return m_rowSpacing; }
    void setGrid(int columns, int rows, double columnSpacing, double rowSpacing)
    {
        m_columns = columns;
        m_rows = rows;
        m_columnSpacing = columnSpacing;
        m_rowSpacing = rowSpacing;
    }
    // From block coordinates (relative to the block's base point) to the world.
    ZcGeMatrix3d blockTransform() const;

    // In a database the attribute is added to it (the reference must be open for
    // write); outside, the reference owns it. Either way the id or pointer is kept.
    Zcad::ErrorStatus appendAttribute(ZcDbObjectId& attributeId, ZcDbAttribute* attribute);
    Zcad::ErrorStatus appendAttribute(ZcDbAttribute* attribute);
    // Ids of the attributes held in the database, in order. The caller deletes it.
    ZcDbObjectIterator* attributeIterator() const;
    std::vector<ZcDbObjectId> attributeIds() const;
    // The attributes, wherever they live (not opened).
    std::vector<const ZcDbAttribute*> attributes() const;
    // Used by readers: an attribute already placed in the database, owned by this.
    void attachAttributeIndex(quint32 index) { m_attributeIndexes.push_back(index); }

    // Copies of the block's entities moved into place, then copies of the
    // attributes (already in place). Nested references come out as references.
    Zcad::ErrorStatus explode(ZcDbVoidPtrArray& entitySet) const override;
    Zcad::ErrorStatus transformBy(const ZcGeMatrix3d& transform) override;
    Zcad::ErrorStatus getGeomExtents(ZcDbExtents& extents) const override;

protected:
    ZcDbBlockReference(const ZcDbBlockReference& other);

private:
    ZcGePoint3d m_position;
    ZcGeVector3d m_scale { 1.0, 1.0, 1.0 };
    double m_rotation = 0.0;
    ZcGeVector3d m_normal { 0.0, 0.0, 1.0 };
    double m_columnSpacing = 0.0;
    double m_rowSpacing = 0.0;
    int m_columns = 1;
    int m_rows = 1;
    ZcDbObjectId m_block;
    std::vector<quint32> m_attributeIndexes;
    std::vector<ZcDbAttribute*> m_ownedAttributes;
};
