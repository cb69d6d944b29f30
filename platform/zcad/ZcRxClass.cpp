#include "ZcRxClass.h"

ZcRxClass::ZcRxClass(const QString& name, const ZcRxClass* parent)
    : m_name(name)
    , m_parent(parent)
{ }

bool ZcRxClass::isDerivedFrom(const ZcRxClass* other) const
{
    if (!other)
        return false;
    for (const ZcRxClass* cls = this; cls; cls = cls->m_parent)
        if (cls == other)
            return true;
    return false;
}
