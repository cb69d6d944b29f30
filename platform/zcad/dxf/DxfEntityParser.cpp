#include "DxfEntityParser.h"

#include "DxfTextCodec.h"
#include "ZcDbArc.h"
#include "ZcDbAttribute.h"
#include "ZcDbAttributeDefinition.h"
#include "ZcDbBlockReference.h"
#include "ZcDbCircle.h"
#include "ZcDbLine.h"
#include "ZcDbMText.h"
#include "ZcDbProxyEntity.h"
#include "ZcDbText.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <numbers>

namespace {
constexpr size_t kMaxPooledLength = 64;
constexpr size_t kMaxPoolSize = 16384;
constexpr size_t kMaxXDataKeyLength = 512;
constexpr size_t kMaxXDataPoolSize = 16384;
// Look-ups a full pool gets before its use is judged.
constexpr size_t kTrialLookups = 4096;

double radians(double degrees)
{
    return degrees * std::numbers::pi / 180.0;
}

quint64 parseHandle(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '0'))
        text.remove_prefix(1);
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    if (text.size() > 16)
        return 0;
    quint64 value = 0;
    const auto [end, ec] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    return ec == std::errc() && end == text.data() + text.size() ? value : 0;
}

// The kinds made into entities of their own class, and those read as parts of
// others (a block's header, a polyline's vertices).
bool hasOwnClass(std::string_view type)
{
    static constexpr std::string_view kKinds[] = { "LINE", "LWPOLYLINE", "POLYLINE", "CIRCLE", "ARC", "TEXT",
        "ATTDEF", "ATTRIB", "MTEXT", "INSERT", "BLOCK", "VERTEX", "SEQEND", "ENDBLK" };
    return std::find(std::begin(kKinds), std::end(kKinds), type) != std::end(kKinds);
}

double finiteOr(double value, double fallback)
{
    return std::isfinite(value) ? value : fallback;
}
} // namespace

QString DxfStringPool::decode(std::string_view bytes)
{
    return m_codec.decode(bytes);
}

void DxfStringPool::Use::count(bool full, bool hit)
{
    if (!full)
        return;
    ++(hit ? hitsWhenFull : missesWhenFull);
    off = missesWhenFull > kTrialLookups && missesWhenFull > 4 * hitsWhenFull;
}

QString DxfStringPool::get(std::string_view bytes)
{
    // The few texts that come again and again (layers, application names) are at
    // hand without a look-up in the pool.
    for (const Recent& recent : m_recent)
        if (!recent.bytes.empty() && recent.bytes == bytes)
            return recent.text;
    bool repeated = false;
    QString text = lookUp(bytes, repeated);
    if (repeated) {
        Recent& recent = m_recent[m_nextRecent++ % m_recent.size()];
        recent.bytes.assign(bytes);
        recent.text = text;
    }
    return text;
}

QString DxfStringPool::lookUp(std::string_view bytes, bool& repeated)
{
    if (bytes.size() > kMaxPooledLength || m_poolUse.off)
        return m_codec.decode(bytes);
    const bool full = m_pool.size() >= kMaxPoolSize;
    const auto it = m_pool.find(bytes);
    m_poolUse.count(full, it != m_pool.end());
    if (it != m_pool.end()) {
        repeated = true;
        return it->second;
    }
    QString text = m_codec.decode(bytes);
    if (!full)
        m_pool.emplace(std::string(bytes), text);
    return text;
}

std::shared_ptr<const std::vector<ZcDbXDataApp>> DxfStringPool::sharedXData(const std::string& key)
{
    if (m_xdataPoolUse.off || key.size() > kMaxXDataKeyLength)
        return nullptr;
    std::shared_ptr<const std::vector<ZcDbXDataApp>> kept = m_xdataPool.find(key);
    m_xdataPoolUse.count(m_xdataPool.size() >= kMaxXDataPoolSize, kept != nullptr);
    return kept;
}

