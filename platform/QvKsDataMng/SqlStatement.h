#pragma once

// A prepared statement of the project store with Qt-typed binds and columns. Text
// goes in and out as UTF-8; the store keeps UTF-8 on either engine, so it reads the
// same in any client of that engine.
#include "SqlCursor.h"

#include <QByteArrayView>
#include <QString>

#include <memory>

class SqlDb;

class SqlStatement
{
public:
    SqlStatement(SqlDb* db, const char* sql);
    ~SqlStatement();
    SqlStatement(const SqlStatement&) = delete;
    SqlStatement& operator=(const SqlStatement&) = delete;

    bool IsValid() const { return m_cursor != nullptr; }
    // Binds are 1-based.
    SqlStatement& Bind(int i, int value);
    SqlStatement& Bind(int i, qint64 value);
    SqlStatement& Bind(int i, double value);
    SqlStatement& Bind(int i, const QString& value);
    // Text already in UTF-8.
    SqlStatement& BindUtf8(int i, const QByteArray& utf8);
    SqlStatement& BindNull(int i);

    // True while a row is available; Done() tells whether the end was reached cleanly.
    bool Next();
    // Runs a statement that returns no rows; true when it ran to its end. Counts as
    // a write.
    bool Exec();
    bool Done() const { return m_rc == SqlCursor::kDone; }
    int ResultCode() const { return m_rc; }
    void Reset();

    int Int(int col) const;
    qint64 Int64(int col) const;
    double Double(int col) const;
    QString Text(int col) const;
    // The column's text as the store holds it, valid until the next step.
    QByteArrayView Utf8(int col) const;
    bool IsNull(int col) const;
    SqlCursor::Kind ColumnKind(int col) const;
    int ColumnCount() const;

    // Every write (a statement run with Exec, a commit) passes here: false when it
    // is the one chosen to fail (QvKsDataMng::FailNthWrite).
    static bool CountWrite();

private:
    std::unique_ptr<SqlCursor> m_cursor;
    int m_rc = 0;
};
