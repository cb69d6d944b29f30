#pragma once

// What the drawing view paints: the working drawing turned into plain primitives
// in drawing coordinates, each with its final colour, width and opacity, grouped by
// the entity they come from (for selection). Built on "REGEN"; "FREDRAW" only
// repaints.
//
// A floor holds hundreds of thousands of pipes, nearly all of them one straight
// line or polyline, so such an entity is kept as no more than its place in the
// drawing and its look: its points are read from the drawing when it is painted or
// picked. Arcs, patterns, texts and blocks become items of their own, their points
// in one array and their texts in a side table. A list holds one drawing's entities.
#include "ZcDbObjectId.h"

#include <QHash>
#include <QPointF>
#include <QRectF>
#include <QRgb>
#include <QString>

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <vector>

struct DisplayLook
{
    QRgb color = 0; // with its opacity
    float width = 0.0f; // pen width in pixels (0: hairline)
};

struct DisplayItem
{
    // Fill: an area, its rings one after the other, each ended by a point whose
    // coordinates are not numbers; a point inside an odd number of rings is inside.
    enum Kind : quint8 { Path, Text, Fill };

    quint32 first = 0; // Path, Fill: its first point; Text: its text, which holds its point
    quint32 count = 0; // Path, Fill: its points
    quint32 look = 0;
    Kind kind = Path;
    bool closed = false;
    bool last = false; // the last item of its entity
};

struct DisplayText
{
    QPointF at; // the baseline start
    QString text;
    double height = 0.0; // drawing units
    double rotation = 0.0; // radians, counter-clockwise
    // The text's own frame, in units of its height: the drawing vectors of one
    // height along the baseline (width factor and mirroring in it) and upwards
    // (slant in it), and how many heights the characters advance.
    QPointF xAxis;
    QPointF yAxis;
    double advance = 0.0;

    // The corners of the box the characters fill, from the baseline start round.
    std::array<QPointF, 4> Corners() const;
    // A text of `height` turned by `rotation`, advancing `advance` heights.
    static DisplayText Upright(
        const QPointF& at, const QString& text, double height, double rotation, double advance);
};

struct DisplayEntity
{
    static constexpr quint32 kShape = 0x80000000u;

    quint32 index = 0; // in the drawing
    quint32 ref = 0; // kShape with its look, or its first item

    bool IsShape() const { return ref & kShape; }
};

// One thing to paint or pick: a run of points (a path) or a text.
struct DisplayPrimitive
{
    DisplayItem::Kind kind = DisplayItem::Path;
    std::span<const QPointF> points; // Text: its one point
    bool closed = false;
    DisplayLook look;
    const DisplayText* text = nullptr;
};

class DisplayList
{
public:
    void Clear();
    // Room for `entities` entities, so a large drawing's list is not copied as it grows.
    void Reserve(std::size_t entities);

    // An entity drawn as its own straight line or polyline, read from the drawing;
    // `points` are where it lies now.
    void AddShape(ZcDbObjectId id, std::span<const QPointF> points, const DisplayLook& look);
    // The same, in a look already taken in (LookIndex).
    void AddShape(ZcDbObjectId id, std::span<const QPointF> points, quint32 look);
    // The place of `look` among the list's looks, taken in when new.
    quint32 LookIndex(const DisplayLook& look);
    void AddPath(std::span<const QPointF> points, bool closed, const DisplayLook& look);
    // An area of one or more rings (each closed by itself).
    void AddFill(std::span<const std::vector<QPointF>> rings, QRgb color);
    void AddText(const QPointF& at, const QString& text, double height, double rotation, QRgb color);
    void AddText(const DisplayText& text, QRgb color);
    // Marks the items added since the last call as the entity `id`'s; an entity
    // without items is not kept.
    void EndEntity(ZcDbObjectId id);
    // Adds the entities of `other`, a list of the same drawing, after these.
    void Append(DisplayList&& other);

    const std::vector<DisplayEntity>& Entities() const { return m_entities; }
    ZcDbObjectId IdOf(const DisplayEntity& entity) const { return ZcDbObjectId(m_serial, entity.index); }
    // What the entity at `index` in Entities() shows now, in order. An entity drawn
    // from the drawing shows nothing once it is erased.
    template <typename Visit> void ForEachPrimitive(std::size_t index, Visit&& visit) const
    {
        const DisplayEntity& entity = m_entities[index];
        if (entity.IsShape()) {
            if (ShapePoints(IdOf(entity), m_shapePoints))
                visit(DisplayPrimitive { DisplayItem::Path, m_shapePoints, false,
                    m_looks[entity.ref & ~DisplayEntity::kShape], nullptr });
            return;
        }
        for (std::size_t i = entity.ref; i < m_items.size(); ++i) {
            visit(ItemPrimitive(m_items[i]));
            if (m_items[i].last)
                break;
        }
    }
    // What the entities covered when added, in drawing coordinates (empty for none).
    QRectF Bounds() const;

    // Entities inside `box` (window) or touching it (crossing), in drawing order.
    std::vector<ZcDbObjectId> Select(const QRectF& box, bool crossing) const;

private:
    void Cover(const QPointF& point);
    // The points of a straight line or polyline of the drawing; false when the id
    // names no such entity any more.
    bool ShapePoints(ZcDbObjectId id, std::vector<QPointF>& points) const;
    DisplayPrimitive ItemPrimitive(const DisplayItem& item) const;
    // Null for an entity that shows nothing.
    std::optional<QRectF> EntityBounds(std::size_t index) const;
    bool Touches(std::size_t index, const QRectF& box) const;

    std::vector<DisplayEntity> m_entities;
    std::vector<DisplayItem> m_items;
    std::vector<QPointF> m_points;
    std::vector<DisplayText> m_texts;
    std::vector<DisplayLook> m_looks;
    QHash<quint64, quint32> m_lookIndexes; // colour and width to place in m_looks
    quint32 m_lastLook = 0;
    quint32 m_serial = 0; // the drawing's
    std::size_t m_pendingFrom = 0; // the first item of the entity being added
    // A shape's points as last read: painting and picking go through every entity.
    mutable std::vector<QPointF> m_shapePoints;
    // What the entities added so far cover: kept as they come, as zooming to the
    // extents asks for it after every build.
    double m_left = 0.0;
    double m_right = -1.0;
    double m_top = 0.0;
    double m_bottom = -1.0;
};
