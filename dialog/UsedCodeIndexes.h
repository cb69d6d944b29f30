#pragma once

// The index paths, in lower case, that product entities of the scanned drawings
// carry, and for every floor whether its drawing was read, not read yet, or could
// not be read (and why). A scan can be handed in to run later: it runs once, before
// anything reads the set or the floors, so the dialog opens on a large drawing
// without waiting for it, and every reader still sees each path that drawing holds.
#include <QHash>
#include <QList>
#include <QSet>
#include <QString>

#include <cstddef>
#include <functional>
#include <set>

enum class FloorScanState {
    NotRead, // not scanned yet: nothing is known of its entities
    Read, // its drawing was scanned
    Unreadable, // its drawing is missing or cannot be read: its entities are unknown
};

struct UnreadableFloor
{
    QString floor;
    QString reason;
};

class UsedCodeIndexes
{
public:
    using Scan = std::function<void()>;

    // `scan` runs (and fills the set through insert) before the set is next read.
    void Defer(Scan scan);
    bool IsDeferred() const { return bool(m_deferred); }
    // Runs the scan handed in, if it has not run yet.
    void Settle() const;

    void insert(const QString& path) { m_paths.insert(path); }
    void reserve(std::size_t paths) { m_paths.reserve(qsizetype(paths)); }
    // Empties the set, forgets every floor and drops a scan that has not run.
    void clear();

    void MarkRead(const QString& floor);
    void MarkUnreadable(const QString& floor, const QString& reason);
    FloorScanState StateOf(const QString& floor) const;
    // The floors that were tried and could not be read, in the order they were tried.
    QList<UnreadableFloor> UnreadableFloors() const;

    std::size_t count(const QString& path) const;
    std::size_t size() const;
    // The paths in plain string order (made when asked for).
    std::set<QString> Paths() const;

    friend bool operator==(const UsedCodeIndexes& used, const std::set<QString>& paths)
    {
        return used.Paths() == paths;
    }

private:
    mutable Scan m_deferred;
    // Hashed: a floor whose pipes all carry codes of their own adds a path for
    // each, and a look-up is one probe.
    QSet<QString> m_paths;
    QHash<QString, FloorScanState> m_floors;
    QList<UnreadableFloor> m_unreadable;
};
