#pragma once

// The commands of qvproj for a team's project on a database server. Each returns
// the process exit code (0 on success) and writes its messages to `out` and `err`.
#include "ProjectFloors.h"

#include <QList>
#include <QString>

class QTextStream;

namespace ServerCommands {

// qvproj new DIR --server URL: a new, empty project whose store is the database URL
// names ("postgresql://user@host:port/database").
int NewOnServer(
    const QString& folder, const QString& url, const QString& name, QTextStream& out, QTextStream& err);
// qvproj new DIR --name NAME --floor … --server URL: the project of one's own floors
// made as a file project and then carried to the server; when it cannot be, nothing
// of it stays.
int NewOwnOnServer(const QString& folder, const QString& url, const QString& name,
    const QList<FloorSource>& floors, QTextStream& out, QTextStream& err);
// qvproj move-to-server DIR URL / move-to-file DIR: the project carried across
// whole, or left as it was.
int MoveToServer(const QString& folder, const QString& url, QTextStream& out, QTextStream& err);
int MoveToFile(const QString& folder, QTextStream& out, QTextStream& err);

// For main: runs the command in `args` when it is one of these, setting `rc`.
bool Dispatch(const QStringList& args, int& rc, QTextStream& out, QTextStream& err);
// The usage lines of these commands.
const char* Usage();

} // namespace ServerCommands
