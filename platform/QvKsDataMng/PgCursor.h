#pragma once

// A statement of a store on a database server. The statement runs when its first
// row is asked for, with the binds given by then; the whole answer is fetched at
// once and read row by row.
#include "SqlCursor.h"

#include <QByteArray>

#include <optional>
#include <vector>

class PgDb;
struct pg_result;

class PgCursor : public SqlCursor
{
public:
    PgCursor(PgDb* db, const char* sql);
    ~PgCursor() override;
    PgCursor(const PgCursor&) = delete;
    PgCursor& operator=(const PgCursor&) = delete;

    // The server's form of `sql`: "?" and "?N" binds outside quotes become "$N".
    // `count` receives the highest bind number.
    static QByteArray ServerSql(const char* sql, int& count);

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
    struct Bound
    {
        unsigned type = 0;
        std::optional<QByteArray> text;
    };
    void SetBind(int i, unsigned type, std::optional<QByteArray> text);
    pg_result* Execute();
    int Failure();
    void Clear();

    PgDb* m_db;
    QByteArray m_sql;
    std::vector<Bound> m_binds;
    pg_result* m_result = nullptr;
    int m_row = -1;
    int m_rows = 0;
};
