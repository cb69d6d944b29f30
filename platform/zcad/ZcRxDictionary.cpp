#include "ZcRxDictionary.h"

#include "ZcEdCommandStack.h"
#include "ZcRxDynamicLinker.h"

ZCRX_DEFINE_MEMBERS(ZcRxDictionary, ZcRxObject)

ZcRxObject* ZcRxDictionary::at(const ZTCHAR* key) const
{
    return key ? at(QString::fromUtf16(key)) : nullptr;
}

ZcRxObject* ZcRxDictionary::at(const QString& key) const
{
    return m_entries.value(key, nullptr);
}

ZcRxObject* ZcRxDictionary::atPut(const QString& key, ZcRxObject* object)
{
    ZcRxObject* previous = m_entries.value(key, nullptr);
    m_entries.insert(key, object);
    return previous;
}

ZcRxObject* ZcRxDictionary::remove(const QString& key)
{
    return m_entries.take(key);
}

ZcRxDictionary* zcrxSysRegistry()
{
    // Never destroyed: plug-ins may still reach the registry from their own static
    // destructors while the process ends.
    static ZcRxDictionary* registry = [] {
        auto* dictionary = new ZcRxDictionary;
        dictionary->atPut(QString::fromUtf16(ZCRX_DYNAMIC_LINKER), new ZcRxDynamicLinker);
        dictionary->atPut(QString::fromUtf16(ZCRX_COMMAND_DOCK), new ZcEdCommandStack);
        return dictionary;
    }();
    return registry;
}
