#pragma once

// A multi-line text. Its contents keep their format codes as written ("\P" ends a
// paragraph).
#include "ZcDbEntity.h"

class ZcDbMText : public ZcDbEntity
{
    ZCRX_DECLARE_MEMBERS(ZcDbMText)
public:
    ZcDbMText() = default;
    ZcDbMText(const ZcGePoint3d& location, const QString& contents, double height = 2.5, double width = 0.0)
        : m_location(location)
        , m_contents(contents)
        , m_height(height)
        , m_width(width)
    { }
    ZCDB_DECLARE_CLONE(ZcDbMText)

    QString contents() const { return m_contents; }
    Zcad::ErrorStatus setContents(const QString& contents);
    ZcGePoint3d location() const { return m_location; }
    void setLocation(const ZcGePoint3d& p) { m_location = p; }
    double textHeight() const { return m_height; }
    void setTextHeight(double height) { m_height = height; }
    double width() const { return m_width; }
    void setWidth(double width) { m_width = width; }
    double rotation() const { return m_rotation; }
    void setRotation(double radians) { m_rotation = radians; }
    // DXF attachment point 1-9 (1 top left).
    int attachment() const { return m_attachment; }
    void setAttachment(int attachment) { m_attachment = attachment; }
    // Distance between lines against the usual (1).
    double lineSpacingFactor() const { return m_lineSpacing; }
    void setLineSpacingFactor(double factor) { m_lineSpacing = factor; }
    // The extrusion direction: the z axis of the entity's own coordinate system.
    ZcGeVector3d normal() const { return m_normal; }
    void setNormal(const ZcGeVector3d& normal) { m_normal = normal; }

    Zcad::ErrorStatus transformBy(const ZcGeMatrix3d& transform) override;
    Zcad::ErrorStatus getGeomExtents(ZcDbExtents& extents) const override;

private:
    ZcGePoint3d m_location;
    QString m_contents;
    double m_height = 2.5;
    double m_width = 0.0;
    double m_rotation = 0.0;
    double m_lineSpacing = 1.0;
    ZcGeVector3d m_normal { 0.0, 0.0, 1.0 };
    int m_attachment = 1;
};
