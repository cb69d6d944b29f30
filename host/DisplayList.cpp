#include "DisplayList.h"

#include <QLineF>

#include <algorithm>

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

// The box a text is taken to fill: its height, and nine tenths of it per character.
QRectF TextBox(const QPointF& at, const DisplayText& text)
{
    const double width = text.height * 0.9 * double(std::max<qsizetype>(1, text.text.size()));
    return QRectF(at.x(), at.y(), width, text.height).normalized();
}
} // namespace

void DisplayList::Clear()
{
    m_entities.clear();
    m_items.clear();
    m_points.clear();
    m_texts.clear();
    m_pendingFrom = 0;
    m_left = m_top = 0.0;
    m_right = m_bottom = -1.0;
}

void DisplayList::Reserve(std::size_t entities)
{
    m_entities.reserve(entities);
    m_items.reserve(entities);
    m_points.reserve(2 * entities);
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

void DisplayList::AddPath(std::span<const QPointF> points, bool closed, QRgb color, float width)
{
    if (points.empty())
        return;
    DisplayItem item;
    item.firstPoint = quint32(m_points.size());
    item.pointCount = quint32(points.size());
    item.color = color;
    item.width = width;
    item.closed = closed;
    m_items.push_back(item);
    for (const QPointF& point : points) {
        m_points.push_back(point);
        Cover(point);
    }
}

void DisplayList::AddLine(const QPointF& from, const QPointF& to, QRgb color, float width)
{
    const QPointF points[2] = { from, to };
    AddPath(points, false, color, width);
}

void DisplayList::AddText(const QPointF& at, const QString& text, double height, double rotation, QRgb color)
{
    DisplayItem item;
    item.kind = DisplayItem::Text;
    item.firstPoint = quint32(m_points.size());
    item.pointCount = 1;
    item.text = quint32(m_texts.size());
    item.color = color;
    m_points.push_back(at);
    m_texts.push_back({ text, height, rotation });
    m_items.push_back(item);
    const QRectF box = TextBox(at, m_texts.back());
    Cover(box.topLeft());
    Cover(box.bottomRight());
}

void DisplayList::EndEntity(ZcDbObjectId id)
{
    if (m_items.size() > m_pendingFrom)
        m_entities.push_back({ id, m_pendingFrom });
    m_pendingFrom = quint32(m_items.size());
}

std::span<const DisplayItem> DisplayList::ItemsOf(std::size_t index) const
{
    const quint32 first = m_entities[index].firstItem;
    const quint32 end = index + 1 < m_entities.size() ? m_entities[index + 1].firstItem : m_pendingFrom;
    return { m_items.data() + first, end - first };
}

QRectF DisplayList::Bounds() const
{
    if (m_right < m_left)
        return QRectF();
    return QRectF(QPointF(m_left, m_top), QPointF(m_right, m_bottom));
}

QRectF DisplayList::ItemBounds(const DisplayItem& item) const
{
    const std::span<const QPointF> points = PointsOf(item);
    if (item.kind == DisplayItem::Text)
        return TextBox(points.front(), TextOf(item));
    double left = points.front().x();
    double right = left;
    double top = points.front().y();
    double bottom = top;
    for (const QPointF& p : points.subspan(1)) {
        left = std::min(left, p.x());
        right = std::max(right, p.x());
        top = std::min(top, p.y());
        bottom = std::max(bottom, p.y());
    }
    return QRectF(QPointF(left, top), QPointF(right, bottom));
}

QRectF DisplayList::EntityBounds(std::size_t index) const
{
    const std::span<const DisplayItem> items = ItemsOf(index);
    QRectF bounds = ItemBounds(items.front());
    for (const DisplayItem& item : items.subspan(1))
        bounds = Union(bounds, ItemBounds(item));
    return bounds;
}

bool DisplayList::Touches(std::size_t index, const QRectF& box) const
{
    for (const DisplayItem& item : ItemsOf(index)) {
        if (item.kind == DisplayItem::Text) {
            if (Overlaps(ItemBounds(item), box))
                return true;
            continue;
        }
        const std::span<const QPointF> p = PointsOf(item);
        if (p.size() == 1 && Encloses(box, QRectF(p[0], p[0])))
            return true;
        for (std::size_t k = 0; k + 1 < p.size(); ++k)
            if (SegmentTouches(p[k], p[k + 1], box))
                return true;
        if (item.closed && p.size() > 2 && SegmentTouches(p.back(), p.front(), box))
            return true;
    }
    return false;
}

std::vector<ZcDbObjectId> DisplayList::Select(const QRectF& box, bool crossing) const
{
    // Boxes are worked out here rather than kept per entity: a selection is rare
    // next to the memory a floor's worth of boxes would hold.
    std::vector<ZcDbObjectId> picked;
    const QRectF area = box.normalized();
    for (std::size_t i = 0; i < m_entities.size(); ++i) {
        const QRectF bounds = EntityBounds(i);
        if (Encloses(area, bounds) || (crossing && Overlaps(bounds, area) && Touches(i, area)))
            picked.push_back(m_entities[i].id);
    }
    return picked;
}
