#include "DxfXDataPool.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <utility>

std::uint64_t DxfXDataPool::hashOf(std::string_view key)
{
    return std::hash<std::string_view> {}(key);
}

std::uint32_t DxfXDataPool::tagOf(std::uint64_t hash)
{
    // Never 0, which marks an empty slot.
    return std::uint32_t(hash >> 32) | 1u;
}

bool DxfXDataPool::matches(const Entry& entry, std::string_view key) const
{
    if (entry.length != key.size())
        return false;
    if (key.size() <= kInlineKey)
        return std::memcmp(entry.key, key.data(), key.size()) == 0;
    return m_longKeys[entry.longKey] == key;
}

DxfXDataPool::XData DxfXDataPool::find(std::string_view key) const
{
    if (m_slots.empty())
        return nullptr;
    const std::uint64_t hash = hashOf(key);
    const std::uint32_t tag = tagOf(hash);
    const std::size_t mask = m_slots.size() - 1;
    for (std::size_t at = hash & mask;; at = (at + 1) & mask) {
        const Slot& slot = m_slots[at];
        if (slot.tag == 0)
            return nullptr;
        if (slot.tag == tag && matches(m_entries[slot.entry], key))
            return m_entries[slot.entry].xdata;
    }
}

void DxfXDataPool::insert(std::string_view key, XData xdata)
{
    if (find(key))
        return;
    if (2 * (m_size + 1) > m_slots.size())
        grow();
    Entry entry;
    entry.hash = hashOf(key);
    entry.length = std::uint32_t(key.size());
    entry.xdata = std::move(xdata);
    if (key.size() <= kInlineKey) {
        std::memcpy(entry.key, key.data(), key.size());
    } else {
        entry.longKey = std::uint32_t(m_longKeys.size());
        m_longKeys.emplace_back(key);
    }
    m_entries.push_back(std::move(entry));
    place(m_entries.back().hash, std::uint32_t(m_entries.size() - 1));
    ++m_size;
}

void DxfXDataPool::place(std::uint64_t hash, std::uint32_t entry)
{
    const std::size_t mask = m_slots.size() - 1;
    std::size_t at = hash & mask;
    while (m_slots[at].tag != 0)
        at = (at + 1) & mask;
    m_slots[at] = { tagOf(hash), entry };
}

void DxfXDataPool::grow()
{
    m_slots.assign(std::max<std::size_t>(64, 2 * m_slots.size()), Slot {});
    for (std::size_t i = 0; i < m_entries.size(); ++i)
        place(m_entries[i].hash, std::uint32_t(i));
}
