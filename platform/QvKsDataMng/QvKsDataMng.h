#pragma once

// The project that the data service works on. The host opens one project folder;
// every static operation of the data service (CISysCode, CProj, CQtxmMng …) acts on
// it and fails cleanly (false, empty) while none is open.
//
// A project folder holds the store file "project.qvks" (or, for a team's project,
// the entry "project.qvserver" naming the store's database on a server), the
// floors' drawing files and the profile folder "Profile" (settings
// "SysCodeMng.ini" and the exchange folder "系统编号").
#include <QString>
#include <QtGlobal>

#include <functional>

namespace QvKsDataMng {

// Opens the project store in `folder`. A missing, locked, damaged or newer store is
// refused with a message in `error`; the file is never created, changed or repaired
// by opening. Closes the project that was open before, also when this one fails.
bool OpenProject(const QString& folder, QString* error = nullptr);

// Makes a new, empty project in `folder` (created when missing) and opens it.
// Refuses a folder that already holds a store.
bool CreateProject(const QString& folder, const QString& projectName, QString* error = nullptr);

// Makes a new, empty project in `folder` whose store is a database on a server,
// named by "postgresql://[user@]host[:port]/database", and opens it. The database
// must exist and hold no tables of a store; the password comes from the user's
// PostgreSQL password file or environment. Refuses a folder that already holds a
// store.
bool CreateServerProject(
    const QString& folder, const QString& url, const QString& projectName, QString* error = nullptr);

// Carries the project in `folder` (not the open one) from its store file to an
// empty database on a server, or from its server back to a store file in the
// folder: everything arrives, then the folder names the new store, or nothing
// changes. The store left behind is removed (the file) or left as it was (the
// server's database).
bool MoveProjectToServer(const QString& folder, const QString& url, QString* error = nullptr);
bool MoveProjectToFile(const QString& folder, QString* error = nullptr);

// Where the open project's store is: the file's path or the server's address
// (empty while none is open).
QString StoreDescription();

// Closes the open project; edits of bill and quota items not yet stored with
// CAtt::Save are dropped.
void CloseProject();

bool IsProjectOpen();
// Rows inserted, changed or deleted in the open store by this process since it was
// opened (0 while none is open): what was shown from the store is still current
// while this stays the same.
qint64 ChangesMade();
QString ProjectFolder();
QString StoreFileName(); // "project.qvks"
QString ProfileFolderName(); // "Profile"

// Runs SQL text (several statements) on the open store in one transaction: the
// project tool seeds the demo project with it. On failure nothing is changed.
bool RunScript(const QString& sql, QString* error = nullptr);

// The message of the last failed operation of the data service.
QString LastError();

// Several operations stored as one: from BeginWrites until CommitWrites every write
// of the data service joins one transaction, so a failure anywhere lets
// RollbackWrites leave the store exactly as before. Rolling back also drops bill and
// quota item edits not yet stored. Begin is false when no project is open, the
// store is locked by another program, or a group is already open.
bool BeginWrites();
bool CommitWrites();
void RollbackWrites();

// For tests of failure handling: the n-th write from now (a statement that changes
// the store, or a commit) fails as a full disk would; 0 turns this off. WritesDone
// counts the writes since the last FailNthWrite.
void FailNthWrite(int n);
int WritesDone();
// For tests of a connection lost in the middle of a write: `call` runs just before
// the n-th write from now.
void BeforeNthWrite(int n, std::function<void()> call);

// How long a write waits for another program's lock before it fails (ms).
void SetBusyTimeout(int milliseconds);

} // namespace QvKsDataMng
