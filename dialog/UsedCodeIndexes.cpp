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
