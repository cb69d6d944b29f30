#include "ZcDbText.h"

#include <algorithm>

ZCRX_DEFINE_MEMBERS(ZcDbText, ZcDbEntity)

Zcad::ErrorStatus ZcDbText::setTextString(const QString& text)
{
    m_text = text;
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbText::transformBy(const ZcGeMatrix3d& transform)
{
    m_position = transform.apply(m_position);
    m_alignmentPoint = transform.apply(m_alignmentPoint);
    m_height *= transform.scaleXY();
    m_rotation += transform.rotationAngleZ();
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbText::getGeomExtents(ZcDbExtents& extents) const
{
    // An estimate without fonts: characters about as wide as high.
    const double width = m_height * std::max<qsizetype>(1, m_text.size());
    extents.addPoint(m_position);
    extents.addPoint(m_position + ZcGeVector3d(width, m_height, 0));
    return Zcad::eOk;
}
