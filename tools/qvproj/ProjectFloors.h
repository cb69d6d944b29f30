#pragma once

// A drafter's own project: made from the drafter's floor drawings, floors added
// later, and the floors listed. Each command returns the process exit code (0 on
// success) and writes its messages to `out` and `err`; a refused or failed command
// leaves nothing of what it began.
#include <QList>
#include <QString>
#include <QStringList>

class QTextStream;

struct FloorSource
{
    QString name;
    QString file;
};

namespace ProjectFloors {

// "NAME=FILE.dxf" of the command line; false when either side is empty.
bool ParseFloorArgument(const QString& argument, FloorSource& floor);

// A new project in `folder` (new or empty) named `name`, with the default
// specialties and codes and the given floors (the first current).
int New(const QString& folder, const QString& name, const QList<FloorSource>& floors, QTextStream& out,
    QTextStream& err);
// Everything a refused or failed `new` made goes again: the folder when `new` made
// it, else what it put into the (then empty) folder.
void RemoveMade(const QString& folder, bool madeFolder);
int AddFloor(const QString& folder, const FloorSource& floor, QTextStream& out, QTextStream& err);
int Floors(const QString& folder, QTextStream& out, QTextStream& err);

// The SQL that turns a store seeded with the demo script into a new project of the
// default specialties and codes: the demo's floors, items and the codes outside the
// catalogue of default names go; the catalogue's codes keep the demo's attributes.
QString DefaultsFromDemoSql(const QString& projectName);
// The SQL that adds a floor after the last (its drawing `file` relative to the
// project folder), with the laying modes of the first floor there is; the first
// floor of a project becomes its current floor.
// After the floors of `new` were added: each gets the demo's laying modes.
QString NewFloorsLayModesSql();
QString AddFloorSql(const QString& floor, const QString& file);
// A file name in `folder` for the floor's drawing, not yet taken there (nor by
// `taken`): the floor's name, cleaned, with ".dxf".
QString FloorFileName(const QString& folder, const QString& floor, const QStringList& taken = {});

} // namespace ProjectFloors
