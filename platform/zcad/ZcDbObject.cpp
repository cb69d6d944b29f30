#include "ZcDbObject.h"

#include "ZcDbDatabase.h"
#include "ZcDbObjectArena.h"

#include <algorithm>
#include <limits>

ZCRX_DEFINE_MEMBERS(ZcDbObject, ZcRxObject)

namespace {
bool inCurrentArena(const void* object)
{
    const ZcDbObjectArena* arena = ZcDbObjectArena::current();
    return arena && arena->contains(object);
}
} // namespace

ZcDbObject::ZcDbObject()
    : m_inArena(inCurrentArena(this))
{ }

ZcDbObject::~ZcDbObject() = default;

ZcDbObject::ZcDbObject(const ZcDbObject& other)
    : ZcRxObject(other)
    , m_xdata(other.m_xdata)
    , m_inArena(inCurrentArena(this))
{ }

void* ZcDbObject::operator new(std::size_t size)
{
    if (ZcDbObjectArena* arena = ZcDbObjectArena::current())
        return arena->allocate(size);
    return ::operator new(size);
}

void ZcDbObject::operator delete(ZcDbObject* object, std::destroying_delete_t)
{
    const bool inArena = object->m_inArena;
    object->~ZcDbObject();
    if (!inArena)
        ::operator delete(object);
}

void ZcDbObject::operator delete(void* memory)
{
    if (!inCurrentArena(memory))
        ::operator delete(memory);
}

ZcDbDatabase* ZcDbObject::database() const
{
    return m_databaseSerial ? ZcDbDatabase::fromSerial(m_databaseSerial) : nullptr;
}

Zcad::ErrorStatus ZcDbObject::erase(bool erasing)
{
    if (isDatabaseResident() && !m_writeOpen)
        return Zcad::eNotOpenForWrite;
    m_erased = erasing;
    return Zcad::eOk;
}

Zcad::ErrorStatus ZcDbObject::openAs(ZcDb::OpenMode mode, bool openErased)
{
    if (m_erased && !openErased)
        return Zcad::eWasErased;
    switch (mode) {
    case ZcDb::kForRead:
        if (m_writeOpen)
            return Zcad::eWasOpenForWrite;
        if (m_readers == std::numeric_limits<quint16>::max())
            return Zcad::eAtMaxReaders;
        ++m_readers;
        return Zcad::eOk;
    case ZcDb::kForWrite:
        if (m_writeOpen)
            return Zcad::eWasOpenForWrite;
        if (m_readers > 0)
            return Zcad::eWasOpenForRead;
        m_writeOpen = true;
        return Zcad::eOk;
    case ZcDb::kForNotify:
        return Zcad::eOk;
    }
    return Zcad::eInvalidOpenState;
}

Zcad::ErrorStatus ZcDbObject::close()
{
    if (m_writeOpen) {
        m_writeOpen = false;
        return Zcad::eOk;
    }
    if (m_readers > 0) {
        --m_readers;
        return Zcad::eOk;
    }
    return isDatabaseResident() ? Zcad::eInvalidOpenState : Zcad::eOk;
}

Zcad::ErrorStatus ZcDbObject::handOverTo(ZcDbObject* newObject)
{
    if (!newObject)
        return Zcad::eNullObjectPointer;
    if (newObject == this || newObject->isDatabaseResident())
        return Zcad::eAlreadyInDb;
    if (!isDatabaseResident() || !m_writeOpen)
        return Zcad::eNotOpenForWrite;
    ZcDbDatabase* db = database();
    if (!db)
        return Zcad::eNotOpenForWrite;
    newObject->m_handle = m_handle;
    newObject->m_erased = m_erased;
    newObject->m_writeOpen = true;
    newObject->placeInDatabase(m_databaseSerial, m_index, m_ownerIndex);
    std::unique_ptr<ZcDbObject> self = db->exchangeObject(m_index, std::unique_ptr<ZcDbObject>(newObject));
    // The database held this object: it gives it up, and the caller deletes it.
    (void)self.release();
    m_writeOpen = false;
    placeInDatabase(0, 0, 0);
    return Zcad::eOk;
}

void ZcDbObject::placeInDatabase(quint32 databaseSerial, quint32 index, quint32 ownerIndex)
{
    m_databaseSerial = databaseSerial;
    m_index = index;
    m_ownerIndex = ownerIndex;
}

std::vector<ZcDbXDataValue> ZcDbObject::xData(const QString& appName) const
{
    if (m_xdata)
        for (const ZcDbXDataApp& app : *m_xdata)
            if (app.appName.compare(appName, Qt::CaseInsensitive) == 0)
                return app.values;
    return {};
}

void ZcDbObject::setXData(const QString& appName, std::vector<ZcDbXDataValue> values)
{
    // The list may be shared with other objects: change a copy of it.
    auto apps = m_xdata ? std::make_shared<std::vector<ZcDbXDataApp>>(*m_xdata)
                        : std::make_shared<std::vector<ZcDbXDataApp>>();
    auto it = std::find_if(apps->begin(), apps->end(),
        [&](const ZcDbXDataApp& app) { return app.appName.compare(appName, Qt::CaseInsensitive) == 0; });
    if (values.empty()) {
        if (it != apps->end())
            apps->erase(it);
    } else if (it != apps->end()) {
        it->values = std::move(values);
    } else {
        apps->push_back({ appName, std::move(values) });
    }
    if (apps->empty())
        m_xdata.reset();
    else
        m_xdata = std::move(apps);
}

QStringList ZcDbObject::xDataApps() const
{
    QStringList names;
    if (m_xdata)
        for (const ZcDbXDataApp& app : *m_xdata)
            names.append(app.appName);
    return names;
}

Zcad::ErrorStatus zcdbOpenZcDbObject(
    ZcDbObject*& object, ZcDbObjectId id, ZcDb::OpenMode mode, bool openErased)
{
    object = nullptr;
    if (id.isNull())
        return Zcad::eNullObjectId;
    ZcDbObject* target = id.object();
    if (!target)
        return Zcad::eKeyNotFound;
    const Zcad::ErrorStatus status = target->openAs(mode, openErased);
    if (status == Zcad::eOk)
        object = target;
    return status;
}
