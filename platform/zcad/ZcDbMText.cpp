#include "ZcDbMText.h"

#include <algorithm>

ZCRX_DEFINE_MEMBERS(ZcDbMText, ZcDbEntity)

Zcad::ErrorStatus ZcDbMText::setContents(const QString& contents)
{
    m_contents = contents;
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbMText::transformBy(const ZcGeMatrix3d& transform)
{
    const double scale = transform.scaleXY();
    m_location = transform.apply(m_location);
    m_height *= scale;
    m_width *= scale;
    m_rotation += transform.rotationAngleZ();
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbMText::getGeomExtents(ZcDbExtents& extents) const
{
    const qsizetype lines = m_contents.count(QStringLiteral("\\P")) + 1;
    const double width = m_width > 0 ? m_width : m_height * std::max<qsizetype>(1, m_contents.size() / lines);
    extents.addPoint(m_location);
    extents.addPoint(m_location + ZcGeVector3d(width, -m_height * 1.5 * double(lines), 0));
    return Zcad::eOk;
}
