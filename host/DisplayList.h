#pragma once

// What the drawing view paints: the working drawing turned into plain primitives
// in drawing coordinates, each with its final colour, width and opacity, grouped by
// the entity they come from (for selection). Built on "REGEN"; "FREDRAW" only
// repaints.
//
// A floor holds hundreds of thousands of pipes, nearly all of them one line, so the
// list is kept flat: the points of every item in one array, the few texts in a side
// table, and an entity no more than its id and where its items start.
#include "ZcDbObjectId.h"

#include <QPointF>
#include <QRectF>
#include <QRgb>
#include <QString>

#include <cstddef>
#include <span>
#include <vector>

struct DisplayItem
{
    enum Kind : quint8 { Path, Text };

    quint32 firstPoint = 0; // Path: its points; Text: one point, the baseline start
    quint32 pointCount = 0;
    quint32 text = 0; // Text: its place in the text table
    QRgb color = 0; // with its opacity
    float width = 0.0f; // pen width in pixels (0: hairline)
    Kind kind = Path;
    bool closed = false;
};

struct DisplayText
{
    QString text;
    double height = 0.0; // drawing units
    double rotation = 0.0; // radians, counter-clockwise
};

struct DisplayEntity
{
    ZcDbObjectId id;
    quint32 firstItem = 0;
};

class DisplayList
{
public:
    void Clear();
    // Room for `entities` entities of one two-point item each, so a large drawing's
    // list is not copied as it grows.
    void Reserve(std::size_t entities);

    void AddPath(std::span<const QPointF> points, bool closed, QRgb color, float width);
    // A path of one segment, the common pipe.
    void AddLine(const QPointF& from, const QPointF& to, QRgb color, float width);
    void AddText(const QPointF& at, const QString& text, double height, double rotation, QRgb color);
    // Marks the items added since the last call as the entity `id`'s; an entity
    // without items is not kept.
    void EndEntity(ZcDbObjectId id);

    const std::vector<DisplayEntity>& Entities() const { return m_entities; }
    const std::vector<DisplayItem>& Items() const { return m_items; }
    // The items of the entity at `index` in Entities().
    std::span<const DisplayItem> ItemsOf(std::size_t index) const;
    std::span<const QPointF> PointsOf(const DisplayItem& item) const
    {
        return { m_points.data() + item.firstPoint, item.pointCount };
    }
    const DisplayText& TextOf(const DisplayItem& item) const { return m_texts[item.text]; }
    // What the entities cover, in drawing coordinates (empty for none).
    QRectF Bounds() const;

    // Entities inside `box` (window) or touching it (crossing), in drawing order.
    std::vector<ZcDbObjectId> Select(const QRectF& box, bool crossing) const;

private:
    QRectF ItemBounds(const DisplayItem& item) const;
    QRectF EntityBounds(std::size_t index) const;
    bool Touches(std::size_t index, const QRectF& box) const;
    void Cover(const QPointF& point);

    std::vector<DisplayEntity> m_entities;
    std::vector<DisplayItem> m_items;
    std::vector<QPointF> m_points;
    std::vector<DisplayText> m_texts;
    quint32 m_pendingFrom = 0; // the first item of the entity being added
    // What the items added so far cover: kept as they come, as zooming to the
    // extents asks for it after every build.
    double m_left = 0.0;
    double m_right = -1.0;
    double m_top = 0.0;
    double m_bottom = -1.0;
};
