#pragma once

// A dictionary of run-time objects by name; the system registry is one.
// Entries are not owned: the services kept there live as long as the host.
#include "ZcRxObject.h"
#include "ZcadTypes.h"

#include <QMap>
#include <QString>

class ZcRxDictionary : public ZcRxObject
{
    ZCRX_DECLARE_MEMBERS(ZcRxDictionary)
public:
    ZcRxObject* at(const ZTCHAR* key) const;
    ZcRxObject* at(const QString& key) const;
    // Stores `object` under `key`; the previous entry, if any.
    ZcRxObject* atPut(const QString& key, ZcRxObject* object);
    ZcRxObject* remove(const QString& key);
    bool has(const QString& key) const { return m_entries.contains(key); }
    int numEntries() const { return int(m_entries.size()); }

private:
    QMap<QString, ZcRxObject*> m_entries;
};

// The host's system registry: holds "DynamicLinker" and "ZCAD_REGISTERED_COMMANDS".
ZcRxDictionary* zcrxSysRegistry();
