#include "DisplayList.h"

#include <QLineF>

#include <algorithm>

namespace {
QRectF ItemBounds(const DisplayItem& item)
{
    if (item.kind == DisplayItem::Text) {
        const QPointF p = item.points.value(0);
        const double w = item.height * 0.9 * std::max<qsizetype>(1, item.text.size());
        return QRectF(p.x(), p.y(), w, item.height).normalized();
    }
    return item.points.boundingRect();
}

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
} // namespace

void DisplayList::Clear()
{
    m_items.clear();
    m_entities.clear();
    m_entityStart = 0;
}

void DisplayList::Reserve(std::size_t entities)
{
    m_items.reserve(entities);
    m_entities.reserve(entities);
}

void DisplayList::EndEntity(ZcDbObjectId id)
{
    const int end = int(m_items.size());
    if (end == m_entityStart)
        return;
    QRectF bounds;
    for (int i = m_entityStart; i < end; ++i)
        bounds = i == m_entityStart ? ItemBounds(m_items[i]) : Union(bounds, ItemBounds(m_items[i]));
    m_entities.push_back({ id, bounds, m_entityStart, end - m_entityStart });
    m_entityStart = end;
}

QRectF DisplayList::Bounds() const
{
    QRectF bounds;
    for (const DisplayEntity& entity : m_entities)
        bounds = &entity == &m_entities.front() ? entity.bounds : Union(bounds, entity.bounds);
    return bounds;
}

bool DisplayList::Touches(const DisplayEntity& entity, const QRectF& box) const
{
    for (int i = entity.firstItem; i < entity.firstItem + entity.itemCount; ++i) {
        const DisplayItem& item = m_items[i];
        if (item.kind == DisplayItem::Text) {
            if (Overlaps(ItemBounds(item), box))
                return true;
            continue;
        }
        const QPolygonF& p = item.points;
        if (p.size() == 1 && Encloses(box, QRectF(p[0], p[0])))
            return true;
        for (qsizetype k = 0; k + 1 < p.size(); ++k)
            if (SegmentTouches(p[k], p[k + 1], box))
                return true;
        if (item.closed && p.size() > 2 && SegmentTouches(p.back(), p.front(), box))
            return true;
    }
    return false;
}

std::vector<ZcDbObjectId> DisplayList::Select(const QRectF& box, bool crossing) const
{
    std::vector<ZcDbObjectId> picked;
    const QRectF area = box.normalized();
    for (const DisplayEntity& entity : m_entities) {
        if (Encloses(area, entity.bounds)
            || (crossing && Overlaps(entity.bounds, area) && Touches(entity, area)))
            picked.push_back(entity.id);
    }
    return picked;
}
