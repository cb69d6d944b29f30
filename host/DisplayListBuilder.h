#pragma once

// Turns the working drawing into the view's display list: curves become point
// runs, wide polylines, solids and hatches areas, texts keep their frame, block
// references (and grids of them) are drawn through their transforms down to any
// depth with their visible attributes, each entity in its own coordinate system
// (its extrusion direction), in its line type at the drawing's scale; product
// entities are drawn in their system code's colour, width, transparency and line
// type when the project shows colours by system (by layer otherwise). Kinds that
// cannot be drawn are counted.
#include "DisplayList.h"
#include "DrawingGeometry.h"
#include "ZcDbObjectId.h"

#include <QColor>
#include <QHash>
#include <QPointF>
#include <QRgb>
#include <QString>

#include <map>
#include <span>
#include <vector>

class ZcDbBlockReference;
class ZcDbDatabase;
class ZcDbEntity;
class ZcDbMText;
class ZcDbPolyline;
class ZcDbProxyEntity;
class ZcDbText;
struct ProxyText;
struct ZcDbLayerTableRecord;
struct ZcDbLineType;
class LineTypeMgr;
class QvKsCodeStyles;
struct QvKsCodeStyle;
struct LineTypeDef;

class DisplayListBuilder
{
public:
    struct Settings
    {
        bool colorBySystem = true;
        // Drawing units per unit of a line-type pattern (the project's line-type
        // scale times the drawing's scale).
        double lineTypeScale = 100.0;
    };

    DisplayListBuilder(const QvKsCodeStyles& styles, const LineTypeMgr& lineTypes, const Settings& settings);

    // Replaces `list` with the model space of `database`. The drawing is only read; a
    // large one is built on two threads, so nothing may change it meanwhile.
    void Build(ZcDbDatabase* database, DisplayList& list) const;

    // How many entities of each kind the last Build could not draw, by DXF kind.
    const std::map<QString, int>& NotShown() const { return m_notShown; }
    // "未显示: 3 个 MLINE, 1 个 WIPEOUT"; empty when everything was drawn.
    QString NotShownSummary() const;

    // The colour of CAD colour index 1..255 on a dark background (7 is white).
    static QColor AciColor(int index);
    // A layer's own colour (white for a missing layer).
    static QColor LayerColor(const ZcDbLayerTableRecord* layer);

private:
    static constexpr quint32 kNotShownYet = 0xFFFFFFFFu;
    // More entities than this are built in two halves at once.
    static constexpr std::size_t kHalvesFrom = 20000;
    // Blocks inside blocks are drawn this deep.
    static constexpr int kMaxBlockDepth = 64;

    struct Look
    {
        QRgb color = 0;
        float width = 0.0f;
        const LineTypeDef* lineType = nullptr;
        quint32 shown = kNotShownYet; // its place in the list's looks, once known
        // A line type of the drawing and the length its pattern's unit has.
        const ZcDbLineType* drawingLineType = nullptr;
        double patternScale = 1.0;
    };
    // Where an entity is drawn: from its block's coordinates to the drawing's, and
    // what its block reference hands down (colour and line type by block, layer 0).
    struct Place
    {
        ZcGeMatrix3d toWorld;
        bool plain = true; // toWorld does nothing
        Look blockLook;
        QString blockLineType;
        double blockLineTypeScale = 1.0;
        const ZcDbLayerTableRecord* blockLayer = nullptr;
        int depth = 0;
        std::vector<ZcDbObjectId> blocks; // the blocks it lies in, outermost first
    };
    struct CodeLook
    {
        bool known = false;
        Look look;
    };

