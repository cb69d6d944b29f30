#include "DxfDatabaseWriter.h"

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

#include <QSet>

#include <cmath>
#include <numbers>

namespace {
double degrees(double radians)
{
    return radians * 180.0 / std::numbers::pi;
}

DxfText textOf(const ZcDbText& text)
{
    DxfText out;
    out.text = text.textString();
    out.position = text.position();
    out.alignment = text.alignmentPoint();
    out.height = text.height();
    out.rotationDegrees = degrees(text.rotation());
    out.horizontalMode = text.horizontalMode();
    out.verticalMode = text.verticalMode();
    out.widthFactor = text.widthFactor();
    out.obliqueDegrees = degrees(text.oblique());
    out.generationFlags = text.generationFlags();
    return out;
}

QString blockNameOf(const ZcDbBlockReference& reference)
{
    const auto* block = ZcDbBlockTableRecord::cast(reference.blockTableRecord().object());
    return block ? block->name() : QString();
}

bool isLayoutName(const QString& name)
{
    return name.compare(QString::fromUtf16(ZCDB_MODEL_SPACE), Qt::CaseInsensitive) == 0
        || name.compare(QString::fromUtf16(ZCDB_PAPER_SPACE), Qt::CaseInsensitive) == 0;
}
} // namespace

DxfStyle DxfDatabaseWriter::styleOf(const ZcDbEntity& entity, bool paperSpace) const
{
    DxfStyle style;
    style.layer = entity.layer();
    style.colorIndex = entity.colorIndex();
    if (entity.hasTrueColor())
        style.trueColor = entity.trueColor();
    style.xdata = entity.xDataAll();
    style.paperSpace = paperSpace;
    if (entity.lineStyleIndex() != 0 && entity.database()) {
        const ZcDbLineStyle& line = entity.database()->lineStyle(entity.lineStyleIndex());
        if (line.lineType.compare(QLatin1String("BYLAYER"), Qt::CaseInsensitive) != 0)
            style.linetype = line.lineType;
        style.linetypeScale = line.scale;
    }
    return style;
}

bool DxfDatabaseWriter::write(const ZcDbDatabase& database, QIODevice* device, DxfWriter::Version version)
{
    m_dropped.clear();
    m_written = 0;
    DxfWriter writer(device, version);
    for (const ZcDbLayerTableRecord& layer : database.layers())
        writer.addLayer({ layer.name, layer.colorIndex, layer.hasTrueColor ? qint64(layer.trueColor) : -1,
            layer.linetype, layer.isOff, layer.isFrozen, layer.isLocked });
    for (const QString& app : database.registeredApps())
        writer.registerApp(app);
    // The drawing's own line types first: one the caller gives by the same name
    // (a system code's) replaces it.
    for (const ZcDbLineType& linetype : database.lineTypes())
        writer.addLinetype(
            { linetype.name, QString(), QList<double>(linetype.pattern.begin(), linetype.pattern.end()) });
    for (const DxfLinetype& linetype : m_linetypes)
        writer.addLinetype(linetype);
    writer.setLinetypeScale(database.lineTypeScale());

    ZcDbBlockTable* table = nullptr;
    if (const_cast<ZcDbDatabase&>(database).getBlockTable(table, ZcDb::kForRead) == Zcad::eOk) {
        const std::vector<ZcDbObjectId> ids = table->recordIds();
        table->close();
        for (const ZcDbObjectId& id : ids) {
            const auto* block = ZcDbBlockTableRecord::cast(id.object());
            if (!block || isLayoutName(block->name()))
                continue;
            writer.beginBlock(block->name(), block->origin());
            writeBlock(writer, *block, false);
            writer.endBlock();
        }
    }
    // Counted are the entities of the drawing itself, not those of its blocks.
    m_written = 0;
    if (const auto* model = ZcDbBlockTableRecord::cast(database.modelSpaceId().object()))
        writeBlock(writer, *model, false);
    if (const auto* paper = ZcDbBlockTableRecord::cast(database.paperSpaceId().object()))
        writeBlock(writer, *paper, true);
    return writer.finish();
}

void DxfDatabaseWriter::writeBlock(DxfWriter& writer, const ZcDbBlockTableRecord& block, bool paperSpace)
{
    for (const quint32 index : block.entityIndexes()) {
        const auto* entity
            = ZcDbEntity::cast(ZcDbObjectId(block.objectId().databaseSerial(), index).object());
        if (entity && !entity->isErased())
            writeEntity(writer, *entity, paperSpace);
    }
}

void DxfDatabaseWriter::writeEntity(DxfWriter& writer, const ZcDbEntity& entity, bool paperSpace)
{
    DxfStyle style = styleOf(entity, paperSpace);
    const ZcDbEntity* shape = m_hook ? m_hook(entity, style) : nullptr;
    if (writeShape(writer, shape ? *shape : entity, style))
        ++m_written;
}

