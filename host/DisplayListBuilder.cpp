#include "DisplayListBuilder.h"

#include "LineTypeMgr.h"
#include "QvKsAciPalette.h"
#include "QvKsCodeStyles.h"
#include "QvKsEntity.h"
#include "ZcDbArc.h"
#include "ZcDbAttribute.h"
#include "ZcDbAttributeDefinition.h"
#include "ZcDbBlockReference.h"
#include "ZcDbBlockTableRecord.h"
#include "ZcDbCircle.h"
#include "ZcDbDatabase.h"
#include "ZcDbLine.h"
#include "ZcDbMText.h"
#include "ZcDbPolyline.h"
#include "ZcDbText.h"

#include <QLineF>
#include <QRegularExpression>

#include <cmath>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

namespace {

constexpr int kMaxBlockDepth = 8;
constexpr double kPi = 3.14159265358979323846;
// More pattern repeats than this on one path: drawn continuous.
constexpr double kMaxRepeats = 20000.0;

QColor FromColorRef(COLORREF color, int alpha = 0)
{
    QColor c(int(color & 0xFF), int((color >> 8) & 0xFF), int((color >> 16) & 0xFF));
    c.setAlphaF(std::clamp(1.0 - alpha / 100.0, 0.1, 1.0));
    return c;
}

using Points = std::vector<QPointF>;

void AddArcPoints(Points& points, double cx, double cy, double r, double a0, double a1)
{
    while (a1 <= a0)
        a1 += 2 * kPi;
    const int steps = std::clamp(int((a1 - a0) / (kPi / 32)), 2, 128);
    for (int i = 0; i <= steps; ++i) {
        const double a = a0 + (a1 - a0) * i / steps;
        points.push_back(QPointF(cx + r * std::cos(a), cy + r * std::sin(a)));
    }
}

bool IsStraight(double bulge)
{
    return std::abs(bulge) < 1e-9;
}

// The points of a polyline segment with a bulge (the start point excluded).
void AddBulge(Points& points, const QPointF& a, const QPointF& b, double bulge)
{
    const double chord = QLineF(a, b).length();
    if (IsStraight(bulge) || chord < 1e-12) {
        points.push_back(b);
        return;
    }
    const double angle = 4 * std::atan(bulge);
    const double radius = chord / (2 * std::sin(std::abs(angle) / 2));
    const QPointF mid = (a + b) / 2;
    const double sagittaToCentre = radius * std::cos(angle / 2);
    const QPointF dir = (b - a) / chord;
    const QPointF normal(-dir.y(), dir.x());
    const QPointF centre = mid + normal * (bulge > 0 ? sagittaToCentre : -sagittaToCentre);
    const double start = std::atan2(a.y() - centre.y(), a.x() - centre.x());
    const int steps = std::clamp(int(std::abs(angle) / (kPi / 32)), 2, 128);
    for (int i = 1; i <= steps; ++i) {
        const double t = start + angle * i / steps;
        points.push_back(QPointF(
            centre.x() + std::abs(radius) * std::cos(t), centre.y() + std::abs(radius) * std::sin(t)));
    }
}

QString PlainMText(QString contents)
{
    static const QRegularExpression codes(QStringLiteral("\\\\[ACFHQTWfhqtw][^;\\\\]*;|\\\\[LlOoKk]|[{}]"));
    contents.replace(QStringLiteral("\\P"), QStringLiteral("\n"));
    contents.remove(codes);
    return contents;
}

// The point `distance` along `points`, and the direction there.
QPointF PointAt(
    std::span<const QPointF> points, const std::vector<double>& cumulative, double distance, double& angle)
{
    size_t i = 1;
    while (i + 1 < cumulative.size() && cumulative[i] < distance)
        ++i;
    const QPointF a = points[i - 1];
    const QPointF b = points[i];
    const double length = cumulative[i] - cumulative[i - 1];
    angle = std::atan2(b.y() - a.y(), b.x() - a.x());
    const double t = length > 0 ? (distance - cumulative[i - 1]) / length : 0.0;
    return a + (b - a) * std::clamp(t, 0.0, 1.0);
}

// The two numbers of an index path written as the store writes it ("3\12": no sign,
// no leading zero), as one key; false for any other text, which is then looked up as
// it is. Two such paths share a key only when they are the same text.
bool IndexPathKey(QStringView path, quint64& key)
{
    const qsizetype cut = path.indexOf(u'\\');
    const auto number = [](QStringView digits, quint64& value) {
        if (digits.isEmpty() || digits.size() > 9 || (digits.size() > 1 && digits.front() == u'0'))
            return false;
        value = 0;
        for (const QChar c : digits) {
            if (c < u'0' || c > u'9')
                return false;
            value = value * 10 + quint64(c.unicode() - u'0');
        }
        return true;
    };
    quint64 spec = 0;
    quint64 index = 0;
    if (cut < 0 || !number(path.left(cut), spec) || !number(path.mid(cut + 1), index))
        return false;
    key = spec << 32 | index;
    return true;
}
} // namespace

