#pragma once

#include "QvKsAttIds.h"

#include <QVector>

// The project's attributes: the attribute library and the pipeline items.
class CAtt
{
public:
    // Stores the bill and quota item edits made since the last save (CQtxmMng) in
    // one transaction; on failure they stay pending and nothing is written.
    static bool Save();
    // The detail members of a small category, in member order.
    static bool GetAllDetailMemIdsBySmallCategory(
        const SQvKsSmallCategoryId& category, QVector<SQvKsDetailMemId>& members);
};
