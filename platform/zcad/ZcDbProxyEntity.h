#pragma once

// An entity of a kind this host has no class for (an ellipse, a hatch, a
// dimension, a product entity of an unusual shape). Its DXF kind and every group
// it was read from are kept in file order, so it can be drawn from them and
// written back as it came.
#include "ZcDbEntity.h"

#include <QString>

#include <vector>

class ZcDbProxyEntity : public ZcDbEntity
{
    ZCRX_DECLARE_MEMBERS(ZcDbProxyEntity)
public:
    // One group of the entity: its code and its value as the drawing held it
    // (texts decoded, numbers as their original text).
    struct Group
    {
        int code;
        QString value;
    };

    explicit ZcDbProxyEntity(const QString& dxfName = QString())
        : m_dxfName(dxfName)
    { }
    ZCDB_DECLARE_CLONE(ZcDbProxyEntity)

    QString originalDxfName() const { return m_dxfName; }
    // Every group of the entity but its first (the kind, group 0).
    const std::vector<Group>& dxfGroups() const { return m_groups; }
    void setDxfGroups(std::vector<Group> groups) { m_groups = std::move(groups); }
    Zcad::ErrorStatus transformBy(const ZcGeMatrix3d&) override { return Zcad::eOk; }

private:
    QString m_dxfName;
    std::vector<Group> m_groups;
};
