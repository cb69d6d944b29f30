#pragma once

// An axis-aligned box around geometry; empty until a point is added.
#include "ZcGePoint3d.h"

#include <algorithm>

class ZcDbExtents
{
public:
    bool isEmpty() const { return m_empty; }
    ZcGePoint3d minPoint() const { return m_min; }
    ZcGePoint3d maxPoint() const { return m_max; }
    void addPoint(const ZcGePoint3d& p)
    {
        if (m_empty) {
            m_min = m_max = p;
            m_empty = false;
            return;
        }
        m_min = { std::min(m_min.x, p.x), std::min(m_min.y, p.y), std::min(m_min.z, p.z) };
        m_max = { std::max(m_max.x, p.x), std::max(m_max.y, p.y), std::max(m_max.z, p.z) };
    }
    void addExt(const ZcDbExtents& other)
    {
        if (!other.m_empty) {
            addPoint(other.m_min);
            addPoint(other.m_max);
        }
    }

private:
    ZcGePoint3d m_min;
    ZcGePoint3d m_max;
    bool m_empty = true;
};
