#pragma once

// Steps through a fixed list of object ids (the attributes of a block reference).
#include "ZcDbObjectId.h"

#include <vector>

class ZcDbEntity;

class ZcDbObjectIterator
{
public:
    explicit ZcDbObjectIterator(std::vector<ZcDbObjectId> ids)
        : m_ids(std::move(ids))
    { }

    void start() { m_position = 0; }
    bool done() const { return m_position >= m_ids.size(); }
    void step() { ++m_position; }
    ZcDbObjectId objectId() const { return done() ? ZcDbObjectId::kNull : m_ids[m_position]; }

private:
    std::vector<ZcDbObjectId> m_ids;
    size_t m_position = 0;
};
