#include "DisplayList.h"

#include "QvKsEntity.h"
#include "ZcDbLine.h"
#include "ZcDbPolyline.h"

#include <QLineF>

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>
#include <limits>
#include <utility>

namespace {
// Closed-interval tests: lines along an axis have boxes of no width or height.
bool Encloses(const QRectF& outer, const QRectF& inner)
{
    return outer.left() <= inner.left() && inner.right() <= outer.right() && outer.top() <= inner.top()
        && inner.bottom() <= outer.bottom();
}

QRectF Union(const QRectF& a, const QRectF& b)
{
    return QRectF(QPointF(std::min(a.left(), b.left()), std::min(a.top(), b.top())),
        QPointF(std::max(a.right(), b.right()), std::max(a.bottom(), b.bottom())));
}

bool Overlaps(const QRectF& a, const QRectF& b)
{
    return a.left() <= b.right() && b.left() <= a.right() && a.top() <= b.bottom() && b.top() <= a.bottom();
}

bool SegmentTouches(const QPointF& a, const QPointF& b, const QRectF& box)
{
    if (Encloses(box, QRectF(a, a)) || Encloses(box, QRectF(b, b)))
        return true;
    const QLineF segment(a, b);
    const QLineF edges[4] = { { box.topLeft(), box.topRight() }, { box.topRight(), box.bottomRight() },
        { box.bottomRight(), box.bottomLeft() }, { box.bottomLeft(), box.topLeft() } };
    for (const QLineF& edge : edges)
        if (segment.intersects(edge, nullptr) == QLineF::BoundedIntersection)
            return true;
    return false;
}

QRectF PointsBox(std::span<const QPointF> points)
{
    double left = points.front().x();
    double right = left;
    double top = points.front().y();
    double bottom = top;
    for (const QPointF& p : points.subspan(1)) {
        if (!std::isfinite(p.x()))
            continue;
        left = std::min(left, p.x());
        right = std::max(right, p.x());
        top = std::min(top, p.y());
        bottom = std::max(bottom, p.y());
    }
    return QRectF(QPointF(left, top), QPointF(right, bottom));
}

// The box the characters of a text fill.
QRectF TextBox(const DisplayText& text)
{
    const auto corners = text.Corners();
    return PointsBox(corners);
}

QRectF PrimitiveBox(const DisplayPrimitive& primitive)
{
    return primitive.kind == DisplayItem::Text ? TextBox(*primitive.text) : PointsBox(primitive.points);
}

bool PrimitiveTouches(const DisplayPrimitive& primitive, const QRectF& box)
{
    if (primitive.kind == DisplayItem::Text)
        return Overlaps(TextBox(*primitive.text), box);
    const std::span<const QPointF> p = primitive.points;
    if (p.size() == 1 && Encloses(box, QRectF(p[0], p[0])))
        return true;
    if (primitive.kind == DisplayItem::Fill)
        return Overlaps(PointsBox(p), box);
    for (std::size_t k = 0; k + 1 < p.size(); ++k)
        if (SegmentTouches(p[k], p[k + 1], box))
            return true;
    return primitive.closed && p.size() > 2 && SegmentTouches(p.back(), p.front(), box);
}
} // namespace

std::array<QPointF, 4> DisplayText::Corners() const
{
    const QPointF along = xAxis * std::max(advance, 0.0);
    return { at, at + along, at + along + yAxis, at + yAxis };
}

DisplayText DisplayText::Upright(
    const QPointF& at, const QString& text, double height, double rotation, double advance)
{
    const QPointF x(std::cos(rotation) * height, std::sin(rotation) * height);
    return { at, text, height, rotation, x, QPointF(-x.y(), x.x()), advance };
}

void DisplayList::Clear()
{
    m_entities.clear();
    m_items.clear();
    m_points.clear();
    m_texts.clear();
    m_looks.clear();
    m_lookIndexes.clear();
    m_lastLook = 0;
    m_serial = 0;
    m_pendingFrom = 0;
    m_left = m_top = 0.0;
    m_right = m_bottom = -1.0;
}

