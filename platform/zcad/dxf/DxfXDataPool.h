#pragma once

// The extended-data lists a drawing reader has made, by the bytes of the groups they
// were read from, so that entities with the same groups share one list. A floor of
// many pipes asks once per pipe, with a short key and a few thousand keys at most:
// a flat index of hash tags leads to the entries, which hold short keys in place.
#include "ZcDbXData.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class DxfXDataPool
{
public:
    using XData = std::shared_ptr<const std::vector<ZcDbXDataApp>>;

    // The list kept for `key`; null when none.
    XData find(std::string_view key) const;
    // Keeps `xdata` for `key` (a key kept already keeps its first list).
    void insert(std::string_view key, XData xdata);
    std::size_t size() const { return m_size; }

private:
    static constexpr std::size_t kInlineKey = 32;

    struct Slot
    {
        std::uint32_t tag = 0; // high bits of the key's hash, never 0; 0: empty
        std::uint32_t entry = 0;
    };
    struct Entry
    {
        std::uint32_t length = 0;
        std::uint32_t longKey = 0; // for a key longer than kInlineKey: its place in m_longKeys
        char key[kInlineKey] = {};
        XData xdata;
        std::uint64_t hash = 0;
    };

    static std::uint64_t hashOf(std::string_view key);
    static std::uint32_t tagOf(std::uint64_t hash);
    bool matches(const Entry& entry, std::string_view key) const;
    void grow();
    void place(std::uint64_t hash, std::uint32_t entry);

    std::vector<Slot> m_slots; // a power of two, at most half full
    std::vector<Entry> m_entries;
    std::vector<std::string> m_longKeys;
    std::size_t m_size = 0;
};