void DxfStringPool::keepXData(const std::string& key, std::shared_ptr<const std::vector<ZcDbXDataApp>> xdata)
{
    if (key.size() <= kMaxXDataKeyLength && m_xdataPool.size() < kMaxXDataPoolSize)
        m_xdataPool.insert(key, std::move(xdata));
}

DxfEntityParser::DxfEntityParser(DxfStringPool& strings)
    : m_strings(strings)
{ }

void DxfEntityParser::begin(std::string_view type)
{
    m_type = type;
    m_isLwPolyline = type == "LWPOLYLINE";
    m_embedded = false;
    m_handle = 0;
    m_layer = "0";
    m_color = 256;
    m_trueColor = -1;
    m_paperSpace = false;
    m_p10 = m_p11 = ZcGePoint3d();
    m_has11 = false;
    m_has41 = m_has42 = m_has43 = false;
    m_r40 = 0.0;
    m_r41 = m_r42 = m_r43 = 1.0;
    m_a50 = m_a51 = 0.0;
    m_elevation = 0.0;
    m_r44 = m_r45 = 0.0;
    m_ltScale = 1.0;
    m_normal = ZcGeVector3d(0.0, 0.0, 1.0);
    m_lineType = {};
    m_s1 = m_s2 = m_s3 = {};
    m_mtextChunks.clear();
    m_flags66 = m_flags70 = m_i71 = m_i72 = m_i73 = m_i74 = 0;
    m_vertices.clear();
    m_xdataGroups.clear();
    m_xdataKey.clear();
    // A polyline is a mesh or an outline: known from its flags, read later.
    m_keepGroups = !hasOwnClass(type) || type == "POLYLINE";
    m_groups.clear();
}

void DxfEntityParser::readGroups(DxfGroupReader& reader)
{
    DxfGroup group;
    while (reader.next(group)) {
        if (group.code == 0) {
            reader.pushBack();
            return;
        }
        if (m_keepGroups)
            keep(group, reader.isBinary());
        if (group.code >= 1000)
            takeXData(group);
        else if (!m_embedded)
            take(group);
    }
}

void DxfEntityParser::take(const DxfGroup& g)
{
    switch (g.code) {
    case 5:
        m_handle = parseHandle(g.text);
        break;
    case 8:
        m_layer = g.text;
        break;
    case 62:
        m_color = int(g.toInt());
        break;
    case 420:
        m_trueColor = g.toInt() & 0xFFFFFF;
        break;
    case 67:
        m_paperSpace = g.toInt() == 1;
        break;
    case 101:
        // An embedded object (the multi-line text of an attribute): not ours.
        m_embedded = true;
        break;
    case 10:
        if (m_isLwPolyline)
            m_vertices.push_back({ finiteOr(g.toDouble(), 0.0), 0.0, 0.0 });
        else
            m_p10.x = finiteOr(g.toDouble(), 0.0);
        break;
    case 20:
        if (m_isLwPolyline) {
            if (!m_vertices.empty())
                m_vertices.back().y = finiteOr(g.toDouble(), 0.0);
        } else {
            m_p10.y = finiteOr(g.toDouble(), 0.0);
        }
        break;
    case 30:
        m_p10.z = finiteOr(g.toDouble(), 0.0);
        break;
    case 11:
        m_p11.x = finiteOr(g.toDouble(), 0.0);
        m_has11 = true;
        break;
    case 21:
        m_p11.y = finiteOr(g.toDouble(), 0.0);
        break;
    case 31:
        m_p11.z = finiteOr(g.toDouble(), 0.0);
        break;
    case 210:
        m_normal.x = finiteOr(g.toDouble(), 0.0);
        break;
    case 220:
        m_normal.y = finiteOr(g.toDouble(), 0.0);
        break;
    case 230:
        m_normal.z = finiteOr(g.toDouble(), 1.0);
        break;
    case 6:
        m_lineType = g.text;
        break;
    case 48:
        m_ltScale = finiteOr(g.toDouble(), 1.0);
        break;
    case 44:
        m_r44 = finiteOr(g.toDouble(), 0.0);
        break;
    case 45:
        m_r45 = finiteOr(g.toDouble(), 0.0);
        break;
    case 38:
        m_elevation = finiteOr(g.toDouble(), 0.0);
        break;
    case 40:
        m_r40 = finiteOr(g.toDouble(), 0.0);
        break;
    case 41:
        m_r41 = finiteOr(g.toDouble(), 1.0);
        m_has41 = true;
        break;
    case 42:
        if (m_isLwPolyline) {
            if (!m_vertices.empty())
                m_vertices.back().bulge = finiteOr(g.toDouble(), 0.0);
        } else {
            m_r42 = finiteOr(g.toDouble(), 1.0);
            m_has42 = true;
        }
        break;
    case 43:
        m_r43 = finiteOr(g.toDouble(), 1.0);
        m_has43 = true;
        break;
    case 50:
        m_a50 = finiteOr(g.toDouble(), 0.0);
        break;
    case 51:
        m_a51 = finiteOr(g.toDouble(), 0.0);
        break;
    case 1:
        m_s1 = g.text;
        break;
    case 2:
        m_s2 = g.text;
        break;
    case 3:
        if (m_type == "MTEXT")
            m_mtextChunks.append(g.text);
        else
            m_s3 = g.text;
        break;
    case 66:
        m_flags66 = int(g.toInt());
        break;
    case 70:
        m_flags70 = int(g.toInt());
        break;
    case 71:
        m_i71 = int(g.toInt());
        break;
    case 72:
        m_i72 = int(g.toInt());
        break;
    case 73:
        m_i73 = int(g.toInt());
        break;
    case 74:
        m_i74 = int(g.toInt());
        break;
    default:
        break;
    }
}

