#pragma once

// A product entity: a pipe, duct, cable or conduit of a drawing. It is drawn as
// its shape (a line or polyline, usually) and carries the extended data of the
// registered application "QVKS" whose first string is the index path of its
// system code ("%d\%d": specialty number and node index).
#include "ZcDbEntity.h"

#include <memory>

class QvKsEntity : public ZcDbEntity
{
    ZCRX_DECLARE_MEMBERS(QvKsEntity)
public:
    static const QString kAppName;

    QvKsEntity();
    // Takes the shape, with its layer, colour, handle and extended data.
    explicit QvKsEntity(std::unique_ptr<ZcDbEntity> shape);
    ~QvKsEntity() override;
    ZcDbEntity* clone() const override;

    // The index path of the entity's system code; empty when it has none.
    QString GetSysCodeIndex() const;
    void SetSysCodeIndex(const QString& indexPath);

    // What the host draws; null for an entity made without a shape.
    const ZcDbEntity* shape() const { return m_shape.get(); }

    Zcad::ErrorStatus transformBy(const ZcGeMatrix3d& transform) override;
    Zcad::ErrorStatus explode(ZcDbVoidPtrArray& entitySet) const override;
    Zcad::ErrorStatus getGeomExtents(ZcDbExtents& extents) const override;

    // Makes drawings read from now on turn entities with "QVKS" data into
    // QvKsEntity. The library does it when it is loaded; calling it again is harmless.
    static void rxInit();

protected:
    QvKsEntity(const QvKsEntity& other);

private:
    std::unique_ptr<ZcDbEntity> m_shape;
};
