#include "DisplayListDump.h"

#include "DisplayList.h"
#include "ZcDbEntity.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cmath>

namespace {
QJsonArray Point(const QPointF& p)
{
    return { p.x(), p.y() };
}

QJsonArray Points(std::span<const QPointF> points)
{
    QJsonArray run;
    for (const QPointF& p : points)
        run.append(Point(p));
    return run;
}

// An area's rings, each ended in the list by a point that is no number.
QJsonArray Rings(std::span<const QPointF> points)
{
    QJsonArray rings;
    QJsonArray ring;
    for (const QPointF& p : points) {
        if (std::isfinite(p.x())) {
            ring.append(Point(p));
            continue;
        }
        rings.append(ring);
        ring = {};
    }
    return rings;
}
} // namespace

QByteArray DisplayListDump::ToJson(const DisplayList& list, const std::map<QString, int>& notShown)
{
    QJsonArray entities;
    for (std::size_t i = 0; i < list.Entities().size(); ++i) {
        QJsonArray paths;
        QJsonArray fills;
        QJsonArray texts;
        list.ForEachPrimitive(i, [&](const DisplayPrimitive& primitive) {
            if (primitive.kind == DisplayItem::Text) {
                const DisplayText& t = *primitive.text;
                texts.append(QJsonObject { { QStringLiteral("text"), t.text },
                    { QStringLiteral("at"), Point(t.at) }, { QStringLiteral("x"), Point(t.xAxis) },
                    { QStringLiteral("y"), Point(t.yAxis) }, { QStringLiteral("advance"), t.advance } });
            } else if (primitive.kind == DisplayItem::Fill) {
                fills.append(Rings(primitive.points));
            } else {
                QJsonArray run = Points(primitive.points);
                if (primitive.closed && primitive.points.size() > 2)
                    run.append(Point(primitive.points.front()));
                paths.append(run);
            }
        });
        const ZcDbObjectId id = list.IdOf(list.Entities()[i]);
        const ZcDbEntity* entity = ZcDbEntity::cast(id.object());
        const QString handle = entity ? QString::number(entity->handle(), 16).toUpper() : QString();
        entities.append(
            QJsonObject { { QStringLiteral("handle"), handle }, { QStringLiteral("paths"), paths },
                { QStringLiteral("fills"), fills }, { QStringLiteral("texts"), texts } });
    }
    QJsonObject skipped;
    for (const auto& [kind, count] : notShown)
        skipped.insert(kind, count);
    return QJsonDocument(
        QJsonObject { { QStringLiteral("entities"), entities }, { QStringLiteral("notShown"), skipped } })
        .toJson(QJsonDocument::Compact);
}
