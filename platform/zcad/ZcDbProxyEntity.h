#pragma once

// An entity of a kind this host does not draw, kept because it carries extended
// data (a product entity of an unusual shape, say). Only its DXF kind is known.
#include "ZcDbEntity.h"

class ZcDbProxyEntity : public ZcDbEntity
{
    ZCRX_DECLARE_MEMBERS(ZcDbProxyEntity)
public:
    explicit ZcDbProxyEntity(const QString& dxfName = QString())
        : m_dxfName(dxfName)
    { }
    ZCDB_DECLARE_CLONE(ZcDbProxyEntity)

    QString originalDxfName() const { return m_dxfName; }
    Zcad::ErrorStatus transformBy(const ZcGeMatrix3d&) override { return Zcad::eOk; }

private:
    QString m_dxfName;
};
