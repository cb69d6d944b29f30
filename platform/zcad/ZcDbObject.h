#pragma once

// An object of a drawing database. Objects in a database are owned by it and are
// opened with zcdbOpenObject and closed with close(): many readers or one writer
// at a time. Erased objects stay where they are, marked, and open only when asked
// for with openErased. Objects outside a database (new ones, exploded pieces) are
// owned by whoever made them and deleted with delete.
//
// A drawing reader makes its objects in the database's arena (ZcDbObjectArena):
// delete runs their destructor and leaves the memory to the arena.
#include "ZcDbObjectId.h"
#include "ZcDbXData.h"
#include "ZcRxObject.h"
#include "ZcadTypes.h"

#include <QStringList>

#include <memory>
#include <new>
#include <vector>

class ZcDbDatabase;

class ZcDbObject : public ZcRxObject
{
    ZCRX_DECLARE_MEMBERS(ZcDbObject)
public:
    ZcDbObject();
    ~ZcDbObject() override;
    ZcDbObject& operator=(const ZcDbObject&) = delete;

    // From the arena of the thread's active ZcDbObjectArena::Scope, else the heap.
    static void* operator new(std::size_t size);
    // Destroys the object and gives its memory back unless an arena holds it. The
    // object must start where its allocation does (classes derive singly).
    static void operator delete(ZcDbObject* object, std::destroying_delete_t);
    // Only for a constructor that throws.
    static void operator delete(void* memory);

    ZcDbObjectId objectId() const { return ZcDbObjectId(m_databaseSerial, m_index); }
    ZcDbObjectId ownerId() const { return ZcDbObjectId(m_databaseSerial, m_ownerIndex); }
    ZcDbDatabase* database() const;
    bool isDatabaseResident() const { return m_index != 0; }
    quint64 handle() const { return m_handle; }
    void setHandle(quint64 handle) { m_handle = handle; }

    bool isErased() const { return m_erased; }
    // Needs the object open for write.
    Zcad::ErrorStatus erase(bool erasing = true);

    // Puts `newObject` (outside any database) in this object's place: same id, owner
    // and handle, open for write as this one was. This object leaves the database,
    // closed; the caller then owns it and deletes it. Needs this object open for
    // write; eNullObjectPointer / eAlreadyInDb for a null or resident `newObject`.
    Zcad::ErrorStatus handOverTo(ZcDbObject* newObject);

    bool isReadEnabled() const { return m_readers > 0 || m_writeOpen; }
    bool isWriteEnabled() const { return m_writeOpen; }
    Zcad::ErrorStatus close();

    // The values stored for `appName` (empty when none).
    std::vector<ZcDbXDataValue> xData(const QString& appName) const;
    // Replaces the values of `appName`; an empty list removes the application.
    void setXData(const QString& appName, std::vector<ZcDbXDataValue> values);
    QStringList xDataApps() const;
    const std::vector<ZcDbXDataApp>* xDataAll() const { return m_xdata.get(); }
    // Replaces all extended data at once (readers), or takes another object's.
    void setXDataAll(std::unique_ptr<std::vector<ZcDbXDataApp>> xdata) { m_xdata = std::move(xdata); }
    // Readers give many objects the same extended data: one list serves them all
    // and is never changed in place (setXData makes the object a list of its own).
    void setXDataAll(std::shared_ptr<const std::vector<ZcDbXDataApp>> xdata) { m_xdata = std::move(xdata); }
    void moveXDataFrom(ZcDbObject& other) { m_xdata = std::move(other.m_xdata); }

    // Used by the database while it opens and places objects.
    Zcad::ErrorStatus openAs(ZcDb::OpenMode mode, bool openErased);
    void placeInDatabase(quint32 databaseSerial, quint32 index, quint32 ownerIndex);
    void setOwnerIndex(quint32 ownerIndex) { m_ownerIndex = ownerIndex; }

protected:
    // A copy outside any database: extended data and handle-free.
    ZcDbObject(const ZcDbObject& other);
    void setErasedFlag(bool erased) { m_erased = erased; }

private:
    std::shared_ptr<const std::vector<ZcDbXDataApp>> m_xdata;
    quint64 m_handle = 0;
    quint32 m_databaseSerial = 0;
    quint32 m_index = 0;
    quint32 m_ownerIndex = 0;
    quint16 m_readers = 0;
    bool m_writeOpen : 1 = false;
    bool m_erased : 1 = false;
    // Made in an arena: its memory is not the heap's.
    bool m_inArena : 1 = false;
};

Zcad::ErrorStatus zcdbOpenZcDbObject(
    ZcDbObject*& object, ZcDbObjectId id, ZcDb::OpenMode mode, bool openErased);

// Opens the object `id` names as a T: eNotThatKindOfClass (and nothing left open)
// when it is of another class.
template <class T>
Zcad::ErrorStatus zcdbOpenObject(T*& object, ZcDbObjectId id, ZcDb::OpenMode mode, bool openErased = false)
{
    object = nullptr;
    ZcDbObject* raw = nullptr;
    const Zcad::ErrorStatus status = zcdbOpenZcDbObject(raw, id, mode, openErased);
    if (status != Zcad::eOk)
        return status;
    object = T::cast(raw);
    if (!object) {
        raw->close();
        return Zcad::eNotThatKindOfClass;
    }
    return Zcad::eOk;
}
