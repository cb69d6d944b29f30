#pragma once

// A drawable object of a block (model space, paper space or a block definition):
// layer and colour for drawing, and the geometric operations the host needs.
#include "ZcDbExtents.h"
#include "ZcDbObject.h"
#include "ZcDbVoidPtrArray.h"
#include "ZcGeMatrix3d.h"

#include <QString>

#include <atomic>

// Colour indexes with a meaning of their own.
constexpr quint16 kZcColorByBlock = 0;
constexpr quint16 kZcColorByLayer = 256;

#define ZCDB_DECLARE_CLONE(CLASS)                                                                            \
    ZcDbEntity* clone() const override                                                                       \
    {                                                                                                        \
        return new CLASS(*this);                                                                             \
    }

class ZcDbEntity : public ZcDbObject
{
    ZCRX_DECLARE_MEMBERS(ZcDbEntity)
public:
    ZcDbEntity();
    ~ZcDbEntity() override;

    const QString& layer() const { return m_layer->text; }
    Zcad::ErrorStatus setLayer(const QString& layer);
    // Puts this entity on the layer of `other`.
    void setLayerOf(const ZcDbEntity& other);
    // The CAD colour index 0-256 (0 by block, 256 by layer).
    quint16 colorIndex() const { return m_colorIndex; }
    Zcad::ErrorStatus setColorIndex(quint16 index);
    // A true colour 0xRRGGBB set on the entity, overriding the index.
    bool hasTrueColor() const { return m_trueColor & kHasTrueColor; }
    quint32 trueColor() const { return m_trueColor & 0xFFFFFF; }
    void setTrueColor(quint32 rgb) { m_trueColor = (rgb & 0xFFFFFF) | kHasTrueColor; }
    void clearTrueColor() { m_trueColor = 0; }
    // The entity's line type and its scale, as a place among its database's line
    // styles (ZcDbDatabase::lineStyle); 0 is by layer at scale 1.
    quint16 lineStyleIndex() const { return m_lineStyle; }
    void setLineStyleIndex(quint16 index) { m_lineStyle = index; }

    // The block record that holds this entity.
    ZcDbObjectId blockId() const { return ownerId(); }

    // A copy outside any database (same class, layer, colour, extended data).
    virtual ZcDbEntity* clone() const = 0;
    virtual Zcad::ErrorStatus transformBy(const ZcGeMatrix3d& transform);
    // Appends new entities (owned by the caller, in no database) that together stand
    // for this one; the drawing is not changed.
    virtual Zcad::ErrorStatus explode(ZcDbVoidPtrArray& entitySet) const;
    virtual Zcad::ErrorStatus getGeomExtents(ZcDbExtents& extents) const;

protected:
    ZcDbEntity(const ZcDbEntity& other);

private:
    static constexpr quint32 kHasTrueColor = 0x80000000u;

    // A layer name held once for the entities on it (a drawing has many entities
    // per layer): each entity keeps a pointer, not a string of its own.
    struct LayerName
    {
        std::atomic<quint32> refs;
        QString text;
    };
    struct RecentLayer;
    static LayerName* defaultLayer();
    static LayerName*& recentLayer();
    static LayerName* shareLayer(const QString& layer);
    static void releaseLayer(LayerName* name);

    LayerName* m_layer = defaultLayer();
    quint32 m_trueColor = 0;
    quint16 m_colorIndex = kZcColorByLayer;
    quint16 m_lineStyle = 0;
};