DisplayListBuilder::DisplayListBuilder(
    const QvKsCodeStyles& styles, const LineTypeMgr& lineTypes, const Settings& settings)
    : m_styles(styles)
    , m_lineTypes(lineTypes)
    , m_settings(settings)
{ }

QColor DisplayListBuilder::LayerColor(const ZcDbLayerTableRecord* layer)
{
    if (layer && layer->hasTrueColor)
        return QColor::fromRgb(QRgb(layer->trueColor));
    return AciColor(layer ? layer->colorIndex : 7);
}

QColor DisplayListBuilder::AciColor(int index)
{
    if (index == 7)
        return Qt::white;
    return FromColorRef(QvKsAciPalette::ColorOf(index));
}

void DisplayListBuilder::Build(ZcDbDatabase* database, DisplayList& list) const
{
    list.Clear();
    ZcDbBlockTableRecord* space = nullptr;
    if (!database || zcdbOpenObject(space, database->modelSpaceId(), ZcDb::kForRead) != Zcad::eOk)
        return;
    const std::span<const quint32> indexes = space->entityIndexes();
    const quint32 serial = database->modelSpaceId().databaseSerial();
    list.Reserve(indexes.size());
    // A large floor is built in two halves at once: the entities are only read, and
    // each half has memos of its own. The halves join in drawing order.
    if (indexes.size() >= kHalvesFrom && std::thread::hardware_concurrency() > 1) {
        const std::size_t half = indexes.size() / 2;
        DisplayList second;
        const DisplayListBuilder other(*this);
        std::thread worker([&] { other.BuildRange(database, serial, indexes.subspan(half), second); });
        BuildRange(database, serial, indexes.first(half), list);
        worker.join();
        list.Append(std::move(second));
    } else {
        BuildRange(database, serial, indexes, list);
    }
    space->close();
}

void DisplayListBuilder::BuildRange(
    ZcDbDatabase* database, quint32 serial, std::span<const quint32> indexes, DisplayList& list) const
{
    // The styles and the layers may have changed since the last build.
    m_codeLooks.clear();
    m_codeTexts.clear();
    m_layers.clear();
    m_lastLayer = {};
    m_lastCode = {};
    m_list = &list;
    list.Reserve(indexes.size());
    const Look white { qRgb(255, 255, 255) };
    for (const quint32 index : indexes) {
        const ZcDbObjectId id(serial, index);
        ZcDbEntity* entity = nullptr;
        if (zcdbOpenObject(entity, id, ZcDb::kForRead) != Zcad::eOk)
            continue;
        AddEntity(*entity, white, database, id, list, 0);
        entity->close();
        list.EndEntity(id);
    }
    // The memos hold on to texts of the drawing, which may be read again or closed.
    m_codeTexts.clear();
    m_lastLayer = {};
    m_layers.clear();
    m_list = nullptr;
}

