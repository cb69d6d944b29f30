#pragma once

// Writes a DXF drawing as it goes: layers and registered applications first, then
// block definitions, then the entities of model space. The sections come out in
// the order the calls move through these phases; a call that comes too late (a
// layer after the first entity, say) fails and changes nothing.
//
// Versions: R12 (AC1009), R2000 (AC1015) and R2018 (AC1032). The first two write
// text in the code page (GBK for "ANSI_936", the default), the last UTF-8.
#include "DxfTextCodec.h"
#include "ZcDbXData.h"
#include "ZcGePoint3d.h"

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

#include <vector>

class QIODevice;

// The layer, colour (256 by layer), true colour, line type and extended data of an
// entity written. A true colour (0xRRGGBB) goes out beside the index from R2004 on;
// an empty line type leaves the entity's line type to its layer; the extended data
// closes the entity.
struct DxfStyle
{
    QString layer = QStringLiteral("0");
    int colorIndex = 256;
    qint64 trueColor = -1;
    QString linetype = QString();
    // The entity's own scale of its line type's pattern.
    double linetypeScale = 1.0;
    // The extrusion direction of the kinds drawn in their own coordinate system
    // (arcs, circles, texts, multi-line texts, block references, polylines): their
    // points and angles are in that system, as read.
    ZcGeVector3d normal { 0.0, 0.0, 1.0 };
    const std::vector<ZcDbXDataApp>* xdata = nullptr;
    bool paperSpace = false;
};
struct DxfLayer
{
    QString name;
    int colorIndex = 7;
    qint64 trueColor = -1;
    QString linetype = QStringLiteral("Continuous");
    bool off = false;
    bool frozen = false;
    bool locked = false;
};
// A line type of dashes (> 0), gaps (< 0) and dots (0), in drawing units.
struct DxfLinetype
{
    QString name;
    QString description;
    QList<double> dashes;
};
// A text, attribute or attribute definition as a drawing holds it. Angles in
// degrees; the alignment point counts when either mode is not 0.
struct DxfText
{
    QString text;
    ZcGePoint3d position;
    ZcGePoint3d alignment;
    double height = 2.5;
    double rotationDegrees = 0.0;
    int horizontalMode = 0;
    int verticalMode = 0;
    double widthFactor = 1.0;
    double obliqueDegrees = 0.0;
    // 2 written backward, 4 upside down.
    int generationFlags = 0;
    // Attributes and their definitions.
    QString tag;
    QString prompt;
    int flags = 0;
};
// A block placed as a grid of copies (columns along the reference's x axis).
struct DxfInsertGrid
{
    int columns = 1;
    int rows = 1;
    double columnSpacing = 0.0;
    double rowSpacing = 0.0;
};
// One vertex of a polyline with the bulge of the segment that starts there.
struct DxfVertex
{
    double x = 0.0;
    double y = 0.0;
    double bulge = 0.0;
};
struct DxfAttribute
{
    QString tag;
    QString text;
    ZcGePoint3d position;
    double height = 2.5;
    bool invisible = false;
};
struct DxfAttributeDefinition
{
    QString tag;
    QString prompt;
    QString defaultText;
    ZcGePoint3d position;
    double height = 2.5;
    bool invisible = false;
};

class DxfWriter
{
public:
    enum class Version { R12, R2000, R2018 };

    using Style = DxfStyle;
    using Attribute = DxfAttribute;
    using AttributeDefinition = DxfAttributeDefinition;

    explicit DxfWriter(QIODevice* device, Version version = Version::R2000,
        const QString& codePage = QStringLiteral("ANSI_936"));
    ~DxfWriter();
    DxfWriter(const DxfWriter&) = delete;
    DxfWriter& operator=(const DxfWriter&) = delete;

    bool addLayer(
        const QString& name, int colorIndex, const QString& linetype = QStringLiteral("Continuous"));
    bool addLayer(const DxfLayer& layer);
    // Also before the first entity or block. "Continuous", "ByLayer" and "ByBlock"
    // are always there.
    bool addLinetype(const DxfLinetype& linetype);
    bool registerApp(const QString& name);

