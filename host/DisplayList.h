#pragma once

// What the drawing view paints: the working drawing turned into plain primitives
// in drawing coordinates, each with its final colour, width and opacity, and the
// entity it comes from (for selection). Built on "REGEN"; "FREDRAW" only repaints.
#include "ZcDbObjectId.h"

#include <QColor>
#include <QPointF>
#include <QPolygonF>
#include <QRectF>
#include <QString>

#include <cstddef>
#include <utility>
#include <vector>

struct DisplayItem
{
    enum Kind { Path, Text };

    Kind kind = Path;
    ZcDbObjectId entity;
    QPolygonF points; // Path: the points; Text: one point, the baseline start
    bool closed = false;
    QString text;
    double height = 0.0; // text height, drawing units
    double rotation = 0.0; // radians, counter-clockwise
    QColor color;
    double width = 0.0; // pen width in pixels (0: hairline)
};

struct DisplayEntity
{
    ZcDbObjectId id;
    QRectF bounds; // drawing coordinates
    int firstItem = 0;
    int itemCount = 0;
};

class DisplayList
{
public:
    void Clear();
    // Room for `entities` entities of one item each, so a large drawing's list is
    // not copied as it grows.
    void Reserve(std::size_t entities);
    void Add(DisplayItem item) { m_items.push_back(std::move(item)); }
    // Marks the items added since the last call as the entity `id`'s.
    void EndEntity(ZcDbObjectId id);

    const std::vector<DisplayItem>& Items() const { return m_items; }
    const std::vector<DisplayEntity>& Entities() const { return m_entities; }
    QRectF Bounds() const;

    // Entities inside `box` (window) or touching it (crossing), in drawing order.
    std::vector<ZcDbObjectId> Select(const QRectF& box, bool crossing) const;

private:
    bool Touches(const DisplayEntity& entity, const QRectF& box) const;

    std::vector<DisplayItem> m_items;
    std::vector<DisplayEntity> m_entities;
    int m_entityStart = 0;
};
