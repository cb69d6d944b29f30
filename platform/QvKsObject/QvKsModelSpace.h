#pragma once

// Small helpers of the product's drawing services over a drawing's model space.
#include "ZcDbObjectId.h"
#include "ZcGePoint3d.h"

#include <vector>

class ZcDbDatabase;
class ZcDbEntity;

class QvKsModelSpace
{
public:
    // The entities of model space in order (not erased ones); empty for a null
    // database or one without model space.
    static std::vector<ZcDbObjectId> EntityIds(ZcDbDatabase* database);
    // Plan distance from `point` to the entity: to its segments for lines and
    // polylines (arc segments taken as chords), to its extents box otherwise.
    static double DistanceTo(const ZcDbEntity& entity, const ZcGePoint3d& point);
};