DisplayListBuilder::Look DisplayListBuilder::ProductLook(const QvKsCodeStyle& style) const
{
    Look look;
    look.color = FromColorRef(style.color, style.alpha).rgba();
    look.width = style.lineWidth > 0 ? std::clamp(float(style.lineWidth) / 10.0f, 1.0f, 4.0f) : 0.0f;
    look.lineType = m_lineTypes.Find(LineTypeMgr::LineTypeNameOf(style.lineStyle, style.lineString));
    return look;
}

bool DisplayListBuilder::ProductLookOf(const QString& indexPath, Look& look) const
{
    // Pipes of one code carry one shared text, so a text met before at the same
    // address is the same code: it is kept, so its address stays its own.
    if (indexPath.constData() != m_lastCode.text || indexPath.size() != m_lastCode.size) {
        auto it = m_codeTexts.find(indexPath.constData());
        if (it == m_codeTexts.end() || it->path.size() != indexPath.size()) {
            CodeLook code = FindCodeLook(indexPath);
            if (code.known && m_settings.colorBySystem)
                code.look.shown = m_list->LookIndex({ code.look.color, code.look.width });
            it = m_codeTexts.insert(indexPath.constData(), { indexPath, code });
        }
        m_lastCode = { indexPath.constData(), indexPath.size(), it->code };
    }
    if (m_lastCode.code.known)
        look = m_lastCode.code.look;
    return m_lastCode.code.known;
}

DisplayListBuilder::CodeLook DisplayListBuilder::FindCodeLook(const QString& indexPath) const
{
    quint64 key = 0;
    if (!IndexPathKey(indexPath, key)) {
        const QvKsCodeStyle* style = m_styles.Find(indexPath);
        return style ? CodeLook { true, ProductLook(*style) } : CodeLook {};
    }
    auto it = m_codeLooks.find(key);
    if (it == m_codeLooks.end()) {
        CodeLook code;
        if (const QvKsCodeStyle* style = m_styles.Find(indexPath))
            code = { true, ProductLook(*style) };
        it = m_codeLooks.insert(key, code);
    }
    return *it;
}

const ZcDbLayerTableRecord* DisplayListBuilder::LayerOf(
    const ZcDbEntity& entity, ZcDbDatabase* database) const
{
    if (!database)
        return nullptr;
    // Entities on one layer share its name's text: the same text as the last
    // entity's is the same layer.
    const QString& name = entity.layer();
    if (name.constData() == m_lastLayer.name.constData() && name.size() == m_lastLayer.name.size())
        return m_lastLayer.record;
    auto it = m_layers.find(name);
    if (it == m_layers.end())
        it = m_layers.insert(name, database->layer(name));
    m_lastLayer = { name, *it };
    return *it;
}

DisplayListBuilder::Look DisplayListBuilder::LookOf(
    const ZcDbEntity& entity, ZcDbDatabase* database, const Look& blockLook) const
{
    if (const QvKsEntity* product = QvKsEntity::cast(&entity)) {
        if (Look look; ProductLookOf(product->GetSysCodeIndex(), look)) {
            // Shown by layer, a product entity takes its layer's colour: the layer
            // manager gives every code's layer the code's colour.
            if (!m_settings.colorBySystem) {
                look.color = LayerColor(LayerOf(entity, database)).rgba();
                look.shown = kNotShownYet;
            }
            return look;
        }
    }
    Look look;
    const ZcDbLayerTableRecord* layer = LayerOf(entity, database);
    if (entity.hasTrueColor())
        look.color = 0xFF000000u | entity.trueColor();
    else if (entity.colorIndex() == kZcColorByBlock)
        look.color = blockLook.color;
    else if (entity.colorIndex() != kZcColorByLayer)
        look.color = AciColor(entity.colorIndex()).rgba();
    else
        look.color = LayerColor(layer).rgba();
    return look;
}

