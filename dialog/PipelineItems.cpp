#include "PipelineItems.h"

#include "CQtxmMng.h"

#include <map>

namespace {
template <typename Item> void keepNamed(const QVector<Item>& items, std::map<QString, Item>& byName)
{
    for (const Item& item : items) {
        const QString name = item.GetName();
        if (!name.isEmpty())
            byName.emplace(name, item);
    }
}

template <typename Item> QVector<Item> values(const std::map<QString, Item>& byName)
{
    QVector<Item> out;
    out.reserve(qsizetype(byName.size()));
    for (const auto& entry : byName)
        out.append(entry.second);
    return out;
}
} // namespace

void LoadFloorPipelineItems(
    const QString& floor, QVector<SQvKsQdInfo>& qdItems, QVector<SQvKsDeInfo>& deItems)
{
    std::map<QString, SQvKsDeInfo> deByName;
    std::map<QString, SQvKsQdInfo> qdByName;
    QVector<SQvKsDeInfo> de;
    if (CQtxmMng::GetAllDeInfos(floor, de))
        keepNamed(de, deByName);
    QVector<SQvKsQdInfo> qd;
    if (CQtxmMng::GetAllQdInfos(floor, qd))
        keepNamed(qd, qdByName);
    for (const auto& entry : qdByName) {
        QVector<SQvKsDeInfo> under;
        if (CQtxmMng::GetAllQdDeInfosByCode(floor, entry.second.strCode, entry.second.nIndex, under))
            keepNamed(under, deByName);
    }
    qdItems = values(qdByName);
    deItems = values(deByName);
}
