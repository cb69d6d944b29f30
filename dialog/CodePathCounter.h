#pragma once

// Counts the product entities of one drawing per code path. A drawing read from a
// file hands the entities of one code the same shared text, so a path met again is
// known by the address of its text in a small cache, without reading or hashing it;
// a path met for the first time (or evicted) is counted through a hash of its text.
#include <QHash>
#include <QString>

#include <array>
#include <cstdint>
#include <deque>

class CodePathCounter
{
public:
    void Add(const QString& path);
    // Every path counted with its entities, in lower case, added into `usage`.
    void AddTo(QHash<QString, int>& usage) const;

private:
    struct Slot
    {
        QString text; // keeps the address in use, so no other text can take it
        int* count = nullptr;
    };
    static constexpr std::size_t kSlots = 256;

    std::array<Slot, kSlots> m_recent;
    QHash<QString, int*> m_counts;
    std::deque<int> m_storage; // the counts; their addresses never move
};
