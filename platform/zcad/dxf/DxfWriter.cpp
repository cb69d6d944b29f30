#include "DxfWriter.h"

#include <QIODevice>

#include <algorithm>

#include <charconv>
#include <cmath>

namespace {
constexpr qsizetype kFlushSize = 1 << 20;
const QString kProductApp = QStringLiteral("QVKS");

const char* versionCode(DxfWriter::Version version)
{
    switch (version) {
    case DxfWriter::Version::R12:
        return "AC1009";
    case DxfWriter::Version::R2000:
        return "AC1015";
    case DxfWriter::Version::R2018:
        return "AC1032";
    }
    return "AC1015";
}
} // namespace

DxfWriter::DxfWriter(QIODevice* device, Version version, const QString& codePage)
    : m_device(device)
    , m_version(version)
    , m_codePage(codePage)
{
    m_codec.configure(QString::fromLatin1(versionCode(version)), codePage);
    m_buffer.reserve(kFlushSize + 4096);
    m_failed = !device || !device->isWritable();
}

DxfWriter::~DxfWriter() = default;

void DxfWriter::flush()
{
    if (m_buffer.isEmpty() || m_failed)
        return;
    if (m_device->write(m_buffer) != m_buffer.size())
        m_failed = true;
    m_buffer.clear();
}

void DxfWriter::group(int code, const QString& value)
{
    // A line end inside a value would break the file into a wrong group.
    QString clean = value;
    clean.replace(u'\n', u' ').remove(u'\r');
    group(code, m_codec.encode(clean).constData());
}

void DxfWriter::group(int code, const char* value)
{
    char number[16];
    const auto end = std::to_chars(number, number + sizeof number, code).ptr;
    m_buffer.append(number, end - number);
    m_buffer.append('\n');
    m_buffer.append(value);
    m_buffer.append('\n');
    if (m_buffer.size() >= kFlushSize)
        flush();
}

void DxfWriter::group(int code, double value)
{
    char number[40];
    const double finite = std::isfinite(value) ? value : 0.0;
    const auto result = std::to_chars(number, number + sizeof number - 1, finite);
    *result.ptr = '\0';
    group(code, number);
}

void DxfWriter::groupInt(int code, qint64 value)
{
    char number[24];
    const auto result = std::to_chars(number, number + sizeof number - 1, value);
    *result.ptr = '\0';
    group(code, number);
}

void DxfWriter::point(int code, const ZcGePoint3d& p)
{
    group(code, p.x);
    group(code + 10, p.y);
    group(code + 20, p.z);
}

bool DxfWriter::addLayer(const QString& name, int colorIndex, const QString& linetype)
{
    DxfLayer layer;
    layer.name = name;
    layer.colorIndex = colorIndex;
    layer.linetype = linetype;
    return addLayer(layer);
}

bool DxfWriter::addLayer(const DxfLayer& layer)
{
    if (m_phase != Phase::Tables || m_failed || layer.name.isEmpty())
        return false;
    for (DxfLayer& existing : m_layers)
        if (existing.name.compare(layer.name, Qt::CaseInsensitive) == 0) {
            existing = layer;
            return true;
        }
    m_layers.append(layer);
    return true;
}

bool DxfWriter::addLinetype(const DxfLinetype& linetype)
{
    if (m_phase != Phase::Tables || m_failed || linetype.name.isEmpty())
        return false;
    for (const char* standard : { "Continuous", "ByLayer", "ByBlock" })
        if (linetype.name.compare(QLatin1String(standard), Qt::CaseInsensitive) == 0)
            return true;
    for (DxfLinetype& existing : m_linetypes)
        if (existing.name.compare(linetype.name, Qt::CaseInsensitive) == 0) {
            existing = linetype;
            return true;
        }
    m_linetypes.append(linetype);
    return true;
}

bool DxfWriter::registerApp(const QString& name)
{
    if (m_phase != Phase::Tables || m_failed || name.isEmpty())
        return false;
    if (!m_apps.contains(name, Qt::CaseInsensitive))
        m_apps.append(name);
    return true;
}

