#pragma once

// A drawing database: the block table with model space, paper space and block
// definitions, the layers, and every object, read from a DXF file.
//
// Objects are owned by the database and live as long as it does. Ids name an
// object by the database's serial number and the object's index, so an id of a
// deleted database names nothing rather than freed memory.
#include "ZcDbLayerTableRecord.h"
#include "ZcDbLineType.h"
#include "ZcDbObjectId.h"
#include "ZcRxObject.h"
#include "ZcadTypes.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <memory>
#include <string_view>
#include <vector>

class ZcDbBlockTable;
class ZcDbBlockTableRecord;
class ZcDbEntity;
class ZcDbObject;
class ZcDbObjectArena;

class ZcDbDatabase : public ZcRxObject
{
    ZCRX_DECLARE_MEMBERS(ZcDbDatabase)
public:
    // Makes a database entity of an entity read with extended data of a registered
    // application: takes `plain` and returns what stands for it (or `plain` itself).
    using EntityFactory = ZcDbEntity* (*)(ZcDbEntity* plain);

    // With `buildDefaultDrawing` the database starts with model space, paper space
    // and layer "0"; without, it is empty until readDwgFile fills it.
    explicit ZcDbDatabase(bool buildDefaultDrawing = true, bool noDocument = false);
    ~ZcDbDatabase() override;
    ZcDbDatabase(const ZcDbDatabase&) = delete;
    ZcDbDatabase& operator=(const ZcDbDatabase&) = delete;

    // Reads a DXF drawing (text or binary) and replaces the content. On failure the
    // content is unchanged and readError() says why: eFileNotFound, eFileAccessErr,
    // eBadDwgHeader (not a DXF drawing) or eDwgNeedsRecovery (broken or truncated).
    Zcad::ErrorStatus readDwgFile(const ZTCHAR* fileName, int shareMode = _SH_DENYWR,
        bool allowCPConversion = false, const ZTCHAR* password = nullptr);
    Zcad::ErrorStatus readDwgFile(const QString& fileName, int shareMode = _SH_DENYWR,
        bool allowCPConversion = false, const ZTCHAR* password = nullptr);
    // The same from bytes in memory.
    Zcad::ErrorStatus readDxfData(std::string_view data);
    QString readError() const { return m_readError; }
    // What the last successful read passed over in a drawing it could still read
    // (stray groups between sections), one line each.
    QStringList readNotes() const;
    void addReadNote(const QString& note);
    QString filename() const;
    // "$ACADVER" ("AC1009" … "AC1032") and "$DWGCODEPAGE" of the drawing read.
    QString dxfVersion() const;
    QString codePage() const;
    bool isDocumentless() const { return m_noDocument; }

    Zcad::ErrorStatus getBlockTable(ZcDbBlockTable*& table, ZcDb::OpenMode mode);
    Zcad::ErrorStatus getSymbolTable(ZcDbBlockTable*& table, ZcDb::OpenMode mode)
    {
        return getBlockTable(table, mode);
    }
    ZcDbObjectId blockTableId() const;
    ZcDbObjectId modelSpaceId() const;
    ZcDbObjectId paperSpaceId() const;

    const std::vector<ZcDbLayerTableRecord>& layers() const;
    // By name, without regard to case; null when there is none.
    const ZcDbLayerTableRecord* layer(const QString& name) const;
    // Adds the layer or replaces the one of the same name.
    void setLayer(const ZcDbLayerTableRecord& layer);
    // The line types of the drawing, by name without regard to case (null for none).
    const ZcDbLineType* lineType(const QString& name) const;
    const std::vector<ZcDbLineType>& lineTypes() const;
    void setLineType(const ZcDbLineType& lineType);
    // The line styles entities name by their index; index 0 is by layer at scale 1.
    const ZcDbLineStyle& lineStyle(quint16 index) const;
    // The index of `style`, added when new (0 when the table is full).
    quint16 lineStyleIndex(const ZcDbLineStyle& style);
    // "$LTSCALE": the scale of every line type pattern of the drawing.
    double lineTypeScale() const;
    void setLineTypeScale(double scale);
    QStringList registeredApps() const;
    void addRegisteredApp(const QString& appName);

    // Used by the objects and the readers.
    quint32 serial() const { return m_serial; }
    ZcDbObject* objectAt(quint32 index) const;
    quint32 objectCount() const;
    // Where readers make the objects of this content (they live as long as it).
    ZcDbObjectArena& objectArena();
    ZcDbObjectId addObject(std::unique_ptr<ZcDbObject> object, ZcDbObjectId owner);
    // Puts `object` at `index` and gives back what was there (ZcDbObject::handOverTo).
    std::unique_ptr<ZcDbObject> exchangeObject(quint32 index, std::unique_ptr<ZcDbObject> object);
    // The block of that name, made (with `origin`) when missing.
    ZcDbBlockTableRecord* ensureBlock(const QString& name);
    void setHeaderValues(const QString& dxfVersion, const QString& codePage);
    static ZcDbDatabase* fromSerial(quint32 serial);

    static void registerEntityFactory(const QString& xdataApp, EntityFactory factory);
    // `entity` as the registered factory of its first matching application makes it.
    static std::unique_ptr<ZcDbEntity> promote(std::unique_ptr<ZcDbEntity> entity);

private:
    struct Content;

    void buildDefault();
    void takeContentFrom(ZcDbDatabase& other);
    ZcDbBlockTable* blockTable() const;

    std::unique_ptr<Content> m_content;
    quint32 m_serial;
    bool m_noDocument;
    QString m_readError;
};
