#pragma once

// A PostgreSQL server for the store's tests: made with initdb in a folder of its
// own, listening on a free port of the loopback address (and a socket in that
// folder), trusting its one superuser. Under ctest one server serves the whole run
// (started and stopped by the fixture tests pg_server_start / pg_server_stop, found
// through QV_PG_SHARED_DIR); a test program run alone starts its own on first use
// and stops it when it ends. As root the server programs run as an unprivileged
// user, since the server refuses to run as root.
#include <QString>

#include <memory>

class PgTestServer
{
public:
    // The running server, started on first use; null when it cannot run, with
    // SkipReason() telling why.
    static PgTestServer* Get();
    static QString SkipReason();
    // A server of the caller's alone (one a test may stop), stopped when destroyed.
    static std::unique_ptr<PgTestServer> StartPrivate(QString& why);
    // For the fixture tests: a server in `folder` left running, its port written to
    // "folder/port" (or why it cannot run to "folder/skip"); and its stop.
    static bool StartShared(const QString& folder);
    static bool StopShared(const QString& folder);

    // A new, empty database and its address "postgresql://qvtest@127.0.0.1:PORT/NAME".
    QString NewDatabase();
    // Runs SQL text on `database` as the superuser (several statements allowed);
    // the server's message when it fails, empty when it ran.
    QString Sql(const QString& database, const QString& sql) const;
    // The database named by an address NewDatabase gave.
    static QString DatabaseOf(const QString& url);

    int Port() const { return m_port; }
    // Stops the server at once (as a crash or a cut cable would), and starts it
    // again on the same port.
    bool Stop();
    bool Start();

    ~PgTestServer();

private:
    PgTestServer() = default;
    bool Init(const QString& root, QString& why);
    bool Attach(const QString& folder, QString& why);
    bool RunTool(const QString& tool, const QStringList& args, QString* output = nullptr) const;

    QString m_bin;
    QString m_user; // the user the server runs as; empty: this process's own
    QString m_root;
    QString m_data;
    int m_port = 0;
    int m_databases = 0;
    bool m_running = false;
    bool m_owned = true; // stopped when destroyed
};
