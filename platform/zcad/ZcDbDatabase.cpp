#include "ZcDbDatabase.h"

#include "ZcDbBlockTable.h"
#include "ZcDbBlockTableRecord.h"
#include "ZcDbEntity.h"
#include "ZcDbObjectArena.h"
#include "dxf/DxfFileStream.h"
#include "dxf/DxfReader.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>

#include <algorithm>
#include <atomic>

ZCRX_DEFINE_MEMBERS(ZcDbDatabase, ZcRxObject)

struct ZcDbDatabase::Content
{
    // Declared first: the objects made in it are destroyed before it.
    ZcDbObjectArena arena;
    // Index 0 stays empty so that index 0 means "no object".
    std::vector<std::unique_ptr<ZcDbObject>> objects = [] {
        std::vector<std::unique_ptr<ZcDbObject>> list;
        list.emplace_back();
        return list;
    }();
    quint32 blockTable = 0;
    std::vector<ZcDbLayerTableRecord> layers;
    std::vector<ZcDbLineType> lineTypes;
    std::vector<ZcDbLineStyle> lineStyles { ZcDbLineStyle { QStringLiteral("BYLAYER"), 1.0 } };
    double lineTypeScale = 1.0;
    QStringList readNotes;
    QStringList apps;
    QString fileName;
    QString version = QStringLiteral("AC1032");
    QString codePage = QStringLiteral("ANSI_936");
};

namespace {
QHash<quint32, ZcDbDatabase*>& liveDatabases()
{
    static auto* live = new QHash<quint32, ZcDbDatabase*>;
    return *live;
}

// The database an id named last on this thread: a walk over a block asks for the
// same one each step. Any change to the live databases makes it stale.
std::atomic<quint64> g_liveGeneration { 1 };

struct RecentDatabase
{
    quint64 generation = 0;
    quint32 serial = 0;
    ZcDbDatabase* database = nullptr;
};
thread_local RecentDatabase t_recent;

void liveDatabasesChanged()
{
    g_liveGeneration.fetch_add(1, std::memory_order_release);
}

quint32 nextSerial()
{
    static quint32 serial = 0;
    return ++serial;
}

struct FactoryEntry
{
    QString app;
    ZcDbDatabase::EntityFactory factory;
};

std::vector<FactoryEntry>& factories()
{
    static auto* list = new std::vector<FactoryEntry>;
    return *list;
}
} // namespace

ZcDbDatabase::ZcDbDatabase(bool buildDefaultDrawing, bool noDocument)
    : m_content(std::make_unique<Content>())
    , m_serial(nextSerial())
    , m_noDocument(noDocument)
{
    liveDatabases().insert(m_serial, this);
    liveDatabasesChanged();
    if (buildDefaultDrawing)
        buildDefault();
}

ZcDbDatabase::~ZcDbDatabase()
{
    liveDatabases().remove(m_serial);
    liveDatabasesChanged();
}

ZcDbDatabase* ZcDbDatabase::fromSerial(quint32 serial)
{
    const quint64 generation = g_liveGeneration.load(std::memory_order_acquire);
    if (t_recent.generation != generation || t_recent.serial != serial)
        t_recent = { generation, serial, liveDatabases().value(serial, nullptr) };
    return t_recent.database;
}

void ZcDbDatabase::buildDefault()
{
    ensureBlock(QString::fromUtf16(ZCDB_MODEL_SPACE));
    ensureBlock(QString::fromUtf16(ZCDB_PAPER_SPACE));
    setLayer({ QStringLiteral("0"), 7 });
}

ZcDbBlockTable* ZcDbDatabase::blockTable() const
{
    return static_cast<ZcDbBlockTable*>(objectAt(m_content->blockTable));
}

ZcDbObject* ZcDbDatabase::objectAt(quint32 index) const
{
    return index < m_content->objects.size() ? m_content->objects[index].get() : nullptr;
}

ZcDbObjectArena& ZcDbDatabase::objectArena()
{
    return m_content->arena;
}

quint32 ZcDbDatabase::objectCount() const
{
    return quint32(m_content->objects.size() - 1);
}

ZcDbObjectId ZcDbDatabase::addObject(std::unique_ptr<ZcDbObject> object, ZcDbObjectId owner)
{
    if (!object || object->isDatabaseResident())
        return ZcDbObjectId::kNull;
    const auto index = quint32(m_content->objects.size());
    object->placeInDatabase(m_serial, index, owner.databaseSerial() == m_serial ? owner.index() : 0);
    m_content->objects.push_back(std::move(object));
    return ZcDbObjectId(m_serial, index);
}