void DisplayListBuilder::AddEntity(const ZcDbEntity& entity, const Look& blockLook, ZcDbDatabase* database,
    ZcDbObjectId id, DisplayList& list, int depth) const
{
    if (database) {
        const ZcDbLayerTableRecord* layer = LayerOf(entity, database);
        if (layer && (layer->isOff || layer->isFrozen))
            return;
    }
    const Look look = LookOf(entity, database, blockLook);
    if (const QvKsEntity* product = QvKsEntity::cast(&entity)) {
        if (product->shape() && !(depth == 0 && AddDrawnShape(*product->shape(), look, id, list)))
            AddShape(*product->shape(), look, list);
        return;
    }
    const ZcDbBlockReference* reference = ZcDbBlockReference::cast(&entity);
    if (!reference) {
        if (!(depth == 0 && AddDrawnShape(entity, look, id, list)))
            AddShape(entity, look, list);
        return;
    }
    if (depth >= kMaxBlockDepth)
        return;
    ZcDbVoidPtrArray pieces;
    if (reference->explode(pieces) != Zcad::eOk)
        return;
    for (int i = 0; i < pieces.length(); ++i) {
        std::unique_ptr<ZcDbEntity> piece(static_cast<ZcDbEntity*>(pieces[i]));
        if (ZcDbAttributeDefinition::cast(piece.get()))
            continue;
        if (const ZcDbAttribute* attribute = ZcDbAttribute::cast(piece.get());
            attribute && attribute->isInvisible())
            continue;
        AddEntity(*piece, look, database, ZcDbObjectId::kNull, list, depth + 1);
    }
}

bool DisplayListBuilder::AddDrawnShape(
    const ZcDbEntity& entity, const Look& look, ZcDbObjectId id, DisplayList& list) const
{
    if (look.lineType)
        return false;
    m_shapePoints.clear();
    if (const ZcDbLine* line = ZcDbLine::cast(&entity)) {
        m_shapePoints.push_back(QPointF(line->startPoint().x, line->startPoint().y));
        m_shapePoints.push_back(QPointF(line->endPoint().x, line->endPoint().y));
    } else if (const ZcDbPolyline* polyline = ZcDbPolyline::cast(&entity)) {
        for (const ZcDbPolyline::Vertex& v : polyline->vertices()) {
            if (!IsStraight(v.bulge))
                return false;
            m_shapePoints.push_back(QPointF(v.x, v.y));
        }
    } else {
        return false;
    }
    if (look.shown == kNotShownYet)
        list.AddShape(id, m_shapePoints, { look.color, look.width });
    else
        list.AddShape(id, m_shapePoints, look.shown);
    return true;
}

void DisplayListBuilder::AddShape(const ZcDbEntity& entity, const Look& look, DisplayList& list) const
{
    if (const ZcDbLine* line = ZcDbLine::cast(&entity)) {
        const QPointF points[2] = { QPointF(line->startPoint().x, line->startPoint().y),
            QPointF(line->endPoint().x, line->endPoint().y) };
        AddPath(points, false, look, list);
    } else if (const ZcDbPolyline* polyline = ZcDbPolyline::cast(&entity)) {
        const auto& v = polyline->vertices();
        if (v.empty())
            return;
        Points points { QPointF(v[0].x, v[0].y) };
        const size_t segments = polyline->isClosed() ? v.size() : v.size() - 1;
        for (size_t i = 0; i < segments; ++i) {
            const auto& b = v[(i + 1) % v.size()];
            AddBulge(points, QPointF(v[i].x, v[i].y), QPointF(b.x, b.y), v[i].bulge);
        }
        AddPath(points, false, look, list);
    } else if (const ZcDbArc* arc = ZcDbArc::cast(&entity)) {
        Points points;
        AddArcPoints(
            points, arc->center().x, arc->center().y, arc->radius(), arc->startAngle(), arc->endAngle());
        AddPath(points, false, look, list);
    } else if (const ZcDbCircle* circle = ZcDbCircle::cast(&entity)) {
        Points points;
        AddArcPoints(points, circle->center().x, circle->center().y, circle->radius(), 0, 2 * kPi);
        AddPath(points, true, look, list);
    } else if (const ZcDbText* text = ZcDbText::cast(&entity)) {
        AddText(*text, look, list);
    } else if (const ZcDbMText* mtext = ZcDbMText::cast(&entity)) {
        AddMText(*mtext, look, list);
    }
}