// From R2000 on a table head is an object of its own: strict readers refuse a
// head without its handle and subclass.
void DxfWriter::beginTable(const char* name, qsizetype entries)
{
    group(0, "TABLE");
    group(2, name);
    if (modern()) {
        group(5, QString::number(m_nextHandle++, 16).toUpper());
        group(100, "AcDbSymbolTable");
    }
    groupInt(70, entries);
}

void DxfWriter::writeHeaderAndTables()
{
    if (!m_apps.contains(kProductApp, Qt::CaseInsensitive))
        m_apps.append(kProductApp);
    if (!std::any_of(m_layers.begin(), m_layers.end(), [](const DxfLayer& l) { return l.name == u"0"; }))
        m_layers.prepend({ QStringLiteral("0"), 7 });
    group(0, "SECTION");
    group(2, "HEADER");
    group(9, "$ACADVER");
    group(1, versionCode(m_version));
    group(9, "$DWGCODEPAGE");
    group(3, m_codePage.toLatin1().constData());
    if (m_linetypeScale != 1.0) {
        group(9, "$LTSCALE");
        group(40, m_linetypeScale);
    }
    group(0, "ENDSEC");
    group(0, "SECTION");
    group(2, "TABLES");
    writeLinetypes();
    beginTable("LAYER", m_layers.size());
    for (const DxfLayer& layer : m_layers) {
        group(0, "LAYER");
        if (modern()) {
            group(5, QString::number(m_nextHandle++, 16).toUpper());
            group(100, "AcDbSymbolTableRecord");
            group(100, "AcDbLayerTableRecord");
        }
        group(2, layer.name);
        groupInt(70, (layer.frozen ? 1 : 0) | (layer.locked ? 4 : 0));
        // A layer that is off has its colour negative.
        // A negative index given for the colour means off as well.
        const int color = std::clamp(std::abs(layer.colorIndex), 1, 255);
        groupInt(62, layer.off || layer.colorIndex < 0 ? -color : color);
        group(6, layer.linetype.isEmpty() ? QStringLiteral("Continuous") : layer.linetype);
        if (m_version == Version::R2018 && layer.trueColor >= 0)
            groupInt(420, layer.trueColor & 0xFFFFFF);
    }
    group(0, "ENDTAB");
    beginTable("APPID", m_apps.size());
    for (const QString& app : m_apps) {
        group(0, "APPID");
        if (modern()) {
            group(5, QString::number(m_nextHandle++, 16).toUpper());
            group(100, "AcDbSymbolTableRecord");
            group(100, "AcDbRegAppTableRecord");
        }
        group(2, app);
        groupInt(70, 0);
    }
    group(0, "ENDTAB");
    group(0, "ENDSEC");
}

void DxfWriter::writeLinetypes()
{
    QList<DxfLinetype> all { { QStringLiteral("ByBlock"), QString(), {} },
        { QStringLiteral("ByLayer"), QString(), {} },
        { QStringLiteral("Continuous"), QStringLiteral("Solid line"), {} } };
    all += m_linetypes;
    beginTable("LTYPE", all.size());
    for (const DxfLinetype& linetype : all) {
        group(0, "LTYPE");
        if (modern()) {
            group(5, QString::number(m_nextHandle++, 16).toUpper());
            group(100, "AcDbSymbolTableRecord");
            group(100, "AcDbLinetypeTableRecord");
        }
        group(2, linetype.name);
        groupInt(70, 0);
        group(3, linetype.description);
        groupInt(72, 65);
        groupInt(73, linetype.dashes.size());
        double length = 0.0;
        for (double dash : linetype.dashes)
            length += std::abs(dash);
        group(40, length);
        for (double dash : linetype.dashes) {
            group(49, dash);
            if (modern())
                groupInt(74, 0);
        }
    }
    group(0, "ENDTAB");
}

