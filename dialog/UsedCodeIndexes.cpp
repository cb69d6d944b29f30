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
    return m_paths.count(path);
}

std::size_t UsedCodeIndexes::size() const
{
    Settle();
    return m_paths.size();
}

const std::set<QString>& UsedCodeIndexes::Paths() const
{
    Settle();
    return m_paths;
}
