#pragma once

// A prepared SQLite statement with Qt-typed binds and columns. Text goes in and out
// as UTF-8; the store keeps UTF-8 so the file reads the same in any SQLite client.
#include <QByteArrayView>
#include <QString>

struct sqlite3;
struct sqlite3_stmt;

class SqlStatement
{
public:
    SqlStatement(sqlite3* db, const char* sql);
    ~SqlStatement();
    SqlStatement(const SqlStatement&) = delete;
    SqlStatement& operator=(const SqlStatement&) = delete;

    bool IsValid() const { return m_stmt != nullptr; }
    // Binds are 1-based, as in SQLite.
    SqlStatement& Bind(int i, int value);
    SqlStatement& Bind(int i, qint64 value);
    SqlStatement& Bind(int i, double value);
    SqlStatement& Bind(int i, const QString& value);
    SqlStatement& BindNull(int i);

    // True while a row is available; Done() tells whether the end was reached cleanly.
    bool Next();
    // Runs a statement that returns no rows; true on SQLITE_DONE. Counts as a write.
    bool Exec();
    bool Done() const { return m_rc == 101; } // SQLITE_DONE
    int ResultCode() const { return m_rc; }
    void Reset();

    int Int(int col) const;
    qint64 Int64(int col) const;
    double Double(int col) const;
    QString Text(int col) const;
    // The column's text as the store holds it, valid until the next step.
    QByteArrayView Utf8(int col) const;
    bool IsNull(int col) const;

    // Every write (a statement run with Exec, a commit) passes here: false when it
    // is the one chosen to fail (QvKsDataMng::FailNthWrite).
    static bool CountWrite();

private:
    sqlite3_stmt* m_stmt = nullptr;
    int m_rc = 0;
};