bool DxfWriter::enter(Phase phase)
{
    if (m_failed || m_phase == Phase::Done)
        return false;
    if (m_phase == phase)
        return true;
    if (m_phase == Phase::Tables) {
        writeHeaderAndTables();
        group(0, "SECTION");
        group(2, "BLOCKS");
        m_phase = Phase::Blocks;
    }
    switch (phase) {
    case Phase::Tables:
        return false;
    case Phase::Blocks:
    case Phase::InBlock:
        if (m_phase != Phase::Blocks && m_phase != Phase::InBlock)
            return false;
        m_phase = phase;
        return true;
    case Phase::Entities:
    case Phase::Done:
        if (m_phase == Phase::InBlock)
            return false;
        if (m_phase == Phase::Blocks) {
            group(0, "ENDSEC");
            group(0, "SECTION");
            group(2, "ENTITIES");
            m_phase = Phase::Entities;
        }
        if (phase == Phase::Done) {
            group(0, "ENDSEC");
            group(0, "EOF");
            m_phase = Phase::Done;
        }
        return true;
    }
    return false;
}

bool DxfWriter::beginBlock(const QString& name, const ZcGePoint3d& basePoint)
{
    if (name.isEmpty() || m_phase == Phase::InBlock || !enter(Phase::Blocks) || !enter(Phase::InBlock))
        return false;
    group(0, "BLOCK");
    if (modern()) {
        group(5, QString::number(m_nextHandle++, 16).toUpper());
        group(100, "AcDbEntity");
    }
    group(8, "0");
    if (modern())
        group(100, "AcDbBlockBegin");
    group(2, name);
    // "*U…" and the like are anonymous blocks.
    groupInt(70, name.startsWith(u'*') ? 1 : 0);
    point(10, basePoint);
    group(3, name);
    return true;
}

bool DxfWriter::endBlock()
{
    if (m_phase != Phase::InBlock || m_failed)
        return false;
    group(0, "ENDBLK");
    if (modern()) {
        group(5, QString::number(m_nextHandle++, 16).toUpper());
        group(100, "AcDbEntity");
        group(8, "0");
        group(100, "AcDbBlockEnd");
    }
    m_phase = Phase::Blocks;
    return true;
}

void DxfWriter::startEntity(const char* type, const char* subclass, const Style& style)
{
    group(0, type);
    if (modern()) {
        group(5, QString::number(m_nextHandle++, 16).toUpper());
        group(100, "AcDbEntity");
    }
    if (style.paperSpace)
        groupInt(67, 1);
    group(8, style.layer.isEmpty() ? QStringLiteral("0") : style.layer);
    if (!style.linetype.isEmpty())
        group(6, style.linetype);
    if (style.colorIndex != 256)
        groupInt(62, style.colorIndex);
    if (m_version == Version::R2018 && style.trueColor >= 0)
        groupInt(420, style.trueColor & 0xFFFFFF);
    if (style.linetypeScale != 1.0)
        group(48, style.linetypeScale);
    if (modern() && subclass)
        group(100, subclass);
}

void DxfWriter::writeXData(const std::vector<ZcDbXDataApp>& xdata)
{
    for (const ZcDbXDataApp& app : xdata) {
        group(1001, app.appName);
        for (const ZcDbXDataValue& value : app.values) {
            if (value.isString())
                group(value.code, value.text);
            else if (value.isPoint())
                point(value.code, { value.value[0], value.value[1], value.value[2] });
            else if (value.code == 1070 || value.code == 1071)
                groupInt(value.code, value.toInt());
            else
                group(value.code, value.value[0]);
        }
    }
}

void DxfWriter::writeNormal(const Style& style)
{
    if (style.normal.x == 0.0 && style.normal.y == 0.0 && style.normal.z == 1.0)
        return;
    group(210, style.normal.x);
    group(220, style.normal.y);
    group(230, style.normal.z);
}

void DxfWriter::writeStyleXData(const Style& style)
{
    if (style.xdata)
        writeXData(*style.xdata);
}

// Entities go into the open block, or into model space once the blocks are done.
#define QV_DXF_ENTITY_PHASE()                                                                                \
    if (m_phase != Phase::InBlock && !enter(Phase::Entities))                                                \
        return false;

bool DxfWriter::addLine(const ZcGePoint3d& start, const ZcGePoint3d& end, const Style& style,
    const std::vector<ZcDbXDataApp>& xdata)
{
    QV_DXF_ENTITY_PHASE()
    startEntity("LINE", "AcDbLine", style);
    point(10, start);
    point(11, end);
    writeXData(xdata.empty() && style.xdata ? *style.xdata : xdata);
    return !m_failed;
}