    bool beginBlock(const QString& name, const ZcGePoint3d& basePoint = {});
    bool endBlock();

    bool addLine(const ZcGePoint3d& start, const ZcGePoint3d& end, const Style& style = {},
        const std::vector<ZcDbXDataApp>& xdata = {});
    bool addPolyline(const QList<ZcGePoint3d>& points, bool closed, const Style& style = {},
        const std::vector<ZcDbXDataApp>& xdata = {});
    bool addCircle(const ZcGePoint3d& center, double radius, const Style& style = {});
    // Angles in degrees, counter-clockwise.
    bool addArc(const ZcGePoint3d& center, double radius, double startDegrees, double endDegrees,
        const Style& style = {});
    bool addText(const ZcGePoint3d& position, const QString& text, double height, const Style& style = {},
        double rotationDegrees = 0.0);
    // Not in R12, which has no multi-line text: false, nothing written.
    bool addMText(const ZcGePoint3d& position, const QString& contents, double height, double width,
        const Style& style = {});
    bool addAttributeDefinition(const AttributeDefinition& definition, const Style& style = {});
    bool addBlockReference(const QString& blockName, const ZcGePoint3d& position,
        const QList<Attribute>& attributes = {}, const Style& style = {}, double scale = 1.0,
        double rotationDegrees = 0.0);
    // The full forms, for writing back what a drawing held.
    bool addPolyline(const std::vector<DxfVertex>& vertices, bool closed, double elevation,
        const Style& style, double constantWidth = 0.0);
    bool addText(const DxfText& text, const Style& style);
    bool addAttributeDefinition(const DxfText& definition, const Style& style);
    // Attributes each with their own style.
    bool addBlockReference(const QString& blockName, const ZcGePoint3d& position, const ZcGePoint3d& scale,
        double rotationDegrees, const QList<QPair<DxfText, Style>>& attributes, const Style& style,
        const DxfInsertGrid& grid = {});
    bool addMText(const ZcGePoint3d& position, const QString& contents, double height, double width,
        double rotationDegrees, int attachment, const Style& style, double lineSpacingFactor = 1.0);
    // "$LTSCALE": the scale of every line type's pattern; before the first entity.
    void setLinetypeScale(double scale) { m_linetypeScale = scale; }
    // An entity of a kind the writer does not model, from its groups as read
    // (code and text, without the 0 group), in file order: with a new handle, and
    // without the pointers to its owner, reactors and dictionary.
    bool addRawEntity(const QString& type, const QList<QPair<int, QString>>& groups);

    // A product entity: a polyline (a line for two points) carrying the extended
    // data of "QVKS" whose first string is the index path.
    bool addProductEntity(
        const QString& indexPath, const QList<ZcGePoint3d>& points, const Style& style = {});

    // Ends the drawing; false when anything failed or the device did not take it.
    bool finish();
    bool hasFailed() const { return m_failed; }

private:
    enum class Phase { Tables, Blocks, InBlock, Entities, Done };

    bool enter(Phase phase);
    void writeHeaderAndTables();
    void beginTable(const char* name, qsizetype entries);
    void startEntity(const char* type, const char* subclass, const Style& style);
    void writeXData(const std::vector<ZcDbXDataApp>& xdata);
    void writeAttribute(const Attribute& attribute, const Style& style);
    void writeTextBody(const DxfText& text, const char* subclass, const Style& style);
    void writeStyleXData(const Style& style);
    void writeNormal(const Style& style);
    void writeLinetypes();
    void group(int code, const QString& value);
    void group(int code, const char* value);
    void group(int code, double value);
    void groupInt(int code, qint64 value);
    void point(int code, const ZcGePoint3d& p);
    void flush();
    bool modern() const { return m_version != Version::R12; }

    QIODevice* m_device;
    Version m_version;
    QString m_codePage;
    DxfTextCodec m_codec;
    QByteArray m_buffer;
    Phase m_phase = Phase::Tables;
    quint64 m_nextHandle = 0x100;
    bool m_failed = false;
    double m_linetypeScale = 1.0;
    QList<DxfLayer> m_layers;
    QList<DxfLinetype> m_linetypes;
    QStringList m_apps;
};
