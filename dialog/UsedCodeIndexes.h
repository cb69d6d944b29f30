#pragma once

// The index paths, in lower case, that product entities of the scanned drawings
// carry. A scan can be handed in to run later: it runs once, before anything reads
// the set, so the dialog opens on a large drawing without waiting for it, and every
// reader still sees each path that drawing holds.
#include <QString>

#include <cstddef>
#include <functional>
#include <set>

class UsedCodeIndexes
{
public:
    using Scan = std::function<void()>;

    // `scan` runs (and fills the set through insert) before the set is next read.
    void Defer(Scan scan);
    bool IsDeferred() const { return bool(m_deferred); }
    // Runs the scan handed in, if it has not run yet.
    void Settle() const;

    void insert(QString path) { m_paths.insert(std::move(path)); }
    // Empties the set and drops a scan that has not run.
    void clear();

    std::size_t count(const QString& path) const;
    std::size_t size() const;
    const std::set<QString>& Paths() const;

    friend bool operator==(const UsedCodeIndexes& used, const std::set<QString>& paths)
    {
        return used.Paths() == paths;
    }

private:
    mutable Scan m_deferred;
    std::set<QString> m_paths;
};
