#include "ZcEdSelection.h"

#include <QString>

#include <deque>
#include <map>
#include <optional>

namespace {
struct SelectionState
{
    // An empty optional stands for a cancelled selection.
    std::deque<std::optional<std::vector<ZcDbObjectId>>> queue;
    std::map<std::int64_t, std::vector<ZcDbObjectId>> sets;
    std::int64_t nextSet = 1;
    ZcEdSelectionHandler handler;
    QString lastMode;
};

SelectionState& state()
{
    static auto* s = new SelectionState;
    return *s;
}

std::vector<ZcDbObjectId>* findSet(const zds_name ss)
{
    auto& sets = state().sets;
    const auto it = sets.find(ss[0]);
    return it == sets.end() || ss[1] != 0 ? nullptr : &it->second;
}
} // namespace

int zcedSSGet(const ZTCHAR* mode, const void*, const void*, const resbuf*, zds_name ss)
{
    ss[0] = ss[1] = 0;
    SelectionState& s = state();
    s.lastMode = mode ? QString::fromUtf16(mode) : QString();
    std::vector<ZcDbObjectId> picked;
    if (!s.queue.empty()) {
        std::optional<std::vector<ZcDbObjectId>> next = std::move(s.queue.front());
        s.queue.pop_front();
        if (!next)
            return RTCAN;
        picked = std::move(*next);
    } else if (s.handler) {
        const int result = s.handler(s.lastMode, picked);
        if (result != RTNORM)
            return result;
    } else {
        return RTCAN;
    }
    std::vector<ZcDbObjectId> kept;
    for (const ZcDbObjectId& id : picked)
        if (id.isValid() && !id.isErased())
            kept.push_back(id);
    if (kept.empty())
        return RTERROR;
    ss[0] = s.nextSet++;
    s.sets.emplace(ss[0], std::move(kept));
    return RTNORM;
}

int zcedSSLength(const zds_name ss, qint32* length)
{
    const std::vector<ZcDbObjectId>* set = findSet(ss);
    if (!set || !length)
        return RTERROR;
    *length = qint32(set->size());
    return RTNORM;
}

int zcedSSName(const zds_name ss, qint32 i, zds_name entity)
{
    const std::vector<ZcDbObjectId>* set = findSet(ss);
    if (!set || i < 0 || size_t(i) >= set->size())
        return RTERROR;
    zcdbGetZdsName(entity, (*set)[size_t(i)]);
    return RTNORM;
}

int zcedSSFree(const zds_name ss)
{
    if (!findSet(ss))
        return RTERROR;
    state().sets.erase(ss[0]);
    return RTNORM;
}

void zcedSSQueueSelection(const std::vector<ZcDbObjectId>& ids)
{
    state().queue.emplace_back(ids);
}

void zcedSSQueueCancel()
{
    state().queue.emplace_back(std::nullopt);
}

void zcedSSClearQueue()
{
    state().queue.clear();
}

int zcedSSQueuedCount()
{
    return int(state().queue.size());
}

ZcEdSelectionHandler zcedSSSetInteractiveHandler(ZcEdSelectionHandler handler)
{
    ZcEdSelectionHandler previous = std::move(state().handler);
    state().handler = std::move(handler);
    return previous;
}

QString zcedSSLastMode()
{
    return state().lastMode;
}

int zcedSSOpenCount()
{
    return int(state().sets.size());
}
