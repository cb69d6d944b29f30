#pragma once

// The process-wide open project behind the data service's static operations.
#include "QvKsQtxmInfo.h"
#include "SqlTransaction.h"

#include <QString>

#include <map>
#include <memory>

struct sqlite3;

class ProjectStore
{
public:
    // The open project, or null.
    static ProjectStore* Current();
    // Current() or null, recording "no project is open" as the last error.
    static ProjectStore* Require();

    static bool Open(const QString& folder, bool create, const QString& name, QString* error);
    static void Close();

    sqlite3* Db() const { return m_db; }
    QString Folder() const { return m_folder; }

    QString Meta(const QString& key) const;
    bool SetMeta(const QString& key, const QString& value);

    // Records `message` (and SQLite's own text when asked) as the last error.
    static void Fail(const QString& message);
    void FailSql(const QString& what);
    static QString LastError();
    static void SetBusyTimeout(int ms);

    // Bill and quota item edits waiting for CAtt::Save, by item id.
    std::map<qint64, SQvKsQdInfo>& PendingQd() { return m_pendingQd; }
    std::map<qint64, SQvKsDeInfo>& PendingDe() { return m_pendingDe; }

    // The write group of QvKsDataMng::BeginWrites, or null.
    std::unique_ptr<SqlTransaction>& WriteGroup() { return m_writeGroup; }

    ~ProjectStore();

private:
    ProjectStore(sqlite3* db, const QString& folder)
        : m_db(db)
        , m_folder(folder)
    { }

    sqlite3* m_db;
    QString m_folder;
    std::map<qint64, SQvKsQdInfo> m_pendingQd;
    std::map<qint64, SQvKsDeInfo> m_pendingDe;
    std::unique_ptr<SqlTransaction> m_writeGroup;
};