void DisplayList::Reserve(std::size_t entities)
{
    m_entities.reserve(entities);
}

quint32 DisplayList::LookIndex(const DisplayLook& look)
{
    // A drawing shows few looks, mostly the same one many times running.
    if (!m_looks.empty() && m_looks[m_lastLook].color == look.color
        && m_looks[m_lastLook].width == look.width)
        return m_lastLook;
    const quint64 key = quint64(look.color) << 32 | std::bit_cast<quint32>(look.width);
    auto it = m_lookIndexes.constFind(key);
    if (it == m_lookIndexes.cend()) {
        m_looks.push_back(look);
        it = m_lookIndexes.insert(key, quint32(m_looks.size() - 1));
    }
    m_lastLook = *it;
    return m_lastLook;
}

void DisplayList::Cover(const QPointF& point)
{
    if (m_right < m_left) {
        m_left = m_right = point.x();
        m_top = m_bottom = point.y();
        return;
    }
    m_left = std::min(m_left, point.x());
    m_right = std::max(m_right, point.x());
    m_top = std::min(m_top, point.y());
    m_bottom = std::max(m_bottom, point.y());
}

void DisplayList::AddShape(ZcDbObjectId id, std::span<const QPointF> points, const DisplayLook& look)
{
    if (!points.empty())
        AddShape(id, points, LookIndex(look));
}

void DisplayList::AddShape(ZcDbObjectId id, std::span<const QPointF> points, quint32 look)
{
    if (points.empty())
        return;
    m_serial = id.databaseSerial();
    m_entities.push_back({ id.index(), DisplayEntity::kShape | look });
    for (const QPointF& point : points)
        Cover(point);
}

void DisplayList::AddPath(std::span<const QPointF> points, bool closed, const DisplayLook& look)
{
    if (points.empty())
        return;
    DisplayItem item;
    item.first = quint32(m_points.size());
    item.count = quint32(points.size());
    item.look = LookIndex(look);
    item.closed = closed;
    m_items.push_back(item);
    for (const QPointF& point : points) {
        m_points.push_back(point);
        Cover(point);
    }
}

void DisplayList::AddFill(std::span<const std::vector<QPointF>> rings, QRgb color)
{
    DisplayItem item;
    item.kind = DisplayItem::Fill;
    item.first = quint32(m_points.size());
    item.look = LookIndex({ color, 0.0f });
    item.closed = true;
    const double none = std::numeric_limits<double>::quiet_NaN();
    for (const std::vector<QPointF>& ring : rings) {
        if (ring.size() < 3)
            continue;
        for (const QPointF& point : ring) {
            m_points.push_back(point);
            Cover(point);
        }
        m_points.push_back(QPointF(none, none));
    }
    item.count = quint32(m_points.size() - item.first);
    if (item.count > 0)
        m_items.push_back(item);
}

void DisplayList::AddText(const QPointF& at, const QString& text, double height, double rotation, QRgb color)
{
    // Nine tenths of the height per character.
    AddText(
        DisplayText::Upright(at, text, height, rotation, 0.9 * double(std::max<qsizetype>(1, text.size()))),
        color);
}

void DisplayList::AddText(const DisplayText& text, QRgb color)
{
    DisplayItem item;
    item.kind = DisplayItem::Text;
    item.first = quint32(m_texts.size());
    item.look = LookIndex({ color, 0.0f });
    m_texts.push_back(text);
    m_items.push_back(item);
    for (const QPointF& corner : text.Corners())
        Cover(corner);
}

void DisplayList::EndEntity(ZcDbObjectId id)
{
    if (m_items.size() > m_pendingFrom) {
        m_serial = id.databaseSerial();
        m_entities.push_back({ id.index(), quint32(m_pendingFrom) });
        m_items.back().last = true;
    }
    m_pendingFrom = m_items.size();
}

