#include "UsedCodeIndexes.h"

#include <utility>

void UsedCodeIndexes::Defer(Scan scan)
{
    m_deferred = std::move(scan);
}

void UsedCodeIndexes::Settle() const
{
    if (!m_deferred)
        return;
    // Taken out first: the scan inserts into this set, and a read it makes must not
    // start it again.
    const Scan scan = std::exchange(m_deferred, nullptr);
    scan();
}

void UsedCodeIndexes::clear()
{
    m_deferred = nullptr;
    m_paths.clear();
    m_floors.clear();
    m_unreadable.clear();
}

void UsedCodeIndexes::MarkRead(const QString& floor)
{
    m_floors.insert(floor, FloorScanState::Read);
    m_unreadable.removeIf([&floor](const UnreadableFloor& f) { return f.floor == floor; });
}

void UsedCodeIndexes::MarkUnreadable(const QString& floor, const QString& reason)
{
    if (m_floors.value(floor, FloorScanState::NotRead) == FloorScanState::Unreadable)
        return;
    m_floors.insert(floor, FloorScanState::Unreadable);
    m_unreadable.append({ floor, reason });
}

FloorScanState UsedCodeIndexes::StateOf(const QString& floor) const
{
    Settle();
    return m_floors.value(floor, FloorScanState::NotRead);
}

QList<UnreadableFloor> UsedCodeIndexes::UnreadableFloors() const
{
    Settle();
    return m_unreadable;
}

std::size_t UsedCodeIndexes::count(const QString& path) const
{
    Settle();
    return m_paths.contains(path) ? 1 : 0;
}

std::size_t UsedCodeIndexes::size() const
{
    Settle();
    return std::size_t(m_paths.size());
}

std::set<QString> UsedCodeIndexes::Paths() const
{
    Settle();
    return std::set<QString>(m_paths.cbegin(), m_paths.cend());
}
