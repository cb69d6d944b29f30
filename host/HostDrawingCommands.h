#pragma once

// The host's commands on the drawing itself: a system code put on the lines, arcs
// and polylines the user selects (they become product entities carrying the code's
// index path), a code taken off again, and the floor saved back to its drawing
// file. Each command has a global name and a short local one, as the plug-ins'
// commands do.
#include <QList>
#include <QString>

#include <vector>

class HostSession;
class HostWindow;
class ZcDbObjectId;

struct HostCommandName
{
    QString global;
    QString local;
    QString help;
};

// What putting a code on entities or taking it off did.
struct CodeAssignment
{
    int changed = 0;
    // Selected entities that are not lines, arcs or polylines (or, when taking a
    // code off, carry none).
    int skipped = 0;
};

class HostDrawingCommands
{
public:
    HostDrawingCommands(HostWindow& window, HostSession& session);

    // The commands, for the usage and the command line's completion.
    static const QList<HostCommandName>& Names();
    // Runs the command a typed word names (upper case, without a leading "_");
    // false when it names none of these.
    bool Run(const QString& name);

    // The entities with `indexPath` put on them; product entities take the new
    // code. The drawing's registered applications gain the product's.
    static CodeAssignment AssignCode(const std::vector<ZcDbObjectId>& ids, const QString& indexPath);
    // Product entities among `ids` become the plain shapes they wrap, their other
    // extended data kept.
    static CodeAssignment RemoveCode(const std::vector<ZcDbObjectId>& ids);
    // The index path of the attribute bar's current code; empty (with `why`) when
    // there is none.
    static QString CurrentBarIndexPath(QString& why);

private:
    void Assign();
    void Remove();
    void Save();
    bool Select(std::vector<ZcDbObjectId>& ids);

    HostWindow& m_window;
    HostSession& m_session;
};