bool DxfWriter::addPolyline(
    const QList<ZcGePoint3d>& points, bool closed, const Style& style, const std::vector<ZcDbXDataApp>& xdata)
{
    if (points.isEmpty())
        return false;
    QV_DXF_ENTITY_PHASE()
    if (!modern()) {
        startEntity("POLYLINE", nullptr, style);
        groupInt(66, 1);
        point(10, { 0, 0, points.first().z });
        groupInt(70, closed ? 1 : 0);
        writeXData(xdata.empty() && style.xdata ? *style.xdata : xdata);
        for (const ZcGePoint3d& p : points) {
            group(0, "VERTEX");
            group(8, style.layer);
            point(10, p);
        }
        group(0, "SEQEND");
        group(8, style.layer);
        return !m_failed;
    }
    startEntity("LWPOLYLINE", "AcDbPolyline", style);
    groupInt(90, points.size());
    groupInt(70, closed ? 1 : 0);
    if (points.first().z != 0.0)
        group(38, points.first().z);
    for (const ZcGePoint3d& p : points) {
        group(10, p.x);
        group(20, p.y);
    }
    writeXData(xdata.empty() && style.xdata ? *style.xdata : xdata);
    return !m_failed;
}

bool DxfWriter::addCircle(const ZcGePoint3d& center, double radius, const Style& style)
{
    QV_DXF_ENTITY_PHASE()
    startEntity("CIRCLE", "AcDbCircle", style);
    point(10, center);
    group(40, radius);
    writeNormal(style);
    writeStyleXData(style);
    return !m_failed;
}

bool DxfWriter::addArc(
    const ZcGePoint3d& center, double radius, double startDegrees, double endDegrees, const Style& style)
{
    QV_DXF_ENTITY_PHASE()
    startEntity("ARC", "AcDbCircle", style);
    point(10, center);
    group(40, radius);
    writeNormal(style);
    if (modern())
        group(100, "AcDbArc");
    group(50, startDegrees);
    group(51, endDegrees);
    writeStyleXData(style);
    return !m_failed;
}

bool DxfWriter::addText(const ZcGePoint3d& position, const QString& text, double height, const Style& style,
    double rotationDegrees)
{
    QV_DXF_ENTITY_PHASE()
    startEntity("TEXT", "AcDbText", style);
    point(10, position);
    group(40, height);
    group(1, text);
    if (rotationDegrees != 0.0)
        group(50, rotationDegrees);
    if (modern())
        group(100, "AcDbText");
    return !m_failed;
}

bool DxfWriter::addMText(
    const ZcGePoint3d& position, const QString& contents, double height, double width, const Style& style)
{
    // R12 has no multi-line text; readers of that version refuse the entity.
    if (!modern())
        return false;
    QV_DXF_ENTITY_PHASE()
    startEntity("MTEXT", "AcDbMText", style);
    point(10, position);
    group(40, height);
    group(41, width);
    groupInt(71, 1);
    // Long contents go out in chunks of 250 characters, the last in group 1.
    constexpr qsizetype chunk = 250;
    qsizetype at = 0;
    while (contents.size() - at > chunk) {
        group(3, contents.mid(at, chunk));
        at += chunk;
    }
    group(1, contents.mid(at));
    return !m_failed;
}

bool DxfWriter::addAttributeDefinition(const AttributeDefinition& definition, const Style& style)
{
    QV_DXF_ENTITY_PHASE()
    startEntity("ATTDEF", "AcDbText", style);
    point(10, definition.position);
    group(40, definition.height);
    group(1, definition.defaultText);
    if (modern())
        group(100, "AcDbAttributeDefinition");
    group(3, definition.prompt);
    group(2, definition.tag);
    groupInt(70, definition.invisible ? 1 : 0);
    return !m_failed;
}

void DxfWriter::writeAttribute(const Attribute& attribute, const Style& style)
{
    startEntity("ATTRIB", "AcDbText", style);
    point(10, attribute.position);
    group(40, attribute.height);
    group(1, attribute.text);
    if (modern())
        group(100, "AcDbAttribute");
    group(2, attribute.tag);
    groupInt(70, attribute.invisible ? 1 : 0);
}

