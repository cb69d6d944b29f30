#include "ZcRxObject.h"

ZcRxClass* ZcRxObject::desc()
{
    static ZcRxClass cls(QStringLiteral("ZcRxObject"), nullptr);
    return &cls;
}

ZcRxClass* ZcRxObject::isA() const
{
    return ZcRxObject::desc();
}
