#pragma once

// The base of lines, polylines, arcs and circles.
#include "ZcDbEntity.h"

class ZcDbCurve : public ZcDbEntity
{
    ZCRX_DECLARE_MEMBERS(ZcDbCurve)
};