void DxfEntityParser::keep(const DxfGroup& g, bool binary)
{
    if (g.binaryNumber) {
        // A number of a binary drawing is either a real or an integer; the other is 0.
        const QByteArray number
            = g.real != 0.0 ? QByteArray::number(g.real, 'g', 17) : QByteArray::number(g.integer);
        ZcDbProxyEntity::appendPacked(m_groups, g.code, number);
    } else if (binary && ((g.code >= 310 && g.code <= 319) || g.code == 1004)) {
        // Binary chunks as the hexadecimal digits a text drawing holds.
        ZcDbProxyEntity::appendPacked(
            m_groups, g.code, QByteArray(g.text.data(), qsizetype(g.text.size())).toHex().toUpper());
    } else if (std::all_of(g.text.begin(), g.text.end(), [](char c) { return quint8(c) < 0x80; })) {
        // Numbers and names are plain ASCII, the same in UTF-8.
        ZcDbProxyEntity::appendPacked(
            m_groups, g.code, QByteArrayView(g.text.data(), qsizetype(g.text.size())));
    } else {
        ZcDbProxyEntity::appendPacked(m_groups, g.code, m_strings.decode(g.text).toUtf8());
    }
}

void DxfEntityParser::takeXData(const DxfGroup& g)
{
    // Values before the first application name belong to none: dropped.
    if (g.code != 1001 && m_xdataGroups.empty())
        return;
    m_xdataGroups.push_back(g);
    const auto append = [this](const auto& value) {
        m_xdataKey.append(reinterpret_cast<const char*>(&value), sizeof value);
    };
    append(g.code);
    append(g.binaryNumber);
    if (g.binaryNumber) {
        append(g.real);
        append(g.integer);
    } else {
        append(g.text.size());
        m_xdataKey.append(g.text);
    }
}

