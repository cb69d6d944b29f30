#pragma once

// The process-wide open project behind the data service's static operations.
#include "QvKsQtxmInfo.h"
#include "SqlDb.h"
#include "SqlTransaction.h"
#include "StoreLocation.h"

#include <QString>

#include <map>
#include <memory>

class ProjectStore
{
public:
    // The open project, or null.
    static ProjectStore* Current();
    // Current() or null, recording "no project is open" as the last error.
    static ProjectStore* Require();

    // Opens the store the folder names (or makes a store file in it).
    static bool Open(const QString& folder, bool create, const QString& name, QString* error);
    // Makes a new project in `folder` whose store is a database on the server at
    // `location`, and opens it.
    static bool CreateOnServer(
        const QString& folder, const StoreLocation& location, const QString& name, QString* error);
    static void Close();

    // A connection to the store at `location` after the checks made on opening
    // (for copying a project between stores; the open project is not touched).
    static std::unique_ptr<SqlDb> Connect(const StoreLocation& location, bool create, QString* error);

    SqlDb* Db() const { return m_db.get(); }
    QString Folder() const { return m_folder; }
    const StoreLocation& Location() const { return m_location; }

    QString Meta(const QString& key) const;
    bool SetMeta(const QString& key, const QString& value);

    // Records `message` (and the engine's own words when asked) as the last error.
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
    ProjectStore(std::unique_ptr<SqlDb> db, const QString& folder, const StoreLocation& location)
        : m_db(std::move(db))
        , m_folder(folder)
        , m_location(location)
    { }
    static bool Adopt(std::unique_ptr<SqlDb> db, const QString& dir, const StoreLocation& location);

    std::unique_ptr<SqlDb> m_db;
    QString m_folder;
    StoreLocation m_location;
    std::map<qint64, SQvKsQdInfo> m_pendingQd;
    std::map<qint64, SQvKsDeInfo> m_pendingDe;
    std::unique_ptr<SqlTransaction> m_writeGroup;
};