bool DxfWriter::addBlockReference(const QString& blockName, const ZcGePoint3d& position,
    const QList<Attribute>& attributes, const Style& style, double scale, double rotationDegrees)
{
    if (blockName.isEmpty())
        return false;
    QV_DXF_ENTITY_PHASE()
    startEntity("INSERT", "AcDbBlockReference", style);
    if (!attributes.isEmpty())
        groupInt(66, 1);
    group(2, blockName);
    point(10, position);
    if (scale != 1.0) {
        group(41, scale);
        group(42, scale);
        group(43, scale);
    }
    if (rotationDegrees != 0.0)
        group(50, rotationDegrees);
    if (attributes.isEmpty())
        return !m_failed;
    for (const Attribute& attribute : attributes)
        writeAttribute(attribute, style);
    group(0, "SEQEND");
    if (modern()) {
        group(5, QString::number(m_nextHandle++, 16).toUpper());
        group(100, "AcDbEntity");
    }
    group(8, style.layer);
    return !m_failed;
}

bool DxfWriter::addPolyline(const std::vector<DxfVertex>& vertices, bool closed, double elevation,
    const Style& style, double constantWidth)
{
    if (vertices.empty())
        return false;
    QV_DXF_ENTITY_PHASE()
    if (!modern()) {
        startEntity("POLYLINE", nullptr, style);
        groupInt(66, 1);
        point(10, { 0, 0, elevation });
        groupInt(70, closed ? 1 : 0);
        if (constantWidth > 0.0) {
            group(40, constantWidth);
            group(41, constantWidth);
        }
        writeNormal(style);
        writeStyleXData(style);
        for (const DxfVertex& v : vertices) {
            group(0, "VERTEX");
            group(8, style.layer);
            point(10, { v.x, v.y, elevation });
            if (v.bulge != 0.0)
                group(42, v.bulge);
        }
        group(0, "SEQEND");
        group(8, style.layer);
        return !m_failed;
    }
    startEntity("LWPOLYLINE", "AcDbPolyline", style);
    groupInt(90, qint64(vertices.size()));
    groupInt(70, closed ? 1 : 0);
    if (constantWidth > 0.0)
        group(43, constantWidth);
    if (elevation != 0.0)
        group(38, elevation);
    for (const DxfVertex& v : vertices) {
        group(10, v.x);
        group(20, v.y);
        if (v.bulge != 0.0)
            group(42, v.bulge);
    }
    writeNormal(style);
    writeStyleXData(style);
    return !m_failed;
}

// The groups a text, an attribute and a definition share, up to their own subclass.
void DxfWriter::writeTextBody(const DxfText& text, const char* subclass, const Style& style)
{
    point(10, text.position);
    group(40, text.height);
    group(1, text.text);
    if (text.rotationDegrees != 0.0)
        group(50, text.rotationDegrees);
    if (text.widthFactor != 1.0)
        group(41, text.widthFactor);
    if (text.obliqueDegrees != 0.0)
        group(51, text.obliqueDegrees);
    if (text.generationFlags != 0)
        groupInt(71, text.generationFlags);
    const bool aligned = text.horizontalMode != 0 || text.verticalMode != 0;
    if (text.horizontalMode != 0)
        groupInt(72, text.horizontalMode);
    if (aligned)
        point(11, text.alignment);
    writeNormal(style);
    if (modern() && subclass)
        group(100, subclass);
}

bool DxfWriter::addText(const DxfText& text, const Style& style)
{
    QV_DXF_ENTITY_PHASE()
    startEntity("TEXT", "AcDbText", style);
    writeTextBody(text, "AcDbText", style);
    if (text.verticalMode != 0)
        groupInt(73, text.verticalMode);
    writeStyleXData(style);
    return !m_failed;
}

bool DxfWriter::addAttributeDefinition(const DxfText& definition, const Style& style)
{
    QV_DXF_ENTITY_PHASE()
    startEntity("ATTDEF", "AcDbText", style);
    writeTextBody(definition, "AcDbAttributeDefinition", style);
    group(3, definition.prompt);
    group(2, definition.tag);
    groupInt(70, definition.flags);
    if (definition.verticalMode != 0)
        groupInt(74, definition.verticalMode);
    writeStyleXData(style);
    return !m_failed;
}

