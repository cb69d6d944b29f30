#pragma once

// A hatch read from its DXF groups: its boundary paths (polylines, or lines, arcs,
// ellipse arcs and splines), filled when solid or a gradient, else crossed by its
// pattern's lines clipped to the boundaries and dashed.
#include "ProxyShapes.h"
#include "ZcDbProxyEntity.h"

#include <span>

class HatchShapeReader
{
public:
    static void Read(std::span<const ZcDbProxyEntity::Group> groups, ProxyShapes& shapes);
};
