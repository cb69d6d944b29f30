#pragma once

// What an entity of a kind without its own class shows, read from the DXF groups it
// was kept with: ellipses, splines, hatches (filled, patterned, gradient), solids,
// traces, 3D faces, points, leaders, multi-lines, multi-leaders, meshes, and the
// block a dimension shows. Coordinates are the entity's block's.
#include "DrawingGeometry.h"

#include <QString>

#include <vector>

class ZcDbProxyEntity;

struct ProxyText
{
    QString contents; // multi-line text with its format codes
    ZcGePoint3d at;
    ZcGeVector3d direction { 1.0, 0.0, 0.0 };
    double height = 0.0;
    double width = 0.0;
    int attachment = 1;
};

struct ProxyShapes
{
    std::vector<DrawingGeometry::Points3> paths;
    std::vector<DrawingGeometry::Points3> closedPaths;
    // Areas, each one or more rings.
    std::vector<std::vector<DrawingGeometry::Points3>> fills;
    std::vector<ZcGePoint3d> points;
    std::vector<ProxyText> texts;
    // A block shown as it is (a dimension's), empty for none.
    QString blockName;
    // Whether the kind is one read here: what is not stays undrawn and is counted.
    bool understood = false;
};

class ProxyShapeReader
{
public:
    // `arrowSize`: the length of a leader's arrowhead when the drawing gives none.
    static ProxyShapes Read(const ZcDbProxyEntity& proxy, double arrowSize = 2.5);
};
