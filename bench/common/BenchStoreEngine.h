#pragma once

// The store a benchmark's project is made on, chosen with --engine=: "file" (the
// default) for the store file in the project folder; "server" for a database of a
// PostgreSQL server started for this run the way the store's tests start theirs (in
// a temporary folder, on a free loopback port, stopped when the program ends); or a
// postgresql://USER@HOST:PORT/DB address of an existing, empty database (the
// password from ~/.pgpass or PGPASSWORD).
#include <QString>

// The --engine= argument as given; empty when there is none.
QString BenchEngineArgument();
// Whether the chosen store is a server's.
bool BenchOnServer();
// Makes and opens the project in `folder` on the chosen store. False with `why` set
// when the server cannot be had (its programs missing, the address refused).
bool CreateBenchProject(const QString& folder, const QString& name, QString& why);
