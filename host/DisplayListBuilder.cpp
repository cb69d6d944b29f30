#include "DisplayListBuilder.h"

#include "DrawingTexts.h"
#include "LineTypeMgr.h"
#include "ProxyShapes.h"
#include "QvKsAciPalette.h"
#include "QvKsCodeStyles.h"
#include "QvKsEntity.h"
#include "ZcDbArc.h"
#include "ZcDbAttribute.h"
#include "ZcDbAttributeDefinition.h"
#include "ZcDbBlockReference.h"
#include "ZcDbBlockTable.h"
#include "ZcDbBlockTableRecord.h"
#include "ZcDbCircle.h"
#include "ZcDbDatabase.h"
#include "ZcDbLine.h"
#include "ZcDbMText.h"
#include "ZcDbPolyline.h"
#include "ZcDbProxyEntity.h"
#include "ZcDbText.h"

#include <QLineF>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>
#include <thread>
#include <utility>
#include <vector>

namespace {

using DrawingGeometry::Points3;
using DrawingGeometry::Project;
using DrawingGeometry::ProjectVector;
constexpr double kPi = std::numbers::pi;
// More pattern repeats than this on one path: drawn continuous.
constexpr double kMaxRepeats = 20000.0;
// Multi-line text: baselines 5/3 of the cap height apart; a character's lower-case
// height and its descent, against its cap height.
constexpr double kLineSpacing = 1.667;
constexpr double kLowerCaseHeight = 0.666;
constexpr double kDescent = 0.333;

QColor FromColorRef(COLORREF color, int alpha = 0)
{
    QColor c(int(color & 0xFF), int((color >> 8) & 0xFF), int((color >> 16) & 0xFF));
    c.setAlphaF(std::clamp(1.0 - alpha / 100.0, 0.1, 1.0));
    return c;
}

using Points = std::vector<QPointF>;

bool IsStraight(double bulge)
{
    return std::abs(bulge) < 1e-9;
}

bool IsUp(const ZcGeVector3d& normal)
{
    return normal.x == 0 && normal.y == 0 && normal.z > 0;
}

// An entity's own coordinates moved by its block's place.
ZcGeMatrix3d Through(const ZcGeMatrix3d& toWorld, const ZcGeVector3d& normal)
{
    return IsUp(normal) ? toWorld : toWorld * DrawingGeometry::ObjectToWorld(normal);
}

ZcGeVector3d Scaled(const ZcGeVector3d& v, double factor)
{
    return { v.x * factor, v.y * factor, v.z * factor };
}

ZcGePoint3d Along(const ZcGePoint3d& p, const ZcGeVector3d& x, double u, const ZcGeVector3d& y, double v)
{
    return { p.x + x.x * u + y.x * v, p.y + x.y * u + y.y * v, p.z + x.z * u + y.z * v };
}

// The text of `height` whose baseline starts at `at` along `x` (one unit: one
// height, width factor in it), `y` upwards (one height), moved by `toWorld`.
DisplayText TextFrame(const ZcGeMatrix3d& toWorld, const ZcGePoint3d& at, const ZcGeVector3d& x,
    const ZcGeVector3d& y, const QString& text, double advance)
{
    DisplayText shown;
    shown.at = Project(toWorld, at);
    shown.text = text;
    shown.xAxis = ProjectVector(toWorld, x);
    shown.yAxis = ProjectVector(toWorld, y);
    shown.height = std::hypot(shown.yAxis.x(), shown.yAxis.y());
    shown.rotation = std::atan2(shown.xAxis.y(), shown.xAxis.x());
    shown.advance = advance;
    return shown;
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

QString DisplayListBuilder::NotShownSummary() const
{
    QStringList parts;
    for (const auto& [kind, count] : m_notShown)
        parts.append(QStringLiteral("%1 个 %2").arg(count).arg(kind));
    return parts.isEmpty() ? QString() : QStringLiteral("未显示: ") + parts.join(QStringLiteral(", "));
}

void DisplayListBuilder::CountNotShown(const QString& kind) const
{
    ++m_notShown[kind];
}

void DisplayListBuilder::Build(ZcDbDatabase* database, DisplayList& list) const
{
    list.Clear();
    m_notShown.clear();
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
        DisplayListBuilder other(*this);
        std::thread worker([&] { other.BuildRange(database, serial, indexes.subspan(half), second); });
        BuildRange(database, serial, indexes.first(half), list);
        worker.join();
        list.Append(std::move(second));
        for (const auto& [kind, count] : other.m_notShown)
            m_notShown[kind] += count;
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
    m_layerLineTypes.clear();
    m_lastLayer = {};
    m_lastCode = {};
    m_list = &list;
    list.Reserve(indexes.size());
    Place place;
    place.blockLook = { qRgb(255, 255, 255) };
    for (const quint32 index : indexes) {
        const ZcDbObjectId id(serial, index);
        ZcDbEntity* entity = nullptr;
        if (zcdbOpenObject(entity, id, ZcDb::kForRead) != Zcad::eOk)
            continue;
        AddEntity(*entity, place, database, id, list);
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

const ZcDbLayerTableRecord* DisplayListBuilder::EffectiveLayer(
    const ZcDbEntity& entity, ZcDbDatabase* database, const Place& place) const
{
    // Inside a block, what lies on layer 0 takes the layer of the reference.
    if (place.depth > 0 && place.blockLayer && entity.layer() == u"0")
        return place.blockLayer;
    return LayerOf(entity, database);
}

void DisplayListBuilder::TakeLineType(
    const ZcDbEntity& entity, ZcDbDatabase* database, const Place& place, Look& look) const
{
    if (!database)
        return;
    const auto usable = [](const ZcDbLineType* lineType) {
        return lineType && lineType->pattern.size() >= 2 && lineType->patternLength() > 0 ? lineType
                                                                                          : nullptr;
    };
    // Most entities are drawn by layer at scale 1: their layer's line type is
    // looked up once a build.
    if (entity.lineStyleIndex() == 0) {
        const ZcDbLayerTableRecord* layer = EffectiveLayer(entity, database, place);
        auto it = m_layerLineTypes.constFind(layer);
        if (it == m_layerLineTypes.cend())
            it = m_layerLineTypes.insert(
                layer, layer ? usable(database->lineType(layer->linetype)) : nullptr);
        look.drawingLineType = *it;
        look.patternScale = database->lineTypeScale();
        return;
    }
    const ZcDbLineStyle& style = database->lineStyle(entity.lineStyleIndex());
    QString name = style.lineType;
    double scale = style.scale;
    if (name.compare(u"BYBLOCK", Qt::CaseInsensitive) == 0) {
        name = place.blockLineType;
        scale *= place.blockLineTypeScale;
    } else if (name.compare(u"BYLAYER", Qt::CaseInsensitive) == 0) {
        const ZcDbLayerTableRecord* layer = EffectiveLayer(entity, database, place);
        name = layer ? layer->linetype : QString();
    }
    const ZcDbLineType* lineType = usable(name.isEmpty() ? nullptr : database->lineType(name));
    if (!lineType)
        return;
    look.drawingLineType = lineType;
    look.patternScale = scale * database->lineTypeScale();
}

DisplayListBuilder::Look DisplayListBuilder::LookOf(
    const ZcDbEntity& entity, ZcDbDatabase* database, const Place& place) const
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
    const ZcDbLayerTableRecord* layer = EffectiveLayer(entity, database, place);
    if (entity.hasTrueColor())
        look.color = 0xFF000000u | entity.trueColor();
    else if (entity.colorIndex() == kZcColorByBlock)
        look.color = place.blockLook.color;
    else if (entity.colorIndex() != kZcColorByLayer)
        look.color = AciColor(entity.colorIndex()).rgba();
    else
        look.color = LayerColor(layer).rgba();
    TakeLineType(entity, database, place, look);
    return look;
}

void DisplayListBuilder::AddEntity(const ZcDbEntity& entity, const Place& place, ZcDbDatabase* database,
    ZcDbObjectId id, DisplayList& list) const
{
    if (database) {
        const ZcDbLayerTableRecord* layer = EffectiveLayer(entity, database, place);
        if (layer && (layer->isOff || layer->isFrozen))
            return;
    }
    const Look look = LookOf(entity, database, place);
    const bool top = place.depth == 0;
    if (const QvKsEntity* product = QvKsEntity::cast(&entity)) {
        const ZcDbEntity* shape = product->shape();
        if (const ZcDbProxyEntity* proxy = ZcDbProxyEntity::cast(shape)) {
            if (!AddProxy(*proxy, look, place, database, list))
                CountNotShown(proxy->originalDxfName().toUpper());
        } else if (shape && !(top && AddDrawnShape(*shape, look, id, list))) {
            AddShape(*shape, look, place, list);
        }
        return;
    }
    if (const ZcDbBlockReference* reference = ZcDbBlockReference::cast(&entity)) {
        AddReference(*reference, look, place, database, list);
        return;
    }
    if (const ZcDbProxyEntity* proxy = ZcDbProxyEntity::cast(&entity)) {
        if (!AddProxy(*proxy, look, place, database, list))
            CountNotShown(proxy->originalDxfName().toUpper());
        return;
    }
    if (!(top && AddDrawnShape(entity, look, id, list)))
        AddShape(entity, look, place, list);
}

void DisplayListBuilder::AddReference(const ZcDbBlockReference& reference, const Look& look,
    const Place& place, ZcDbDatabase* database, DisplayList& list) const
{
    // Block coordinates: moved off the block's base point, scaled, turned, placed,
    // then taken out of the reference's own coordinate system. A grid of copies
    // places each apart by the spacing, turned with the reference but not scaled.
    ZcDbBlockTableRecord* block = nullptr;
    ZcGePoint3d origin;
    if (zcdbOpenObject(block, reference.blockTableRecord(), ZcDb::kForRead) == Zcad::eOk) {
        origin = block->origin();
        block->close();
    }
    const ZcGeVector3d scale = reference.scaleFactors();
    const ZcGeMatrix3d ocs = Through(place.toWorld, reference.normal());
    const ZcGeMatrix3d local = ZcGeMatrix3d::rotationZ(reference.rotation())
        * ZcGeMatrix3d::scaling(scale.x, scale.y, scale.z)
        * ZcGeMatrix3d::translation({ -origin.x, -origin.y, -origin.z });
    const double c = std::cos(reference.rotation());
    const double s = std::sin(reference.rotation());
    const int columns = std::max(1, reference.columns());
    const int rows = std::max(1, reference.rows());
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            const double dx = column * reference.columnSpacing();
            const double dy = row * reference.rowSpacing();
            if ((row > 0 && reference.rowSpacing() == 0) || (column > 0 && reference.columnSpacing() == 0))
                continue;
            const ZcGePoint3d at = reference.position() + ZcGeVector3d(dx * c - dy * s, dx * s + dy * c, 0);
            const ZcGeMatrix3d toWorld = ocs * ZcGeMatrix3d::translation({ at.x, at.y, at.z }) * local;
            AddBlock(reference.blockTableRecord(), toWorld, reference, look, place, database, list);
        }
    // The attributes are placed already, in the coordinates the reference lies in.
    for (const ZcDbAttribute* attribute : reference.attributes())
        if (attribute && !attribute->isInvisible())
            AddEntity(*attribute, place, database, ZcDbObjectId::kNull, list);
}

void DisplayListBuilder::AddBlock(ZcDbObjectId blockId, const ZcGeMatrix3d& toWorld,
    const ZcDbEntity& reference, const Look& look, const Place& place, ZcDbDatabase* database,
    DisplayList& list) const
{
    if (blockId.isNull() || place.depth >= kMaxBlockDepth
        || std::find(place.blocks.begin(), place.blocks.end(), blockId) != place.blocks.end())
        return;
    ZcDbBlockTableRecord* block = nullptr;
    if (zcdbOpenObject(block, blockId, ZcDb::kForRead) != Zcad::eOk)
        return;
    Place inner;
    inner.toWorld = toWorld;
    inner.plain = false;
    inner.blockLook = look;
    inner.depth = place.depth + 1;
    inner.blocks = place.blocks;
    inner.blocks.push_back(blockId);
    inner.blockLayer = EffectiveLayer(reference, database, place);
    if (database) {
        const ZcDbLineStyle& style = database->lineStyle(reference.lineStyleIndex());
        inner.blockLineType = style.lineType;
        inner.blockLineTypeScale = style.scale;
        if (style.lineType.compare(u"BYLAYER", Qt::CaseInsensitive) == 0)
            inner.blockLineType = inner.blockLayer ? inner.blockLayer->linetype : QString();
        else if (style.lineType.compare(u"BYBLOCK", Qt::CaseInsensitive) == 0) {
            inner.blockLineType = place.blockLineType;
            inner.blockLineTypeScale *= place.blockLineTypeScale;
        }
    }
    const quint32 serial = blockId.databaseSerial();
    for (const quint32 index : block->entityIndexes()) {
        ZcDbEntity* entity = nullptr;
        if (zcdbOpenObject(entity, ZcDbObjectId(serial, index), ZcDb::kForRead) != Zcad::eOk)
            continue;
        // Definitions of attributes show in the references' attributes instead.
        if (!ZcDbAttributeDefinition::cast(entity) && !entity->isErased())
            AddEntity(*entity, inner, database, ZcDbObjectId::kNull, list);
        entity->close();
    }
    block->close();
}

bool DisplayListBuilder::AddDrawnShape(
    const ZcDbEntity& entity, const Look& look, ZcDbObjectId id, DisplayList& list) const
{
    if (look.lineType || look.drawingLineType)
        return false;
    m_shapePoints.clear();
    if (const ZcDbLine* line = ZcDbLine::cast(&entity)) {
        m_shapePoints.push_back(QPointF(line->startPoint().x, line->startPoint().y));
        m_shapePoints.push_back(QPointF(line->endPoint().x, line->endPoint().y));
    } else if (const ZcDbPolyline* polyline = ZcDbPolyline::cast(&entity)) {
        if (!IsUp(polyline->normal()) || polyline->constantWidth() > 0)
            return false;
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

void DisplayListBuilder::AddShape(
    const ZcDbEntity& entity, const Look& look, const Place& place, DisplayList& list) const
{
    if (const ZcDbLine* line = ZcDbLine::cast(&entity)) {
        AddLocalPath({ line->startPoint(), line->endPoint() }, false, place.toWorld, look, list);
    } else if (const ZcDbPolyline* polyline = ZcDbPolyline::cast(&entity)) {
        AddPolyline(*polyline, look, place, list);
    } else if (const ZcDbArc* arc = ZcDbArc::cast(&entity)) {
        Points3 points;
        DrawingGeometry::AddArc(points, arc->center().x, arc->center().y, arc->center().z, arc->radius(),
            arc->startAngle(), arc->endAngle());
        AddLocalPath(points, false, Through(place.toWorld, arc->normal()), look, list);
    } else if (const ZcDbCircle* circle = ZcDbCircle::cast(&entity)) {
        Points3 points;
        DrawingGeometry::AddArc(
            points, circle->center().x, circle->center().y, circle->center().z, circle->radius(), 0, 2 * kPi);
        points.pop_back();
        AddLocalPath(points, true, Through(place.toWorld, circle->normal()), look, list);
    } else if (const ZcDbText* text = ZcDbText::cast(&entity)) {
        AddText(*text, look, place, list);
    } else if (const ZcDbMText* mtext = ZcDbMText::cast(&entity)) {
        AddMText(*mtext, look, place, list);
    }
}

void DisplayListBuilder::AddPolyline(
    const ZcDbPolyline& polyline, const Look& look, const Place& place, DisplayList& list) const
{
    const auto& v = polyline.vertices();
    if (v.empty())
        return;
    const ZcGeMatrix3d toWorld = Through(place.toWorld, polyline.normal());
    const double z = polyline.elevation();
    if (polyline.constantWidth() > 0 && v.size() > 1) {
        // A wide polyline covers an area, segment by segment.
        std::vector<DrawingGeometry::WideVertex> wide;
        for (const ZcDbPolyline::Vertex& vertex : v)
            wide.push_back(
                { vertex.x, vertex.y, vertex.bulge, polyline.constantWidth(), polyline.constantWidth() });
        for (const Points3& band : DrawingGeometry::WideSegments(wide, polyline.isClosed(), z))
            AddLocalFill({ band }, toWorld, look, list);
        return;
    }
    Points3 points { { v[0].x, v[0].y, z } };
    const size_t segments = polyline.isClosed() ? v.size() : v.size() - 1;
    for (size_t i = 0; i < segments; ++i) {
        const auto& b = v[(i + 1) % v.size()];
        DrawingGeometry::AddBulge(points, { v[i].x, v[i].y, z }, { b.x, b.y, z }, v[i].bulge);
    }
    AddLocalPath(points, false, toWorld, look, list);
}

void DisplayListBuilder::AddText(
    const ZcDbText& text, const Look& look, const Place& place, DisplayList& list) const
{
    const ZcDbAttributeDefinition* definition = ZcDbAttributeDefinition::cast(&text);
    const QString shown = DrawingTexts::PlainText(definition ? definition->tag() : text.textString());
    const double h = text.height();
    if (shown.isEmpty() || !(h > 0))
        return;
    const double advance = DrawingTexts::Advance(shown);
    const double width = advance * h;
    const int horizontal = text.horizontalMode();
    const int vertical = text.verticalMode();
    // Aligned (3) and fit (5) run from the position to the alignment point, at its
    // angle; aligned keeps the proportions, fit only stretches.
    const bool between = horizontal == 3 || horizontal == 5;
    const ZcGePoint3d& p = text.position();
    const ZcGePoint3d& q = text.alignmentPoint();
    double angle = text.rotation();
    double sx = text.widthFactor();
    double sy = 1.0;
    if (between && (q.x != p.x || q.y != p.y)) {
        angle = std::atan2(q.y - p.y, q.x - p.x);
        const double stretch = std::hypot(q.x - p.x, q.y - p.y) / width;
        sx = stretch;
        sy = horizontal == 3 ? stretch : 1.0;
    }
    if (text.generationFlags() & 2)
        sx = -sx;
    if (text.generationFlags() & 4)
        sy = -sy;
    // The point the text hangs from, in units of the text before stretching.
    const double ax = horizontal == 1 || horizontal == 4 || between ? width / 2
        : horizontal == 2                                           ? width
                                                                    : 0.0;
    double ay = 0.0;
    if (horizontal == 4 && vertical == 0)
        ay = h * kLowerCaseHeight / 2;
    else if (vertical == 1)
        ay = -h * kDescent;
    else if (vertical == 2)
        ay = h / 2;
    else if (vertical == 3)
        ay = h;
    const ZcGePoint3d anchor = horizontal == 0 && vertical == 0 ? p
        : between ? ZcGePoint3d((p.x + q.x) / 2, (p.y + q.y) / 2, p.z)
                  : q;
    const ZcGeVector3d along(std::cos(angle), std::sin(angle), 0);
    const ZcGeVector3d up(-along.y, along.x, 0);
    const ZcGeVector3d x = Scaled(along, sx);
    // A slanted text leans its upright strokes forward along the baseline.
    const double slant = std::tan(std::clamp(text.oblique(), -1.4, 1.4));
    const ZcGeVector3d y(up.x * sy + along.x * slant, up.y * sy + along.y * slant, 0);
    const ZcGePoint3d start = Along(anchor, x, -ax, Scaled(up, sy), -ay);
    list.AddText(
        TextFrame(Through(place.toWorld, text.normal()), start, Scaled(x, h), Scaled(y, h), shown, advance),
        look.color);
}

void DisplayListBuilder::AddMText(
    const ZcDbMText& mtext, const Look& look, const Place& place, DisplayList& list) const
{
    // The location and direction are the drawing's; seen from below (an extrusion
    // pointing down) the lines run upside down.
    const ZcGeVector3d x(std::cos(mtext.rotation()), std::sin(mtext.rotation()), 0);
    const double flip = mtext.normal().z < 0 ? -1.0 : 1.0;
    const ZcGeVector3d y(-x.y * flip, x.x * flip, 0);
    AddMTextLines(mtext.contents(), mtext.location(), x, y, mtext.textHeight(), mtext.width(),
        mtext.attachment(), mtext.lineSpacingFactor(), look, place.toWorld, list);
}

void DisplayListBuilder::AddMTextLines(const QString& contents, const ZcGePoint3d& at, const ZcGeVector3d& x,
    const ZcGeVector3d& y, double height, double width, int attachment, double lineSpacing, const Look& look,
    const ZcGeMatrix3d& toWorld, DisplayList& list) const
{
    if (!(height > 0))
        return;
    const std::vector<DrawingTexts::Line> lines = DrawingTexts::LayOut(contents, height, width);
    // Baselines from the top of the first line's capitals down.
    std::vector<double> baselines;
    double baseline = 0.0;
    double boxWidth = width;
    for (size_t i = 0; i < lines.size(); ++i) {
        baseline -= i == 0 ? lines[i].height : lines[i].height * kLineSpacing * lineSpacing;
        baselines.push_back(baseline);
        if (width <= 0)
            boxWidth = std::max(boxWidth, lines[i].width);
    }
    if (lines.empty())
        return;
    const int column = (std::clamp(attachment, 1, 9) - 1) % 3;
    const int row = (std::clamp(attachment, 1, 9) - 1) / 3;
    const double ax = column == 0 ? 0.0 : column == 1 ? boxWidth / 2 : boxWidth;
    const double ay = row == 0 ? 0.0
        : row == 1 ? (baselines.front() + lines.front().height * kLowerCaseHeight + baselines.back()) / 2
                   : baselines.back() - lines.back().height * kDescent;
    for (size_t i = 0; i < lines.size(); ++i) {
        const DrawingTexts::Line& line = lines[i];
        const double lineX = (column == 0          ? 0.0
                                     : column == 1 ? (boxWidth - line.width) / 2
                                                   : boxWidth - line.width)
            - ax;
        const double lineY = baselines[i] - ay;
        for (const DrawingTexts::Run& run : line.runs) {
            const QRgb color = run.color ? *run.color : look.color;
            const Look runLook { color, look.width };
            const ZcGePoint3d start = Along(at, x, lineX + run.x, y, lineY + run.rise);
            const double h = run.height;
            if (!run.text.trimmed().isEmpty())
                list.AddText(TextFrame(toWorld, start, Scaled(x, h * run.widthFactor), Scaled(y, h), run.text,
                                 DrawingTexts::Advance(run.text)),
                    color);
            const auto stroke = [&](double rise, double length) {
                AddLocalPath({ Along(start, x, 0, y, rise), Along(start, x, length, y, rise) }, false,
                    toWorld, runLook, list);
            };
            if (run.underline)
                stroke(-h * 0.2, run.width);
            if (run.overline)
                stroke(h * 1.2, run.width);
            if (run.strike)
                stroke(h * 0.5, run.width);
            if (run.fractionBar > 0)
                stroke(-h * 0.2, run.fractionBar);
        }
    }
}

bool DisplayListBuilder::AddProxy(const ZcDbProxyEntity& proxy, const Look& look, const Place& place,
    ZcDbDatabase* database, DisplayList& list) const
{
    const ProxyShapes shapes = ProxyShapeReader::Read(proxy);
    if (!shapes.understood)
        return false;
    for (const Points3& path : shapes.paths)
        AddLocalPath(path, false, place.toWorld, look, list);
    for (const Points3& path : shapes.closedPaths)
        AddLocalPath(path, true, place.toWorld, look, list);
    for (const std::vector<Points3>& fill : shapes.fills)
        AddLocalFill(fill, place.toWorld, look, list);
    for (const ZcGePoint3d& point : shapes.points) {
        const QPointF at = Project(place.toWorld, point);
        list.AddPath(std::span<const QPointF>(&at, 1), false, { look.color, look.width });
    }
    for (const ProxyText& text : shapes.texts) {
        const ZcGeVector3d x = text.direction.length() > 0
            ? Scaled(text.direction, 1.0 / text.direction.length())
            : ZcGeVector3d(1, 0, 0);
        AddMTextLines(text.contents, text.at, x, ZcGeVector3d(-x.y, x.x, 0), text.height, text.width,
            text.attachment, 1.0, look, place.toWorld, list);
    }
    if (!shapes.blockName.isEmpty() && database) {
        ZcDbBlockTable* table = nullptr;
        ZcDbObjectId blockId;
        if (database->getBlockTable(table, ZcDb::kForRead) == Zcad::eOk) {
            table->getAt(shapes.blockName, blockId, true);
            table->close();
        }
        AddBlock(blockId, place.toWorld, proxy, look, place, database, list);
    }
    return true;
}

void DisplayListBuilder::AddLocalPath(const Points3& points, bool closed, const ZcGeMatrix3d& toWorld,
    const Look& look, DisplayList& list) const
{
    Points world;
    world.reserve(points.size());
    for (const ZcGePoint3d& p : points)
        world.push_back(Project(toWorld, p));
    AddPath(world, closed, look, list);
}

void DisplayListBuilder::AddLocalFill(
    const std::vector<Points3>& rings, const ZcGeMatrix3d& toWorld, const Look& look, DisplayList& list) const
{
    std::vector<Points> world;
    for (const Points3& ring : rings) {
        Points& shown = world.emplace_back();
        for (const ZcGePoint3d& p : ring)
            shown.push_back(Project(toWorld, p));
    }
    list.AddFill(world, look.color);
}

void DisplayListBuilder::AddPath(
    std::span<const QPointF> points, bool closed, const Look& look, DisplayList& list) const
{
    if (points.empty())
        return;
    if ((look.lineType || look.drawingLineType) && points.size() > 1) {
        Points run(points.begin(), points.end());
        if (closed)
            run.push_back(points.front());
        if (look.lineType)
            AddPattern(run, look, list);
        else
            AddDashes(run, look, list);
        return;
    }
    list.AddPath(points, closed, { look.color, look.width });
}

void DisplayListBuilder::AddDashes(std::span<const QPointF> points, const Look& look, DisplayList& list) const
{
    // The pattern starts afresh at the path's start and runs on over its corners.
    std::vector<double> cumulative { 0.0 };
    for (size_t i = 1; i < points.size(); ++i)
        cumulative.push_back(cumulative.back() + QLineF(points[i - 1], points[i]).length());
    const double total = cumulative.back();
    const std::vector<double>& pattern = look.drawingLineType->pattern;
    const double period = look.drawingLineType->patternLength() * look.patternScale;
    if (!(period > 0) || total / period > kMaxRepeats) {
        list.AddPath(points, false, { look.color, look.width });
        return;
    }
    double at = 0.0;
    double angle = 0.0;
    Points dash;
    while (at < total) {
        for (const double element : pattern) {
            if (at >= total)
                break;
            const double length = std::abs(element) * look.patternScale;
            if (element >= 0) {
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