std::shared_ptr<const std::vector<ZcDbXDataApp>> DxfEntityParser::makeXData()
{
    if (m_xdataGroups.empty())
        return nullptr;
    if (auto shared = m_strings.sharedXData(m_xdataKey))
        return shared;
    auto apps = std::make_shared<std::vector<ZcDbXDataApp>>();
    for (const DxfGroup& g : m_xdataGroups) {
        if (g.code == 1001) {
            apps->push_back({ m_strings.get(g.text), {} });
            continue;
        }
        std::vector<ZcDbXDataValue>& values = apps->back().values;
        const int code = g.code;
        if ((code >= 1000 && code <= 1009)) {
            values.push_back(ZcDbXDataValue::string(m_strings.get(g.text), code));
        } else if (code >= 1010 && code <= 1019) {
            values.push_back(ZcDbXDataValue::point({ finiteOr(g.toDouble(), 0.0), 0.0, 0.0 }, code));
        } else if (code >= 1020 && code <= 1039) {
            // The y or z of the point the matching 101x group began.
            const int axis = code >= 1030 ? 2 : 1;
            if (!values.empty() && values.back().code == code - 10 * axis)
                values.back().value[axis] = finiteOr(g.toDouble(), 0.0);
        } else if (code >= 1040 && code <= 1042) {
            values.push_back(ZcDbXDataValue::real(finiteOr(g.toDouble(), 0.0), code));
        } else if (code == 1070 || code == 1071) {
            values.push_back(ZcDbXDataValue::integer(qint32(g.toInt()), code));
        }
    }
    m_strings.keepXData(m_xdataKey, apps);
    return apps;
}

QString DxfEntityParser::lineTypeName() const
{
    return m_lineType.empty() ? QString() : m_strings.get(m_lineType);
}

void DxfEntityParser::appendGroupsFrom(const DxfEntityParser& part)
{
    ZcDbProxyEntity::appendPacked(
        m_groups, 0, QByteArrayView(part.m_type.data(), qsizetype(part.m_type.size())));
    m_groups.append(part.m_groups);
}

QString DxfEntityParser::blockName() const
{
    return m_strings.get(m_s2);
}

void DxfEntityParser::appendVertexFrom(const DxfEntityParser& vertex)
{
    // Spline frame points and face records of meshes are no outline vertices.
    if (vertex.m_flags70 & (16 | 128))
        return;
    if (m_vertices.empty())
        m_elevation = vertex.m_p10.z;
    m_vertices.push_back({ vertex.m_p10.x, vertex.m_p10.y, vertex.m_has42 ? vertex.m_r42 : 0.0 });
}

void DxfEntityParser::applyCommon(ZcDbEntity& entity)
{
    entity.setHandle(m_handle);
    entity.setLayer(m_layer.empty() ? QStringLiteral("0") : m_strings.get(m_layer));
    const int color = std::abs(m_color);
    entity.setColorIndex(quint16(color <= 256 ? color : 256));
    if (m_trueColor >= 0)
        entity.setTrueColor(quint32(m_trueColor));
    if (auto xdata = makeXData())
        entity.setXDataAll(std::move(xdata));
}

std::unique_ptr<ZcDbEntity> DxfEntityParser::buildText()
{
    const QString text = m_strings.decode(m_s1);
    std::unique_ptr<ZcDbText> entity;
    if (m_type == "ATTDEF") {
        auto definition = std::make_unique<ZcDbAttributeDefinition>();
        definition->setTag(m_strings.get(m_s2));
        definition->setPrompt(m_strings.decode(m_s3));
        definition->setFlags(m_flags70);
        definition->setVerticalMode(m_i74);
        entity = std::move(definition);
    } else if (m_type == "ATTRIB") {
        auto attribute = std::make_unique<ZcDbAttribute>();
        attribute->setTag(m_strings.get(m_s2));
        attribute->setFlags(m_flags70);
        attribute->setVerticalMode(m_i74);
        entity = std::move(attribute);
    } else {
        entity = std::make_unique<ZcDbText>();
        entity->setVerticalMode(m_i73);
    }
    entity->setTextString(text);
    entity->setPosition(m_p10);
    entity->setAlignmentPoint(m_has11 ? m_p11 : m_p10);
    entity->setHeight(m_r40);
    entity->setRotation(radians(m_a50));
    entity->setHorizontalMode(m_i72);
    entity->setWidthFactor(m_has41 && m_r41 > 0 ? m_r41 : 1.0);
    entity->setOblique(radians(m_a51));
    entity->setGenerationFlags(m_i71);
    entity->setNormal(m_normal);
    return entity;
}