bool DxfWriter::addBlockReference(const QString& blockName, const ZcGePoint3d& position,
    const ZcGePoint3d& scale, double rotationDegrees, const QList<QPair<DxfText, Style>>& attributes,
    const Style& style, const DxfInsertGrid& grid)
{
    if (blockName.isEmpty())
        return false;
    QV_DXF_ENTITY_PHASE()
    startEntity("INSERT", "AcDbBlockReference", style);
    if (!attributes.isEmpty())
        groupInt(66, 1);
    group(2, blockName);
    point(10, position);
    if (scale.x != 1.0 || scale.y != 1.0 || scale.z != 1.0) {
        group(41, scale.x);
        group(42, scale.y);
        group(43, scale.z);
    }
    if (rotationDegrees != 0.0)
        group(50, rotationDegrees);
    if (grid.columns > 1 || grid.rows > 1) {
        groupInt(70, grid.columns);
        groupInt(71, grid.rows);
        group(44, grid.columnSpacing);
        group(45, grid.rowSpacing);
    }
    writeNormal(style);
    writeStyleXData(style);
    if (attributes.isEmpty())
        return !m_failed;
    for (const auto& [attribute, attributeStyle] : attributes) {
        startEntity("ATTRIB", "AcDbText", attributeStyle);
        writeTextBody(attribute, "AcDbAttribute", attributeStyle);
        group(2, attribute.tag);
        groupInt(70, attribute.flags);
        if (attribute.verticalMode != 0)
            groupInt(74, attribute.verticalMode);
        writeStyleXData(attributeStyle);
    }
    group(0, "SEQEND");
    if (modern()) {
        group(5, QString::number(m_nextHandle++, 16).toUpper());
        group(100, "AcDbEntity");
    }
    group(8, style.layer);
    return !m_failed;
}

bool DxfWriter::addMText(const ZcGePoint3d& position, const QString& contents, double height, double width,
    double rotationDegrees, int attachment, const Style& style, double lineSpacingFactor)
{
    if (!modern())
        return false;
    QV_DXF_ENTITY_PHASE()
    startEntity("MTEXT", "AcDbMText", style);
    point(10, position);
    group(40, height);
    group(41, width);
    groupInt(71, attachment);
    constexpr qsizetype chunk = 250;
    qsizetype at = 0;
    while (contents.size() - at > chunk) {
        // A chunk never ends inside a surrogate pair.
        const qsizetype size = contents.at(at + chunk - 1).isHighSurrogate() ? chunk - 1 : chunk;
        group(3, contents.mid(at, size));
        at += size;
    }
    group(1, contents.mid(at));
    writeNormal(style);
    if (rotationDegrees != 0.0)
        group(50, rotationDegrees);
    if (lineSpacingFactor != 1.0)
        group(44, lineSpacingFactor);
    writeStyleXData(style);
    return !m_failed;
}

bool DxfWriter::addRawEntity(const QString& type, const QList<QPair<int, QString>>& groups)
{
    if (type.isEmpty())
        return false;
    QV_DXF_ENTITY_PHASE()
    group(0, type.toLatin1().constData());
    bool inPointers = false;
    for (const auto& [code, value] : groups) {
        // The entity gets a handle of this drawing, and leaves out the pointers to
        // its owner, reactors and dictionary: the objects they name are not written.
        if (code == 102) {
            inPointers = value.startsWith(u'{');
            continue;
        }
        if (inPointers || code == 330 || code == 360)
            continue;
        if (code == 5) {
            if (modern())
                group(5, QString::number(m_nextHandle++, 16).toUpper());
            continue;
        }
        group(code, value);
    }
    return !m_failed;
}

bool DxfWriter::addProductEntity(
    const QString& indexPath, const QList<ZcGePoint3d>& points, const Style& style)
{
    if (points.size() < 2)
        return false;
    const std::vector<ZcDbXDataApp> xdata { { kProductApp, { ZcDbXDataValue::string(indexPath) } } };
    if (points.size() == 2)
        return addLine(points[0], points[1], style, xdata);
    return addPolyline(points, false, style, xdata);
}

bool DxfWriter::finish()
{
    if (m_phase == Phase::InBlock)
        endBlock();
    if (!enter(Phase::Done))
        return false;
    flush();
    return !m_failed;
}
