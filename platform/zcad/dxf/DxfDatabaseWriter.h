#pragma once

// Writes a whole drawing database back to DXF: its layers, registered applications,
// block definitions and the entities of model and paper space, each with its
// layer, colour, true colour and extended data. Erased entities are left out.
// Entities of kinds kept only as proxies go out with the groups they were read
// from (their layer, colour and extended data among them); a proxy without them
// cannot be written and is reported as dropped.
//
// A hook sees every entity first: it may write another entity's geometry in its
// place (the shape a product entity wraps) and change the style it goes out in.
#include "DxfWriter.h"

#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>

class QIODevice;
class ZcDbBlockTableRecord;
class ZcDbDatabase;
class ZcDbEntity;

class DxfDatabaseWriter
{
public:
    // The entity whose geometry is written for `entity` (itself when null).
    using EntityHook = std::function<const ZcDbEntity*(const ZcDbEntity& entity, DxfStyle& style)>;

    void setEntityHook(EntityHook hook) { m_hook = std::move(hook); }
    // Line types the entities name, written into the drawing's line-type table.
    void addLinetype(const DxfLinetype& linetype) { m_linetypes.append(linetype); }

    bool write(const ZcDbDatabase& database, QIODevice* device,
        DxfWriter::Version version = DxfWriter::Version::R2018);

    // Entities of model and paper space written (those of blocks not counted).
    int writtenEntities() const { return m_written; }
    // What could not be written, by DXF kind, with how many of each.
    const QMap<QString, int>& dropped() const { return m_dropped; }
    // "SPLINE ×2, HATCH ×1"; empty when nothing was dropped.
    QString droppedText() const;

    // The sections and tables a DXF file holds (its text form), for saying what a
    // write of its database does not carry over: everything but the header's
    // version, code page and line-type scale, layers, line types, registered
    // applications, blocks and entities.
    static QStringList PartsNotKept(const QByteArray& dxf);

private:
    void writeBlock(DxfWriter& writer, const ZcDbBlockTableRecord& block, bool paperSpace);
    void writeEntity(DxfWriter& writer, const ZcDbEntity& entity, bool paperSpace);
    bool writeShape(DxfWriter& writer, const ZcDbEntity& shape, const DxfStyle& style);
    DxfStyle styleOf(const ZcDbEntity& entity, bool paperSpace) const;

    EntityHook m_hook;
    QList<DxfLinetype> m_linetypes;
    QMap<QString, int> m_dropped;
    int m_written = 0;
};