std::unique_ptr<ZcDbObject> ZcDbDatabase::exchangeObject(quint32 index, std::unique_ptr<ZcDbObject> object)
{
    if (index == 0 || index >= m_content->objects.size())
        return object;
    std::swap(m_content->objects[index], object);
    return object;
}

ZcDbBlockTableRecord* ZcDbDatabase::ensureBlock(const QString& name)
{
    if (!m_content->blockTable)
        m_content->blockTable = addObject(std::make_unique<ZcDbBlockTable>(), {}).index();
    ZcDbBlockTable* table = blockTable();
    ZcDbObjectId id;
    if (table->getAt(name, id, true) != Zcad::eOk)
        id = table->addOwned(std::make_unique<ZcDbBlockTableRecord>(name));
    return static_cast<ZcDbBlockTableRecord*>(id.object());
}

Zcad::ErrorStatus ZcDbDatabase::getBlockTable(ZcDbBlockTable*& table, ZcDb::OpenMode mode)
{
    table = nullptr;
    if (!m_content->blockTable)
        return Zcad::eKeyNotFound;
    return zcdbOpenObject(table, blockTableId(), mode);
}

ZcDbObjectId ZcDbDatabase::blockTableId() const
{
    return m_content->blockTable ? ZcDbObjectId(m_serial, m_content->blockTable) : ZcDbObjectId::kNull;
}

ZcDbObjectId ZcDbDatabase::modelSpaceId() const
{
    ZcDbObjectId id;
    if (const ZcDbBlockTable* table = blockTable())
        table->getAt(QString::fromUtf16(ZCDB_MODEL_SPACE), id, true);
    return id;
}

ZcDbObjectId ZcDbDatabase::paperSpaceId() const
{
    ZcDbObjectId id;
    if (const ZcDbBlockTable* table = blockTable())
        table->getAt(QString::fromUtf16(ZCDB_PAPER_SPACE), id, true);
    return id;
}

const std::vector<ZcDbLayerTableRecord>& ZcDbDatabase::layers() const
{
    return m_content->layers;
}

const ZcDbLayerTableRecord* ZcDbDatabase::layer(const QString& name) const
{
    for (const ZcDbLayerTableRecord& layer : m_content->layers)
        if (layer.name.compare(name, Qt::CaseInsensitive) == 0)
            return &layer;
    return nullptr;
}

void ZcDbDatabase::setLayer(const ZcDbLayerTableRecord& layer)
{
    for (ZcDbLayerTableRecord& existing : m_content->layers)
        if (existing.name.compare(layer.name, Qt::CaseInsensitive) == 0) {
            existing = layer;
            return;
        }
    m_content->layers.push_back(layer);
}

const ZcDbLineType* ZcDbDatabase::lineType(const QString& name) const
{
    for (const ZcDbLineType& lineType : m_content->lineTypes)
        if (lineType.name.compare(name, Qt::CaseInsensitive) == 0)
            return &lineType;
    return nullptr;
}

const std::vector<ZcDbLineType>& ZcDbDatabase::lineTypes() const
{
    return m_content->lineTypes;
}

void ZcDbDatabase::setLineType(const ZcDbLineType& lineType)
{
    for (ZcDbLineType& existing : m_content->lineTypes)
        if (existing.name.compare(lineType.name, Qt::CaseInsensitive) == 0) {
            existing = lineType;
            return;
        }
    m_content->lineTypes.push_back(lineType);
}

const ZcDbLineStyle& ZcDbDatabase::lineStyle(quint16 index) const
{
    const auto& styles = m_content->lineStyles;
    return index < styles.size() ? styles[index] : styles.front();
}

quint16 ZcDbDatabase::lineStyleIndex(const ZcDbLineStyle& style)
{
    // A drawing uses a handful of line types and scales: a plain search will do.
    auto& styles = m_content->lineStyles;
    for (size_t i = 0; i < styles.size(); ++i)
        if (styles[i].scale == style.scale
            && styles[i].lineType.compare(style.lineType, Qt::CaseInsensitive) == 0)
            return quint16(i);
    if (styles.size() > 0xFFFF)
        return 0;
    styles.push_back(style);
    return quint16(styles.size() - 1);
}

double ZcDbDatabase::lineTypeScale() const
{
    return m_content->lineTypeScale;
}

