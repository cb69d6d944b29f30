#pragma once

// Turns the working drawing into the view's display list: arcs, circles and
// bulged polylines become point runs, block references are exploded with their
// visible attributes, texts keep their place, and product entities are drawn in
// their system code's colour, width, transparency and line type when the project
// shows colours by system (by layer otherwise).
#include "DisplayList.h"

#include <QColor>
#include <QHash>
#include <QPointF>
#include <QRgb>
#include <QString>

#include <span>

class ZcDbDatabase;
class ZcDbEntity;
class ZcDbMText;
class ZcDbText;
struct ZcDbLayerTableRecord;
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

    void Build(ZcDbDatabase* database, DisplayList& list) const;

    // The colour of CAD colour index 1..255 on a dark background (7 is white).
    static QColor AciColor(int index);
    // A layer's own colour (white for a missing layer).
    static QColor LayerColor(const ZcDbLayerTableRecord* layer);

private:
    struct Look
    {
        QRgb color = 0;
        float width = 0.0f;
        const LineTypeDef* lineType = nullptr;
    };
    struct CodeLook
    {
        bool known = false;
        Look look;
    };

    void AddEntity(const ZcDbEntity& entity, const Look& blockLook, ZcDbDatabase* database, DisplayList& list,
        int depth) const;
    void AddShape(const ZcDbEntity& entity, const Look& look, DisplayList& list) const;
    void AddText(const ZcDbText& text, const Look& look, DisplayList& list) const;
    void AddMText(const ZcDbMText& mtext, const Look& look, DisplayList& list) const;
    void AddPath(std::span<const QPointF> points, bool closed, const Look& look, DisplayList& list) const;
    void AddPattern(std::span<const QPointF> points, const Look& look, DisplayList& list) const;
    Look LookOf(const ZcDbEntity& entity, ZcDbDatabase* database, const Look& blockLook) const;
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
    // The last entity's code and layer: neighbours in a drawing mostly share both.
    struct LastCode
    {
        QString path;
        CodeLook code;
    };
    struct LastLayer
    {
        QString name;
        const ZcDbLayerTableRecord* record = nullptr;
    };
    mutable LastCode m_lastCode;
    mutable LastLayer m_lastLayer;
};
