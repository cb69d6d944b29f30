#pragma once

#include "ZcDbCurve.h"

class ZcDbLine : public ZcDbCurve
{
    ZCRX_DECLARE_MEMBERS(ZcDbLine)
public:
    ZcDbLine() = default;
    ZcDbLine(const ZcGePoint3d& start, const ZcGePoint3d& end)
        : m_start(start)
        , m_end(end)
    { }
    ZCDB_DECLARE_CLONE(ZcDbLine)

    ZcGePoint3d startPoint() const { return m_start; }
    ZcGePoint3d endPoint() const { return m_end; }
    void setStartPoint(const ZcGePoint3d& p) { m_start = p; }
    void setEndPoint(const ZcGePoint3d& p) { m_end = p; }

    Zcad::ErrorStatus transformBy(const ZcGeMatrix3d& transform) override;
    Zcad::ErrorStatus getGeomExtents(ZcDbExtents& extents) const override;

private:
    ZcGePoint3d m_start;
    ZcGePoint3d m_end;
};