bool DxfDatabaseWriter::writeShape(DxfWriter& writer, const ZcDbEntity& shape, const DxfStyle& style)
{
    // The kinds drawn in their own coordinate system go out with its direction.
    const auto inPlane = [&style](const ZcGeVector3d& normal) {
        DxfStyle own = style;
        own.normal = normal;
        return own;
    };
    if (const auto* line = ZcDbLine::cast(&shape))
        return writer.addLine(line->startPoint(), line->endPoint(), style);
    if (const auto* polyline = ZcDbPolyline::cast(&shape)) {
        std::vector<DxfVertex> vertices;
        vertices.reserve(polyline->vertices().size());
        for (const ZcDbPolyline::Vertex& v : polyline->vertices())
            vertices.push_back({ v.x, v.y, v.bulge });
        return writer.addPolyline(vertices, polyline->isClosed(), polyline->elevation(),
            inPlane(polyline->normal()), polyline->constantWidth());
    }
    if (const auto* arc = ZcDbArc::cast(&shape))
        return writer.addArc(arc->center(), arc->radius(), degrees(arc->startAngle()),
            degrees(arc->endAngle()), inPlane(arc->normal()));
    if (const auto* circle = ZcDbCircle::cast(&shape))
        return writer.addCircle(circle->center(), circle->radius(), inPlane(circle->normal()));
    if (const auto* definition = ZcDbAttributeDefinition::cast(&shape)) {
        DxfText text = textOf(*definition);
        text.tag = definition->tag();
        text.prompt = definition->prompt();
        text.flags = definition->flags();
        return writer.addAttributeDefinition(text, inPlane(definition->normal()));
    }
    if (const auto* text = ZcDbText::cast(&shape))
        return writer.addText(textOf(*text), inPlane(text->normal()));
    if (const auto* mtext = ZcDbMText::cast(&shape))
        return writer.addMText(mtext->location(), mtext->contents(), mtext->textHeight(), mtext->width(),
            degrees(mtext->rotation()), mtext->attachment(), inPlane(mtext->normal()),
            mtext->lineSpacingFactor());
    if (const auto* reference = ZcDbBlockReference::cast(&shape)) {
        QList<QPair<DxfText, DxfStyle>> attributes;
        for (const ZcDbAttribute* attribute : reference->attributes()) {
            if (!attribute || attribute->isErased())
                continue;
            DxfText text = textOf(*attribute);
            text.tag = attribute->tag();
            text.flags = attribute->flags();
            DxfStyle attributeStyle = styleOf(*attribute, style.paperSpace);
            attributeStyle.normal = attribute->normal();
            attributes.append({ text, attributeStyle });
        }
        const ZcGeVector3d scale = reference->scaleFactors();
        const DxfInsertGrid grid { reference->columns(), reference->rows(), reference->columnSpacing(),
            reference->rowSpacing() };
        return writer.addBlockReference(blockNameOf(*reference), reference->position(),
            { scale.x, scale.y, scale.z }, degrees(reference->rotation()), attributes,
            inPlane(reference->normal()), grid);
    }
    const auto* proxy = ZcDbProxyEntity::cast(&shape);
    if (proxy && !proxy->dxfGroups().empty()) {
        QList<QPair<int, QString>> groups;
        groups.reserve(qsizetype(proxy->dxfGroups().size()));
        for (const ZcDbProxyEntity::Group& g : proxy->dxfGroups())
            groups.append({ g.code, g.value });
        return writer.addRawEntity(proxy->originalDxfName(), groups);
    }
    m_dropped[proxy ? proxy->originalDxfName() : shape.isA()->name()] += 1;
    return false;
}

QString DxfDatabaseWriter::droppedText() const
{
    QStringList parts;
    for (auto it = m_dropped.cbegin(); it != m_dropped.cend(); ++it)
        parts.append(QStringLiteral("%1 ×%2").arg(it.key()).arg(it.value()));
    return parts.join(QStringLiteral(", "));
}

QStringList DxfDatabaseWriter::PartsNotKept(const QByteArray& dxf)
{
    static const QSet<QString> keptSections { QStringLiteral("HEADER"), QStringLiteral("TABLES"),
        QStringLiteral("BLOCKS"), QStringLiteral("ENTITIES") };
    static const QSet<QString> keptTables { QStringLiteral("LAYER"), QStringLiteral("LTYPE"),
        QStringLiteral("APPID"), QStringLiteral("BLOCK_RECORD") };
    QStringList parts;
    const QList<QByteArray> lines = dxf.split('\n');
    int variables = 0;
    for (qsizetype i = 0; i + 1 < lines.size(); i += 2) {
        const QByteArray code = lines[i].trimmed();
        if (code == "9") {
            const QByteArray variable = lines[i + 1].trimmed().toUpper();
            variables += variable != "$ACADVER" && variable != "$DWGCODEPAGE" && variable != "$LTSCALE";
            continue;
        }
        if (code != "0" || i + 3 >= lines.size())
            continue;
        const QByteArray value = lines[i + 1].trimmed();
        if ((value != "SECTION" && value != "TABLE") || lines[i + 2].trimmed() != "2")
            continue;
        const QString name = QString::fromLatin1(lines[i + 3].trimmed()).toUpper();
        const bool isSection = value == "SECTION";
        if (isSection ? !keptSections.contains(name) : !keptTables.contains(name))
            parts.append(
                isSection ? QStringLiteral("section %1").arg(name) : QStringLiteral("table %1").arg(name));
    }
    if (variables > 0)
        parts.prepend(QStringLiteral("%1 header variables").arg(variables));
    return parts;
}
