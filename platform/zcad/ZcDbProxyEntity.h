#pragma once

// An entity of a kind this host has no class for (an ellipse, a hatch, a
// dimension, a product entity of an unusual shape). Its DXF kind and every group
// it was read from are kept in file order, so it can be drawn from them and
// written back as it came.
#include "ZcDbEntity.h"

#include <QByteArray>
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
    ZcDbProxyEntity(const ZcDbProxyEntity& other);
    ZCDB_DECLARE_CLONE(ZcDbProxyEntity)

    QString originalDxfName() const { return m_dxfName; }
    // Every group of the entity but its first (the kind, group 0). The groups are
    // kept packed (a drawing of many hatches holds millions) and unpacked here on
    // first use, then kept so: not from two threads at once.
    const std::vector<Group>& dxfGroups() const;
    void setDxfGroups(std::vector<Group> groups);
    // The groups unpacked afresh, nothing kept: for going through many entities
    // once, from any thread.
    std::vector<Group> unpackedDxfGroups() const;
    // Groups packed as appendPacked writes them.
    void setPackedDxfGroups(QByteArray packed);
    // Appends a group to `packed`: its code, then its value in UTF-8 up to a zero.
    static void appendPacked(QByteArray& packed, int code, QByteArrayView utf8);
    Zcad::ErrorStatus transformBy(const ZcGeMatrix3d&) override { return Zcad::eOk; }

private:
    QString m_dxfName;
    QByteArray m_packed;
    mutable std::vector<Group> m_groups;
    mutable bool m_unpacked = false;
};
