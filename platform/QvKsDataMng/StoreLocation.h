#pragma once

// Where a project's store is: the file "project.qvks" in its folder (the default),
// or a database on a server, named by the entry "project.qvserver" in the folder.
// The entry holds host, port, database and user only: the password stays with the
// user (the PostgreSQL password file or environment), never in the project.
#include "PgDb.h"
#include "SqlDb.h"

#include <QString>

struct StoreLocation
{
    SqlEngine engine = SqlEngine::File;
    QString file; // the store file, for SqlEngine::File
    PgDb::Params server; // for SqlEngine::Server

    static QString EntryFileName(); // "project.qvserver"

    // A server named by "postgresql://[user@]host[:port]/database". False with
    // `error` for anything else, a password among it included.
    static bool FromUrl(const QString& url, StoreLocation& out, QString* error);
    // The store the project folder `dir` names. False with `error` when the entry
    // cannot be read or the folder names both a file and a server.
    static bool ForFolder(const QString& dir, StoreLocation& out, QString* error);

    // "postgresql://user@host:port/database", or the file's path.
    QString Describe() const;
    // The entry's text for a server location.
    QByteArray EntryText() const;
};