void DisplayList::Append(DisplayList&& other)
{
    if (m_entities.empty() && m_items.empty()) {
        *this = std::move(other);
        return;
    }
    std::vector<quint32> looks;
    looks.reserve(other.m_looks.size());
    for (const DisplayLook& look : other.m_looks)
        looks.push_back(LookIndex(look));
    const auto firstItem = quint32(m_items.size());
    const auto firstPoint = quint32(m_points.size());
    const auto firstText = quint32(m_texts.size());
    for (DisplayItem item : other.m_items) {
        item.first += item.kind == DisplayItem::Text ? firstText : firstPoint;
        item.look = looks[item.look];
        m_items.push_back(item);
    }
    m_entities.reserve(m_entities.size() + other.m_entities.size());
    for (DisplayEntity entity : other.m_entities) {
        entity.ref = entity.IsShape() ? DisplayEntity::kShape | looks[entity.ref & ~DisplayEntity::kShape]
                                      : entity.ref + firstItem;
        m_entities.push_back(entity);
    }
    m_points.insert(m_points.end(), other.m_points.begin(), other.m_points.end());
    std::move(other.m_texts.begin(), other.m_texts.end(), std::back_inserter(m_texts));
    if (other.m_serial)
        m_serial = other.m_serial;
    m_pendingFrom = m_items.size();
    if (const QRectF bounds = other.Bounds(); other.m_right >= other.m_left) {
        Cover(bounds.topLeft());
        Cover(bounds.bottomRight());
    }
    other.Clear();
}

QRectF DisplayList::Bounds() const
{
    if (m_right < m_left)
        return QRectF();
    return QRectF(QPointF(m_left, m_top), QPointF(m_right, m_bottom));
}

bool DisplayList::ShapePoints(ZcDbObjectId id, std::vector<QPointF>& points) const
{
    const ZcDbEntity* entity = ZcDbEntity::cast(id.object());
    if (!entity || entity->isErased())
        return false;
    if (const QvKsEntity* product = QvKsEntity::cast(entity))
        entity = product->shape();
    points.clear();
    if (const ZcDbLine* line = ZcDbLine::cast(entity)) {
        points.push_back(QPointF(line->startPoint().x, line->startPoint().y));
        points.push_back(QPointF(line->endPoint().x, line->endPoint().y));
    } else if (const ZcDbPolyline* polyline = ZcDbPolyline::cast(entity)) {
        for (const ZcDbPolyline::Vertex& v : polyline->vertices())
            points.push_back(QPointF(v.x, v.y));
        if (polyline->isClosed() && points.size() > 1)
            points.push_back(points.front());
    }
    return !points.empty();
}

DisplayPrimitive DisplayList::ItemPrimitive(const DisplayItem& item) const
{
    if (item.kind == DisplayItem::Text) {
        const DisplayText& text = m_texts[item.first];
        return { DisplayItem::Text, { &text.at, 1 }, false, m_looks[item.look], &text };
    }
    return { item.kind, { m_points.data() + item.first, item.count }, item.closed, m_looks[item.look],
        nullptr };
}

std::optional<QRectF> DisplayList::EntityBounds(std::size_t index) const
{
    std::optional<QRectF> bounds;
    ForEachPrimitive(index, [&bounds](const DisplayPrimitive& primitive) {
        bounds = bounds ? Union(*bounds, PrimitiveBox(primitive)) : PrimitiveBox(primitive);
    });
    return bounds;
}

bool DisplayList::Touches(std::size_t index, const QRectF& box) const
{
    bool touches = false;
    ForEachPrimitive(index,
        [&](const DisplayPrimitive& primitive) { touches = touches || PrimitiveTouches(primitive, box); });
    return touches;
}

std::vector<ZcDbObjectId> DisplayList::Select(const QRectF& box, bool crossing) const
{
    // Boxes are worked out here rather than kept per entity: a selection is rare
    // next to the memory a floor's worth of boxes would hold.
    std::vector<ZcDbObjectId> picked;
    const QRectF area = box.normalized();
    for (std::size_t i = 0; i < m_entities.size(); ++i) {
        const std::optional<QRectF> bounds = EntityBounds(i);
        if (bounds && (Encloses(area, *bounds) || (crossing && Overlaps(*bounds, area) && Touches(i, area))))
            picked.push_back(IdOf(m_entities[i]));
    }
    return picked;
}
