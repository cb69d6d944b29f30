#pragma once

// A statement of the embedded store file.
#include "SqlCursor.h"

struct sqlite3_stmt;

class SqliteCursor : public SqlCursor
{
public:
    explicit SqliteCursor(sqlite3_stmt* stmt)
        : m_stmt(stmt)
    { }
    ~SqliteCursor() override;
    SqliteCursor(const SqliteCursor&) = delete;
    SqliteCursor& operator=(const SqliteCursor&) = delete;

    void BindInt(int i, qint64 value) override;
    void BindDouble(int i, double value) override;
    void BindText(int i, const QByteArray& utf8) override;
    void BindNull(int i) override;
    int Step() override;
    int Run() override;
    void Reset() override;
    qint64 Int(int col) const override;
    double Double(int col) const override;
    QByteArrayView Utf8(int col) const override;
    Kind ColumnKind(int col) const override;
    int ColumnCount() const override;

private:
    sqlite3_stmt* m_stmt;
};
