#include "FloorSaver.h"

#include "DxfDatabaseWriter.h"
#include "LineTypeMgr.h"
#include "QvKsAciPalette.h"
#include "QvKsAtomicFile.h"
#include "QvKsCodeStyles.h"
#include "QvKsEntity.h"

#include <QBuffer>
#include <QFile>
#include <QSet>

#include <climits>

namespace {
quint32 RgbOf(COLORREF color)
{
    return ((color & 0xFF) << 16) | (color & 0xFF00) | ((color >> 16) & 0xFF);
}
} // namespace

FloorSaver::FloorSaver(const QvKsCodeStyles& styles, const LineTypeMgr& lineTypes, const Settings& settings)
    : m_styles(styles)
    , m_lineTypes(lineTypes)
    , m_settings(settings)
{ }

int FloorSaver::NearestAci(quint32 rgb)
{
    const int r = int(rgb >> 16) & 0xFF;
    const int g = int(rgb >> 8) & 0xFF;
    const int b = int(rgb) & 0xFF;
    int best = 7;
    int bestDistance = INT_MAX;
    for (int index = QvKsAciPalette::kFirst; index <= QvKsAciPalette::kLast; ++index) {
        const quint32 candidate = RgbOf(QvKsAciPalette::ColorOf(index));
        const int dr = r - int(candidate >> 16 & 0xFF);
        const int dg = g - int(candidate >> 8 & 0xFF);
        const int db = b - int(candidate & 0xFF);
        const int distance = dr * dr + dg * dg + db * db;
        if (distance < bestDistance) {
            best = index;
            bestDistance = distance;
        }
    }
    return best;
}

// The line types the codes call for, their patterns scaled as the view draws
// them. The characters of a "按字符" line type stay out: the drawing keeps the gaps
// they are shown in.
QList<DxfLinetype> FloorSaver::CodeLinetypes() const
{
    QList<DxfLinetype> linetypes;
    QSet<QString> seen;
    for (const QvKsCodeStyle& style : m_styles.All()) {
        const QString name = LineTypeMgr::LineTypeNameOf(style.lineStyle, style.lineString);
        const LineTypeDef* definition = name.isEmpty() ? nullptr : m_lineTypes.Find(name);
        if (!definition || seen.contains(name.toUpper()))
            continue;
        seen.insert(name.toUpper());
        DxfLinetype linetype { definition->name, definition->description, {} };
        for (const LineTypeDef::Element& element : definition->elements)
            if (!element.isText)
                linetype.dashes.append(element.length * m_settings.lineTypeScale);
        linetypes.append(linetype);
    }
    return linetypes;
}

QByteArray FloorSaver::ToDxf(const ZcDbDatabase& database, FloorSaveResult& result) const
{
    DxfDatabaseWriter writer;
    QSet<QString> written;
    const QList<DxfLinetype> linetypes = m_settings.colorBySystem ? CodeLinetypes() : QList<DxfLinetype> {};
    for (const DxfLinetype& linetype : linetypes) {
        writer.addLinetype(linetype);
        written.insert(linetype.name.toUpper());
    }
    int products = 0;
    writer.setEntityHook([&](const ZcDbEntity& entity, DxfStyle& style) -> const ZcDbEntity* {
        const QvKsEntity* product = QvKsEntity::cast(&entity);
        if (!product)
            return nullptr;
        ++products;
        const QvKsCodeStyle* code
            = m_settings.colorBySystem ? m_styles.Find(product->GetSysCodeIndex()) : nullptr;
        if (code) {
            style.trueColor = RgbOf(code->color);
            style.colorIndex = NearestAci(quint32(style.trueColor));
            const QString name = LineTypeMgr::LineTypeNameOf(code->lineStyle, code->lineString);
            style.linetype = written.contains(name.toUpper()) ? name : QStringLiteral("Continuous");
        }
        return product->shape();
    });
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    writer.write(database, &buffer);
    result.entities = writer.writtenEntities();
    result.productEntities = products;
    result.droppedEntities = writer.droppedText();
    return bytes;
}

FloorSaveResult FloorSaver::Save(
    const ZcDbDatabase& database, const QString& path, const QString& confineTo) const
{
    FloorSaveResult result;
    QFile old(path);
    if (old.open(QIODevice::ReadOnly))
        result.partsNotKept = DxfDatabaseWriter::PartsNotKept(old.readAll());
    const QByteArray bytes = ToDxf(database, result);
    result.status = QvKsAtomicFile::Write(path, bytes, confineTo);
    return result;
}
