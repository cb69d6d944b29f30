#pragma once

#include "QvKsAttIds.h"

// One detail member of the attribute library, e.g. the wire type "BV-2.5" in
// "电气\管线\导线·导管".
class CAttDetailMem
{
public:
    explicit CAttDetailMem(const SQvKsDetailMemId& id)
        : m_id(id)
    { }

    // The category's name path, "\" and the member's name; empty when unknown.
    QString GetNamePath() const;
    QString GetName() const;
    const SQvKsDetailMemId& GetId() const { return m_id; }

private:
    SQvKsDetailMemId m_id;
};
