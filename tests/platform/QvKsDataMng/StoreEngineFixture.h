#pragma once

// The store's tests on both engines: the project's store is the file in its
// folder, or a database of the test program's own server.
#include "PgTestServer.h"
#include "TempProject.h"

#include <memory>
#include <sqlite3.h>

enum class StoreEngine { File, Server };

inline std::string EngineName(const ::testing::TestParamInfo<StoreEngine>& info)
{
    return info.param == StoreEngine::File ? "File" : "Server";
}

class StoreEngineFixture : public ::testing::TestWithParam<StoreEngine>
{
protected:
    void SetUp() override
    {
        if (GetParam() == StoreEngine::Server && !PgTestServer::Get())
            GTEST_SKIP() << PgTestServer::SkipReason().toStdString();
    }

    // A new project on this test's engine.
    std::unique_ptr<TempProject> MakeProject(const QString& script = QString::fromUtf8(kFiveSpecs))
    {
        m_url = GetParam() == StoreEngine::Server ? PgTestServer::Get()->NewDatabase() : QString();
        return std::make_unique<TempProject>(script, m_url);
    }

    // Runs SQL on the store as another program would, past the data service: the
    // text for the file and the text for the server. Empty when it ran, else why not.
    QString Outside(const TempProject& project, const char* fileSql, const char* serverSql) const
    {
        if (GetParam() == StoreEngine::Server)
            return PgTestServer::Get()->Sql(PgTestServer::DatabaseOf(m_url), QString::fromUtf8(serverSql));
        sqlite3* db = nullptr;
        sqlite3_open(project.StoreFile().toUtf8().constData(), &db);
        char* message = nullptr;
        const int rc = sqlite3_exec(db, fileSql, nullptr, nullptr, &message);
        const QString why = rc == SQLITE_OK ? QString() : QString::fromUtf8(message ? message : "failed");
        sqlite3_free(message);
        sqlite3_close(db);
        return why;
    }
    QString Outside(const TempProject& project, const char* sql) const { return Outside(project, sql, sql); }

    QString m_url;
};
