#pragma once

// Names an object of a database. Ids stay valid while their database lives; an id
// whose database is gone resolves to nothing.
#include "ZcadTypes.h"

#include <QtGlobal>

class ZcDbDatabase;
class ZcDbObject;

class ZcDbObjectId
{
public:
    constexpr ZcDbObjectId() = default;
    constexpr ZcDbObjectId(quint32 databaseSerial, quint32 index)
        : m_database(databaseSerial)
        , m_index(index)
    { }

    static const ZcDbObjectId kNull;

    bool isNull() const { return m_database == 0 || m_index == 0; }
    // The id names an object of a living database.
    bool isValid() const { return object() != nullptr; }
    bool isErased() const;
    ZcDbDatabase* database() const;
    // The object itself, without opening it; null when the id names nothing.
    ZcDbObject* object() const;

    quint32 databaseSerial() const { return m_database; }
    quint32 index() const { return m_index; }

    constexpr bool operator==(const ZcDbObjectId&) const = default;
    constexpr auto operator<=>(const ZcDbObjectId&) const = default;

private:
    quint32 m_database = 0;
    quint32 m_index = 0;
};

inline constexpr ZcDbObjectId ZcDbObjectId::kNull {};

// Conversions between ids and the entity names of the editor calls.
Zcad::ErrorStatus zcdbGetObjectId(ZcDbObjectId& id, const zds_name name);
Zcad::ErrorStatus zcdbGetZdsName(zds_name name, ZcDbObjectId id);
