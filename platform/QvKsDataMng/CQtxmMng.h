#pragma once

// Pipeline bill and quota items per floor. Edits made with SetQdInfo and
// SetQdDeInfo are held until CAtt::Save stores them all in one transaction; reads
// already see them. Closing the project drops edits not saved.
#include "QvKsQtxmInfo.h"

#include <QVector>

class CQtxmMng
{
public:
    // False for an unknown floor or when no project is open.
    static bool GetAllQdInfos(const QString& floor, QVector<SQvKsQdInfo>& items);
    static bool GetAllDeInfos(const QString& floor, QVector<SQvKsDeInfo>& items);
    // The quota items under the bill item of that code and serial on the floor.
    static bool GetAllQdDeInfosByCode(
        const QString& floor, const QString& qdCode, int qdIndex, QVector<SQvKsDeInfo>& items);
    // Takes an item's new values (found by its id); false for an unknown id.
    static bool SetQdInfo(const SQvKsQdInfo& item);
    static bool SetQdDeInfo(const SQvKsDeInfo& item);
};