void ZcDbDatabase::setLineTypeScale(double scale)
{
    m_content->lineTypeScale = scale;
}

QStringList ZcDbDatabase::registeredApps() const
{
    return m_content->apps;
}

void ZcDbDatabase::addRegisteredApp(const QString& appName)
{
    if (!m_content->apps.contains(appName, Qt::CaseInsensitive))
        m_content->apps.append(appName);
}

QStringList ZcDbDatabase::readNotes() const
{
    return m_content->readNotes;
}

void ZcDbDatabase::addReadNote(const QString& note)
{
    m_content->readNotes.append(note);
}

QString ZcDbDatabase::filename() const
{
    return m_content->fileName;
}

QString ZcDbDatabase::dxfVersion() const
{
    return m_content->version;
}

QString ZcDbDatabase::codePage() const
{
    return m_content->codePage;
}

void ZcDbDatabase::setHeaderValues(const QString& dxfVersion, const QString& codePage)
{
    m_content->version = dxfVersion;
    m_content->codePage = codePage;
}

void ZcDbDatabase::takeContentFrom(ZcDbDatabase& other)
{
    // The objects keep the serial number they were made under, and ids inside them
    // (a reference's block) stay right, so the serial numbers change hands too: ids
    // of the content replaced now name nothing instead of other objects.
    std::swap(m_content, other.m_content);
    std::swap(m_serial, other.m_serial);
    liveDatabases().insert(m_serial, this);
    liveDatabases().insert(other.m_serial, &other);
    liveDatabasesChanged();
}

Zcad::ErrorStatus ZcDbDatabase::readDwgFile(
    const ZTCHAR* fileName, int shareMode, bool allowCPConversion, const ZTCHAR* password)
{
    if (!fileName)
        return Zcad::eInvalidInput;
    return readDwgFile(QString::fromUtf16(fileName), shareMode, allowCPConversion, password);
}

Zcad::ErrorStatus ZcDbDatabase::readDwgFile(const QString& fileName, int, bool, const ZTCHAR*)
{
    m_readError.clear();
    if (fileName.isEmpty() || !QFileInfo::exists(fileName)) {
        m_readError = QStringLiteral("%1: no such file").arg(fileName);
        return Zcad::eFileNotFound;
    }
    // Read while parsed: a large floor is never whole in memory. A folder, a device
    // or a pipe is refused with what it is.
    DxfFileStream stream;
    if (!stream.open(fileName)) {
        m_readError = stream.error();
        return Zcad::eFileAccessErr;
    }
    ZcDbDatabase fresh(false, true);
    DxfReader reader;
    const Zcad::ErrorStatus status = reader.read(stream, fresh);
    if (status == Zcad::eOk)
        takeContentFrom(fresh);
    else
        m_readError = reader.error();
    if (status == Zcad::eOk)
        m_content->fileName = QFileInfo(fileName).absoluteFilePath();
    else
        m_readError = QStringLiteral("%1: %2").arg(fileName, m_readError);
    return status;
}

Zcad::ErrorStatus ZcDbDatabase::readDxfData(std::string_view data)
{
    m_readError.clear();
    ZcDbDatabase fresh(false, true);
    DxfReader reader;
    const Zcad::ErrorStatus status = reader.read(data, fresh);
    if (status != Zcad::eOk) {
        m_readError = reader.error();
        return status;
    }
    takeContentFrom(fresh);
    return Zcad::eOk;
}

void ZcDbDatabase::registerEntityFactory(const QString& xdataApp, EntityFactory factory)
{
    auto& list = factories();
    std::erase_if(list,
        [&](const FactoryEntry& entry) { return entry.app.compare(xdataApp, Qt::CaseInsensitive) == 0; });
    if (factory)
        list.push_back({ xdataApp, factory });
}

std::unique_ptr<ZcDbEntity> ZcDbDatabase::promote(std::unique_ptr<ZcDbEntity> entity)
{
    const auto* apps = entity ? entity->xDataAll() : nullptr;
    if (!apps)
        return entity;
    for (const FactoryEntry& entry : factories())
        for (const ZcDbXDataApp& app : *apps)
            // Mostly spelt as registered: the exact match saves the case folding.
            if (app.appName == entry.app || app.appName.compare(entry.app, Qt::CaseInsensitive) == 0)
                return std::unique_ptr<ZcDbEntity>(entry.factory(entity.release()));
    return entity;
}