    void BuildRange(
        ZcDbDatabase* database, quint32 serial, std::span<const quint32> indexes, DisplayList& list) const;
    void AddEntity(const ZcDbEntity& entity, const Place& place, ZcDbDatabase* database, ZcDbObjectId id,
        DisplayList& list) const;
    void AddBlock(ZcDbObjectId blockId, const ZcGeMatrix3d& toWorld, const ZcDbEntity& reference,
        const Look& look, const Place& place, ZcDbDatabase* database, DisplayList& list) const;
    void AddReference(const ZcDbBlockReference& reference, const Look& look, const Place& place,
        ZcDbDatabase* database, DisplayList& list) const;
    // A straight line or polyline in a plain look is painted from the drawing itself;
    // false for anything else.
    bool AddDrawnShape(const ZcDbEntity& entity, const Look& look, ZcDbObjectId id, DisplayList& list) const;
    void AddShape(const ZcDbEntity& entity, const Look& look, const Place& place, DisplayList& list) const;
    void AddPolyline(
        const ZcDbPolyline& polyline, const Look& look, const Place& place, DisplayList& list) const;
    void AddText(const ZcDbText& text, const Look& look, const Place& place, DisplayList& list) const;
    void AddMText(const ZcDbMText& mtext, const Look& look, const Place& place, DisplayList& list) const;
    void AddMTextLines(const QString& contents, const ZcGePoint3d& at, const ZcGeVector3d& xDirection,
        const ZcGeVector3d& yDirection, double height, double width, int attachment, double lineSpacing,
        const Look& look, const ZcGeMatrix3d& toWorld, DisplayList& list) const;
    // False when the kind is not one that can be drawn.
    bool AddProxy(const ZcDbProxyEntity& proxy, const Look& look, const Place& place, ZcDbDatabase* database,
        DisplayList& list) const;
    // A run of points in an entity's own coordinates, moved by `toWorld`.
    void AddLocalPath(const DrawingGeometry::Points3& points, bool closed, const ZcGeMatrix3d& toWorld,
        const Look& look, DisplayList& list) const;
    void AddLocalFill(const std::vector<DrawingGeometry::Points3>& rings, const ZcGeMatrix3d& toWorld,
        const Look& look, DisplayList& list) const;
    void AddPath(std::span<const QPointF> points, bool closed, const Look& look, DisplayList& list) const;
    void AddPattern(std::span<const QPointF> points, const Look& look, DisplayList& list) const;
    void AddDashes(std::span<const QPointF> points, const Look& look, DisplayList& list) const;
    Look LookOf(const ZcDbEntity& entity, ZcDbDatabase* database, const Place& place) const;
    // The line type the entity is drawn in, null for a continuous line.
    void TakeLineType(const ZcDbEntity& entity, ZcDbDatabase* database, const Place& place, Look& look) const;
    const ZcDbLayerTableRecord* EffectiveLayer(
        const ZcDbEntity& entity, ZcDbDatabase* database, const Place& place) const;
    void CountNotShown(const QString& kind) const;
    Look ProductLook(const QvKsCodeStyle& style) const;
    // The look of the code an entity's index path names; false for no code.
    bool ProductLookOf(const QString& indexPath, Look& look) const;
    CodeLook FindCodeLook(const QString& indexPath) const;
    // The entity's layer record (null for none): the drawing's look-up by name goes
    // through every layer, so each name met is looked up once a build.
    const ZcDbLayerTableRecord* LayerOf(const ZcDbEntity& entity, ZcDbDatabase* database) const;

    const QvKsCodeStyles& m_styles;
    const LineTypeMgr& m_lineTypes;
    Settings m_settings;
    // A floor's pipes share few codes: each code's look (or that there is no such
    // code) is worked out once a build, found again by the path's two numbers.
    mutable QHash<quint64, CodeLook> m_codeLooks;
    mutable QHash<QString, const ZcDbLayerTableRecord*> m_layers;
    // Each index path met, by the address of its text, kept so that the address is
    // not reused for another text; and the last one, as neighbours mostly share it.
    struct CodeText
    {
        QString path;
        CodeLook code;
    };
    mutable QHash<const QChar*, CodeText> m_codeTexts;
    struct LastCode
    {
        const QChar* text = nullptr;
        qsizetype size = 0;
        CodeLook code;
    };
    struct LastLayer
    {
        QString name;
        const ZcDbLayerTableRecord* record = nullptr;
    };
    mutable LastCode m_lastCode;
    mutable LastLayer m_lastLayer;
    mutable std::vector<QPointF> m_shapePoints;
    mutable DisplayList* m_list = nullptr; // the list being built
    mutable std::map<QString, int> m_notShown;
    // The line type of each layer met, for the many entities drawn by layer.
    mutable QHash<const ZcDbLayerTableRecord*, const ZcDbLineType*> m_layerLineTypes;
};