std::unique_ptr<ZcDbEntity> DxfEntityParser::build()
{
    std::unique_ptr<ZcDbEntity> entity;
    if (m_type == "LINE") {
        entity = std::make_unique<ZcDbLine>(m_p10, m_p11);
    } else if (m_type == "LWPOLYLINE" || (m_type == "POLYLINE" && !isMesh())) {
        auto polyline = std::make_unique<ZcDbPolyline>();
        polyline->reserveVertices(m_vertices.size());
        for (const ZcDbPolyline::Vertex& v : m_vertices)
            polyline->appendVertex(v.x, v.y, v.bulge);
        polyline->setClosed(m_flags70 & 1);
        polyline->setElevation(m_isLwPolyline ? m_elevation : (m_vertices.empty() ? m_p10.z : m_elevation));
        // A polyline's default start and end widths, when alike, are its width.
        const double width
            = m_isLwPolyline ? (m_has43 ? m_r43 : 0.0) : (m_has41 && m_r41 != m_r40 ? 0.0 : m_r40);
        polyline->setConstantWidth(std::max(0.0, width));
        // A 3D polyline's vertices are in the world already.
        if (m_isLwPolyline || !(m_flags70 & 8))
            polyline->setNormal(m_normal);
        entity = std::move(polyline);
    } else if (m_type == "CIRCLE") {
        auto circle = std::make_unique<ZcDbCircle>(m_p10, m_r40);
        circle->setNormal(m_normal);
        entity = std::move(circle);
    } else if (m_type == "ARC") {
        auto arc = std::make_unique<ZcDbArc>(m_p10, m_r40, radians(m_a50), radians(m_a51));
        arc->setNormal(m_normal);
        entity = std::move(arc);
    } else if (m_type == "TEXT" || m_type == "ATTDEF" || m_type == "ATTRIB") {
        entity = buildText();
    } else if (m_type == "MTEXT") {
        std::string contents = m_mtextChunks;
        contents.append(m_s1);
        auto mtext
            = std::make_unique<ZcDbMText>(m_p10, m_strings.decode(contents), m_r40, m_has41 ? m_r41 : 0.0);
        // The angle of MTEXT is in degrees, or given as a direction (group 11).
        mtext->setRotation(m_has11 ? std::atan2(m_p11.y, m_p11.x) : radians(m_a50));
        mtext->setAttachment(m_i71 >= 1 && m_i71 <= 9 ? m_i71 : 1);
        mtext->setLineSpacingFactor(m_r44 > 0 ? m_r44 : 1.0);
        mtext->setNormal(m_normal);
        entity = std::move(mtext);
    } else if (m_type == "INSERT") {
        auto reference = std::make_unique<ZcDbBlockReference>();
        reference->setPosition(m_p10);
        reference->setScaleFactors({ m_r41, m_r42, m_r43 });
        reference->setRotation(radians(m_a50));
        reference->setNormal(m_normal);
        // A grid of copies (MINSERT) counts its columns and rows.
        if (m_flags70 > 1 || m_i71 > 1)
            reference->setGrid(std::clamp(m_flags70, 1, 32767), std::clamp(m_i71, 1, 32767), m_r44, m_r45);
        entity = std::move(reference);
    } else {
        auto proxy
            = std::make_unique<ZcDbProxyEntity>(QString::fromLatin1(m_type.data(), qsizetype(m_type.size())));
        proxy->setPackedDxfGroups(std::move(m_groups));
        m_groups.clear();
        entity = std::move(proxy);
    }
    applyCommon(*entity);
    return entity;
}
