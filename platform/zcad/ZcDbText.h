#pragma once

// A single-line text.
#include "ZcDbEntity.h"

class ZcDbText : public ZcDbEntity
{
    ZCRX_DECLARE_MEMBERS(ZcDbText)
public:
    ZcDbText() = default;
    ZcDbText(const ZcGePoint3d& position, const QString& text, double height = 2.5, double rotation = 0.0)
        : m_position(position)
        , m_alignmentPoint(position)
        , m_text(text)
        , m_height(height)
        , m_rotation(rotation)
    { }
    ZCDB_DECLARE_CLONE(ZcDbText)

    QString textString() const { return m_text; }
    Zcad::ErrorStatus setTextString(const QString& text);
    ZcGePoint3d position() const { return m_position; }
    void setPosition(const ZcGePoint3d& p) { m_position = p; }
    ZcGePoint3d alignmentPoint() const { return m_alignmentPoint; }
    void setAlignmentPoint(const ZcGePoint3d& p) { m_alignmentPoint = p; }
    double height() const { return m_height; }
    void setHeight(double height) { m_height = height; }
    double rotation() const { return m_rotation; }
    void setRotation(double radians) { m_rotation = radians; }
    // DXF horizontal (72) and vertical (73) justification.
    int horizontalMode() const { return m_horizontalMode; }
    int verticalMode() const { return m_verticalMode; }
    void setHorizontalMode(int mode) { m_horizontalMode = qint8(mode); }
    void setVerticalMode(int mode) { m_verticalMode = qint8(mode); }
    // Width of the characters against their height (1 as designed).
    double widthFactor() const { return m_widthFactor; }
    void setWidthFactor(double factor) { m_widthFactor = factor; }
    // Slant of the characters from upright, radians.
    double oblique() const { return m_oblique; }
    void setOblique(double radians) { m_oblique = radians; }
    // DXF generation flags (71): 2 backward (mirrored in x), 4 upside down.
    int generationFlags() const { return m_generation; }
    void setGenerationFlags(int flags) { m_generation = qint8(flags); }
    // The extrusion direction: the z axis of the entity's own coordinate system.
    ZcGeVector3d normal() const { return m_normal; }
    void setNormal(const ZcGeVector3d& normal) { m_normal = normal; }

    Zcad::ErrorStatus transformBy(const ZcGeMatrix3d& transform) override;
    Zcad::ErrorStatus getGeomExtents(ZcDbExtents& extents) const override;

private:
    ZcGePoint3d m_position;
    ZcGePoint3d m_alignmentPoint;
    QString m_text;
    double m_height = 2.5;
    double m_rotation = 0.0;
    double m_widthFactor = 1.0;
    double m_oblique = 0.0;
    ZcGeVector3d m_normal { 0.0, 0.0, 1.0 };
    qint8 m_generation = 0;
    qint8 m_horizontalMode = 0;
    qint8 m_verticalMode = 0;
};