void DisplayListBuilder::AddText(const ZcDbText& text, const Look& look, DisplayList& list) const
{
    const bool aligned = text.horizontalMode() != 0 || text.verticalMode() != 0;
    const ZcGePoint3d at = aligned ? text.alignmentPoint() : text.position();
    const double width = text.height() * 0.9 * text.textString().size();
    const double shift = text.horizontalMode() == 1 || text.horizontalMode() == 4 ? width / 2
        : text.horizontalMode() == 2                                              ? width
                                                                                  : 0.0;
    const double rise = text.verticalMode() == 2 ? -text.height() / 2
        : text.verticalMode() == 3               ? -text.height()
                                                 : 0.0;
    const double c = std::cos(text.rotation());
    const double s = std::sin(text.rotation());
    list.AddText(QPointF(at.x - shift * c - rise * s, at.y - shift * s + rise * c), text.textString(),
        text.height(), text.rotation(), look.color);
}

void DisplayListBuilder::AddMText(const ZcDbMText& mtext, const Look& look, DisplayList& list) const
{
    const QStringList lines = PlainMText(mtext.contents()).split(u'\n');
    const double h = mtext.textHeight();
    const int row = (std::clamp(mtext.attachment(), 1, 9) - 1) / 3;
    const double total = h * (1.6 * (lines.size() - 1) + 1);
    double y = mtext.location().y - h - (row == 1 ? -total / 2 : row == 2 ? -total : 0.0);
    for (const QString& line : lines) {
        list.AddText(QPointF(mtext.location().x, y), line, h, mtext.rotation(), look.color);
        y -= h * 1.6;
    }
}

void DisplayListBuilder::AddPath(
    std::span<const QPointF> points, bool closed, const Look& look, DisplayList& list) const
{
    if (points.empty())
        return;
    if (look.lineType && points.size() > 1) {
        Points run(points.begin(), points.end());
        if (closed)
            run.push_back(points.front());
        AddPattern(run, look, list);
        return;
    }
    list.AddPath(points, closed, { look.color, look.width });
}

void DisplayListBuilder::AddPattern(
    std::span<const QPointF> points, const Look& look, DisplayList& list) const
{
    std::vector<double> cumulative { 0.0 };
    for (size_t i = 1; i < points.size(); ++i)
        cumulative.push_back(cumulative.back() + QLineF(points[i - 1], points[i]).length());
    const double total = cumulative.back();
    const double scale = m_settings.lineTypeScale;
    const double period = look.lineType->PatternLength() * scale;
    if (period <= 0 || total / period > kMaxRepeats) {
        list.AddPath(points, false, { look.color, look.width });
        return;
    }
    double at = 0.0;
    double angle = 0.0;
    Points dash;
    while (at < total) {
        for (const LineTypeDef::Element& element : look.lineType->elements) {
            if (at >= total)
                break;
            if (element.isText) {
                const QPointF base = PointAt(points, cumulative, at, angle);
                const double dx = element.dx * scale;
                const double dy = element.dy * scale;
                const QPointF offset(
                    dx * std::cos(angle) - dy * std::sin(angle), dx * std::sin(angle) + dy * std::cos(angle));
                list.AddText(base + offset, element.text, element.size * scale, angle, look.color);
                continue;
            }
            const double length = std::abs(element.length) * scale;
            if (element.length >= 0) {
                dash.clear();
                const double end = std::min(total, at + length);
                for (double d = at;;) {
                    dash.push_back(PointAt(points, cumulative, d, angle));
                    auto next = std::upper_bound(cumulative.begin(), cumulative.end(), d);
                    if (next == cumulative.end() || *next >= end) {
                        if (end > d)
                            dash.push_back(PointAt(points, cumulative, end, angle));
                        break;
                    }
                    d = *next;
                }
                list.AddPath(dash, false, { look.color, look.width });
            }
            at += length;
        }
    }
}
